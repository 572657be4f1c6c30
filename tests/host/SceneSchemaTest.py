"""The scene file's schema against scene files, and against tzhost's own mind: SceneSchemaTest.py SCHEMA TZHOST FOLDER FILE...

Every drawing or scene file given is good for both. Each change of the table below is bad for both.
"""

import copy
import json
import os
import subprocess
import sys

import jsonschema

SCHEMA, TZHOST, FOLDER, *FILES = sys.argv[1:]

GOOD = {"format": "tzscene", "version": 1, "items": [
    {"type": "mesh", "name": "", "tags": {"VCMP": "1"}, "packages": ["svgloader.package"], "channels": {"svgdefs": ""},
     "points": [[0, 0.5, 0], [1e-300, -2, 0], [1, 1, 0]],
     "polygons": [{"type": "LINE", "vertices": [0, 1, 2], "tags": {"FILL": "r\u00e9d"}}, {"type": "?abc", "vertices": []}]},
    {"type": "light", "name": "Lamp"}]}

# Where, and what is put there; None takes the key away.
CHANGES = [
    (["format"], "other"), (["format"], None), (["version"], 2), (["version"], "1"), (["items"], {}), (["items"], None),
    (["more"], 1), (["items", 0, "type"], ""), (["items", 0, "type"], None), (["items", 0, "name"], 1),
    (["items", 0, "more"], 1), (["items", 0, "tags", "VC"], "1"), (["items", 0, "tags", "VCMP"], 1),
    (["items", 0, "tags", "\u00e9abc"], "1"), (["items", 0, "packages"], "svgloader.package"),
    (["items", 0, "channels", "svgdefs"], 3), (["items", 0, "points", 0], [0, 1]),
    (["items", 0, "points", 0], [0, 1, 2, 3]), (["items", 0, "points", 0], [0, "1", 2]),
    (["items", 0, "polygons", 0, "type"], "LINES"), (["items", 0, "polygons", 0, "type"], None),
    (["items", 0, "polygons", 0, "vertices"], None), (["items", 0, "polygons", 0, "vertices"], [-1]),
    (["items", 0, "polygons", 0, "vertices"], [0.5]), (["items", 0, "polygons", 0, "vertices"], [4294967296]),
    (["items", 0, "polygons", 0, "more"], 1), (["items", 1, "points"], [[0, 0, 0]]),
    (["items", 1, "polygons"], [{"type": "LINE", "vertices": []}]),
]


def changed(place, value):
    out = copy.deepcopy(GOOD)
    at = out
    for key in place[:-1]:
        at = at[key]
    if value is None:
        del at[place[-1]]
    else:
        at[place[-1]] = value
    return out


def tzhost_reads(scene):
    path = os.path.join(FOLDER, "scene.json")
    with open(path, "w", encoding="utf-8") as file:
        json.dump(scene, file)
    done = subprocess.run([TZHOST, "preview", path, os.path.join(FOLDER, "scene.png"), "--size", "8"],
                          capture_output=True, text=True, check=False)
    # A scene that cannot be drawn has been read.
    return done.returncode == 0 or "read" not in done.stderr.split(": ")[2:3]


def main():
    with open(SCHEMA, encoding="utf-8") as file:
        validator = jsonschema.Draft202012Validator(json.load(file))
    failures = []
    for path in FILES:
        scene = path
        if path.endswith(".svg"):
            scene = os.path.join(FOLDER, "imported.json")
            if subprocess.run([TZHOST, "import", path, scene], capture_output=True, check=False).returncode != 0:
                continue
        with open(scene, encoding="utf-8") as file:
            failures += [f"{path}: {error.message}" for error in validator.iter_errors(json.load(file))]
    if not validator.is_valid(GOOD) or not tzhost_reads(GOOD):
        failures.append("the good scene is refused")
    for place, value in CHANGES:
        scene = changed(place, value)
        if validator.is_valid(scene):
            failures.append(f"{place} = {value!r}: the schema takes it")
        if tzhost_reads(scene):
            failures.append(f"{place} = {value!r}: tzhost takes it")
    print("\n".join(failures) or f"{len(FILES)} files, {len(CHANGES)} changes: all as expected")
    return 1 if failures else 0


sys.exit(main())
