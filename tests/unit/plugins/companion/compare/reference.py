#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reference scores of one alignment against another, computed with numpy from each pair of rows.

    tests/unit/plugins/companion/compare/reference.py          makes the kept file anew, with mafft
    tests/unit/plugins/companion/compare/reference.py --check  says whether the scores are what it computes

tests/data/compare/scores.tsv has in each line a family as its file has it and as mafft has aligned
its sequences, with the counts that the sum-of-pairs score and the total-column score are made of
(Thompson, Plewniak and Poch, Nucleic Acids Res. 27:2682, 1999): pairs of residues that stand in one
column of both, of the first, and of the second; columns with two residues and more that are in both,
in the first, and in the second. Debian's python3-numpy and mafft are needed."""
import pathlib
import subprocess
import sys
import tempfile

import numpy

DATA = pathlib.Path(__file__).resolve().parents[4] / "data"
FAMILIES = ["egf_seed", "globins4", "globins45", "fibronectin3_seed", "pfam_seed_1", "pfam_seed_3"]
KEPT = DATA / "compare" / "scores.tsv"
HEAD = ["family", "pairs in both", "pairs of the first", "of the second",
        "columns in both", "columns of the first", "of the second", "first", "second"]


def rows_of(stockholm):
    rows = {}
    for line in stockholm.read_text(encoding="utf-8").splitlines():
        if line.startswith("//"):
            break
        if line.strip() and not line.startswith("#"):
            name, letters = line.split()
            rows[name] = rows.get(name, "") + letters.upper().replace(".", "-")
    return list(rows.values())


def by_mafft(rows):
    with tempfile.NamedTemporaryFile("w", suffix=".fasta") as fasta:
        for number, row in enumerate(rows):
            fasta.write(f">{number}\n{row.replace('-', '')}\n")
        fasta.flush()
        made = subprocess.run(["mafft", "--quiet", "--amino", fasta.name], check=True,
                              capture_output=True, text=True).stdout
    parts = made.split(">")[1:]
    return ["".join(part.splitlines()[1:]).upper() for part in parts]


def places(rows):
    """Of each row the column of each of its residues."""
    return [numpy.flatnonzero(numpy.array(list(row)) != "-") for row in rows]


def scores(first, second):
    here, there = places(first), places(second)
    same = of_first = of_second = 0
    for a in range(len(first)):
        for b in range(a):
            # Which residue of b stands in the column of each residue of a, or none.
            def partners(found):
                index = numpy.searchsorted(found[b], found[a])
                index[index == len(found[b])] = 0
                return numpy.where(found[b][index] == found[a], index, -1)
            one, other = partners(here), partners(there)
            of_first += int((one >= 0).sum())
            of_second += int((other >= 0).sum())
            same += int(((one >= 0) & (one == other)).sum())

    def columns(found, width):
        sets = [[] for _ in range(width)]
        for row, residues in enumerate(found):
            for ordinal, column in enumerate(residues):
                sets[column].append((row, ordinal))
        return {tuple(each) for each in sets if len(each) > 1}
    one, other = columns(here, len(first[0])), columns(there, len(second[0]))
    return [same, of_first, of_second, len(one & other), len(one), len(other)]


def line_of(name, first, second):
    return "\t".join([name] + [str(each) for each in scores(first, second)]
                     + [",".join(first), ",".join(second)])


def main():
    if "--check" not in sys.argv:
        lines = []
        for name in FAMILIES:
            rows = rows_of(DATA / "alignments" / "stockholm" / f"{name}.sto")
            lines.append(line_of(name, rows, by_mafft(rows)))
        KEPT.parent.mkdir(exist_ok=True)
        KEPT.write_text("\n".join(["\t".join(HEAD)] + lines) + "\n", encoding="utf-8")
        return 0
    kept = KEPT.read_text(encoding="utf-8").splitlines()
    for line in kept[1:]:
        name, *_, first, second = line.split("\t")
        if line_of(name, first.split(","), second.split(",")) != line:
            print(f"{KEPT.name}: {name} has other scores")
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
