"""Works out the suitability map of examples/kagwene/nesting.mif without any code of the program.

Run from the root of the source tree; writes tests/data/nesting.asc.
"""

import struct

FOLDER = "examples/kagwene/"
FACTORS = [  # name, weight, whether high values are good
    ("vegetation255", 5, True),
    ("elevation255", 3, True),
    ("waterdist255", 2, False),
    ("slope255", 1, True),
]
CONSTRAINTS = ["sanctuary", "walkable"]
COLUMNS, ROWS = 181, 149


def read_map(name, header_lines):
    with open(FOLDER + name + ".asc", encoding="ascii") as file:
        lines = file.read().split("\n")
    header = [line.split(" ")[-1] for line in lines[:header_lines]]
    return header, [float(cell) for line in lines[header_lines:] for cell in line.split()]


def single(value):
    return struct.unpack("f", struct.pack("f", value))[0]


def cell_text(value):
    text = "%.15g" % (round(value * 100.0) / 100.0)  # round() takes ties to even
    return "0" if text == "-0" else text


def main():
    masks = [read_map(name, 5)[1] for name in CONSTRAINTS]
    allowed = [all(cells) for cells in zip(*masks)]
    sums = [0.0] * (COLUMNS * ROWS)
    largest, smallest = float("-inf"), float("inf")
    for number, (name, weight, high) in enumerate(FACTORS, start=1):
        header, cells = read_map(name, 6)
        nodata = float(header[5])
        for i, value in enumerate(cells):
            if not allowed[i]:
                continue
            if value < 0 or value > 255 or value == nodata:
                value = 0.0
            total = sums[i] + weight * (value if high else 255 - value)
            sums[i] = single(total)
            largest = max(largest, total)
            if number == len(FACTORS):
                smallest = min(smallest, total)
    header, _ = read_map(FACTORS[0][0], 6)
    keys = ["ncols", "nrows", "xllcorner", "yllcorner", "cellsize"]
    lines = [key.ljust(14) + value for key, value in zip(keys, header)]
    for row in range(ROWS):
        line = ""
        for i in range(row * COLUMNS, (row + 1) * COLUMNS):
            scaled = 255 * (sums[i] - smallest) / (largest - smallest)
            line += " " + (cell_text(scaled) if allowed[i] else "0")
        lines.append(line)
    with open("tests/data/nesting.asc", "w", encoding="ascii", newline="") as file:
        file.write("".join(line + "\r\n" for line in lines))


main()
