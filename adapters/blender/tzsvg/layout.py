"""How the polygons of an item lie in a mesh: positions of the samples, faces and edges. No Blender here but its tessellator.

Import and export both ask it: the one to make the mesh, the other to know how it was made.
"""

from dataclasses import dataclass

import numpy
from mathutils import Vector
from mathutils.geometry import tessellate_polygon

from . import sampling
from .paint import Fills


@dataclass
class Layout:
    samples: sampling.Samples
    positions: numpy.ndarray     # float32, (samples, 3), in Blender's units
    shapes: list                 # (first, end) of the polygons of each shape: sub-paths of one path are one shape
    shape_of: numpy.ndarray      # the shape of each polygon
    fills: list                  # of each shape: (red, green, blue, alpha) or None
    faces: list                  # (shape, samples of its corners)
    edges: numpy.ndarray         # (n, 2): samples joined by edges that no face has


def shapes_of(mesh):
    """Sub-paths stand one behind the other, from one whose tag begins with "start" to one that begins with "end"."""
    out, begun = [], None
    for i, text in enumerate(mesh.column("SPAT")):
        if text is None:
            begun = None
            out.append((i, i + 1))
        elif text.startswith("start") or begun is None:
            begun = i
            out.append((i, i + 1))
        else:
            out[-1] = (begun, i + 1)
            if text.startswith("end"):
                begun = None
    return out


def lay_out(item, settings):
    """`settings` has "scale" (Blender's units for one of the drawing), "resolution" and "step" (between layers)."""
    samples = sampling.sampled(item.mesh, settings["resolution"])
    shapes = shapes_of(item.mesh)
    shape_of = numpy.repeat(numpy.arange(len(shapes)), [end - first for first, end in shapes]) if shapes else \
        numpy.zeros(0, int)
    positions = numpy.empty((len(samples.positions), 3), "f4")
    positions[:, :2] = samples.positions * settings["scale"]
    positions[:, 2] = shape_of[samples.polygon] * settings["step"]
    by_polygon = Fills(item).of_all()
    fills = [by_polygon[first] for first, _ in shapes]
    rules = item.mesh.column("FILR")
    faces, outlined = [], numpy.ones(len(shape_of), bool)
    for number, (first, end) in enumerate(shapes):
        if fills[number] is None:
            continue
        made = face_of_one(samples, first) if end == first + 1 else \
            faces_of_many(samples, first, end, (rules[first] or "").strip() == "evenodd")
        faces += [(number, corners) for corners in made]
        for polygon in range(first, end) if made else ():
            outlined[polygon] = False
    return Layout(samples, positions, shapes, shape_of, fills, faces, edges_of(samples, outlined))


def face_of_one(samples, polygon):
    first, end = samples.starts[polygon], samples.starts[polygon + 1]
    return [range(first, end)] if end - first >= 3 else []


def faces_of_many(samples, first, end, even_odd):
    polygons = [i for i in range(first, end) if samples.starts[i + 1] - samples.starts[i] >= 3]
    outlines = [samples.positions[samples.starts[i]:samples.starts[i + 1]] for i in polygons]
    out = []
    for outer, holes in sampling.areas(outlines, even_odd):
        corners = numpy.concatenate([numpy.arange(samples.starts[polygons[i]], samples.starts[polygons[i] + 1])
                                     for i in (outer, *holes)])
        if holes:
            loops = [[Vector((x, y, 0.0)) for x, y in outlines[i]] for i in (outer, *holes)]
            out += [corners[list(triangle)] for triangle in tessellate_polygon(loops)]
        else:
            out.append(corners)
    return out


def edges_of(samples, outlined):
    """The outlines of polygons without faces, closed where they are."""
    where = outlined[samples.polygon] if len(samples.polygon) else numpy.zeros(0, bool)
    follows = numpy.zeros(len(where), bool)
    follows[:-1] = where[:-1] & (samples.polygon[:-1] == samples.polygon[1:])
    begin = numpy.flatnonzero(follows)
    out = numpy.stack((begin, begin + 1), axis=1)
    back = numpy.flatnonzero(outlined & samples.closed & (samples.counts() > 2))
    return numpy.concatenate((out, numpy.stack((samples.starts[back + 1] - 1, samples.starts[back]), axis=1)))
