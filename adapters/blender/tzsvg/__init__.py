"""SVG drawings as meshes, and back. Later versions of Blender read blender_manifest.toml instead of bl_info."""

bl_info = {
    "name": "SVG as Mesh",
    "author": "tzsvg",
    "version": (1, 0, 0),
    "blender": (3, 4, 0),
    "location": "File > Import, File > Export",
    "description": "Reads SVG drawings as meshes and writes them back with their edits",
    "category": "Import-Export",
}


def register():
    from . import operators
    operators.register()


def unregister():
    from . import operators
    operators.unregister()
