"""libtzhost.so for Python: drawings to flat arrays and back. Knows nothing of Blender.

What the functions do is said in tzhost.h, which is installed with the library.
"""

import ctypes
import json
import os
from dataclasses import dataclass, field

import numpy

NORMALIZE = 1
STOPPED = 1  # what a callback returns to stop the work


class Failure(Exception):
    """A refused or failed operation; the text is one line for the user."""


class Cancelled(Exception):
    """The user has stopped the work."""


def tag_id(name):
    return int.from_bytes(name.encode("ascii"), "big")


def tag_name(identifier):
    return int(identifier).to_bytes(4, "big").decode("ascii")


@dataclass
class Mesh:
    """The arrays of one mesh, as tzhost.h describes TzhMeshArrays."""

    points: numpy.ndarray          # float64, (n, 3)
    types: numpy.ndarray           # uint32, a polygon each
    vertex_starts: numpy.ndarray   # uint64, polygons + 1
    vertices: numpy.ndarray        # uint32
    tag_starts: numpy.ndarray      # uint64, polygons + 1
    tag_ids: numpy.ndarray         # uint32
    text_starts: numpy.ndarray     # uint64, tags + 1
    text: numpy.ndarray            # uint8

    def tags(self, polygon):
        """The tags of a polygon as a dictionary of texts."""
        out = {}
        for i in range(int(self.tag_starts[polygon]), int(self.tag_starts[polygon + 1])):
            raw = self.text[int(self.text_starts[i]):int(self.text_starts[i + 1])].tobytes()
            out[tag_name(self.tag_ids[i])] = raw.decode("utf-8")
        return out


    def column(self, name):
        """One tag of all polygons: a list of texts, None where a polygon has it not."""
        out = [None] * len(self.types)
        where = numpy.flatnonzero(self.tag_ids == tag_id(name))
        owners = numpy.searchsorted(self.tag_starts, where, side="right") - 1
        raw = self.text.tobytes()
        known = {}
        for owner, begin, end in zip(owners.tolist(), self.text_starts[where].tolist(),
                                     self.text_starts[where + 1].tolist()):
            piece = raw[begin:end]
            text = known.get(piece)
            if text is None:
                text = known[piece] = piece.decode("utf-8")
            out[owner] = text
        return out


@dataclass
class Item:
    name: str
    mesh: Mesh
    tags: dict = field(default_factory=dict)        # of texts, by name
    packages: list = field(default_factory=list)
    channels: dict = field(default_factory=dict)


# Members of TzhMeshCounts and TzhMeshArrays, in their order.
COUNTS = (("points", ctypes.c_uint32), ("polygons", ctypes.c_uint32), ("vertices", ctypes.c_uint64),
          ("tags", ctypes.c_uint64), ("text_bytes", ctypes.c_uint64))
ARRAYS = ("points", "types", "vertex_starts", "vertices", "tag_starts", "tag_ids", "text_starts", "text")


def struct(name, *members):
    fields = [("size", ctypes.c_size_t), *members]
    return type(name, (ctypes.Structure,), {"_fields_": fields})


Counts = struct("Counts", *COUNTS)
Arrays = struct("Arrays", *((name, ctypes.c_void_p) for name in ARRAYS))
ErrorInfo = struct("ErrorInfo", *((name, ctypes.c_char_p) for name in ("message", "file", "step")),
                   ("code", ctypes.c_uint32))
ItemInfo = struct("ItemInfo", ("type", ctypes.c_char_p), ("name", ctypes.c_char_p),
                  *((name, ctypes.c_uint32) for name in ("tags", "packages", "channels")))
Progress = ctypes.CFUNCTYPE(ctypes.c_int32, ctypes.c_uint64, ctypes.c_uint64, ctypes.c_void_p)
Callbacks = struct("Callbacks", ("progress", Progress), ("message", ctypes.c_void_p), ("log", ctypes.c_void_p),
                   ("payload", ctypes.c_void_p))


def made(kind, *values):
    return kind(ctypes.sizeof(kind), *values)


def new_mesh(counts):
    """Arrays of these lengths."""
    def zeros(count, kind):
        return numpy.zeros(int(count), kind)
    return Mesh(numpy.zeros((int(counts.points), 3)), zeros(counts.polygons, "u4"),
                zeros(counts.polygons + 1, "u8"), zeros(counts.vertices, "u4"),
                zeros(counts.polygons + 1, "u8"), zeros(counts.tags, "u4"),
                zeros(counts.tags + 1, "u8"), zeros(counts.text_bytes, "u1"))


def arrays_of(mesh):
    return made(Arrays, *(getattr(mesh, name).ctypes.data for name in ARRAYS))


def load_library(folder):
    library = ctypes.CDLL(os.path.join(folder, "libtzhost.so"))
    for name in ("tzh_session_free", "tzh_scene_free", "tzh_last_error"):
        getattr(library, name).restype = None
    library.tzh_scene_notes.restype = ctypes.c_char_p
    library.tzh_item_count.restype = ctypes.c_uint32
    return library


class Session:
    """The module, on the thread that makes this. Used with `with`."""

    def __init__(self, folder):
        self.calls = load_library(folder)
        self.handle = ctypes.c_void_p()
        self.raised = None  # by a callback: an exception cannot pass through the library
        module = os.path.join(folder, "tzsvg.so")
        self.check(self.calls.tzh_session_open(ctypes.byref(self.handle), module.encode("utf-8")))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.calls.tzh_session_free(self.handle)

    def check(self, status):
        if status == 0:
            return
        if status == STOPPED:
            raised, self.raised = self.raised, None
            raise raised or Cancelled()
        error = made(ErrorInfo)
        self.calls.tzh_last_error(ctypes.byref(error))
        raise Failure((error.message or b"failed").decode("utf-8", "replace"))

    def callbacks(self, progress):
        """`progress(done, total)` returns whether to stop."""
        def step(done, total, _):
            try:
                return STOPPED if progress(done, total) else 0
            except Exception as error:  # kept, and raised where the library has returned
                self.raised = error
                return STOPPED
        return made(Callbacks, Progress(step) if progress else Progress(), None, None, None)

    def read(self, file, normalize=False, progress=None):
        """The mesh items of a drawing, and what normalizing has to say: (items, notes)."""
        scene = ctypes.c_void_p()
        callbacks = self.callbacks(progress)
        self.check(self.calls.tzh_scene_import(
            ctypes.byref(scene), self.handle, file.encode("utf-8"), NORMALIZE if normalize else 0,
            ctypes.byref(callbacks)))
        try:
            items = [self.item(scene, i) for i in range(self.calls.tzh_item_count(scene))]
            notes = json.loads(self.calls.tzh_scene_notes(scene).decode("utf-8"))
            return items, notes.get("notes", [])
        finally:
            self.calls.tzh_scene_free(scene)

    def item(self, scene, index):
        info = made(ItemInfo)
        self.check(self.calls.tzh_item_get(scene, index, ctypes.byref(info)))
        counts = made(Counts)
        self.check(self.calls.tzh_mesh_counts(scene, index, ctypes.byref(counts)))
        item = Item((info.name or b"").decode("utf-8"), new_mesh(counts))
        arrays = arrays_of(item.mesh)
        self.check(self.calls.tzh_mesh_read(scene, index, ctypes.byref(arrays)))
        first, second = ctypes.c_char_p(), ctypes.c_char_p()
        identifier = ctypes.c_uint32()
        for i in range(info.tags):
            self.check(self.calls.tzh_item_tag(scene, index, i, ctypes.byref(identifier), ctypes.byref(first)))
            item.tags[tag_name(identifier.value)] = first.value.decode("utf-8")
        for i in range(info.packages):
            self.check(self.calls.tzh_item_package(scene, index, i, ctypes.byref(first)))
            item.packages.append(first.value.decode("utf-8"))
        for i in range(info.channels):
            self.check(self.calls.tzh_item_channel(scene, index, i, ctypes.byref(first), ctypes.byref(second)))
            item.channels[first.value.decode("utf-8")] = second.value.decode("utf-8")
        return item

    def write(self, items, file, progress=None):
        """Writes items as one drawing."""
        scene = ctypes.c_void_p()
        self.check(self.calls.tzh_scene_new(ctypes.byref(scene), self.handle))
        try:
            for index, item in enumerate(items):
                self.add(scene, index, item)
            callbacks = self.callbacks(progress)
            self.check(self.calls.tzh_scene_export(scene, file.encode("utf-8"), 0, ctypes.byref(callbacks)))
        finally:
            self.calls.tzh_scene_free(scene)

    def add(self, scene, index, item):
        calls, mesh = self.calls, item.mesh
        self.check(calls.tzh_item_add(scene, b"mesh", item.name.encode("utf-8"), None))
        for name, text in item.tags.items():
            self.check(calls.tzh_item_set_tag(scene, index, tag_id(name), text.encode("utf-8")))
        for name in item.packages:
            self.check(calls.tzh_item_add_package(scene, index, name.encode("utf-8")))
        for name, text in item.channels.items():
            self.check(calls.tzh_item_set_channel(scene, index, name.encode("utf-8"), text.encode("utf-8")))
        counts = made(Counts, len(mesh.points), len(mesh.types), len(mesh.vertices), len(mesh.tag_ids),
                      len(mesh.text))
        arrays = arrays_of(mesh)
        self.check(calls.tzh_mesh_write(scene, index, ctypes.byref(counts), ctypes.byref(arrays)))
