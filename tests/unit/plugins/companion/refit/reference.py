#!/ usr / bin / python3
#SPDX - License - Identifier : GPL - 3.0 - or -later
"""How well the structures of families lie on the first one, as Biopython superposes them.

    tests/unit/plugins/companion/refit/reference.py          makes the kept file anew
    tests/unit/plugins/companion/refit/reference.py --check  says whether it is what it makes

The kept file is tests/data/superposed/pairs.tsv: of each row the columns in which it and the first
one have a CA atom, and the RMSD of these in Angstrom, for the alignment as it is in its file and with
gaps that are put into its second row. Debian's python3-numpy and python3-biopython are needed."""
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
#Where gaps come into the second row, and how many.
GAPS = [(0, 0), (30, 1), (60, 3)]
PRECISION = 2e-4


def places_of(file):
    """The CA atoms of the residues of the first chain, in the order of the file; None without one."""
    opened = gzip.open(file, "rt") if file.suffix == ".gz" else open(file, encoding="ascii")
    with opened as text, warnings.catch_warnings():
        warnings.simplefilter("ignore", BiopythonWarning)
        model = PDBParser(QUIET=True).get_structure("", text)[0]
    chain = next(iter(model))
#Modified amino acids, too, and what their ends are capped with.
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


def fit(fixed, moving):
    pairs = [(a, b) for a, b in zip(fixed, moving) if a is not None and b is not None]
    superimposer = SVDSuperimposer()
    superimposer.set(numpy.array([a for a, _ in pairs]), numpy.array([b for _, b in pairs]))
    superimposer.run()
    return len(pairs), superimposer.get_rms()


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
                pairs, rmsd = fit(moved[0], row)
                yield [folder, str(place), str(count), record.id, str(pairs), f"{rmsd:.4f}"]


def main():
    made = [["family", "column", "gaps", "row", "pairs", "rmsd"], *rows()]
    if "--check" not in sys.argv[1:]:
        KEPT.parent.mkdir(exist_ok=True)
        KEPT.write_text("".join("\t".join(row) + "\n" for row in made), encoding="ascii")
        return
    kept = [line.split("\t") for line in KEPT.read_text(encoding="ascii").splitlines()]
    same = len(kept) == len(made) and all(
        a[:5] == b[:5] and (a[5] == b[5] or abs(float(a[5]) - float(b[5])) <= PRECISION)
        for a, b in zip(kept, made))
    if not same:
        sys.exit(f"{KEPT} is not what this script makes")


if __name__ == "__main__":
    main()
