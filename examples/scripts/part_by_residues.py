#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Cuts out the part of an alignment that belongs to a range of residues of one row, such as a domain.

    part_by_residues.py FAMILY ROW FIRST LAST OUTPUT

FIRST and LAST are the numbers that residues of ROW have in its structure ("60A"), or, of a row without one, their
places from 1; both belong to the part. Rows without a residue there are left out, and told. Put -- before the arguments
when a number is negative.
"""

import common


def main():
    parser = common.parser(__doc__)
    parser.add_argument("family", help="a file with one alignment")
    parser.add_argument("row", help="the row whose residues are numbered")
    parser.add_argument("first", help="number of the first residue")
    parser.add_argument("last", help="number of the last residue")
    common.add_output(parser, "the part; the ending says the format")
    given = parser.parse_args()
    common.check_output(given.output, given.force)

    family = common.open_family(given.family)
    row = common.row_named(family, given.row, given.family)
    first, last = (common.residue_of(row, number, given.family) for number in (given.first, given.last))
    if last < first:
        raise common.BadInput(f"{given.family}: in row {row.name} residue {given.last} stands before {given.first}")
    columns = slice(row.column_of(first), row.column_of(last) + 1)
    there = family.occupancy(columns=columns).any(axis=1)
    for other in family:
        if not there[other.index]:
            common.tell(f"{other.name} has no residue there")
    part = family.part(rows=there, columns=columns)
    common.save(part, given.output)
    common.tell(f"columns {columns.start + 1} to {columns.stop} of {family.width}, {len(part)} of {len(family)} rows")


if __name__ == "__main__":
    common.run(main)
