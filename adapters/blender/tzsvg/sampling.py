"""The polygons of a drawing as points that a mesh can have: lines by their ends, curves by samples. No Blender here.

A sample is named by its place in the arrays below, which depends on nothing but the polygons and the resolution. So an
export can tell, by making the samples once more, what of a mesh was edited.
"""

from dataclasses import dataclass

import numpy

from .tzhost import tag_id

BEZIER = tag_id("BEZR")
LINES = tag_id("LINE")
# Controls this near to the thirds of their chord make a straight line of a segment: in chords, and, as the import rounds the
# thirds of straight lines to single precision, in coordinates.
STRAIGHT = 1e-5
SINGLE = 2.0 ** -22


@dataclass
class Samples:
    positions: numpy.ndarray   # float64, (n, 2)
    polygon: numpy.ndarray     # int64: whose sample it is
    vertex: numpy.ndarray      # int64: the place in mesh.vertices whose point it stands on; -1 within a curve
    of_place: numpy.ndarray    # int64: the sample at each place of mesh.vertices; -1 for controls
    starts: numpy.ndarray      # int64, polygons + 1: polygon i has the samples [i] to [i + 1]
    closed: numpy.ndarray      # bool, a polygon each

    def counts(self):
        return numpy.diff(self.starts)


def positions_of(mesh):
    return mesh.points[mesh.vertices][:, :2]


def owners_of(starts):
    return numpy.repeat(numpy.arange(len(starts) - 1), numpy.diff(starts.astype("i8")))


def sampled(mesh, resolution):
    """The samples of all polygons; curves with `resolution` pieces a segment."""
    starts = mesh.vertex_starts.astype("i8")
    places, polygon, position = corners(mesh, starts)
    places, polygon, position = with_curves(mesh, starts, places, polygon, position, resolution)
    keep = ~repeats(polygon, position)
    of_place = numpy.full(len(mesh.vertices), -1)
    on_place = places >= 0
    of_place[places[on_place]] = (numpy.cumsum(keep) - 1)[on_place]
    places, polygon, position = places[keep], polygon[keep], position[keep]
    # A last sample on the first one only says that the outline is closed.
    count = len(starts) - 1
    bounds = numpy.searchsorted(polygon, numpy.arange(count + 1))
    first, last = bounds[:-1], bounds[1:] - 1
    some = numpy.flatnonzero(last - first >= 2)
    closed = numpy.zeros(count, bool)
    closed[some] = (position[first[some]] == position[last[some]]).all(axis=1)
    keep = numpy.ones(len(position), bool)
    keep[last[closed]] = False
    target = numpy.cumsum(keep) - 1
    target[last[closed]] = target[first[closed]]
    on_sample = of_place >= 0
    of_place[on_sample] = target[of_place[on_sample]]
    places, polygon, position = places[keep], polygon[keep], position[keep]
    starts = numpy.searchsorted(polygon, numpy.arange(count + 1))
    return Samples(position, polygon, places, of_place, starts, closed)


def straight(p0, p1, p2, p3):
    """Which segments are straight lines, written as the import writes them."""
    slack = STRAIGHT * numpy.linalg.norm(p3 - p0, axis=-1) + SINGLE * numpy.abs((p0, p3)).max(axis=(0, -1))
    off = numpy.maximum(numpy.abs(p1 - (p0 + (p3 - p0) / 3)).max(axis=-1),
                        numpy.abs(p2 - (p0 + (p3 - p0) * 2 / 3)).max(axis=-1))
    return off <= slack


def repeats(polygon, position):
    """Which samples stand where the one before them does: shapes of lines have each corner twice."""
    out = numpy.zeros(len(polygon), bool)
    out[1:] = (polygon[1:] == polygon[:-1]) & (position[1:] == position[:-1]).all(axis=1)
    return out


def corners(mesh, starts):
    """The points that outlines pass: every vertex of lines, every third of curves."""
    polygon = owners_of(mesh.vertex_starts)
    places = numpy.arange(len(mesh.vertices))
    is_curve = mesh.types[polygon] == BEZIER
    keep = ~is_curve | ((places - starts[polygon]) % 3 == 0)
    return places[keep], polygon[keep], positions_of(mesh)[keep]


def with_curves(mesh, starts, places, polygon, position, resolution):
    """The corners, and behind those where a curve begins the samples within it."""
    complete = places + 3 < starts[polygon + 1]
    begins = numpy.flatnonzero((mesh.types[polygon] == BEZIER) & complete)
    if len(begins) == 0 or resolution < 2:
        return places, polygon, position
    at = positions_of(mesh)
    p0, p1, p2, p3 = (at[places[begins] + i] for i in range(4))
    bent = ~straight(p0, p1, p2, p3)
    begins, p0, p1, p2, p3 = begins[bent], p0[bent], p1[bent], p2[bent], p3[bent]
    t = (numpy.arange(1, resolution) / resolution)[None, :, None]
    u = 1 - t
    within = (u ** 3 * p0[:, None] + 3 * u * u * t * p1[:, None] + 3 * u * t * t * p2[:, None]
              + t ** 3 * p3[:, None]).reshape(-1, 2)
    behind = numpy.repeat(begins, resolution - 1)
    order = numpy.argsort(numpy.concatenate((numpy.arange(len(places)), behind + 0.5)), kind="stable")
    return (numpy.concatenate((places, numpy.full(len(behind), -1)))[order],
            numpy.concatenate((polygon, polygon[behind]))[order],
            numpy.concatenate((position, within))[order])


# ---- Areas of paths with several outlines ----

def signed_area(outline):
    x, y = outline[:, 0], outline[:, 1]
    return float((x * numpy.roll(y, -1) - numpy.roll(x, -1) * y).sum() / 2)


def winding_at(outline, point):
    """How often an outline runs around a point."""
    x, y = outline[:, 0], outline[:, 1]
    nx, ny = numpy.roll(x, -1), numpy.roll(y, -1)
    side = (nx - x) * (point[1] - y) - (point[0] - x) * (ny - y)
    up = (y <= point[1]) & (ny > point[1]) & (side > 0)
    down = (y > point[1]) & (ny <= point[1]) & (side < 0)
    return int(up.sum()) - int(down.sum())


def areas(outlines, even_odd):
    """Which outlines bound the painted area, by the fill rule: [(outer, [holes])], as places in `outlines`.

    Outlines that run inside others of the same paint bound nothing and are in neither list. Outlines are taken not to
    cross each other, as those of letters and maps do not; the algorithm is the winding number's (Hormann and Agathos, 2001).
    """
    outside, inside = [], []
    for i, outline in enumerate(outlines):
        probe = (outline[0] + outline[1]) / 2
        around = sum(winding_at(other, probe) for j, other in enumerate(outlines) if j != i)
        own = 1 if signed_area(outline) > 0 else -1
        outside.append(around)
        inside.append(around + own)

    def painted(winding):
        return winding % 2 != 0 if even_odd else winding != 0
    outer = [i for i in range(len(outlines)) if painted(inside[i]) and not painted(outside[i])]
    holes = [i for i in range(len(outlines)) if not painted(inside[i]) and painted(outside[i])]
    found = {i: [] for i in outer}
    size = {i: abs(signed_area(outlines[i])) for i in outer}
    for hole in holes:
        probe = (outlines[hole][0] + outlines[hole][1]) / 2
        around = [i for i in outer if winding_at(outlines[i], probe) != 0]
        if around:
            found[min(around, key=size.get)].append(hole)
    return list(found.items())
