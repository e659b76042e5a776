#!/usr/bin/env python3
"""Draws pages as PNG, each example at two sizes by one command, and looks at their pixels.

    check_pictures.py EXAMPLES WORK TTR...
"""
import json
import os
import re
import subprocess
import sys

from PIL import Image


def opened(path):
    picture = Image.open(path)
    assert picture.format == "PNG", f"{path} is no PNG"
    return picture.convert("RGB")


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
            picture = opened(f"{work}/{name}-{size}.png")
            width, height = map(int, re.fullmatch(r"(\d+)x(\d+)", size).groups())
            if picture.width < width or picture.height < height:
                yield f"{name}-{size}: is only {picture.width}x{picture.height}"
            else:
                yield from pixel_faults(f"{name}-{size}", picture, pixels)


def pixel_faults(name, picture, pixels):
    for place, expected in pixels.items():
        actual = "#%02x%02x%02x" % picture.getpixel(place)
        if actual != expected:
            yield f"{name}: {actual} at {place}, not {expected}"


def image_faults(work, tool):
    """An image in two boxes: as large as each of them allows, in the middle, nothing around it."""
    box = {"Display": ["0xFF204060"], "Contents": ["logo.png"]}
    page = {"Contents": [{"Bounds": [0, 0, 400, 300], "Display": ["0xFF101418"]},
                         dict(box, Bounds=[20, 20, 60, 60]),
                         dict(box, Bounds=[200, 100, 150, 50])]}
    with open(f"{work}/images.json", "w", encoding="ascii") as file:
        json.dump(page, file)
    Image.new("RGB", (20, 10), "#e04010").save(f"{work}/logo.png")
    subprocess.run(tool + ["preview", "images.json", "--size", "400x300", "--assets", ".",
                           "-o", "images.png"], cwd=work, check=True)
    ground, behind, logo = "#101418", "#204060", "#e04010"
    return pixel_faults("images", opened(f"{work}/images.png"), {
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
