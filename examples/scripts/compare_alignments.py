#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Compares what two aligners have made of the same sequences.

    compare_alignments.py FIRST SECOND [OUTPUT.tsv]

Rows are the same when they have one name; small and large letters are equal, and gaps do not count. Rows that only one
of both files has are left out, and told. The sum-of-pairs score (SP) is the pairs of residues that stand in one column
in both alignments, as a share of those of the first and of the second. The total-column score (TC) is the columns that
have the same residues in both, as a share of the columns with two residues and more. With the reference as FIRST,
share_of_first is what papers report. Without OUTPUT the table goes to the standard output.
"""
import pathlib

import common
import numpy


def rows_of(path):
    family = common.open_family(path)
    rows = {row.name: row for row in family}
    if len(rows) < len(family):
        for name in rows:
            common.row_named(family, name, path)
    return rows


def columns_of(rows):
    """The column of each residue, of one row after the other."""
    return numpy.concatenate([numpy.flatnonzero(row.alignment.occupancy(rows=[row.index])[0]) for row in rows])


def pairs(counts):
    return int((counts * (counts - 1) // 2).sum())


def scores(first, second):
    """Equal pairs, those of the first and of the second, and the same of columns."""
    here, of_first = numpy.unique(first, return_inverse=True, return_counts=True)[1:]
    there, of_second = numpy.unique(second, return_inverse=True, return_counts=True)[1:]
    # Residues that share both columns are paired in both alignments.
    both, together = numpy.unique(here * len(of_second) + there, return_counts=True)
    columns = (together == of_first[both // len(of_second)]) & (together == of_second[both % len(of_second)])
    return ((pairs(together), pairs(of_first), pairs(of_second)),
            (int((columns & (together > 1)).sum()), int((of_first > 1).sum()), int((of_second > 1).sum())))


def main():
    parser = common.parser(__doc__)
    parser.add_argument("first", help="a file with one alignment")
    parser.add_argument("second", help="a file with one alignment")
    parser.add_argument("output", type=pathlib.Path, nargs="?", default=pathlib.Path("-"), help="the table")
    parser.add_argument("--force", action="store_true", help="replace what is there already")
    given = parser.parse_args()
    common.check_output(given.output, given.force)

    first, second = rows_of(given.first), rows_of(given.second)
    names = [name for name in first if name in second]
    if len(names) < 2:
        raise common.BadInput(f"{given.second}: has {len(names)} rows of {given.first}, and two are needed")
    for name in names:
        if first[name].letters.upper() != second[name].letters.upper():
            raise common.BadInput(f"{given.second}: row {name} has not the residues that it has in {given.first}")
    for path, rows, others in ((given.first, first, second), (given.second, second, first)):
        alone = [name for name in rows if name not in others]
        if alone:
            common.tell(f"{path}: {len(alone)} rows are not in the other file: {', '.join(alone[:5])}"
                        + (", ..." if len(alone) > 5 else ""))
    lines = ["score\tequal\tof_first\tshare_of_first\tof_second\tshare_of_second"]
    for score, (equal, *of) in zip(("SP", "TC"), scores(columns_of([first[name] for name in names]),
                                                        columns_of([second[name] for name in names]))):
        shares = [f"{count}\t{equal / count:.4f}" if count else "0\tNA" for count in of]
        lines.append("\t".join([score, str(equal), *shares]))
    common.write_text(given.output, "\n".join(lines) + "\n")


if __name__ == "__main__":
    common.run(main)
