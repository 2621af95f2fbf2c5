#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Colors residues by a column of a CSV file, and writes a session that the workbench opens.

    color_by_csv.py FAMILY TABLE.csv VALUE OUTPUT.tambo [--row NAME] [--low 0] [--high 1] [--colors ffffff,c00000]

The table has a head. VALUE is the name of the column with the values; the column "column" says to which column of the
alignment each belongs, from 1, as in the tables of conservation.py and ca_distances.py. With --row the column "residue"
says it instead, by the number that a residue of this row has in its structure ("60A"), and this row alone is colored.
Colors go evenly from the first of --colors at --low to the second at --high, at first the least and the greatest value.
Residues without a value keep their color.
"""
import math
import pathlib

import common
import numpy
import tambo


def colors_of(text):
    try:
        parts = [int(part, 16) for part in text.split(",") if len(part) == 6]
    except ValueError:
        parts = []
    if len(parts) != 2 or text.count(",") != 1:
        raise common.BadInput(f"--colors is two colors as in ffffff,c00000, and not {text}")
    return [[color >> shift & 255 for shift in (16, 8, 0)] for color in parts]


def values_of(path, key, value, place_of):
    """The value of each place, by what the table calls the place."""
    values = {}
    for line, (place, text) in common.table(path, [key, value]):
        if not text or text.lower() in ("na", "nan"):
            continue
        try:
            number = float(text)
        except ValueError:
            number = math.inf
        if not math.isfinite(number):
            raise common.BadInput(f"{path}:{line}: {value} is a number, and not {text}")
        found = place_of(place, f"{path}:{line}")
        if found in values:
            raise common.BadInput(f"{path}:{line}: {key} {place} has a value already")
        values[found] = number
    if not values:
        raise common.BadInput(f"{path}: the column {value} has no values")
    return values


def shade(value, low, high, colors):
    share = min(max((value - low) / (high - low), 0), 1) if high > low else 1
    red, green, blue = (round(one + share * (other - one)) for one, other in zip(*colors))
    return red << 16 | green << 8 | blue


def color(chain, values, shades):
    """Colors residues, all of a color at once."""
    same = {}
    for residue, place in values:
        if place in shades:
            same.setdefault(shades[place], []).append(residue)
    for one, residues in same.items():
        chain.set_color(residues, one)


def main():
    parser = common.parser(__doc__)
    parser.add_argument("family", help="a file with one alignment")
    parser.add_argument("table", type=pathlib.Path, help="a CSV file with a head")
    parser.add_argument("value", help="the column with the values")
    common.add_output(parser, "the session, a name that ends in .tambo")
    parser.add_argument("--row", help="color this row by numbers of residues")
    parser.add_argument("--low", type=float, help="the value of the first color")
    parser.add_argument("--high", type=float, help="the value of the second color")
    parser.add_argument("--colors", default="ffffff,c00000", help="two colors, as RRGGBB")
    given = parser.parse_args()
    colors = colors_of(given.colors)
    if given.output.suffix != ".tambo":
        raise common.BadInput(f"{given.output}: the name of a session ends in .tambo")
    common.check_output(given.output, given.force)

    family = common.open_family(given.family)

    def column_of(text, where):
        if not text.isdecimal() or not 1 <= int(text) <= family.width:
            raise common.BadInput(f"{where}: column goes from 1 to {family.width}, and is not {text}")
        return int(text) - 1

    if given.row is None:
        values = values_of(given.table, "column", given.value, column_of)
    else:
        row = common.row_named(family, given.row, given.family)
        values = values_of(given.table, "residue", given.value,
                           lambda text, where: common.residue_of(row, text, where))
    low = min(values.values()) if given.low is None else given.low
    high = max(values.values()) if given.high is None else given.high
    if low > high:
        raise common.BadInput(f"the first color is at {low:g}, and the second below it, at {high:g}")
    shades = {place: shade(value, low, high, colors) for place, value in values.items()}
    with tambo.step(f"Color by {given.value}"):
        if given.row is None:
            for row, residues in zip(family, family.occupancy()):
                color(row.chain, list(enumerate(numpy.flatnonzero(residues))), shades)
        else:
            color(row.chain, [(residue, residue) for residue in values], shades)
    tambo.save_session(given.output)
    common.tell(f"{len(values)} values from {min(values.values()):g} to {max(values.values()):g}")


if __name__ == "__main__":
    common.run(main)
