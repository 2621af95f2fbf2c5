#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Gives the rows of an alignment the names of a table.

    rename_rows.py FAMILY NAMES.tsv OUTPUT

Each line of the table is an old name, a tab and a new name; empty lines and those that begin with # are comments. Rows
that the table does not have keep their names. A name that no row has, or that several have, is told with its line, and
so is a new name that two rows would have; nothing is written then. Rows stay tied to their structures, and what the file
says of them beside their names stays.
"""
import collections
import pathlib

import common
import tambo


def new_names(path, names):
    """The new name of each old one."""
    known = collections.Counter(names)
    renamed, lines = {}, {}
    for number, line in enumerate(common.lines_of(path), 1):
        line = line.rstrip("\r\n")
        if not line.strip() or line.startswith("#"):
            continue
        parts = [part.strip() for part in line.split("\t")]
        if len(parts) != 2 or not all(parts):
            raise common.BadInput(f"{path}:{number}: expected an old name, a tab and a new name")
        old, new = parts
        if known[old] != 1:
            raise common.BadInput(f"{path}:{number}: {known[old] or 'no'} rows are called {old}")
        if old in renamed:
            raise common.BadInput(f"{path}:{number}: {old} has a new name in line {lines[old]} already")
        renamed[old], lines[old] = new, number
    after = collections.Counter(renamed.get(name, name) for name in names)
    for old, new in renamed.items():
        if after[new] > 1:
            raise common.BadInput(f"{path}:{lines[old]}: {after[new]} rows would be called {new}")
    return renamed


def main():
    parser = common.parser(__doc__)
    parser.add_argument("family", help="a file with one alignment")
    parser.add_argument("names", type=pathlib.Path, help="the table of names")
    common.add_output(parser, "the alignment with its new names; the ending says the format")
    given = parser.parse_args()
    common.check_output(given.output, given.force)

    family = common.open_family(given.family)
    renamed = new_names(given.names, family.names)
    with tambo.step("Rename"):
        for row in list(family):
            if row.name in renamed:
                row.name = renamed[row.name]
    common.save(family, given.output)
    common.tell(f"{len(renamed)} of {len(family)} rows have new names")


if __name__ == "__main__":
    common.run(main)
