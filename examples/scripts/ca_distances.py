#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes how far the CA atoms of each column lie apart, as CSV.

    ca_distances.py FAMILY OUTPUT.csv [--superpose]

The structures stand beside the alignment and are named by its rows. A line has the column, from 1, how many rows have
a residue there, how many of these a CA atom, and the mean distance of these atoms over all pairs in Angstrom, which is
empty of fewer than two. --superpose superposes the structures on the first one before; else they lie as their files
have them. "-" as OUTPUT is the standard output.
"""

import common
import numpy
import tambo


def main():
    parser = common.parser(__doc__)
    parser.add_argument("family", help="a file with one alignment")
    common.add_output(parser, "the CSV file")
    parser.add_argument("--superpose", action="store_true", help="superpose the structures before")
    given = parser.parse_args()
    common.check_output(given.output, given.force)

    family = common.open_family(given.family)
    residues = family.occupancy()
    atoms = numpy.zeros_like(residues)
    for row in family:
        atoms[row.index, residues[row.index]] = numpy.isfinite(row.chain.ca_positions()).all(axis=1)
    with_structure = [row for row in range(len(family)) if atoms[row].any()]
    if len(with_structure) < 2:
        raise common.BadInput(f"{given.family}: {len(with_structure)} rows have a structure beside the file, "
                              "and two are needed")
    if given.superpose:
        tambo.superpose(family, fixed=with_structure[0], rows=with_structure[1:])
    lines = ["column,residues,ca_atoms,mean_distance"]
    for column, distance in enumerate(family.column_distances()):
        text = "" if numpy.isnan(distance) else f"{distance:.3f}"
        lines.append(f"{column + 1},{residues[:, column].sum()},{atoms[:, column].sum()},{text}")
    common.write_text(given.output, "\n".join(lines) + "\n")


if __name__ == "__main__":
    common.run(main)
