"""The gallery as its user meets it: ruxgallery_test.py RUXGALLERY PICTURE"""
import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

program, picture = sys.argv[1:3]
folder = tempfile.TemporaryDirectory()


def place(name):
    return os.path.join(folder.name, name)


def run(*arguments):
    return subprocess.run([program, *arguments], capture_output=True, text=True, timeout=300)


def write_ppm(name, width, height):
    with open(place(name), "wb") as file:
        file.write(b"P6\n%d %d\n255\n" % (width, height))
        file.write(bytes((x * 7 + y * 13 * c + c * 50) & 255
                         for y in range(height) for x in range(width) for c in range(3)))
    return place(name)


def png_size(path):
    """Width and height of a PNG whose rows are all there."""
    with open(path, "rb") as file:
        data = file.read()
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise AssertionError(path + " is no PNG")
    at, rows, size = 8, b"", None
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + length]
        if kind == b"IHDR":
            size = struct.unpack(">II", body[:8])
        if kind == b"IDAT":
            rows += body
        at += length + 12
    if len(zlib.decompress(rows)) != size[1] * (size[0] * 3 + 1):
        raise AssertionError(path + " has not all its rows")
    return size


class Gallery(unittest.TestCase):
    def assert_sheet(self, source):
        sheet = place("sheet.png")
        result = run(source, sheet)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertRegex(result.stdout, r"^wrote .*sheet\.png: \d+ tiles, level (px|m6|a6|w7)\n$")
        tiles = int(re.search(r"(\d+) tiles", result.stdout)[1])
        self.assertEqual(tiles, 60)
        width, height = png_size(sheet)
        os.remove(sheet)
        return width, height

    def assert_refused(self, code, line, *arguments):
        result = run(*arguments)
        self.assertEqual((result.returncode, result.stdout), (code, ""))
        self.assertRegex(result.stderr, "^ruxgallery: " + line + "\n$")

    def test_real_picture(self):
        width, height = self.assert_sheet(picture)
        self.assertGreater(width, 5 * 352)
        self.assertGreater(height, 12 * 288)

    def test_sizes(self):
        for width, height in (16, 16), (17, 23), (353, 288), (801, 603), (40, 600):
            with self.subTest(width=width, height=height):
                self.assert_sheet(write_ppm("source.ppm", width, height))

    def test_help(self):
        result = run("--help")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("ruxgallery PICTURE SHEET.png", result.stdout)

    def test_usage(self):
        for arguments in (), (picture,), (picture, "a.png", "b.png"):
            self.assert_refused(2, r"a picture and the sheet's name, please \(ruxgallery --help tells more\)",
                                *arguments)

    def test_no_picture(self):
        self.assert_refused(1, "cannot read .*nothing.png: .*", place("nothing.png"), place("sheet.png"))
        with open(place("text.png"), "w") as file:
            file.write("no picture\n")
        self.assert_refused(1, "cannot read .*text.png: .*", place("text.png"), place("sheet.png"))
        self.assertFalse(os.path.exists(place("sheet.png")))

    def test_too_small(self):
        for width, height in (15, 40), (1, 1), (3000, 20):
            self.assert_refused(1, f".*small.ppm: {width}x{height} is too small or too narrow for a gallery",
                                write_ppm("small.ppm", width, height), place("sheet.png"))

    def test_not_written(self):
        self.assert_refused(1, "cannot open .*sheet.png: .*", picture, os.path.join(place("missing"), "sheet.png"))


unittest.main(argv=sys.argv[:1])
