"""The add-on in Blender's window: an import goes on beside it, tells its progress, and Esc cancels it.

    xvfb-run blender --factory-startup --enable-event-simulate --python BlenderWindowTest.py -- ZIP FOLDER

Ends with status 0 when all holds.
"""

import os
import sys
import time
import traceback

import bpy

ZIP, FOLDER = sys.argv[sys.argv.index("--") + 1:]
SHAPES = 200_000
LONGEST = 90

works = []


def drawing():
    file = os.path.join(FOLDER, "many.svg")
    with open(file, "w", encoding="utf-8") as opened:
        opened.write('<svg xmlns="http://www.w3.org/2000/svg" width="500" height="500">\n')
        for i in range(SHAPES):
            opened.write(f'<rect x="{i % 500}" y="{i // 500}" width="1" height="1"/>\n')
        opened.write("</svg>\n")
    return file


def start(file):
    """Begins an import as a user does; Blender goes on meanwhile."""
    window = bpy.context.window_manager.windows[0]
    with bpy.context.temp_override(window=window, screen=window.screen):
        assert bpy.ops.import_mesh.tzsvg(filepath=file, normalize=False) == {"RUNNING_MODAL"}
    return works[-1], window


def steps():
    """What happens; each `yield` lets Blender's window go on."""
    bpy.ops.preferences.addon_install(filepath=ZIP, overwrite=True)
    bpy.ops.preferences.addon_enable(module="tzsvg")
    operators = sys.modules["tzsvg.operators"]

    class WatchedWork(operators.Work):
        """Waits for Esc at half of the first drawing, since a window that nobody sees may draw slower than a drawing is read."""

        def __init__(self, function):
            super().__init__(function)
            works.append(self)

        def progress(self, done, total):
            stop = super().progress(done, total)
            while self is works[0] and done > total / 2 and not self.stop and time.monotonic() < began + LONGEST:
                time.sleep(0.01)
                stop = self.stop
            return stop
    operators.Work = WatchedWork

    file = drawing()
    before = len(bpy.data.objects)
    work, window = start(file)
    while not 0 < work.done < work.total:
        assert work.thread.is_alive(), "the import told no progress"
        yield
    window.event_simulate(type="ESC", value="PRESS", x=10, y=10)
    while work.thread.is_alive():
        yield
    assert work.stop and type(work.error).__name__ == "Cancelled", work.error
    yield
    assert len(bpy.data.objects) == before and "many" not in bpy.data.collections, "something is left of it"

    work, window = start(file)
    seen = set()
    while "many" not in bpy.data.collections:
        seen.add(work.done)
        yield
    assert len(seen) > 1, "the import told no progress"
    assert sum(len(item.data.polygons) for item in bpy.data.collections["many"].objects) == SHAPES
    with bpy.context.temp_override(window=window, screen=window.screen):
        bpy.ops.ed.undo()
    assert "many" not in bpy.data.collections, "not undone"


running = steps()
began = time.monotonic()


def step():
    status = None
    try:
        next(running)
        if time.monotonic() - began > LONGEST:
            print("it takes too long", file=sys.stderr)
            status = 1
    except StopIteration:
        print("the window's test passed")
        status = 0
    except Exception:
        traceback.print_exc()
        status = 1
    if status is not None:
        sys.stdout.flush()
        sys.stderr.flush()
        os._exit(status)        # with a drawing half read Blender would ask whether to save
    return 0.02


bpy.app.timers.register(step, first_interval=0.5)
