"""The OpenImageIO plug-in in the real programs:

    OpenImageIoTest.py PLUGIN_FOLDER TZHOST SAMPLES FOLDER

Levels, pixels, textures, options, and files that are no drawings. Any failure ends with status 1.
"""

import os
import subprocess
import sys
import unittest

PLUGINS, TZHOST, SAMPLES, FOLDER = sys.argv[1:5]
MAP = os.path.join(SAMPLES, "town-map.svg")
ENVIRONMENT = {**os.environ, "OIIO_LIBRARY_PATH": PLUGINS}


def run(*command, **environment):
    done = subprocess.run(command, capture_output=True, text=True, errors="replace", timeout=120, check=False,
                          env={**ENVIRONMENT, **environment})
    return done.returncode, done.stdout + done.stderr


def written(name, content):
    path = os.path.join(FOLDER, name)
    with open(path, "wb") as file:
        file.write(content)
    return path


class OpenImageIo(unittest.TestCase):
    def works(self, *command, **environment):
        status, text = run(*command, **environment)
        self.assertEqual(status, 0, text)
        self.assertNotIn("QStandardPaths", text)
        return text

    def fails(self, expected, *command, **environment):
        status, text = run(*command, **environment)
        self.assertNotEqual(status, 0, text)
        self.assertGreater(status, 0, "ended by a signal")
        self.assertIn(expected, text)

    def test_levels(self):
        text = self.works("oiiotool", "--info", "-v", MAP + "?size=65536")
        sizes = next(line for line in text.split("\n") if "MIP-map levels" in line).split(":")[1].split()
        self.assertEqual((len(sizes), sizes[0], sizes[-1]), (17, "65536x49152", "1x1"))
        self.assertIn("tile size: 256 x 256", text)
        self.assertIn("4096 x 3072", self.works("oiiotool", "--info", MAP))

    def test_pixels(self):
        for normalize in ("0", "1"):
            ours, theirs = (os.path.join(FOLDER, name + normalize + ".png") for name in ("tile", "cut"))
            option = ["--normalize"] if normalize == "1" else []
            self.works(TZHOST, "tile", MAP, "4", "3", "5", ours, *option)
            self.works("oiiotool", "-iconfig", "oiio:UnassociatedAlpha", "1", MAP + "?normalize=" + normalize, "--cut",
                       "256x256+768+1280", "-o", theirs)
            self.works("idiff", ours, theirs)

    def test_textures(self):
        self.works("maketx", MAP, "-o", os.path.join(FOLDER, "map.tx"))
        self.works("oiiotool", MAP, "--resize", "200x0", "-o", os.path.join(FOLDER, "small.png"))

    def test_narrow_levels(self):
        shapes = "".join(f'<rect x="{10 * i}" width="10" height="10" fill="#ff0000"/>' for i in range(64))
        narrow = written("narrow.svg", f'<svg xmlns="http://www.w3.org/2000/svg" width="640" height="10">{shapes}</svg>'.encode())
        text = self.works("oiiotool", "--info", "-v", narrow + "?size=1024")
        self.assertIn(" 128x2 ", text)
        for level, size in ((3, "128x2"), (7, "8x1")):
            out = self.works("oiiotool", "-i:autocc=0", narrow + "?size=1024", "--selectmip", str(level), "--printstats")
            self.assertIn(size.replace("x", " x "), self.works("oiiotool", narrow + "?size=1024", "--selectmip", str(level),
                                                               "--echo", "{TOP.width} x {TOP.height}"))
            average = next(line for line in out.split("\n") if "Stats Avg" in line).split(":")[1].split()
            self.assertGreater(float(average[3]), 0.9, "the end of the level is missing: " + out)

    def test_options(self):
        self.fails("TZSVG_OIIO_SIZE=3000", "oiiotool", "--info", MAP, TZSVG_OIIO_SIZE="3000")
        self.fails("TZSVG_OIIO_NORMALIZE=maybe", "oiiotool", "--info", MAP, TZSVG_OIIO_NORMALIZE="maybe")
        self.fails("svg:size=65537", "oiiotool", "-iconfig", "svg:size", "65537", MAP, "-o", os.path.join(FOLDER, "x.png"))
        self.assertIn("256 x  192", self.works("oiiotool", "--info", MAP, TZSVG_OIIO_SIZE="256"))
        self.fails("/no/module.so", "oiiotool", "--info", MAP, TZSVG_MODULE="/no/module.so")

    def test_other_files(self):
        svg = b'<svg xmlns="http://www.w3.org/2000/svg"'
        for name, content, expected in (
                ("page.svg", b"<html/>", "not an SVG"), ("empty.svg", b"", "cannot be read"),
                ("noise.svg", bytes(range(256)) * 99, "not an SVG"), ("cut.svg", svg + b"><g>", "cut.svg"),
                ("packed.svgz", b"\x1f\x8b\x08\x00garbage", "not an SVG"),
                ("deep.svg", svg + b' width="9" height="9">' + b"<g>" * 5000 + b"</g>" * 5000 + b"</svg>", "deep.svg"),
                ("comment.svg", b"<!-- <svg> -->" * 9000, "not an SVG")):
            self.fails(expected, "oiiotool", "--info", written(name, content))
        # A file of another kind is offered to all readers; this one must say no by its first bytes.
        self.fails("could not find a format reader", "oiiotool", "--info", written("text.abc", b"words"))

    def test_page_of_broken_size(self):
        page = written("broken.svg", b'<svg xmlns="http://www.w3.org/2000/svg" width="12.75" height="10.5"><circle r="1"/></svg>')
        self.assertIn("4096 x 3374", self.works("oiiotool", "--info", page))
        self.assertIn("4096 x 3414", self.works("oiiotool", "--info", page, TZSVG_OIIO_NORMALIZE="0"))

    def test_exported_names(self):
        names = self.works("nm", "-D", "--defined-only", os.path.join(PLUGINS, "svg.imageio.so"))
        self.assertEqual(sorted(line.split()[-1] for line in names.strip().split("\n")),
                         ["svg_imageio_library_version", "svg_imageio_version", "svg_input_extensions",
                          "svg_input_imageio_create"])
        self.assertNotIn("libQt", self.works("ldd", os.path.join(PLUGINS, "svg.imageio.so")))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
