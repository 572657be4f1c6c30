"""The polygons of a mesh that is exported: copied from the one that was imported, or new."""

import numpy

from .tzhost import Mesh, tag_id


class Polygons:
    """Polygons in the making; a copied one keeps its points and tags."""

    def __init__(self, mesh):
        self.source = mesh
        self.points = [mesh.points] if mesh is not None else []
        self.point_count = len(mesh.points) if mesh is not None else 0
        self.rows = []          # (type, vertices, number of the polygon whose tags it has or None, tags of its own or None)

    def add_points(self, points):
        first = self.point_count
        self.points.append(points)
        self.point_count += len(points)
        return first

    def copy(self, polygon):
        self.rows.append((None, None, polygon, None))

    def add(self, kind, vertices, tags_of=None, tags=None):
        self.rows.append((kind, vertices, tags_of, tags))

    def mesh(self):
        if self.source is not None and len(self.points) == 1 and \
                [row[2] for row in self.rows if row[0] is None] == list(range(len(self.source.types))) and \
                len(self.rows) == len(self.source.types):
            return self.source      # nothing was edited
        types, vertices, tags = [], [], []
        for kind, own, number, own_tags in self.rows:
            if kind is None:
                begin, end = self.source.vertex_starts[number:number + 2]
                kind, own = self.source.types[number], self.source.vertices[int(begin):int(end)]
            types.append(kind)
            vertices.append(numpy.asarray(own, "u4"))
            tags.append(self.copied_tags(number) if own_tags is None else packed_tags(own_tags))
        ids, sizes, texts = zip(*tags) if tags else ((), (), ())
        return Mesh(joined(self.points, "f8").reshape(-1, 3), numpy.array(types, "u4"), starts(map(len, vertices)),
                    joined(vertices, "u4"), starts(map(len, ids)), joined(ids, "u4"),
                    starts(joined(sizes, "i8")), joined(texts, "u1"))

    def copied_tags(self, polygon):
        begin, end = (int(n) for n in self.source.tag_starts[polygon:polygon + 2])
        bounds = self.source.text_starts[begin:end + 1].astype("i8")
        return (self.source.tag_ids[begin:end], numpy.diff(bounds), self.source.text[bounds[0]:bounds[-1]])


def packed_tags(tags):
    texts = [text.encode("utf-8") for text in tags.values()]
    return (numpy.array([tag_id(name) for name in tags], "u4"), numpy.array([len(text) for text in texts], "i8"),
            numpy.frombuffer(b"".join(texts), "u1"))


def joined(arrays, kind):
    return numpy.concatenate([numpy.zeros(0, kind), *map(numpy.ravel, arrays)]).astype(kind)


def starts(counts):
    return numpy.concatenate(([0], numpy.cumsum(list(counts)))).astype("u8")
