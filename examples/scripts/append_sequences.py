#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Appends the sequences of a file to an alignment, as rows below the others.

    append_sequences.py FAMILY SEQUENCES OUTPUT [--skip-known]

An alignment as wide as FAMILY is appended as it stands, gaps and all. Of any other file the residues are appended
without gaps, from the first column on, to be aligned in the workbench. A name that a row has already is told, and
nothing is written; with --skip-known such sequences are left out.
"""

import common
import tambo


def sequences_of(path, width):
    """Each sequence with its text, which has gaps if the file is an alignment of this width."""
    opened = tambo.open(path)
    if opened.structures and not opened.alignments:
        raise common.BadInput(f"{path}: has structures, and sequences are needed")
    found = [(chain.name, chain, chain.letters) for chain in opened.sequences]
    for alignment in opened.alignments:
        for row in alignment:
            found.append((row.name, row.chain, str(row) if alignment.width == width else row.letters))
    return found


def main():
    parser = common.parser(__doc__)
    parser.add_argument("family", help="a file with one alignment")
    parser.add_argument("sequences", help="a file with sequences, as FASTA")
    common.add_output(parser, "the alignment with all rows; the ending says the format")
    parser.add_argument("--skip-known", action="store_true", help="leave out sequences whose name a row has")
    given = parser.parse_args()
    common.check_output(given.output, given.force)

    family = common.open_family(given.family)
    names = set(family.names)
    width, added = family.width, 0
    with tambo.step("Append sequences"):
        for name, chain, text in sequences_of(given.sequences, width):
            if name in names and given.skip_known:
                continue
            if name in names:
                raise common.BadInput(f"{given.sequences}: {name} is the name of a row already; "
                                      "--skip-known leaves it out")
            names.add(name)
            common.add_row(family, chain, text)
            added += 1
    common.save(family, given.output)
    common.tell(f"{added} rows are new, {len(family)} in all; {family.width} columns, {width} before")


if __name__ == "__main__":
    common.run(main)
