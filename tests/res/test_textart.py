#!/usr/bin/env python3
"""The text art converter, run as the build runs it: good art gives files in
the layout Windows reads (bottom-up rows, masks, hot spot), and bad art stops
the build with the place of the fault and leaves no image behind.

Usage: test_textart.py <path of textart.py> <art folder>
"""

import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
TEXTART = os.path.join(HERE, "..", "..", "res", "tools", "textart.py")
ART = os.path.join(HERE, "..", "..", "res", "art")

PALETTE = """\
# test palette: the order of the colour table
K 0 0 0 black
r 128 0 0 maroon
g 0 128 0 green
o 128 128 0 olive
n 0 0 128 navy
p 128 0 128 purple
t 0 128 128 teal
s 192 192 192 silver
d 128 128 128 gray
R 255 0 0 red
G 0 255 0 lime
Y 255 255 0 yellow
B 0 0 255 blue
. 255 0 255 magenta transparent
C 0 255 255 aqua
W 255 255 255 white
"""
INDEX = {line.split()[0]: i for i, line in enumerate(l for l in PALETTE.splitlines() if not l.startswith("#"))}


def image(width, height, fill=".", marks=None):
    """Art text of one image: fill everywhere, marks {(x, y): char}."""
    rows = [[fill] * width for _ in range(height)]
    for (x, y), char in (marks or {}).items():
        rows[y][x] = char
    return "image %d %d\n%s\n" % (width, height, "\n".join("".join(r) for r in rows))


class Converter(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.TemporaryDirectory()
        self.dir = self.tmp.name
        self.palette = self.write("palette.txt", PALETTE)
        self.out = os.path.join(self.dir, "out.bin")

    def tearDown(self):
        self.tmp.cleanup()

    def write(self, name, text, mode="w"):
        path = os.path.join(self.dir, name)
        with open(path, mode, **({} if "b" in mode else {"encoding": "utf-8"})) as f:
            f.write(text)
        return path

    def run_textart(self, kind, arts, *extra, palette=None):
        paths = [a if os.path.isabs(a) else self.write("art%d.txt" % i, a) for i, a in enumerate(arts)]
        command = [sys.executable, TEXTART, kind, "--palette", palette or self.palette, "--out", self.out]
        return subprocess.run(command + list(extra) + paths, capture_output=True, text=True)

    def convert(self, kind, arts, *extra):
        result = self.run_textart(kind, arts, *extra)
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(self.out, "rb") as f:
            return f.read()


def nibble(data, offset, stride, height, x, y):
    """Pixel (x, y), y counted from the top, of a bottom-up 4-bit DIB."""
    byte = data[offset + (height - 1 - y) * stride + x // 2]
    return byte >> 4 if x % 2 == 0 else byte & 15


def bit(data, offset, stride, height, x, y):
    byte = data[offset + (height - 1 - y) * stride + x // 8]
    return (byte >> (7 - x % 8)) & 1


class StripLayout(Converter):
    def test_strip_is_a_bottom_up_4_bit_bitmap_with_the_palette_in_order(self):
        first = image(16, 16, ".", {(0, 0): "K", (15, 15): "W", (1, 0): "s"})
        second = image(16, 16, "R", {(0, 15): "B"})
        data = self.convert("strip", [first, second])

        kind, size, _, _, offset = struct.unpack_from("<2sIHHI", data, 0)
        self.assertEqual(kind, b"BM")
        self.assertEqual(size, len(data))
        self.assertEqual(offset, 14 + 40 + 16 * 4)
        (header, width, height, planes, bits, compression, image_bytes, _, _, used, _) = struct.unpack_from(
            "<IiiHHIIiiII", data, 14)
        self.assertEqual((header, width, height, planes, bits, compression), (40, 32, 16, 1, 4, 0))
        self.assertEqual(image_bytes, 16 * 16)
        self.assertEqual(used, 16)
        self.assertEqual(len(data), offset + image_bytes)
        # Colour table entries are blue, green, red, 0 in palette order.
        self.assertEqual(data[54 + 13 * 4: 54 + 14 * 4], bytes([255, 0, 255, 0]))
        self.assertEqual(data[54 + 9 * 4: 54 + 10 * 4], bytes([0, 0, 255, 0]))

        def px(x, y):
            return nibble(data, offset, 16, 16, x, y)

        # The art's top row is the last row in the file.
        self.assertEqual(px(0, 0), INDEX["K"])
        self.assertEqual(px(1, 0), INDEX["s"])
        self.assertEqual(px(2, 0), INDEX["."])
        self.assertEqual(px(15, 15), INDEX["W"])
        # The second image starts at x = 16.
        self.assertEqual(px(16, 0), INDEX["R"])
        self.assertEqual(px(16, 15), INDEX["B"])
        self.assertEqual(px(31, 15), INDEX["R"])

    def test_comments_and_blank_lines_around_an_image_are_ignored(self):
        art = "# a comment\n\n" + image(16, 16, "W").replace("\n", "\n# between rows\n", 3) + "\n# end\n"
        data = self.convert("strip", [art])
        self.assertEqual(nibble(data, 118, 8, 16, 0, 0), INDEX["W"])

    def test_the_committed_art_converts(self):
        strips = sorted(name for name in os.listdir(ART) if name.startswith("strip"))
        self.assertEqual([name[5:7] for name in strips], ["%02d" % i for i in range(22)])
        palette = os.path.join(ART, "palette.txt")
        result = self.run_textart("strip", [os.path.join(ART, n) for n in strips], palette=palette)
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(self.out, "rb") as f:
            self.assertEqual(struct.unpack_from("<ii", f.read(), 18), (352, 16))
        result = self.run_textart("icon", [os.path.join(ART, "icon_mainframe.txt")], palette=palette)
        self.assertEqual(result.returncode, 0, result.stderr)
        result = self.run_textart("cursor", [os.path.join(ART, "cursor_split.txt")], palette=palette)
        self.assertEqual(result.returncode, 0, result.stderr)


class IconLayout(Converter):
    def test_icon_holds_both_sizes_with_a_mask_from_transparency(self):
        art = image(32, 32, "R", {(0, 0): ".", (31, 0): "."}) + image(16, 16, "W", {(0, 15): "."})
        data = self.convert("icon", [art], "--sizes", "32,16")
        self.assertEqual(struct.unpack_from("<HHH", data, 0), (0, 1, 2))
        entries = [struct.unpack_from("<BBBBHHII", data, 6 + 16 * i) for i in range(2)]
        self.assertEqual([e[:6] for e in entries], [(32, 32, 16, 0, 1, 4), (16, 16, 16, 0, 1, 4)])
        self.assertEqual(entries[0][7], 6 + 32)
        self.assertEqual(entries[1][7], entries[0][7] + entries[0][6])
        self.assertEqual(entries[1][7] + entries[1][6], len(data))

        for (size, _, _, _, _, _, length, offset), (clear, set_) in zip(
                entries, [((5, 5), (0, 0)), ((5, 5), (0, 15))]):
            header = struct.unpack_from("<IiiHH", data, offset)
            self.assertEqual(header, (40, size, 2 * size, 1, 4))
            pixels = offset + 40 + 64
            xor_stride = ((size * 4 + 31) // 32) * 4
            and_stride = ((size + 31) // 32) * 4
            self.assertEqual(length, 40 + 64 + size * (xor_stride + and_stride))
            masks = pixels + size * xor_stride
            # Transparent: mask bit set, colour black; painted: mask clear.
            self.assertEqual(bit(data, masks, and_stride, size, *set_), 1)
            self.assertEqual(nibble(data, pixels, xor_stride, size, *set_), INDEX["K"])
            self.assertEqual(bit(data, masks, and_stride, size, *clear), 0)
        self.assertEqual(nibble(data, entries[0][7] + 104, 16, 32, 5, 5), INDEX["R"])
        self.assertEqual(nibble(data, entries[1][7] + 104, 8, 16, 5, 5), INDEX["W"])


class CursorLayout(Converter):
    def test_cursor_is_monochrome_with_its_hot_spot(self):
        art = "hotspot 15 14\n" + image(32, 32, ".", {(3, 4): "K", (5, 6): "W"})
        data = self.convert("cursor", [art])
        self.assertEqual(struct.unpack_from("<HHH", data, 0), (0, 2, 1))
        width, height, colours, _, hot_x, hot_y, length, offset = struct.unpack_from("<BBBBHHII", data, 6)
        self.assertEqual((width, height, colours, hot_x, hot_y), (32, 32, 0, 15, 14))
        self.assertEqual(offset + length, len(data))
        self.assertEqual(struct.unpack_from("<IiiHH", data, offset), (40, 32, 64, 1, 1))
        xor = offset + 40 + 8
        mask = xor + 32 * 4
        for (x, y), (x_bit, a_bit) in {(3, 4): (0, 0), (5, 6): (1, 0), (0, 0): (0, 1)}.items():
            self.assertEqual(bit(data, xor, 4, 32, x, y), x_bit, (x, y))
            self.assertEqual(bit(data, mask, 4, 32, x, y), a_bit, (x, y))


GOOD16 = image(16, 16, "W")


def replace_row(art, row, text):
    lines = art.splitlines()
    lines[1 + row] = text
    return "\n".join(lines) + "\n"


# kind, arts, extra arguments, the message expected (a regular expression)
BAD = [
    ("row too short", "strip", [replace_row(GOOD16, 2, "W" * 15)], [],
     r"art0\.txt:4: row 3 of the image that starts at .*art0\.txt:1 has 15 characters, expected 16"),
    ("row too long", "strip", [replace_row(GOOD16, 0, "W" * 17)], [], r"art0\.txt:2: .*17 characters, expected 16"),
    ("unknown character", "strip", [replace_row(GOOD16, 5, "WWWZWWWWWWWWWWWW")], [],
     r"art0\.txt:7: column 4: character 'Z' is not in the palette legend"),
    ("rows missing at the end", "strip", [GOOD16.rsplit("\n", 2)[0] + "\n"], [], r"has 15 rows, expected 16"),
    ("wrong size in a strip", "strip", [image(16, 15, "W")], [], r"expected images of 16x16, found 16x15"),
    ("second image in a strip file", "strip", [GOOD16 + GOOD16], [], r"found 16x16, 16x16"),
    ("no image", "strip", ["# nothing\n"], [], r"expected images of 16x16, found none"),
    ("one good, one bad strip image", "strip", [GOOD16, image(15, 16, "W")], [], r"art1\.txt: .*found 15x16"),
    ("misspelt keyword", "strip", ["imag 16 16\n"], [], r"art0\.txt:1: expected 'image W H'"),
    ("hotspot in a strip image", "strip", ["hotspot 1 1\n" + GOOD16], [], r"a strip image has no hotspot"),
    ("icon without its 16x16", "icon", [image(32, 32, "R")], ["--sizes", "32,16"],
     r"expected images of 32x32, 16x16, found 32x32"),
    ("icon sizes swapped", "icon", [image(16, 16, "R") + image(32, 32, "R")], ["--sizes", "32,16"],
     r"found 16x16, 32x32"),
    ("colour in a cursor", "cursor", ["hotspot 1 1\n" + image(32, 32, ".", {(4, 4): "R"})], [],
     r"art0\.txt:7: column 5: character 'R' is not one of \.KW"),
    ("cursor without hotspot", "cursor", [image(32, 32, ".")], [], r"needs a 'hotspot X Y' line"),
    ("hotspot outside", "cursor", ["hotspot 32 0\n" + image(32, 32, ".")], [], r"hotspot \(32, 0\) lies outside"),
    ("cursor of 16x16", "cursor", ["hotspot 1 1\n" + image(16, 16, ".")], [], r"expected images of 32x32"),
    ("not ASCII", "strip", [replace_row(GOOD16, 1, "WWWWWWWW\u00e9WWWWWWW")], [], r"art0\.txt:3: byte 0xc3 is not ASCII"),
]

BAD_PALETTES = [
    ("fifteen colours", PALETTE.replace("C 0 255 255 aqua\n", ""), r"needs 16 colours, found 15"),
    ("character twice", PALETTE.replace("C 0 255 255 aqua", "W 0 255 255 aqua"), r"'W' is already used"),
    ("no transparent colour", PALETTE.replace(" transparent", ""), r"no colour is marked transparent"),
    ("two transparent colours", PALETTE.replace("aqua", "aqua transparent"), r"a second transparent colour"),
    ("component out of range", PALETTE.replace("0 255 255 aqua", "0 256 255 aqua"), r"0\.\.255"),
]


class Rejections(Converter):
    def expect_failure(self, result, pattern):
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertRegex(result.stderr, r"^textart: error: ")
        self.assertRegex(result.stderr, pattern)
        self.assertNotIn("Traceback", result.stderr)

    def test_bad_art_fails_with_the_place_of_the_fault(self):
        for name, kind, arts, extra, pattern in BAD:
            with self.subTest(name):
                if os.path.exists(self.out):
                    os.remove(self.out)
                result = self.run_textart(kind, arts, *extra)
                self.expect_failure(result, pattern)
                self.assertFalse(os.path.exists(self.out))

    def test_bad_palettes_fail(self):
        for name, text, pattern in BAD_PALETTES:
            with self.subTest(name):
                palette = self.write("bad-palette.txt", text)
                self.expect_failure(self.run_textart("strip", [GOOD16], palette=palette), pattern)

    def test_a_missing_art_file_fails(self):
        result = self.run_textart("strip", [os.path.join(self.dir, "absent.txt")])
        self.expect_failure(result, r"absent\.txt")

    def test_a_failed_run_leaves_the_last_good_image_alone(self):
        self.write("out.bin", b"earlier image", "wb")
        self.expect_failure(self.run_textart("strip", [image(16, 15, "W")]), r"16x15")
        with open(self.out, "rb") as f:
            self.assertEqual(f.read(), b"earlier image")
        self.assertEqual(os.listdir(self.dir).count("out.bin.tmp"), 0)


if __name__ == "__main__":
    if len(sys.argv) >= 3 and not sys.argv[1].startswith("-"):
        TEXTART, ART = sys.argv[1], sys.argv[2]
        del sys.argv[1:3]
    unittest.main(verbosity=2)
