"""How large a drawing is in the world, from its root element. No Blender here."""

import gzip
import re

METRES = {"mm": 0.001, "cm": 0.01, "in": 0.0254, "pt": 0.0254 / 72, "pc": 0.0254 / 6, "px": 0.0254 / 96, "": 0.0254 / 96}
HEAD = 1 << 16
LENGTH = re.compile(r"\s*([-+]?(?:\d+\.?\d*|\.\d+)(?:[eE][-+]?\d+)?)\s*([a-z]*)\s*$")


def root_attributes(file):
    with open(file, "rb") as opened:
        head = opened.read(HEAD)
    if head[:2] == b"\x1f\x8b":
        with gzip.open(file) as opened:
            head = opened.read(HEAD)
    encoding = "utf-16" if head[:2] in (b"\xff\xfe", b"\xfe\xff") else "utf-8"
    text = re.sub(r"<!--.*?-->", "", head.decode(encoding, "replace"), flags=re.S)
    root = re.search(r"<(?:[\w.-]+:)?svg\b((?:[^>\"']|\"[^\"]*\"|'[^']*')*)>", text)
    if not root:
        return {}
    return {name: first or second for name, first, second in
            re.findall(r"([\w:.-]+)\s*=\s*(?:\"([^\"]*)\"|'([^']*)')", root.group(1))}


def metres(text):
    """A length with a unit; None for percentages and what cannot be read."""
    found = LENGTH.match(text or "")
    value = float(found.group(1)) * METRES.get(found.group(2), 0) if found else 0
    return value if value > 0 else None


def metres_per_unit(file, view_box):
    """`view_box` is the one that the import has kept, of what it was given: normalizing may have scaled the drawing."""
    try:
        attributes = root_attributes(file)
    except (OSError, EOFError):
        attributes = {}
    box = [float(number) for number in re.findall(r"[-+.\deE]+", view_box or "")]
    for name, index in (("width", 2), ("height", 3)):
        size = metres(attributes.get(name))
        if size and len(box) == 4 and box[index] > 0:
            return size / box[index]
    own = [float(number) for number in re.findall(r"[-+.\deE]+", attributes.get("viewBox", ""))]
    if len(own) == 4 and len(box) == 4 and own[2] > 0 and box[2] > 0:
        return METRES["px"] * own[2] / box[2]
    return METRES["px"]
