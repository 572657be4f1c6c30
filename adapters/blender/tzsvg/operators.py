"""File > Import and File > Export: settings, progress, cancel, and what the user is told."""

import os
import threading

import bpy
from bpy.props import BoolProperty, EnumProperty, FloatProperty, IntProperty, StringProperty
from bpy_extras.io_utils import ExportHelper, ImportHelper

from . import building, edits, kept, tzhost
from .size import metres_per_unit

LIBRARIES = os.path.join(os.path.dirname(__file__), "lib")
MOST_NOTES_SHOWN = 8


class Work:
    """Runs a function on a thread, while Blender goes on; or here, when there is no window. The function gets a `progress`
    that it calls with the work done and the total, and that answers whether to stop."""

    def __init__(self, function):
        self.function = function
        self.done, self.total, self.stop = 0, 0, False
        self.result, self.error = None, None
        self.thread = threading.Thread(target=self.run, daemon=True)

    def progress(self, done, total):
        self.done, self.total = done, total
        return self.stop

    def run(self):
        try:
            self.result = self.function(self.progress)
        except Exception as error:      # raised where the user can be told
            self.error = error


class Runs:
    """An operator that works as long as a drawing takes: with progress, and Esc to cancel, when it was asked for in a window."""

    def start(self, context, function):
        self.work = Work(function)
        if bpy.app.background or not context.window or self.options.is_repeat:
            self.work.run()
            return self.finish(context)
        self.timer = context.window_manager.event_timer_add(0.05, window=context.window)
        context.window_manager.progress_begin(0, 1000)
        context.window_manager.modal_handler_add(self)
        self.work.thread.start()
        return {"RUNNING_MODAL"}

    def modal(self, context, event):
        if event.type == "ESC":
            self.work.stop = True
        if event.type == "TIMER":
            if self.work.total:
                context.window_manager.progress_update(int(1000 * self.work.done / self.work.total))
            if not self.work.thread.is_alive():
                context.window_manager.event_timer_remove(self.timer)
                context.window_manager.progress_end()
                return self.finish(context)
        return {"RUNNING_MODAL"}

    def finish(self, context):
        error = self.work.error
        if isinstance(error, tzhost.Cancelled):
            self.report({"WARNING"}, "Cancelled")
            return {"CANCELLED"}
        if isinstance(error, (tzhost.Failure, OSError)):
            self.report({"ERROR"}, str(error))
            return {"CANCELLED"}
        if error:
            raise error
        return self.done(context, self.work.result)


class ImportDrawing(bpy.types.Operator, ImportHelper, Runs):
    """Read an SVG drawing as meshes: its shapes as faces, its lines as edges"""

    bl_idname = "import_mesh.tzsvg"
    bl_label = "Import SVG as Mesh"
    bl_options = {"REGISTER", "UNDO"}

    filename_ext = ".svg"
    filter_glob: StringProperty(default="*.svg;*.svgz", options={"HIDDEN"})
    unit: EnumProperty(name="Size", items=(
        ("PHYSICAL", "As the Drawing Says", "Millimetres, inches and points as they are; a pixel is 1/96 inch"),
        ("UNIT", "One Unit a Metre", "One unit of the drawing is one metre")))
    scale: FloatProperty(name="Scale", default=1.0, min=1e-6, max=1e6, description="Enlarges the drawing")
    resolution: IntProperty(name="Resolution", default=12, min=1, max=64, description="Pieces of each segment of a curve")
    layer_step: FloatProperty(name="Layer Step", default=0.00001, min=0.0, max=1.0, precision=6, subtype="DISTANCE",
                              description="Height of each shape above the one before it, so that they do not flicker")
    normalize: BoolProperty(name="Normalize", default=True, description=(
        "Resolve style sheets, transforms, text, references and more first, so that nearly every drawing can be read"))

    def execute(self, context):
        file, normalize = self.filepath, self.normalize

        def read(progress):
            with tzhost.Session(LIBRARIES) as session:
                result = session.read(file, normalize, progress)
            if self.work.stop:      # Esc after the last time that the module asked
                raise tzhost.Cancelled()
            return result
        return self.start(context, read)

    def done(self, context, result):
        items, self.notes = result
        if not any(len(item.mesh.types) for item in items):
            self.report({"ERROR"}, f"{self.filepath}: there is nothing to draw in it")
            return {"CANCELLED"}
        name = os.path.splitext(os.path.basename(self.filepath))[0]
        collection = bpy.data.collections.new(name)
        materials = {}
        objects = [building.build(item, self.settings(context, item), materials) for item in items]
        context.scene.collection.children.link(collection)
        for item_object in list(context.view_layer.objects.selected):
            item_object.select_set(False)
        for item_object in objects:
            collection.objects.link(item_object)
            item_object.select_set(True)
        context.view_layer.objects.active = objects[0]
        self.tell(name)
        return {"FINISHED"}

    def settings(self, context, item):
        unit = 1.0
        if self.unit == "PHYSICAL":
            unit = metres_per_unit(self.filepath, item.tags.get("VBOX")) / context.scene.unit_settings.scale_length
        return {"scale": unit * self.scale, "resolution": self.resolution, "step": self.layer_step}

    def tell(self, name):
        if not self.notes:
            return
        text = bpy.data.texts.new(name + " notes")
        text.write("".join(f"{line(note)}\n" for note in self.notes))
        self.report({"INFO"}, f"{len(self.notes)} things are not as in the drawing: see the text \"{text.name}\"")

    def draw(self, _):
        self.layout.use_property_split = True
        for name in ("unit", "scale", "resolution", "layer_step", "normalize"):
            self.layout.prop(self, name)
        notes = getattr(self, "notes", ())
        for note in notes[:MOST_NOTES_SHOWN]:
            self.layout.label(text=line(note))
        if len(notes) > MOST_NOTES_SHOWN:
            self.layout.label(text=f"and {len(notes) - MOST_NOTES_SHOWN} more")


def line(note):
    name = f"<{note['element']}>" + (f" \"{note['id']}\"" if note.get("id") else "")
    return f"line {note['line']}: {name}: {note['text']}"


class ExportDrawing(bpy.types.Operator, ExportHelper, Runs):
    """Write meshes as an SVG drawing: imported ones as they were, but for what was edited"""

    bl_idname = "export_mesh.tzsvg"
    bl_label = "Export SVG from Mesh"

    filename_ext = ".svg"
    filter_glob: StringProperty(default="*.svg", options={"HIDDEN"})
    use_selection: BoolProperty(name="Selection Only", default=False, description="Write selected objects only")
    scale: FloatProperty(name="Scale", default=96 / 0.0254, min=1e-6, max=1e9, description=(
        "Units of the drawing for a metre, for meshes that were not imported: without others an inch is 96 units"))

    def execute(self, context):
        meshes = self.meshes(context)
        if not meshes:
            self.report({"ERROR"}, f"{self.filepath}: there is no mesh to write")
            return {"CANCELLED"}
        items = [edits.item_of(item_object, mesh, {"scale": 1 / self.scale}) for item_object, mesh in meshes]
        items = [item for item in items if len(item.mesh.types)]
        if not items:
            self.report({"ERROR"}, f"{self.filepath}: nothing of the meshes is left to write")
            return {"CANCELLED"}
        file = self.filepath

        def write(progress):
            with tzhost.Session(LIBRARIES) as session:
                session.write(items, file, progress)
        return self.start(context, write)

    def meshes(self, context):
        """Objects with their meshes, as edited: the selected ones, else all that were imported, else all there are."""
        found = [item for item in context.scene.objects if item.type == "MESH" and item.visible_get()]
        if self.use_selection:
            found = [item for item in found if item.select_get()]
        elif any(kept.ITEM_PROPERTY in item.data for item in found):
            found = [item for item in found if kept.ITEM_PROPERTY in item.data]
        for item in found:
            if item.mode == "EDIT":
                item.update_from_editmode()
        return [(item, item.data) for item in found]

    def done(self, _, __):
        return {"FINISHED"}


def import_entry(self, _):
    self.layout.operator(ImportDrawing.bl_idname, text="SVG as Mesh (.svg)")


def export_entry(self, _):
    self.layout.operator(ExportDrawing.bl_idname, text="SVG from Mesh (.svg)")


def register():
    bpy.utils.register_class(ImportDrawing)
    bpy.utils.register_class(ExportDrawing)
    bpy.types.TOPBAR_MT_file_import.append(import_entry)
    bpy.types.TOPBAR_MT_file_export.append(export_entry)


def unregister():
    bpy.types.TOPBAR_MT_file_export.remove(export_entry)
    bpy.types.TOPBAR_MT_file_import.remove(import_entry)
    bpy.utils.unregister_class(ExportDrawing)
    bpy.utils.unregister_class(ImportDrawing)
