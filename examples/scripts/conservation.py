#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes how conserved each column is as CSV, and puts it into the B factors of a structure.

    conservation.py FAMILY OUTPUT.csv [--row ROW --structure FILE.pdb --onto COPY.pdb]

A line has the column, from 1, how many rows have a residue there, and the conservation from 0 to nearly 1 (the
Jensen-Shannon divergence from the usual amino acids, times the share of rows with one); with --row the number and the
letter of this row's residue, too. "-" as OUTPUT is the standard output.

--onto is a copy of the PDB file --structure, that of ROW, whose B factors are 100 times the conservation of the column
of a residue, and 0 elsewhere; any viewer colors by them. All else in the file stays, but for ANISOU records, which
would say otherwise.
"""
import os
import pathlib

import common


def with_factors(path, chain, scores):
    """The text of a PDB file with other B factors; scores are names and values by the number of a residue."""
    out, found = [], set()
    for line_number, line in enumerate(common.lines_of(path), 1):
        if line.startswith("ANISOU"):
            continue
        if line.startswith(("ATOM  ", "HETATM")):
            body = line.rstrip("\r\n")
            if len(body) < 54:
                raise common.BadInput(f"{path}:{line_number}: the record ends before the coordinates do")
            number = body[22:27].strip()
            name, score = scores.get(number, ("", 0)) if body[21].strip() == chain else ("", 0)
            if name and body.startswith("ATOM  ") and name != body[17:20].strip():
                raise common.BadInput(f"{path}:{line_number}: residue {number} of chain {chain} is "
                                      f"{body[17:20].strip()}, and {name} in the alignment's structure")
            if name:
                found.add(number)
            body = body.ljust(66)
            line = f"{body[:60]}{100 * score:6.2f}{body[66:]}\n"
        out.append(line)
    if not found:
        raise common.BadInput(f"{path}: has no ATOM record of the residues of chain {chain}; it must be a file in "
                              "PDB format, not compressed")
    return "".join(out)


def main():
    parser = common.parser(__doc__)
    parser.add_argument("family", help="a file with one alignment")
    common.add_output(parser, "the CSV file")
    parser.add_argument("--row", help="the row whose residues are told, too")
    parser.add_argument("--structure", type=pathlib.Path, help="the PDB file of this row")
    parser.add_argument("--onto", type=pathlib.Path, help="the copy of it with other B factors")
    given = parser.parse_args()
    if (given.structure is None) != (given.onto is None) or (given.onto and given.row is None):
        raise common.BadInput("--row, --structure and --onto go together")
    if given.onto is not None and os.path.realpath(given.onto) == os.path.realpath(given.output):
        raise common.BadInput(f"{given.onto}: cannot be the table and the structure")
    for path in filter(None, (given.output, given.onto)):
        common.check_output(path, given.force)

    family = common.open_family(given.family)
    residues = family.occupancy().sum(axis=0)
    scores = family.conservation()
    lines = [f"{column + 1},{residues[column]},{scores[column]:.4f}" for column in range(family.width)]
    head = "column,residues,conservation"
    copy = None
    if given.row is not None:
        row = common.row_named(family, given.row, given.family)
        numbers = row.chain.numbers
        columns = [row.column_of(residue) for residue in range(len(numbers))]
        here = dict(zip(columns, zip(numbers, row.letters)))
        head += ",residue,letter"
        lines = [f"{line},{','.join(here.get(column, ('', '')))}" for column, line in enumerate(lines)]
        if given.onto is not None:
            structure, chain = common.structure_of(row)
            if structure is None:
                raise common.BadInput(f"{given.family}: row {row.name} has no structure beside the file")
            names = dict(zip(chain.numbers, chain.type_names))
            copy = with_factors(given.structure, chain.name,
                                {number: (names[number], scores[column]) for number, column in zip(numbers, columns)
                                 if number in names})
    common.write_text(given.output, "\n".join([head, *lines]) + "\n")
    if copy is not None:
        common.write_text(given.onto, copy)


if __name__ == "__main__":
    common.run(main)
