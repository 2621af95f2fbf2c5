#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""How well the structures of families lie on the first one, as Biopython superposes them.

    tests/unit/plugins/companion/refit/reference.py          makes the kept file anew
    tests/unit/plugins/companion/refit/reference.py --check  says whether it is what it makes

The kept file is tests/data/superposed/pairs.tsv: of each row the columns in which it and the first
one have a CA atom, and the RMSD of these in Angstrom, for the alignment as it is in its file and with
gaps that are put into its second row. Then the same when pairs are left out that stay farther apart
than CUTOFF: how many are not, their RMSD, and that of all when superposed by these. Debian's python3-numpy and python3-biopython are needed."""
import gzip
import pathlib
import sys
import warnings

import numpy
from Bio import AlignIO, BiopythonWarning
from Bio.PDB import PDBParser
from Bio.SVDSuperimposer import SVDSuperimposer

DATA = pathlib.Path(__file__).resolve().parents[4] / "data"
KEPT = DATA / "superposed" / "pairs.tsv"
FAMILIES = [
    ("globins", "globins_structural_alignment_a.fasta", "fasta", "globin_{}.pdb"),
    ("cytochrome_c", "cytochrome_c.aln", "clustal", "{}.gz"),
]
# Where gaps come into the second row, and how many.
GAPS = [(0, 0), (30, 1), (60, 3)]
PRECISION = 2e-4
# In Angstrom.
CUTOFF = 2.0
FEWEST = 3


def places_of(file):
    """The CA atoms of the residues of the first chain, in the order of the file; None without one."""
    opened = gzip.open(file, "rt") if file.suffix == ".gz" else open(file, encoding="ascii")
    with opened as text, warnings.catch_warnings():
        warnings.simplefilter("ignore", BiopythonWarning)
        model = PDBParser(QUIET=True).get_structure("", text)[0]
    chain = next(iter(model))
    # Modified amino acids, too, and what their ends are capped with.
    return [residue["CA"].get_coord().astype(float) if "CA" in residue else None
            for residue in chain
            if residue.id[0] == " " or "CA" in residue and "N" in residue
            or residue.get_resname() == "ACE"]


def cells_of(letters, places, file):
    """Of each column the place of its residue, or None."""
    residues = iter(places)
    cells = [next(residues) if letter not in "-." else None for letter in letters]
    if next(residues, "none") != "none":
        sys.exit(f"{file} has more residues than its row")
    return cells


def superposed(fixed, moving, places):
    """How far apart all pairs are once the pairs at the places are superposed."""
    superimposer = SVDSuperimposer()
    superimposer.set(fixed[places], moving[places])
    superimposer.run()
    rotation, shift = superimposer.get_rotran()
    return numpy.linalg.norm(moving @ rotation + shift - fixed, axis=1)


def rmsd_of(distances):
    return float(numpy.sqrt(numpy.mean(distances ** 2)))


def pruned(fixed, moving, places):
    """Of the places those that fit each other, and how far apart all pairs are then."""
    while True:
        apart = superposed(fixed, moving, places)
        beyond = int((apart[places] > CUTOFF).sum())
        if beyond == 0:
            return places, apart
        dropped = max(1, min(len(places) // 10, beyond // 2))
        if len(places) - dropped < FEWEST:
            return places[:0], apart
        places = numpy.sort(sorted(places, key=lambda place: (apart[place], place))[:-dropped])


def grown(fixed, moving, places, apart):
    while len(places) > 0:
        larger, then = pruned(fixed, moving, numpy.flatnonzero(apart <= CUTOFF))
        if len(larger) <= len(places):
            break
        places, apart = larger, then
    return places, apart


def core(fixed, moving):
    """The largest that is found from all pairs, and from stretches of a fourth of them."""
    everything = numpy.arange(len(fixed))
    of_all = rmsd_of(superposed(fixed, moving, everything))
    best = pruned(fixed, moving, everything)
    stretch = max(FEWEST, len(fixed) // 4)
    starts = [everything[begin:begin + stretch]
              for begin in range(0, len(fixed) - stretch + 1, max(1, stretch // 2))]
    for candidate in [grown(fixed, moving, *best),
                      *(grown(fixed, moving, *pruned(fixed, moving, start)) for start in starts)]:
        if len(candidate[0]) > len(best[0]) and rmsd_of(candidate[1][candidate[0]]) <= of_all:
            best = candidate
    places, apart = best
    return len(places), rmsd_of(apart[places]), rmsd_of(apart)


def fit(fixed, moving):
    pairs = [(a, b) for a, b in zip(fixed, moving) if a is not None and b is not None]
    a, b = numpy.array([a for a, _ in pairs]), numpy.array([b for _, b in pairs])
    return len(pairs), rmsd_of(superposed(a, b, numpy.arange(len(pairs)))), *core(a, b)


def rows():
    for folder, alignment, form, name in FAMILIES:
        home = DATA / "families" / folder
        records = list(AlignIO.read(home / alignment, form))
        cells = []
        for record in records:
            file = home / name.format(record.id)
            cells.append(cells_of(str(record.seq), places_of(file), file))
        for place, count in GAPS:
            moved = [list(row) for row in cells]
            moved[1][place:place] = [None] * count
            for record, row in zip(records[1:], moved[1:]):
                pairs, rmsd, kept, core_rmsd, whole = fit(moved[0], row)
                yield [folder, str(place), str(count), record.id, str(pairs), f"{rmsd:.4f}",
                       str(kept), f"{core_rmsd:.4f}", f"{whole:.4f}"]


def is_same(kept, made):
    return len(kept) == len(made) and all(
        a == b or "." in a and "." in b and abs(float(a) - float(b)) <= PRECISION
        for a, b in zip(kept, made))


def main():
    made = [["family", "column", "gaps", "row", "pairs", "rmsd", "core_pairs", "core_rmsd",
             "rmsd_by_core"], *rows()]
    if "--check" not in sys.argv[1:]:
        KEPT.parent.mkdir(exist_ok=True)
        KEPT.write_text("".join("\t".join(row) + "\n" for row in made), encoding="ascii")
        return
    kept = [line.split("\t") for line in KEPT.read_text(encoding="ascii").splitlines()]
    if len(kept) != len(made) or not all(map(is_same, kept, made)):
        sys.exit(f"{KEPT} is not what this script makes")


if __name__ == "__main__":
    main()
