"""The pictures of docs/blender.md: a drawing as a mesh, the mesh edited, and the exported drawing, which `make` draws.

    xvfb-run blender --factory-startup --python blender.py -- ZIP DRAWING FOLDER
"""

import os
import sys
import traceback
from math import radians

import bpy
from mathutils import Euler, Vector

ZIP, DRAWING, FOLDER = sys.argv[sys.argv.index("--") + 1:]
SIZE = 400


def extent(item):
    corners = [item.matrix_world @ Vector(corner) for corner in item.bound_box]
    low, high = (Vector(map(pick, zip(*corners))) for pick in (min, max))
    return (low + high) / 2, high - low


def render(name, target, size, tilt=0, turn=0):
    """The scene as a camera sees it that was tilted up and turned, in degrees; as flat as the drawing is."""
    scene = bpy.context.scene
    camera = bpy.data.objects.new("camera", bpy.data.cameras.new("camera"))
    scene.collection.objects.link(camera)
    camera.data.type = "ORTHO"
    camera.data.ortho_scale = 1.12 * max(size.x, size.y)
    camera.data.clip_start, camera.data.clip_end = size.x / 100, size.x * 100
    camera.rotation_euler = Euler((radians(tilt), 0, radians(turn)))
    camera.location = target + camera.rotation_euler.to_matrix() @ Vector((0, 0, size.x * 3))
    scene.camera = camera
    scene.render.engine = "BLENDER_WORKBENCH"
    scene.display.shading.light = "FLAT"
    scene.display.shading.color_type = "MATERIAL"
    scene.display.shading.show_object_outline = True
    scene.view_settings.view_transform = "Standard"
    scene.render.resolution_x = scene.render.resolution_y = SIZE
    scene.render.film_transparent = True
    scene.render.filepath = os.path.join(FOLDER, name)
    bpy.ops.render.render(write_still=True)
    bpy.data.objects.remove(camera)


def edit(item, centre, size):
    """The ears are drawn out: the small faces in the upper half, the more the higher."""
    mesh, ears = item.data, set()
    for face in mesh.polygons:
        across = [mesh.vertices[index].co.x for index in face.vertices]
        if max(across) - min(across) < 0.35 * size.x and face.center.y > centre.y + 0.1 * size.y:
            ears.update(face.vertices)
    for index in ears:
        point = mesh.vertices[index].co
        above = max(0, point.y - centre.y - 0.12 * size.y)
        point.x += (point.x - centre.x) * above / size.y * 1.5
        point.y -= above * 0.1


def main():
    bpy.ops.wm.read_factory_settings(use_empty=True)
    bpy.ops.preferences.addon_install(filepath=ZIP, overwrite=True)
    bpy.ops.preferences.addon_enable(module="tzsvg")
    # A step that can be seen from the side; what is exported does not depend on it.
    bpy.ops.import_mesh.tzsvg(filepath=DRAWING, layer_step=0.0015)
    item = bpy.context.view_layer.objects.active
    centre, size = extent(item)
    render("blender-mesh.png", centre, size, tilt=42, turn=16)
    edit(item, centre, size)
    render("blender-edit.png", centre, size)
    bpy.ops.export_mesh.tzsvg(filepath=os.path.join(FOLDER, "edited.svg"))


status = 1
try:
    main()
    status = 0
except Exception:
    traceback.print_exc()
finally:
    sys.stderr.flush()
    os._exit(status)    # Blender would ask whether to save
