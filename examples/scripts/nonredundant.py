#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Cuts a family down to rows that are less alike than a percentage identity.

    nonredundant.py FAMILY OUTPUT [--identity 90] [--of shorter|aligned|overlap]

Rows are looked at from the longest to the shortest. A row is left out when its identity with one that stays is as high
as --identity or higher; of rows of one length the upper one stays. Those that stay keep their order, and columns
without residues go. The table of rows that are left out, each with the row that it is most like among those before
it, goes to the standard output.
"""

import common
import numpy


def left_out(shares, lengths, cut):
    """Of each row that goes the row that it is most like among the longer ones that stay."""
    shares = numpy.nan_to_num(shares)
    stay, like = [], {}
    for row in sorted(range(len(lengths)), key=lambda row: -lengths[row]):
        most = stay[shares[row, stay].argmax()] if stay else row
        if most != row and shares[row, most] >= cut:
            like[row] = most
        else:
            stay.append(row)
    return like


def main():
    parser = common.parser(__doc__)
    parser.add_argument("family", help="a file with one alignment")
    common.add_output(parser, "the alignment that is left; the ending says the format")
    parser.add_argument("--identity", type=float, default=90, help="per cent, 90 at first")
    parser.add_argument("--of", choices=("shorter", "aligned", "overlap"), default="shorter",
                        help="what identical pairs are a share of, see Alignment.identity_matrix")
    given = parser.parse_args()
    if not 0 < given.identity <= 100:
        raise common.BadInput(f"--identity is above 0 and at most 100, and not {given.identity:g}")
    common.check_output(given.output, given.force)

    family = common.open_family(given.family)
    residues = family.occupancy()
    shares = family.identity_matrix(of=given.of)
    # A hair less, as 90 % of 10 residues are 9.
    like = left_out(shares, residues.sum(axis=1), given.identity / 100 - 1e-9)
    names = family.names
    kept = [row not in like for row in range(len(names))]
    family.remove_rows(numpy.logical_not(kept))
    family.remove_columns(~residues[kept].any(axis=0))
    common.save(family, given.output)
    print("left_out\tlike\tidentity_percent")
    for row, other in sorted(like.items()):
        print(f"{names[row]}\t{names[other]}\t{100 * shares[row, other]:.1f}")
    common.tell(f"{len(family)} of {len(names)} rows stay")


if __name__ == "__main__":
    common.run(main)
