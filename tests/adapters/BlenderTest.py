"""The add-on inside Blender, from the zip that users install:

    blender -b --factory-startup --python BlenderTest.py -- ZIP TZHOST MODULE SAMPLES FOLDER

Drawings in and out; each kind of edit, of which only the edited elements may differ; save and load, undo and redo; what is refused.
Any failure ends with status 1.
"""

import os
import subprocess
import sys
import traceback

import bpy

ZIP, TZHOST, MODULE, SAMPLES, FOLDER = sys.argv[sys.argv.index("--") + 1:]

# The frame is as large as the page and all strokes are given: what is exported of a shape depends on no other then.
DRAWING = """<svg xmlns="http://www.w3.org/2000/svg" width="100mm" height="50mm" viewBox="0 0 200 100">
<polygon id="frame" points="0,0 200,0 200,100 0,100" fill="none" stroke="#000000" stroke-width="1"/>
<g id="layer" fill="#00ff00"><rect id="box" x="10" y="10" width="30" height="20" fill="#ff0000" stroke="#000000" stroke-width="1"/><rect id="heir" x="50" y="10" width="30" height="20" stroke="#000000" stroke-width="1"/></g>
<path id="ring" d="M100 10L140 10L140 50L100 50Z M110 20L110 40L130 40L130 20Z" fill="blue" fill-rule="evenodd" stroke="#000000" stroke-width="1"/>
<path id="wave" d="M10 60C20 50 30 70 40 60L40 80L10 80Z" fill="#123456" stroke="#000000" stroke-width="1"/>
<polyline id="line" points="100,60 120,70 140,60" fill="none" stroke="#ff00ff" stroke-width="1"/>
</svg>"""


def path(name):
    return os.path.join(FOLDER, name)


def write(name, text):
    with open(path(name), "w", encoding="utf-8") as file:
        file.write(text)
    return path(name)


def lines(file):
    """A line each element, with the numbers that depend on the whole drawing left out."""
    with open(file, encoding="utf-8") as opened:
        return [line for line in opened.read().split("\n") if not line.startswith("<svg")]


def ids(changed):
    return sorted({part.split('"')[0] for line in changed for part in line.split(' id="')[1:]})


def import_drawing(file, **settings):
    bpy.ops.wm.read_factory_settings(use_empty=True)
    bpy.ops.preferences.addon_enable(module="tzsvg")
    assert bpy.ops.import_mesh.tzsvg(filepath=file, normalize=False, **settings) == {"FINISHED"}
    return bpy.context.view_layer.objects.active


def export_drawing(name, **settings):
    assert bpy.ops.export_mesh.tzsvg(filepath=path(name), **settings) == {"FINISHED"}
    return path(name)


def round_trip(file, name):
    subprocess.run([TZHOST, "--module", MODULE, "roundtrip", file, path(name)], check=True, stderr=subprocess.DEVNULL)
    return path(name)


def same(first, second):
    with open(first, "rb") as one, open(second, "rb") as other:
        return one.read() == other.read()


def face_of(item, first_id):
    """The faces of the polygon that has this id."""
    from tzsvg import kept
    source, _ = kept.kept(item.data)
    polygon = source.mesh.column("ELID").index(first_id) + 1
    found = kept.read_attribute(item.data, kept.SHAPE_ATTRIBUTE, "FACE", len(item.data.polygons))
    return [i for i, value in enumerate(found) if value == polygon]


def edit(item, change):
    """Edits the mesh as edit mode does."""
    import bmesh
    mesh = bmesh.new()
    mesh.from_mesh(item.data)
    for kind in (mesh.verts, mesh.edges, mesh.faces):
        kind.ensure_lookup_table()
    change(mesh)
    mesh.to_mesh(item.data)
    mesh.free()


def vertex_at(mesh, x, y, unit):
    return min(mesh.verts, key=lambda vertex: (vertex.co.x - x * unit) ** 2 + (vertex.co.y - y * unit) ** 2)


def test_samples():
    for name in sorted(os.listdir(SAMPLES)):
        if not name.endswith(".svg"):
            continue
        file = os.path.join(SAMPLES, name)
        try:
            expected = round_trip(file, "expected.svg")
        except subprocess.CalledProcessError:
            continue        # one that needs to be normalized
        import_drawing(file)
        assert same(export_drawing("out.svg"), expected), name


def test_many_shapes():
    shapes = "".join(f'<rect id="r{i}" x="{i % 100}" y="{i // 100}" width="0.5" height="0.5" fill="#{i % 4096:03x}"/>'
                     for i in range(10000))
    file = write("many.svg", f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 100 100">{shapes}</svg>')
    item = import_drawing(file)
    assert len(item.data.polygons) == 10000
    assert same(export_drawing("out.svg"), round_trip(file, "expected.svg"))


def test_what_comes_in():
    item = import_drawing(write("drawing.svg", DRAWING))
    colours = {tuple(round(part, 2) for part in material.diffuse_color[:3]) for material in item.data.materials}
    assert (0.0, 1.0, 0.0) in colours, "inherited from the group"
    assert (0.0, 0.0, 1.0) in colours, "named"
    width = max(vertex.co.x for vertex in item.data.vertices) - min(vertex.co.x for vertex in item.data.vertices)
    assert abs(width - 0.1) < 1e-4, f"100 mm: {width}"
    area = sum(item.data.polygons[i].area for i in face_of(item, "ring"))
    assert abs(area - (1600 - 400) * 0.0005 ** 2) < 1e-9, "the hole is none"
    heights = {round(item.data.polygons[face_of(item, name)[0]].center.z, 7) for name in ("box", "heir", "ring", "wave")}
    assert len(heights) == 4, "layers"
    assert [collection.name for collection in bpy.context.scene.collection.children] == ["drawing"]
    loose = {vertex for edge in item.data.edges if edge.is_loose for vertex in edge.vertices}
    assert len(loose) == 4 + 3, "outlines without fill"


def changed_by(change):
    """The ids of elements that an edit changes, and the exported file."""
    file = write("drawing.svg", DRAWING)
    item = import_drawing(file)
    before = lines(export_drawing("before.svg"))
    change(item)
    after = lines(export_drawing("after.svg"))
    return ids(set(before) ^ set(after)), before, after


UNIT = 0.0005


def move_corner(item):
    edit(item, lambda mesh: setattr(vertex_at(mesh, 10, 90, UNIT).co, "x", 5 * UNIT))


def move_sample(item):
    def change(mesh):
        vertex_at(mesh, 25, 40, UNIT).co.y += 10 * UNIT
    edit(item, change)


def delete_face(item):
    import bmesh
    faces = face_of(item, "wave")
    edit(item, lambda mesh: bmesh.ops.delete(mesh, geom=[mesh.faces[i] for i in faces], context="FACES"))


def add_face(item):
    def change(mesh):
        corners = [mesh.verts.new((x * UNIT, y * UNIT, 0.001)) for x, y in ((0, 0), (9, 0), (9, 5))]
        mesh.faces.new(corners).material_index = 0
    edit(item, change)


def test_moved_corner():
    changed, before, after = changed_by(move_corner)
    assert changed == ["box"], changed
    assert len(before) == len(after)


def test_moved_sample():
    changed, before, after = changed_by(move_sample)
    assert changed == ["wave"], changed
    mine = next(line for line in after if 'id="wave"' in line)
    assert mine.startswith("<path") and mine.count("C") > 10 and 'fill="#123456"' in mine, mine


def test_deleted_face():
    changed, before, after = changed_by(delete_face)
    assert changed == ["wave"] and len(after) == len(before) - 1, changed


def test_new_face():
    changed, before, after = changed_by(add_face)
    new = [line for line in after if line not in before]
    assert changed == [] and len(new) == 1 and 'fill="#ff0000"' in new[0] and "<polygon" in new[0], new


def test_transform():
    item = import_drawing(write("drawing.svg", DRAWING))
    item.scale = (2, 2, 2)
    bpy.context.view_layer.update()
    box = next(line for line in lines(export_drawing("out.svg")) if 'id="box"' in line)
    numbers = [float(number) for pair in box.split('points="')[1].split('"')[0].split() for number in pair.split(",")]
    assert max(numbers[::2]) - min(numbers[::2]) == 60, box


def test_several_objects():
    item = import_drawing(write("drawing.svg", DRAWING))
    copy = item.copy()
    copy.data = item.data.copy()
    copy.location.x = 1
    bpy.context.scene.collection.objects.link(copy)
    bpy.context.view_layer.update()
    text = "\n".join(lines(export_drawing("out.svg")))
    assert text.count('id="box"') == 2, text


def test_duplicated():
    file = write("drawing.svg", DRAWING)
    item = import_drawing(file)
    bpy.ops.object.duplicate()
    bpy.data.objects.remove(item)
    assert same(export_drawing("out.svg"), round_trip(file, "expected.svg"))


def test_saved_and_undone():
    file = write("drawing.svg", DRAWING)
    import_drawing(file)
    expected = round_trip(file, "expected.svg")
    bpy.ops.wm.save_as_mainfile(filepath=path("saved.blend"))
    bpy.ops.wm.read_factory_settings(use_empty=True)
    bpy.ops.wm.open_mainfile(filepath=path("saved.blend"))
    bpy.ops.preferences.addon_enable(module="tzsvg")
    assert same(export_drawing("out.svg"), expected)
    bpy.ops.ed.undo_push(message="imported")
    bpy.data.objects.remove(bpy.data.objects[0])
    bpy.ops.ed.undo_push(message="removed")
    assert not bpy.data.objects
    bpy.ops.ed.undo()
    assert same(export_drawing("out.svg"), expected)
    bpy.ops.ed.redo()
    assert not bpy.data.objects


def test_refused():
    bpy.ops.wm.read_factory_settings(use_empty=True)
    bpy.ops.preferences.addon_enable(module="tzsvg")
    for name, text in (("page.svg", "<html/>"), ("cut.svg", "<svg><g>"), ("empty.svg", "")):
        try:
            bpy.ops.import_mesh.tzsvg(filepath=write(name, text), normalize=False)
        except RuntimeError as error:
            assert name in str(error), error
        else:
            raise AssertionError(name + " was taken")
    assert not bpy.data.objects and not bpy.data.meshes and not bpy.data.materials
    try:
        bpy.ops.export_mesh.tzsvg(filepath=path("none.svg"))
    except RuntimeError as error:
        assert "no mesh" in str(error)
    assert not os.path.exists(path("none.svg"))


def main():
    bpy.ops.preferences.addon_install(filepath=ZIP, overwrite=True)
    bpy.ops.preferences.addon_enable(module="tzsvg")
    failed = 0
    for name, test in sorted(globals().items()):
        if not name.startswith("test_"):
            continue
        try:
            test()
            print("passed", name)
        except Exception:
            failed += 1
            print("FAILED", name)
            traceback.print_exc()
    bpy.ops.preferences.addon_disable(module="tzsvg")
    assert not hasattr(bpy.types, "IMPORT_MESH_OT_tzsvg")
    print(f"{failed} failed")
    return 1 if failed else 0


status = 1
try:
    status = main()
finally:
    sys.stdout.flush()
    os._exit(status)
