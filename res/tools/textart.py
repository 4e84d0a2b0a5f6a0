#!/usr/bin/env python3
"""Turns the text art of res/art into the binary images the resource script
includes: the image strip (.bmp), the program icon (.ico) and cursors (.cur).

Every picture is kept as text so that a change to it can be reviewed in a diff:
one character per pixel, the characters taken from the legend in palette.txt.
The converter is strict on purpose: a row of the wrong length, a character
that is not in the legend or an image of the wrong size stops the build with
the file and line at fault, rather than producing a picture that is quietly
shifted or cut.

Art file:
    # a comment (only at the start of a line)
    hotspot X Y          (cursors only)
    image W H            followed by exactly H rows of exactly W characters

Palette file: 16 lines "<char> <red> <green> <blue> <name> [transparent]",
in the order of the colour table of the 4-bit images. Exactly one entry is
marked transparent: in a strip it is an ordinary colour (the image list masks
it), in an icon or cursor it becomes the AND mask.

Usage:
    textart.py strip  --palette P --cell 16 --out strip.bmp  art0.txt art1.txt ...
    textart.py icon   --palette P --sizes 32,16 --out icon.ico  art.txt
    textart.py cursor --palette P --out cursor.cur  art.txt
"""

import argparse
import os
import struct
import sys


class ArtError(Exception):
    """A fault in an art or palette file; the message names the place."""


# ---------------------------------------------------------------- reading


class Palette:
    def __init__(self, entries, transparent):
        self.entries = entries          # list of (char, (r, g, b), name)
        self.transparent = transparent  # the char that stands for "no pixel"
        self.index = {c: i for i, (c, _, _) in enumerate(entries)}

    def rgb(self, char):
        return self.entries[self.index[char]][1]


def read_ascii_lines(path):
    with open(path, "rb") as f:
        data = f.read()
    for offset, byte in enumerate(data):
        if byte > 127:
            line = data.count(b"\n", 0, offset) + 1
            raise ArtError("%s:%d: byte 0x%02x is not ASCII" % (path, line, byte))
    return data.decode("ascii").splitlines()


def read_palette(path):
    entries = []
    transparent = None
    seen = {}
    for number, line in enumerate(read_ascii_lines(path), 1):
        if not line.strip() or line.startswith("#"):
            continue
        where = "%s:%d" % (path, number)
        fields = line.split()
        if len(fields) not in (5, 6) or len(fields[0]) != 1:
            raise ArtError("%s: expected '<char> <red> <green> <blue> <name> [transparent]', got %r"
                           % (where, line))
        char = fields[0]
        if char == "#":
            raise ArtError("%s: '#' starts a comment and cannot be a colour" % where)
        if char in seen:
            raise ArtError("%s: character %r is already used on line %d" % (where, char, seen[char]))
        try:
            rgb = tuple(int(v) for v in fields[1:4])
        except ValueError:
            raise ArtError("%s: colour components must be numbers, got %r" % (where, line))
        if any(v < 0 or v > 255 for v in rgb):
            raise ArtError("%s: colour components must lie in 0..255, got %r" % (where, rgb))
        if len(fields) == 6:
            if fields[5] != "transparent":
                raise ArtError("%s: unknown flag %r (only 'transparent')" % (where, fields[5]))
            if transparent is not None:
                raise ArtError("%s: a second transparent colour (%r is one already)" % (where, transparent))
            transparent = char
        seen[char] = number
        entries.append((char, rgb, fields[4]))
    if len(entries) != 16:
        raise ArtError("%s: a 4-bit palette needs 16 colours, found %d" % (path, len(entries)))
    if transparent is None:
        raise ArtError("%s: no colour is marked transparent" % path)
    return Palette(entries, transparent)


class Image:
    def __init__(self, width, height, rows, where):
        self.width = width
        self.height = height
        self.rows = rows    # top row first, as drawn
        self.where = where  # "file:line" of the image line, for messages


class Art:
    def __init__(self, path, images, hotspot):
        self.path = path
        self.images = images
        self.hotspot = hotspot  # (x, y) or None


def read_art(path, palette, allowed=None):
    """Reads one art file. allowed, when given, narrows the legend (cursors)."""
    legend = allowed if allowed is not None else set(palette.index)
    images = []
    hotspot = None
    current = None  # [width, height, rows, where] while rows are being read
    lines = read_ascii_lines(path)
    for number, line in enumerate(lines, 1):
        where = "%s:%d" % (path, number)
        if line.startswith("#"):
            continue
        if current is not None:
            width, height, rows, start = current
            if len(line) != width:
                raise ArtError("%s: row %d of the image that starts at %s has %d characters, expected %d"
                               % (where, len(rows) + 1, start, len(line), width))
            for column, char in enumerate(line):
                if char not in legend:
                    raise ArtError("%s: column %d: character %r is not %s"
                                   % (where, column + 1, char,
                                      "one of " + "".join(sorted(legend)) if allowed is not None
                                      else "in the palette legend"))
            rows.append(line)
            if len(rows) == height:
                images.append(Image(width, height, rows, start))
                current = None
            continue
        if not line.strip():
            continue
        fields = line.split()
        if fields[0] == "image" and len(fields) == 3:
            try:
                width, height = int(fields[1]), int(fields[2])
            except ValueError:
                raise ArtError("%s: 'image W H' needs two numbers, got %r" % (where, line))
            if not (1 <= width <= 256 and 1 <= height <= 256):
                raise ArtError("%s: image size %dx%d is out of range 1..256" % (where, width, height))
            current = [width, height, [], where]
        elif fields[0] == "hotspot" and len(fields) == 3:
            if hotspot is not None:
                raise ArtError("%s: a second hotspot line" % where)
            try:
                hotspot = (int(fields[1]), int(fields[2]))
            except ValueError:
                raise ArtError("%s: 'hotspot X Y' needs two numbers, got %r" % (where, line))
        else:
            raise ArtError("%s: expected 'image W H', 'hotspot X Y' or a comment, got %r" % (where, line))
    if current is not None:
        raise ArtError("%s: the image that starts at %s has %d rows, expected %d"
                       % (path, current[3], len(current[2]), current[1]))
    return Art(path, images, hotspot)


def expect_sizes(art, sizes):
    got = [(im.width, im.height) for im in art.images]
    if got != sizes:
        raise ArtError("%s: expected images of %s, found %s"
                       % (art.path, describe(sizes), describe(got) if got else "none"))


def describe(sizes):
    return ", ".join("%dx%d" % s for s in sizes)


# ---------------------------------------------------------------- writing


def bitmapinfoheader(width, height, bits, image_bytes, colours):
    # biSize, biWidth, biHeight, biPlanes, biBitCount, biCompression (BI_RGB),
    # biSizeImage, biXPelsPerMeter, biYPelsPerMeter, biClrUsed, biClrImportant
    return struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, image_bytes, 2835, 2835, colours, 0)


def colour_table(rgbs):
    return b"".join(struct.pack("<BBBB", b, g, r, 0) for (r, g, b) in rgbs)


def stride(width, bits):
    return ((width * bits + 31) // 32) * 4


def pack_rows(rows, width, bits, value):
    """Packs rows (top first) into DIB order: bottom row first, each row
    padded to 32 bits. value(char) gives the pixel's bits."""
    out = bytearray()
    per_byte = 8 // bits
    for row in reversed(rows):
        line = bytearray(stride(width, bits))
        for x, char in enumerate(row):
            shift = 8 - bits * (x % per_byte + 1)
            line[x // per_byte] |= value(char) << shift
        out += line
    return bytes(out)


def strip_bmp(images, palette):
    height = images[0].height
    width = sum(im.width for im in images)
    rows = ["".join(im.rows[y] for im in images) for y in range(height)]
    pixels = pack_rows(rows, width, 4, lambda c: palette.index[c])
    table = colour_table(rgb for _, rgb, _ in palette.entries)
    offset = 14 + 40 + len(table)
    header = struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset)
    return header + bitmapinfoheader(width, height, 4, len(pixels), 16) + table + pixels


def icon_image(image, palette):
    """One 4-bit icon image: header with doubled height, colours, XOR, AND."""
    t = palette.transparent
    # A transparent pixel is black in the colour bits and set in the mask, so
    # that drawing leaves the background as it was.
    black = min(range(16), key=lambda i: sum(palette.entries[i][1]))
    xor = pack_rows(image.rows, image.width, 4, lambda c: black if c == t else palette.index[c])
    mask = pack_rows(image.rows, image.width, 1, lambda c: 1 if c == t else 0)
    table = colour_table(rgb for _, rgb, _ in palette.entries)
    header = bitmapinfoheader(image.width, image.height * 2, 4, len(xor) + len(mask), 16)
    return header + table + xor + mask


def cursor_image(image, black, white, transparent):
    """One 1-bit cursor image: black and white are drawn, the rest is the
    screen (mask bit set, colour bit clear)."""
    xor = pack_rows(image.rows, image.width, 1, lambda c: 1 if c == white else 0)
    mask = pack_rows(image.rows, image.width, 1, lambda c: 1 if c == transparent else 0)
    table = colour_table([(0, 0, 0), (255, 255, 255)])
    header = bitmapinfoheader(image.width, image.height * 2, 1, len(xor) + len(mask), 2)
    return header + table + xor + mask


def icon_file(kind, entries):
    """kind 1 icon, 2 cursor. entries: (width, height, colours, a, b, data),
    where a and b are planes and bit count for an icon, the hot spot for a
    cursor."""
    out = struct.pack("<HHH", 0, kind, len(entries))
    offset = 6 + 16 * len(entries)
    for width, height, colours, a, b, data in entries:
        out += struct.pack("<BBBBHHII", width % 256, height % 256, colours, 0, a, b, len(data), offset)
        offset += len(data)
    for entry in entries:
        out += entry[5]
    return out


# ---------------------------------------------------------------- commands


def make_strip(args, palette):
    if not args.art:
        raise ArtError("strip: no art files given")
    images = []
    for path in args.art:
        art = read_art(path, palette)
        expect_sizes(art, [(args.cell, args.cell)])
        if art.hotspot is not None:
            raise ArtError("%s: a strip image has no hotspot" % path)
        images.append(art.images[0])
    return strip_bmp(images, palette)


def make_icon(args, palette):
    if len(args.art) != 1:
        raise ArtError("icon: exactly one art file, got %d" % len(args.art))
    sizes = []
    for part in args.sizes.split(","):
        try:
            sizes.append((int(part), int(part)))
        except ValueError:
            raise ArtError("icon: --sizes takes numbers separated by commas, got %r" % args.sizes)
    art = read_art(args.art[0], palette)
    expect_sizes(art, sizes)
    if art.hotspot is not None:
        raise ArtError("%s: an icon has no hotspot" % art.path)
    return icon_file(1, [(im.width, im.height, 16, 1, 4, icon_image(im, palette)) for im in art.images])


def make_cursor(args, palette):
    if len(args.art) != 1:
        raise ArtError("cursor: exactly one art file, got %d" % len(args.art))
    # Monochrome: the palette's black and white and the transparent colour.
    by_rgb = {rgb: c for c, rgb, _ in palette.entries}
    black, white = by_rgb.get((0, 0, 0)), by_rgb.get((255, 255, 255))
    if black is None or white is None:
        raise ArtError("%s: a cursor needs pure black and pure white in the palette" % args.palette)
    allowed = {black, white, palette.transparent}
    art = read_art(args.art[0], palette, allowed)
    expect_sizes(art, [(32, 32)])
    if art.hotspot is None:
        raise ArtError("%s: a cursor needs a 'hotspot X Y' line" % art.path)
    x, y = art.hotspot
    if not (0 <= x < 32 and 0 <= y < 32):
        raise ArtError("%s: hotspot (%d, %d) lies outside the 32x32 image" % (art.path, x, y))
    image = art.images[0]
    return icon_file(2, [(32, 32, 0, x, y, cursor_image(image, black, white, palette.transparent))])


def main(argv):
    parser = argparse.ArgumentParser(description="Converts text art into BMP, ICO and CUR files.")
    parser.add_argument("kind", choices=["strip", "icon", "cursor"])
    parser.add_argument("--palette", required=True)
    parser.add_argument("--out", required=True)
    parser.add_argument("--cell", type=int, default=16, help="strip: width and height of every image")
    parser.add_argument("--sizes", default="32,16", help="icon: the square sizes, in file order")
    parser.add_argument("art", nargs="*")
    args = parser.parse_intermixed_args(argv)
    try:
        palette = read_palette(args.palette)
        data = {"strip": make_strip, "icon": make_icon, "cursor": make_cursor}[args.kind](args, palette)
    except ArtError as error:
        sys.stderr.write("textart: error: %s\n" % error)
        return 1
    except OSError as error:
        sys.stderr.write("textart: error: %s\n" % error)
        return 1
    # Written through a temporary name so that a failed run never leaves a
    # half-written image that a later build would take as up to date.
    temporary = args.out + ".tmp"
    with open(temporary, "wb") as f:
        f.write(data)
    os.replace(temporary, args.out)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
