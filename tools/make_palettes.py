#!/usr/bin/env python3
"""Makes the palettes in assets/palettes from a few anchor colours each.

An anchor is (position, lightness, chroma, hue): position 0 to 1 along the palette, lightness 0
(black) to 1 (white), chroma 0 (grey) to about 0.3, hue in degrees (20 red, 70 orange, 105 yellow,
145 green, 200 cyan, 250 blue, 310 purple). Colours are mixed in OKLab, where equal steps of the
numbers look like equal steps; a colour that a screen cannot show loses chroma, never lightness.

usage: tools/make_palettes.py [FOLDER]     (assets/palettes when left out)
"""

import math
import pathlib
import sys

ENTRIES = 256

# Sequential palettes have equal steps of lightness from end to end, so that they can be read
# without telling hues apart. No palette comes near black, the colour of masked cells.
PALETTES = {
    # Suitability: dusky violet for the worst places, over blue and sea green to light yellow for
    # the best.
    "default": [(0, 0.44, 0.09, 315), (0.3, 0.593, 0.10, 262), (0.6, 0.746, 0.10, 190),
                (0.82, 0.8582, 0.13, 135), (1, 0.95, 0.13, 108)],
    "grey": [(0, 0.30, 0, 0), (1, 1.00, 0, 0)],
    # Two hues that every kind of colour vision tells apart.
    "blue-yellow": [(0, 0.42, 0.14, 258), (0.5, 0.68, 0.01, 180), (1, 0.94, 0.16, 103)],
    # Vegetation: bare to dense.
    "greens": [(0, 0.97, 0.03, 118), (0.5, 0.69, 0.13, 138), (1, 0.41, 0.10, 150)],
    # Density and heat: few to many.
    "heat": [(0, 0.97, 0.08, 105), (0.35, 0.802, 0.15, 78), (0.7, 0.634, 0.19, 42),
             (1, 0.49, 0.19, 22)],
    # Water and depth: shallow to deep, dry to wet.
    "water": [(0, 0.97, 0.02, 205), (0.4, 0.754, 0.09, 222), (0.75, 0.565, 0.13, 250),
              (1, 0.43, 0.13, 264)],
    # Change: less, none, more. The middle is the lightest.
    "change": [(0, 0.47, 0.16, 305), (0.5, 0.96, 0.005, 90), (1, 0.52, 0.12, 58)],
    # Dry to wet around a middle.
    "moisture": [(0, 0.50, 0.10, 60), (0.5, 0.96, 0.01, 95), (1, 0.48, 0.08, 205)],
    # Elevation: lowland green, fields, brown slopes, rock, snow.
    "terrain": [(0, 0.55, 0.10, 155), (0.2, 0.72, 0.12, 128), (0.4, 0.88, 0.11, 100),
                (0.6, 0.70, 0.10, 72), (0.78, 0.56, 0.07, 45), (0.9, 0.76, 0.02, 60),
                (1, 0.99, 0, 0)],
    # Directions, clockwise from north: the ends meet. South is light and north dark; east and west
    # have the same lightness and opposite hues.
    "aspect": [(0, 0.50, 0.13, 285), (0.25, 0.68, 0.13, 25), (0.5, 0.88, 0.13, 100),
               (0.75, 0.68, 0.11, 195), (1, 0.50, 0.13, 285)],
}


def lab_of_anchor(anchor):
    _, lightness, chroma, hue = anchor
    angle = math.radians(hue)
    return (lightness, chroma * math.cos(angle), chroma * math.sin(angle))


def linear_rgb(lab):
    """OKLab to linear light (Ottosson, "A perceptual color space for image processing", 2020)."""
    lightness, a, b = lab
    l = (lightness + 0.3963377774 * a + 0.2158037573 * b) ** 3
    m = (lightness - 0.1055613458 * a - 0.0638541728 * b) ** 3
    s = (lightness - 0.0894841775 * a - 1.2914855480 * b) ** 3
    return (4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s)


def is_on_screen(rgb):
    return all(-1e-6 <= channel <= 1 + 1e-6 for channel in rgb)


def shown_rgb(lab):
    """Linear light of the colour, with just so little chroma that a screen can show it."""
    rgb = linear_rgb(lab)
    if is_on_screen(rgb):
        return rgb
    low, high = 0.0, 1.0
    for _ in range(40):
        part = (low + high) / 2
        if is_on_screen(linear_rgb((lab[0], lab[1] * part, lab[2] * part))):
            low = part
        else:
            high = part
    return linear_rgb((lab[0], lab[1] * low, lab[2] * low))


def screen_byte(light):
    light = min(max(light, 0.0), 1.0)
    encoded = 12.92 * light if light <= 0.0031308 else 1.055 * light ** (1 / 2.4) - 0.055
    return round(255 * encoded)


def colour_number(lab):
    red, green, blue = (screen_byte(channel) for channel in shown_rgb(lab))
    return red + 256 * green + 65536 * blue


def lab_at(anchors, position):
    for before, after in zip(anchors, anchors[1:]):
        if position <= after[0]:
            part = (position - before[0]) / (after[0] - before[0])
            return tuple(x + (y - x) * part
                         for x, y in zip(lab_of_anchor(before), lab_of_anchor(after)))
    return lab_of_anchor(anchors[-1])


def palette_text(anchors):
    numbers = (colour_number(lab_at(anchors, i / (ENTRIES - 1))) for i in range(ENTRIES))
    return "".join(f"{number}\r\n" for number in numbers)


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else root / "assets" / "palettes"
    folder.mkdir(parents=True, exist_ok=True)
    for name, anchors in PALETTES.items():
        (folder / f"{name}.ptf").write_bytes(palette_text(anchors).encode("ascii"))


if __name__ == "__main__":
    main()
