"""Imported items as mesh objects."""

import itertools

import bpy
import numpy

from . import kept
from .layout import lay_out


def linear(value):
    """sRGB to Blender's linear colours (IEC 61966-2-1)."""
    return value / 12.92 if value <= 0.04045 else ((value + 0.055) / 1.055) ** 2.4


def hexadecimal(fill):
    return "#" + "".join(f"{round(part * 255):02x}" for part in fill[:3])


def material_of(fill, made):
    """The material of a fill: made once for an import."""
    if fill not in made:
        name = hexadecimal(fill) + (f" {round(fill[3] * 100)} %" if fill[3] < 1 else "")
        material = bpy.data.materials.new(name)
        colour = (*map(linear, fill[:3]), fill[3])
        material.diffuse_color = colour
        material.use_nodes = True
        shader = material.node_tree.nodes.get("Principled BSDF")
        shader.inputs["Base Color"].default_value = (*colour[:3], 1)
        shader.inputs["Alpha"].default_value = fill[3]
        if fill[3] < 1:
            material.blend_method = "BLEND"
        made[fill] = material
    return made[fill]


def build(item, settings, materials):
    """A mesh object, not yet in any collection."""
    layout = lay_out(item, settings)
    mesh = bpy.data.meshes.new(item.name or "SVG")
    slots = {}
    for number, _ in layout.faces:
        fill = layout.fills[number]
        if fill not in slots:
            slots[fill] = len(slots)
            mesh.materials.append(material_of(fill, materials))
    mesh.vertices.add(len(layout.positions))
    mesh.vertices.foreach_set("co", layout.positions.ravel())
    mesh.edges.add(len(layout.edges))
    mesh.edges.foreach_set("vertices", layout.edges.ravel().astype("i4"))
    totals = numpy.array([len(corners) for _, corners in layout.faces], "i4")
    mesh.loops.add(int(totals.sum()))
    mesh.polygons.add(len(totals))
    loops = numpy.fromiter(itertools.chain.from_iterable(corners for _, corners in layout.faces), "i4")
    mesh.loops.foreach_set("vertex_index", loops)
    mesh.polygons.foreach_set("loop_start", (numpy.cumsum(totals) - totals).astype("i4"))
    mesh.polygons.foreach_set("loop_total", totals)
    mesh.polygons.foreach_set("material_index",
                              numpy.array([slots[layout.fills[number]] for number, _ in layout.faces], "i4"))
    shapes = [layout.shapes[number][0] + 1 for number, _ in layout.faces]
    kept.write_attribute(mesh, kept.SAMPLE_ATTRIBUTE, "POINT", numpy.arange(1, len(layout.positions) + 1))
    kept.write_attribute(mesh, kept.SHAPE_ATTRIBUTE, "FACE", shapes)
    mesh.update(calc_edges=True, calc_edges_loose=True)
    kept.keep(mesh, item, settings)
    return bpy.data.objects.new(item.name or "SVG", mesh)
