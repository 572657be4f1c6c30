"""What a mesh of Blender's cannot hold, kept with it: the item as it was imported, to the last bit, and how it was laid out.

It is in two custom properties of the mesh, so that it is saved, undone and duplicated with it. The elements of the mesh name
what they were made of in two attributes, which Blender carries through edits: each counts from 1, and 0 is nothing.
"""

import json

import numpy

from .tzhost import ARRAYS, Item, Mesh

ARRAYS_PROPERTY = "tzsvg_arrays"
ITEM_PROPERTY = "tzsvg_item"
SAMPLE_ATTRIBUTE = "tzsvg_sample"     # of vertices
SHAPE_ATTRIBUTE = "tzsvg_shape"       # of faces: the first polygon of the shape


def keep(blender_mesh, item, layout):
    arrays = [getattr(item.mesh, name) for name in ARRAYS]
    description = {"name": item.name, "tags": item.tags, "packages": item.packages, "channels": item.channels,
                   "layout": layout, "arrays": [[array.dtype.str, list(array.shape)] for array in arrays]}
    blender_mesh[ITEM_PROPERTY] = json.dumps(description)
    blender_mesh[ARRAYS_PROPERTY] = b"".join(array.tobytes() for array in arrays)


def kept(blender_mesh):
    """(item, layout), or None for a mesh that was not imported."""
    if ITEM_PROPERTY not in blender_mesh or ARRAYS_PROPERTY not in blender_mesh:
        return None
    description = json.loads(blender_mesh[ITEM_PROPERTY])
    raw, at, arrays = bytes(blender_mesh[ARRAYS_PROPERTY]), 0, []
    for kind, shape in description["arrays"]:
        size = int(numpy.prod(shape))
        arrays.append(numpy.frombuffer(raw, kind, size, at).reshape(shape).copy())
        at += arrays[-1].nbytes
    item = Item(description["name"], Mesh(*arrays), description["tags"], description["packages"],
                description["channels"])
    return item, description["layout"]


def read_attribute(blender_mesh, name, domain, count):
    """Whole numbers of an attribute; zeros when the mesh has it not."""
    out = numpy.zeros(count, "i4")
    attribute = blender_mesh.attributes.get(name)
    if attribute and attribute.domain == domain and attribute.data_type == "INT":
        attribute.data.foreach_get("value", out)
    return out


def write_attribute(blender_mesh, name, domain, values):
    attribute = blender_mesh.attributes.new(name, "INT", domain)
    attribute.data.foreach_set("value", numpy.ascontiguousarray(values, "i4"))
