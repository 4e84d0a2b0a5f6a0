#!/usr/bin/env python3
"""The text art converter, run as the build runs it: good art gives files in
the layout Windows reads (bottom-up rows, masks), and bad art stops the build
with the place of the fault and leaves the last good image alone.

Usage: test_textart.py <path of textart.py> <art folder>
"""

import os
import struct
import subprocess
import sys
import tempfile
import unittest

TEXTART = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "res", "tools", "textart.py")
# The order of the lines is the order of the colour table; "." is magenta.
COLOURS = "K000 r800 g080 o880 n008 p808 t088 sccc d888 Rf00 G0f0 Yff0 B00f .f0f C0ff Wfff".split()
PALETTE = "".join("%s %s c%d%s\n" % (c[0], " ".join(str(int(h, 16) * 17) for h in c[1:]), i,
                                     " transparent" if c[0] == "." else "") for i, c in enumerate(COLOURS))
INDEX = {c[0]: i for i, c in enumerate(COLOURS)}


def image(width, height, fill=".", marks=None):
    rows = [[fill] * width for _ in range(height)]
    for (x, y), char in (marks or {}).items():
        rows[y][x] = char
    return "image %d %d\n%s\n" % (width, height, "\n".join("".join(r) for r in rows))


def pixel(data, offset, bits, size, x, y):
    """Pixel (x, y), y from the top, of bottom-up rows of 1 or 4 bits, size wide and high."""
    byte = data[offset + (size[1] - 1 - y) * ((size[0] * bits + 31) // 32) * 4 + x * bits // 8]
    return (byte >> (8 - bits - x * bits % 8)) & ((1 << bits) - 1)


GOOD = image(16, 16, "W")
# kind, art, extra arguments, what the message says ("palette": a strip with a palette of 15 colours)
BAD = [
    ("strip", GOOD.replace("W" * 16, "W" * 15, 1), [], r"art\.txt:2: row 1 .* has 15 characters, expected 16"),
    ("strip", GOOD.replace("W" * 16, "WWWZ" + "W" * 12, 1), [], r"art\.txt:2: column 4: character 'Z' is not in"),
    ("strip", image(16, 15, "W"), [], r"expected images of 16x16, found 16x15"),
    ("icon", image(32, 32, "R"), ["--sizes", "32,16"], r"expected images of 32x32, 16x16, found 32x32"),
    ("cursor", "hotspot 1 1\n" + image(32, 32, ".", {(4, 4): "R"}), [], r"character 'R' is not one of"),
    ("strip", GOOD.replace("W" * 16, "WW\u00e9" + "W" * 13, 1), [], r"art\.txt:2: byte 0xc3 is not ASCII"),
    ("palette", GOOD, [], r"needs 16 colours, found 15"),
]


class TextArt(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.TemporaryDirectory()
        self.out = os.path.join(self.tmp.name, "out.bin")

    def tearDown(self):
        self.tmp.cleanup()

    def run_textart(self, kind, arts, *extra, palette=PALETTE):
        paths = []  # the palette, then one file for each art
        for name, text in [("palette.txt", palette)] + [("art%s.txt" % (i or ""), a) for i, a in enumerate(arts)]:
            paths.append(os.path.join(self.tmp.name, name))
            with open(paths[-1], "w", encoding="utf-8") as f:
                f.write(text)
        return subprocess.run([sys.executable, TEXTART, kind, "--palette", paths[0], "--out", self.out, *extra,
                               *paths[1:]], capture_output=True, text=True)

    def convert(self, kind, arts, *extra):
        result = self.run_textart(kind, arts, *extra)
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(self.out, "rb") as f:
            return f.read()

    def test_a_strip_is_a_bottom_up_4_bit_bitmap_with_the_palette_in_order(self):
        data = self.convert("strip", [image(16, 16, ".", {(0, 0): "K", (1, 0): "s", (15, 15): "W"}),
                                      image(16, 16, "R", {(0, 15): "B"})])
        self.assertEqual(struct.unpack_from("<iiHH", data, 18), (32, 16, 1, 4))
        self.assertEqual(data[54 + 13 * 4:54 + 14 * 4], bytes([255, 0, 255, 0]))  # magenta: blue, green, red, 0
        for (x, y), char in {(0, 0): "K", (1, 0): "s", (2, 0): ".", (15, 15): "W", (16, 0): "R", (16, 15): "B"}.items():
            self.assertEqual(pixel(data, struct.unpack_from("<I", data, 10)[0], 4, (32, 16), x, y), INDEX[char])

    def test_an_icon_masks_its_transparent_pixels_at_both_sizes(self):
        data = self.convert("icon", [image(32, 32, "R", {(0, 0): "."}) + image(16, 16, "W", {(0, 15): "."})],
                            "--sizes", "32,16")
        for i, (size, painted, clear) in enumerate([(32, "R", (0, 0)), (16, "W", (0, 15))]):
            offset = struct.unpack_from("<I", data, 6 + 16 * i + 12)[0]
            self.assertEqual(struct.unpack_from("<Iii", data, offset), (40, size, 2 * size))
            colours, masks = offset + 104, offset + 104 + size * size // 2
            for (x, y), mask, char in [(clear, 1, "K"), ((5, 5), 0, painted)]:  # transparent: black, mask set
                self.assertEqual(pixel(data, masks, 1, (size, size), x, y), mask)
                self.assertEqual(pixel(data, colours, 4, (size, size), x, y), INDEX[char])

    def test_bad_art_fails_with_its_place_and_leaves_the_last_good_image(self):
        for kind, art, extra, message in BAD:
            with self.subTest(message):
                with open(self.out, "wb") as f:
                    f.write(b"earlier image")
                palette = PALETTE.replace("C 0 255 255 c14\n", "") if kind == "palette" else PALETTE
                result = self.run_textart("strip" if kind == "palette" else kind, [art], *extra, palette=palette)
                self.assertEqual(result.returncode, 1, result.stderr)
                self.assertRegex(result.stderr, r"^textart: error: .*" + message)
                with open(self.out, "rb") as f:
                    self.assertEqual(f.read(), b"earlier image")


if __name__ == "__main__":
    if len(sys.argv) >= 3 and not sys.argv[1].startswith("-"):
        TEXTART = sys.argv[1]
        del sys.argv[1:3]
    unittest.main(verbosity=2)
