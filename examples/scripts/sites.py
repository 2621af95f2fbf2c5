#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Draws the columns of some residues side by side, such as those of an active site, as SVG or HTML.

    sites.py FAMILY ROW RESIDUES OUTPUT.svg [--title TEXT]

RESIDUES are numbers of residues of ROW in its structure, with commas: 57,102,195. A column of the figure has what each
row has there, with its own number; residues equal to that of ROW are shaded. The ending of OUTPUT, .svg or .html, says
what is written; text stays text in both, so it can be searched, and changed in a drawing program.
"""
import html

import common

CELL, LINE, LETTER = 56, 24, 8.5
SHADED = "#cfe0f5"


def shown(text):
    """Text for SVG and HTML, where control characters must not be."""
    return html.escape("".join(letter if letter.isprintable() else "?" for letter in text))


def sites_of(family, row, residues, path):
    """The head, the lines, each a name and its cells, and of each cell whether it equals that of the row."""
    places = [common.residue_of(row, residue, path) for residue in residues]
    head = [f"{row.letters[place]}{residue}" for place, residue in zip(places, residues)]
    columns = [row.column_of(place) for place in places]
    occupied = family.occupancy()
    lines = []
    for other in family:
        numbers = other.chain.numbers
        cells = []
        for column in columns:
            letter = other[column]
            number = numbers[occupied[other.index, :column].sum()] if letter != "-" else ""
            cells.append((letter, number, letter != "-" and letter.upper() == row[column].upper()))
        lines.append((other.name, cells))
    return head, lines


def as_html(title, row, head, lines):
    cells = "".join(f"<th>{shown(text)}</th>" for text in head)
    text = [f"<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>{shown(title)}</title>\n<style>",
            "table { border-collapse: collapse; font-family: monospace } th { text-align: left }",
            f"td, th {{ padding: 2px 10px }} .same {{ background: {SHADED} }}",
            f"</style>\n</head>\n<body>\n<table>\n<caption>{shown(title)}</caption>",
            f"<tr><th>{shown(row)}</th>{cells}</tr>"]
    for name, cells in lines:
        shades = [" class=\"same\"" if same else "" for _, _, same in cells]
        text.append(f"<tr><th>{shown(name)}</th>" + "".join(
            f"<td{shade}>{shown(letter)}{shown(number)}</td>"
            for shade, (letter, number, _) in zip(shades, cells)) + "</tr>")
    return "\n".join(text) + "\n</table>\n</body>\n</html>\n"


def as_svg(title, row, head, lines):
    left = max(len(name) for name in [row, *(name for name, _ in lines)]) * LETTER + 20
    width = max(left + CELL * len(head), len(title) * LETTER + 16)
    height = LINE * (len(lines) + 2) + 12

    def text(x, y, content, more=""):
        return f"<text x=\"{x:g}\" y=\"{y:g}\"{more}>{shown(content)}</text>"

    out = [f"<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{width:g}\" height=\"{height:g}\" "
           f"viewBox=\"0 0 {width:g} {height:g}\" font-family=\"DejaVu Sans Mono, monospace\" font-size=\"14\" "
           "xml:space=\"preserve\">",
           f"<title>{shown(title)}</title>",
           f"<rect width=\"{width:g}\" height=\"{height:g}\" fill=\"white\"/>",
           text(8, 18, title, " font-weight=\"bold\""), text(8, 18 + LINE, row, " font-weight=\"bold\"")]
    for place, content in enumerate(head):
        out.append(text(left + CELL * (place + 0.5), 18 + LINE, content,
                        " font-weight=\"bold\" text-anchor=\"middle\""))
    for line, (name, cells) in enumerate(lines, 2):
        y = 18 + LINE * line
        out.append(text(8, y, name))
        for place, (letter, number, same) in enumerate(cells):
            x = left + CELL * place
            if same:
                out.append(f"<rect x=\"{x:g}\" y=\"{y - 17:g}\" width=\"{CELL}\" height=\"{LINE}\" fill=\"{SHADED}\"/>")
            out.append(text(x + CELL / 2, y, letter + number, " text-anchor=\"middle\""))
    return "\n".join(out) + "\n</svg>\n"


def main():
    parser = common.parser(__doc__)
    parser.add_argument("family", help="a file with one alignment")
    parser.add_argument("row", help="the row whose residues are chosen")
    parser.add_argument("residues", help="their numbers, with commas")
    common.add_output(parser, "a name that ends in .svg or .html")
    parser.add_argument("--title", help="at first the name of the alignment")
    given = parser.parse_args()
    painters = {".svg": as_svg, ".html": as_html}
    if given.output.suffix not in painters:
        raise common.BadInput(f"{given.output}: the name ends in .svg or .html")
    residues = [number.strip() for number in given.residues.split(",")]
    if not all(residues):
        raise common.BadInput(f"RESIDUES are numbers with commas between them, and not {given.residues}")
    common.check_output(given.output, given.force)

    family = common.open_family(given.family)
    row = common.row_named(family, given.row, given.family)
    head, lines = sites_of(family, row, residues, given.family)
    title = family.name if given.title is None else given.title
    common.write_text(given.output, painters[given.output.suffix](title, row.name, head, lines))


if __name__ == "__main__":
    common.run(main)
