"""The Blender add-on's operators beside Blender's own importer, in one run:

    blender -b --factory-startup --python bench/blender.py -- build/tzsvg-blender.zip

Prints seconds, ratios, and the process's peak memory. Each drawing is imported into an empty file.
"""

import os
import random
import resource
import sys
import tempfile
import time

import bpy

ZIP = sys.argv[sys.argv.index("--") + 1]


def drawing(count, folder):
    random.seed(count)
    lines = ['<svg xmlns="http://www.w3.org/2000/svg" width="1000" height="1000" viewBox="0 0 1000 1000">']
    for i in range(count):
        x, y = random.uniform(0, 990), random.uniform(0, 990)
        colour = f"#{random.randrange(64) * 0x030507:06x}"
        shape = (f'rect id="r{i}" x="{x:.2f}" y="{y:.2f}" width="5" height="4"',
                 f'circle id="c{i}" cx="{x:.2f}" cy="{y:.2f}" r="3"',
                 f'polygon id="p{i}" points="{x:.2f},{y:.2f} {x + 4:.2f},{y:.2f} {x + 2:.2f},{y + 4:.2f}"',
                 f'path id="q{i}" d="M{x:.2f} {y:.2f}c1 2 3 2 4 0l2 3z"')[i % 4]
        lines.append(f'<{shape} fill="{colour}"/>')
    path = os.path.join(folder, f"{count}.svg")
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(lines) + "\n</svg>\n")
    return path


def seconds(operator, **arguments):
    start = time.perf_counter()
    assert operator(**arguments) == {"FINISHED"}
    return time.perf_counter() - start


def empty():
    bpy.ops.wm.read_factory_settings(use_empty=True)
    for module in ("tzsvg", "io_curve_svg"):
        bpy.ops.preferences.addon_enable(module=module)


def main():
    bpy.ops.preferences.addon_install(filepath=ZIP, overwrite=True)
    with tempfile.TemporaryDirectory() as folder:
        out = os.path.join(folder, "out.svg")
        small, large = drawing(10_000, folder), drawing(100_000, folder)
        for normalize in (False, True):
            empty()
            ours = seconds(bpy.ops.import_mesh.tzsvg, filepath=small, normalize=normalize)
            back = seconds(bpy.ops.export_mesh.tzsvg, filepath=out)
            print(f"10,000 shapes, normalize {normalize}: in {ours:.2f} s, out {back:.2f} s")
            empty()
            ours_large = seconds(bpy.ops.import_mesh.tzsvg, filepath=large, normalize=normalize)
            back_large = seconds(bpy.ops.export_mesh.tzsvg, filepath=out)
            peak = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024
            print(f"100,000 shapes, normalize {normalize}: in {ours_large:.2f} s, out {back_large:.2f} s, "
                  f"together {ours_large + back_large:.2f} s; peak {peak:.0f} MiB")
            if not normalize:
                plain = ours
        empty()
        own = seconds(bpy.ops.import_curve.svg, filepath=small)
        print(f"10,000 shapes, Blender's own importer: {own:.2f} s, {own / plain:.1f} times ours, "
              f"{own / ours:.1f} times ours normalized")


main()
