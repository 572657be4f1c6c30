"""What was edited of an imported mesh, as polygons again. What was not touched comes back as it was, to the last bit."""

import itertools

import numpy

from . import kept, sampling
from .building import hexadecimal
from .layout import lay_out
from .polygons import Polygons
from .tzhost import Item, Mesh

# A vertex this near to where it was put was not moved: in the largest coordinate.
STILL = 2.0 ** -20
# Where new polygons stand among their siblings: behind all others.
LAST = "4294967295"


class Found:
    """A mesh as Blender has it now."""

    def __init__(self, mesh):
        self.co = numpy.empty((len(mesh.vertices), 3), "f4")
        mesh.vertices.foreach_get("co", self.co.ravel())
        self.sample = kept.read_attribute(mesh, kept.SAMPLE_ATTRIBUTE, "POINT", len(mesh.vertices)) - 1
        self.shape = kept.read_attribute(mesh, kept.SHAPE_ATTRIBUTE, "FACE", len(mesh.polygons)) - 1
        self.loop_vertex = numpy.empty(len(mesh.loops), "i4")
        mesh.loops.foreach_get("vertex_index", self.loop_vertex)
        self.loop_start = numpy.empty(len(mesh.polygons), "i4")
        mesh.polygons.foreach_get("loop_start", self.loop_start)
        self.loop_total = numpy.empty(len(mesh.polygons), "i4")
        mesh.polygons.foreach_get("loop_total", self.loop_total)
        self.material = numpy.empty(len(mesh.polygons), "i4")
        mesh.polygons.foreach_get("material_index", self.material)
        self.edges = numpy.empty((len(mesh.edges), 2), "i4")
        mesh.edges.foreach_get("vertices", self.edges.ravel())
        self.colours = [colour_of(material) for material in mesh.materials]

    def corners(self, face):
        begin = self.loop_start[face]
        return self.loop_vertex[begin:begin + self.loop_total[face]]


def encoded(value):
    """Linear to sRGB."""
    value = min(max(value, 0.0), 1.0)
    return value * 12.92 if value <= 0.0031308 else 1.055 * value ** (1 / 2.4) - 0.055


def colour_of(material):
    if material is None:
        return (0.8, 0.8, 0.8, 1.0)
    shader = material.node_tree.nodes.get("Principled BSDF") if material.use_nodes and material.node_tree else None
    if shader:
        return (*map(encoded, shader.inputs["Base Color"].default_value[:3]), shader.inputs["Alpha"].default_value)
    return (*map(encoded, material.diffuse_color[:3]), material.diffuse_color[3])


def new_tags(fill, order=LAST):
    tags = {"FILL": hexadecimal(fill), "PRIM": "POLYGON", "VCMP": "1", "LCOL": "#000000", "LALF": "0", "LWID": "0",
            "ZORD": order}
    if fill[3] < 1:
        tags["FILO"] = f"{fill[3]:.4g}"
    return tags


def item_of(blender_object, mesh, settings):
    """The item that an object is exported as. `settings` is for meshes that were not imported."""
    source = kept.kept(mesh)
    found = Found(mesh)
    matrix = numpy.array(blender_object.matrix_world)
    if source is None:
        polygons = Polygons(None)
        add_faces(polygons, found, range(len(found.loop_start)), matrix, settings["scale"], {})
        return Item(blender_object.name, polygons.mesh())
    item, layout_settings = source
    layout = lay_out(item, layout_settings)
    polygons = edited(item, layout, found, matrix, layout_settings)
    return Item(item.name, polygons.mesh(), item.tags, item.packages, item.channels)


def in_drawing(positions, matrix, scale):
    """Positions of the mesh as points of the drawing, with the object's transform."""
    moved = positions.astype("f8") @ matrix[:3, :3].T + matrix[:3, 3]
    return moved / scale


def edited(item, layout, found, matrix, settings):
    count = len(layout.positions)
    vertex_of = numpy.full(count, -1)
    known = numpy.flatnonzero((found.sample >= 0) & (found.sample < count))[::-1]
    vertex_of[found.sample[known]] = known     # of duplicates the first one, which Blender keeps in front
    gone = vertex_of < 0
    slack = STILL * max(float(numpy.abs(layout.positions).max()) if count else 0.0, 1e-30)
    moved = numpy.zeros(count, bool)
    here = ~gone
    moved[here] = (numpy.abs(found.co[vertex_of[here]] - layout.positions[here]) > slack).any(axis=1)

    polygons = Polygons(transformed(item.mesh, layout, matrix, settings))
    worn = worn_edges(layout, found, vertex_of)
    if not moved.any() and not worn.any() and has_all_faces(layout, found, vertex_of):
        for polygon in range(len(layout.shape_of)):
            polygons.copy(polygon)
        return polygons
    faces, strangers = faces_by_shape(layout, found, vertex_of)
    expected = [[] for _ in layout.shapes]
    for number, corners in layout.faces:
        expected[number].append(corners)
    for number, (first, end) in enumerate(layout.shapes):
        begin, stop = layout.samples.starts[first], layout.samples.starts[end]
        if expected[number]:
            whole = same_faces(expected[number], faces.get(number, []), found, vertex_of)
        else:
            whole = stop > begin and not worn[first:end].any() or stop == begin
        if not whole:
            rest = faces.get(number, [])
            tags = item.mesh.tags(first)
            tags.pop("SPAT", None)
            add_faces(polygons, found, rest, matrix, settings["scale"], {**tags, "PRIM": "POLYGON"})
            if not expected[number]:
                add_outlines(polygons, layout, range(first, end), found, vertex_of, matrix, settings, item)
        elif not moved[begin:stop].any():
            for polygon in range(first, end):
                polygons.copy(polygon)
        else:
            for polygon in range(first, end):
                add_moved(polygons, polygon, layout, found, vertex_of, moved, matrix, settings)
    add_faces(polygons, found, strangers, matrix, settings["scale"], None)
    return polygons


def transformed(mesh, layout, matrix, settings):
    """The source's mesh, moved as the object was."""
    if (matrix == numpy.identity(4)).all():
        return mesh
    scale = settings["scale"]
    points = (mesh.points * scale) @ matrix[:3, :3].T + matrix[:3, 3]
    return Mesh(points / scale, mesh.types, mesh.vertex_starts, mesh.vertices, mesh.tag_starts, mesh.tag_ids,
                mesh.text_starts, mesh.text)


def faces_by_shape(layout, found, vertex_of):
    """Faces that are still those of a shape, by its number; and all others."""
    shape_of_polygon = layout.shape_of
    firsts = {first: number for number, (first, _) in enumerate(layout.shapes)}
    is_first = numpy.zeros(len(found.co), bool)
    is_first[vertex_of[vertex_of >= 0]] = True
    stranger = numpy.zeros(len(found.loop_start), bool)
    if len(found.loop_start):
        own = is_first[found.loop_vertex]
        stranger |= ~numpy.minimum.reduceat(own, found.loop_start) if len(own) else stranger
    stranger |= (found.shape < 0) | (found.shape >= len(shape_of_polygon))
    by_shape = {}
    for face in numpy.flatnonzero(~stranger).tolist():
        number = firsts.get(int(found.shape[face]))
        if number is None:
            stranger[face] = True
        else:
            by_shape.setdefault(number, []).append(face)
    return by_shape, numpy.flatnonzero(stranger).tolist()


def has_all_faces(layout, found, vertex_of):
    """Whether the mesh has the faces it was given and no other: what most exports find, told without a look at each."""
    totals = numpy.array([len(corners) for _, corners in layout.faces], "i4")
    if not numpy.array_equal(totals, found.loop_total):
        return False
    corners = numpy.fromiter(itertools.chain.from_iterable(corners for _, corners in layout.faces), "i8")
    shapes = numpy.array([layout.shapes[number][0] for number, _ in layout.faces], "i4")
    return numpy.array_equal(vertex_of[corners], found.loop_vertex) and numpy.array_equal(shapes, found.shape)


def same_faces(expected, faces, found, vertex_of):
    """Whether the faces of a shape are those it was given, corner by corner."""
    if len(expected) != len(faces):
        return False
    return all(numpy.array_equal(vertex_of[numpy.asarray(corners)], found.corners(face))
               for corners, face in zip(expected, faces))


def worn_edges(layout, found, vertex_of):
    """Which polygons without faces have lost edges or points."""
    edges = vertex_of[layout.edges] if len(layout.edges) else numpy.zeros((0, 2), int)
    size = len(found.co) + 1
    there = numpy.sort(found.edges.astype("i8"), axis=1)
    there = there[:, 0] * size + there[:, 1]
    wanted = numpy.sort(edges.astype("i8"), axis=1)
    wanted = wanted[:, 0] * size + wanted[:, 1]
    lost = (edges < 0).any(axis=1) | ~numpy.isin(wanted, there)
    out = numpy.zeros(len(layout.shape_of), bool)
    out[layout.samples.polygon[layout.edges[lost, 0]]] = True
    out[layout.samples.polygon[numpy.flatnonzero(vertex_of < 0)]] = True
    return out


def add_outlines(polygons, layout, numbers, found, vertex_of, matrix, settings, item):
    """Outlines that lost points or edges: what is left of each, as straight lines; nothing when too little is."""
    pairs = {tuple(sorted(edge)) for edge in found.edges.tolist()}
    ends = {vertex for pair in pairs for vertex in pair}
    for polygon in numbers:
        begin, end = layout.samples.starts[polygon], layout.samples.starts[polygon + 1]
        held = [vertex for vertex in vertex_of[begin:end].tolist() if vertex in ends]
        if len(held) < 2:
            continue
        points = drawn(found.co[held], layout, polygon, matrix, settings)
        first = polygons.add_points(points)
        vertices = list(range(first, first + len(held)))
        tags = {**item.mesh.tags(polygon), "PRIM": "POLYLINE"}
        tags.pop("SPAT", None)
        if layout.samples.closed[polygon] and tuple(sorted((held[0], held[-1]))) in pairs:
            vertices.append(first)
        polygons.add(sampling.LINES, vertices, tags=tags)


def drawn(positions, layout, polygon, matrix, settings):
    """Positions of vertices of a polygon as points of the drawing: without the height of its layer."""
    flat = positions.astype("f8").copy()
    flat[:, 2] -= float(numpy.float32(layout.shape_of[polygon] * settings["step"]))
    flat[numpy.abs(flat[:, 2]) < STILL * max(float(numpy.abs(layout.positions).max()), 1e-30), 2] = 0
    return in_drawing(flat, matrix, settings["scale"])


def add_moved(polygons, polygon, layout, found, vertex_of, moved, matrix, settings):
    """A polygon some of whose points were moved; all of them are there."""
    samples, mesh = layout.samples, polygons.source
    begin, end = (int(n) for n in samples.starts[polygon:polygon + 2])
    if not moved[begin:end].any():
        polygons.copy(polygon)
        return
    first, last = (int(n) for n in mesh.vertex_starts[polygon:polygon + 2])
    is_curve = mesh.types[polygon] == sampling.BEZIER
    bent = moved[begin:end] & (samples.vertex[begin:end] < 0)
    at = drawn(found.co[vertex_of[begin:end]], layout, polygon, matrix, settings)
    if bent.any():
        vertices = straight_curve(polygons, at, samples.closed[polygon])
    elif is_curve:
        vertices = moved_curve(polygons, range(first, last), begin, samples, moved, at)
    else:
        sample = samples.of_place[first:last]
        points = mesh.points[mesh.vertices[first:last]].copy()
        points[moved[sample]] = at[sample[moved[sample]] - begin]
        vertices = shared(polygons, mesh.vertices[first:last], points)
    polygons.add(mesh.types[polygon], vertices, tags_of=polygon)


def shared(polygons, before, points):
    """New points for vertices; those that shared a point go on to."""
    _, index, place = numpy.unique(before, return_index=True, return_inverse=True)
    return polygons.add_points(points[index]) + place


def straight_curve(polygons, at, closed):
    """A curve as straight lines from sample to sample, in the form of curves: its kind and its sub-paths stay."""
    ends = numpy.concatenate((at, at[:1])) if closed else at
    pieces = [ends[:1]]
    for a, b in zip(ends[:-1], ends[1:]):
        pieces.append(numpy.array([a + (b - a) / 3, a + (b - a) * 2 / 3, b]))
    points = numpy.concatenate(pieces)
    if closed:
        first = polygons.add_points(points[:-1])
        return [*range(first, first + len(points) - 1), first]
    first = polygons.add_points(points)
    return list(range(first, first + len(points)))


def moved_curve(polygons, places, begin, samples, moved, at):
    """A curve whose corners were moved: straight lines stay straight, controls of curves go along with their corner."""
    mesh = polygons.source
    before = mesh.points[mesh.vertices[places.start:places.stop]]
    points = before.copy()
    corner = samples.of_place[places.start:places.stop]
    shift = numpy.zeros_like(points)
    for i in range(0, len(points), 3):
        if moved[corner[i]]:
            points[i] = at[corner[i] - begin]
            shift[i] = points[i] - before[i]
    for i in range(0, len(points) - 3, 3):
        if sampling.straight(*before[i:i + 4, :2]) and (shift[i].any() or shift[i + 3].any()):
            points[i + 1] = points[i] + (points[i + 3] - points[i]) / 3
            points[i + 2] = points[i] + (points[i + 3] - points[i]) * 2 / 3
        else:
            points[i + 1] = before[i + 1] + shift[i]
            points[i + 2] = before[i + 2] + shift[i + 3]
    return shared(polygons, mesh.vertices[places.start:places.stop], points)


def add_faces(polygons, found, faces, matrix, scale, tags):
    """Faces as polygons of their own: with these tags, or those of their material's colour."""
    for face in faces:
        at = found.co[found.corners(face)]
        height = float(at[:, 2].mean())
        flat = at.copy()
        # A flat face lies in the drawing's plane, whatever layer it was made on.
        if numpy.abs(at[:, 2] - height).max() <= STILL * max(float(numpy.abs(at).max()), 1e-30):
            flat[:, 2] = 0
        first = polygons.add_points(in_drawing(flat, matrix, scale))
        slot = int(found.material[face])
        fill = found.colours[slot] if slot < len(found.colours) else colour_of(None)
        vertices = [*range(first, first + len(at)), first]
        polygons.add(sampling.LINES, vertices, tags=tags if tags else new_tags(fill))
