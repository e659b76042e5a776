#!/usr/bin/env python3
"""Draws pages as PNG, each example at two sizes by one command, and looks at their pixels.

    check_pictures.py EXAMPLES WORK TTR...
"""
import json
import os
import re
import struct
import subprocess
import sys
import zlib


class Png:
    """The pixels of a PNG image as rsvg-convert writes it: 8 bits, RGB or RGBA, not interlaced."""

    def __init__(self, path):
        with open(path, "rb") as file:
            data = file.read()
        assert data[:8] == b"\x89PNG\r\n\x1a\n", f"{path} is no PNG"
        packed = b""
        at = 8
        while at < len(data):
            length, kind = struct.unpack(">I4s", data[at:at + 8])
            chunk = data[at + 8:at + 8 + length]
            if kind == b"IHDR":
                self.width, self.height, depth, colour, _, _, interlace = struct.unpack(
                    ">IIBBBBB", chunk)
                assert (depth, interlace) == (8, 0) and colour in (2, 6), f"{path}: other form"
                self.channels = 3 if colour == 2 else 4
            if kind == b"IDAT":
                packed += chunk
            at += length + 12
        self.rows = self._unfiltered(zlib.decompress(packed))

    def _unfiltered(self, raw):
        rows, step, size = [], self.channels, self.width * self.channels
        above = bytearray(size)
        for y in range(self.height):
            start = y * (size + 1)
            kind, row = raw[start], bytearray(raw[start + 1:start + 1 + size])
            for i in range(size):
                left = row[i - step] if i >= step else 0
                corner = above[i - step] if i >= step else 0
                row[i] = (row[i] + self._predicted(kind, left, above[i], corner)) & 255
            rows.append(row)
            above = row
        return rows

    @staticmethod
    def _predicted(kind, left, up, corner):
        if kind == 4:
            guess = left + up - corner
            return min((left, up, corner), key=lambda value: abs(guess - value))
        return (0, left, up, (left + up) // 2)[kind]

    def colour(self, x, y):
        start = x * self.channels
        return "#%02x%02x%02x" % tuple(self.rows[y][start:start + 3])


# A place in each page of 1280x720 and of 800x480 where nothing but one box is.
PIXELS = {
    "lobby": {"1280x720": {(800, 40): "#1e5aa8", (640, 110): "#0b1420", (120, 340): "#1e5aa8"},
              "800x480": {(580, 50): "#1e5aa8", (640, 110): "#0b1420"}},
    "departures": {"1280x720": {(10, 40): "#f2c037", (20, 400): "#101418"},
                   "800x480": {(10, 40): "#f2c037", (20, 400): "#101418"}},
    "menu": {"1280x720": {(20, 300): "#2a1b14", (200, 520): "#3a271d"},
             "800x480": {(20, 300): "#2a1b14"}},
}


def examples_faults(examples, work, tool):
    for name, sizes in PIXELS.items():
        command = tool + ["preview", "template.json", "-o", f"{work}/{name}-{{size}}.png"]
        for size in sizes:
            command += ["--size", size]
        subprocess.run(command, cwd=os.path.join(examples, name), check=True)
        for size, pixels in sizes.items():
            picture = Png(f"{work}/{name}-{size}.png")
            width, height = map(int, re.fullmatch(r"(\d+)x(\d+)", size).groups())
            if picture.width < width or picture.height < height:
                yield f"{name}-{size}: is only {picture.width}x{picture.height}"
            else:
                yield from pixel_faults(f"{name}-{size}", picture, pixels)


def pixel_faults(name, picture, pixels):
    for place, expected in pixels.items():
        actual = picture.colour(*place)
        if actual != expected:
            yield f"{name}: {actual} at {place}, not {expected}"


def write_png(path, width, height, colour):
    """An image of one colour."""
    rows = (b"\0" + bytes.fromhex(colour[1:]) * width) * height
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n")
        for kind, data in ((b"IHDR", header), (b"IDAT", zlib.compress(rows)), (b"IEND", b"")):
            file.write(struct.pack(">I", len(data)) + kind + data +
                       struct.pack(">I", zlib.crc32(kind + data)))


def image_faults(work, tool):
    """An image in two boxes: as large as each of them allows, in the middle, nothing around it."""
    box = {"Display": ["0xFF204060"], "Contents": ["logo.png"]}
    page = {"Contents": [{"Bounds": [0, 0, 400, 300], "Display": ["0xFF101418"]},
                         dict(box, Bounds=[20, 20, 60, 60]),
                         dict(box, Bounds=[200, 100, 150, 50])]}
    with open(f"{work}/images.json", "w", encoding="ascii") as file:
        json.dump(page, file)
    write_png(f"{work}/logo.png", 20, 10, "#e04010")
    subprocess.run(tool + ["preview", "images.json", "--size", "400x300", "--assets", ".",
                           "-o", "images.png"], cwd=work, check=True)
    ground, behind, logo = "#101418", "#204060", "#e04010"
    return pixel_faults("images", Png(f"{work}/images.png"), {
        (10, 10): ground, (50, 90): ground, (150, 120): ground, (300, 250): ground,
        (390, 200): ground,
        (50, 50): logo, (25, 50): logo, (50, 30): behind, (50, 70): behind,
        (275, 125): logo, (230, 125): logo, (320, 125): logo, (210, 125): behind,
        (335, 110): behind})


def main():
    examples, work, tool = sys.argv[1], os.path.abspath(sys.argv[2]), sys.argv[3:]
    os.makedirs(work, exist_ok=True)
    faults = [*examples_faults(examples, work, tool), *image_faults(work, tool)]
    for fault in faults:
        print(fault)
    return 1 if faults else 0


sys.exit(main())
