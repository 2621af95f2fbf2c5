#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reference values for the scores of columns, computed with numpy, and BLOSUM62 as Biopython has it.

    tests/unit/plugins/companion/columns/reference.py          makes the kept files anew
    tests/unit/plugins/companion/columns/reference.py --check  says whether they are what it makes

The kept files stand in tests/data/columns: scores.tsv has the columns of a seed alignment
and random ones, blosum62.tsv the matrix, tree.tsv rows of globins, their distances, and how far they
are from each other in the tree that Biopython makes of those by aligned pairs, which trees/globins.nwk
has as Biopython writes it, spreads.tsv random places and their mean distances. Debian's python3-numpy and python3-biopython are needed."""
import io
import pathlib
import re
import sys

import numpy
from Bio import Phylo
from Bio.Align import substitution_matrices
from Bio.Phylo import TreeConstruction

DATA = pathlib.Path(__file__).resolve().parents[4] / "data"
FAMILY = DATA / "alignments" / "stockholm" / "egf_seed.sto"
GLOBINS = DATA / "alignments" / "stockholm" / "globins45.sto"
NUMBER = re.compile(r"-?\d+\.\d+")
ORDER = "ARNDCQEGHILKMFPSTWYV"
GAPS = "-.~"
BACKGROUND = numpy.array([
    .078, .051, .041, .052, .024, .034, .059, .083, .025, .062,
    .092, .056, .024, .043, .043, .059, .055, .014, .034, .072])
PSEUDOCOUNT = 1e-6
HEAD = ["column", "letters", "conservation", "occupancy", "information", "logo"]


def rows_of(stockholm):
    rows = {}
    for line in stockholm.read_text(encoding="utf-8").splitlines():
        if line.strip() and not line.startswith(("#", "//")):
            name, letters = line.split()
            rows[name] = rows.get(name, "") + letters
    return rows


def random_columns():
    chance = numpy.random.default_rng(20070515)
    letters = ORDER + ORDER.lower() + "BZXUOJ*x-"
    for number in range(150):
        rows = int(chance.integers(1, 90))
        # From a few letters, so that some columns are conserved, and others not.
        few = chance.choice(list(letters), size=int(chance.integers(1, 24)))
        yield "".join(chance.choice(few, size=rows)), f"random {number}"
    yield "", "no row"
    yield "----", "gaps"
    yield "XXXX", "other letters"
    for letter in ORDER:
        yield letter * 300, f"all {letter}"


def counts_of(letters):
    capitals = letters.upper()
    return numpy.array([capitals.count(letter) for letter in ORDER], dtype=float)


def entropy(shares):
    shares = shares[shares > 0]
    return float(-(shares * numpy.log2(shares)).sum())


def divergence(a, b):
    """Jensen-Shannon, in bits, of two distributions that are given with all of their letters."""
    mean = 0.5 * a + 0.5 * b
    return 0.5 * float((a * numpy.log2(a / mean)).sum()) + 0.5 * float((b * numpy.log2(b / mean)).sum())


def conservation(letters):
    counts = counts_of(letters)
    if not counts.sum():
        return 0.0
    shares = (counts + PSEUDOCOUNT) / (counts + PSEUDOCOUNT).sum()
    return divergence(shares, BACKGROUND) * counts.sum() / len(letters)


def occupancy(letters):
    return sum(letter not in GAPS for letter in letters) / len(letters) if letters else 0.0


def information(letters):
    counts = counts_of(letters)
    known = counts.sum()
    if not known:
        return 0.0
    correction = (20 - 1) / (2 * numpy.log(2) * known)
    return max(0.0, float(numpy.log2(20)) - (entropy(counts / known) + correction))


def logo(letters):
    counts = counts_of(letters)
    bits = information(letters)
    stack = [(bits * count / counts.sum(), -ord(letter), letter)
             for letter, count in zip(ORDER, counts) if count and bits]
    return " ".join(f"{letter}:{height:.9f}" for height, _, letter in sorted(stack))


def scores():
    rows = rows_of(FAMILY).values()
    columns = [("".join(cells), f"{FAMILY.stem} {number}") for number, cells in enumerate(zip(*rows))]
    yield HEAD
    for letters, name in [*columns, *random_columns()]:
        yield [name, letters, f"{conservation(letters):.9f}", f"{occupancy(letters):.9f}",
               f"{information(letters):.9f}", logo(letters)]


def blosum62():
    matrix = substitution_matrices.load("BLOSUM62")
    yield ["", *matrix.alphabet]
    for a in matrix.alphabet:
        yield [a, *(str(int(matrix[a, b])) for b in matrix.alphabet)]


def distance(a, b, kind):
    pairs = [(x, y) for x, y in zip(a.upper(), b.upper()) if x not in GAPS and y not in GAPS]
    residues = min(sum(x not in GAPS for x in row) for row in (a, b))
    most = {"AlignmentLength": len(a), "ShorterSequence": residues, "AlignedPairs": len(pairs)}[kind]
    return 1 - sum(x == y for x, y in pairs) / most


def globins():
    return dict(list(rows_of(GLOBINS).items())[::3])


def joined_globins():
    rows = globins()
    names = list(rows)
    lower = [[distance(rows[a], rows[b], "AlignedPairs") if a != b else 0 for b in names[:i + 1]]
             for i, a in enumerate(names)]
    joined = TreeConstruction.DistanceTreeConstructor().nj(TreeConstruction.DistanceMatrix(names, lower))
    # Those are treated in different ways.
    assert all(clade.branch_length >= 0 for clade in joined.find_clades() if clade is not joined.root)
    return joined


def tree():
    rows = globins()
    for name, letters in rows.items():
        yield ["row", name, letters]
    for kind in ("AlignmentLength", "ShorterSequence", "AlignedPairs"):
        for name, a in rows.items():
            yield [kind, name, *(f"{distance(a, b, kind):.12f}" for b in rows.values())]
    joined = joined_globins()
    for a in rows:
        yield ["tree", a, *(f"{joined.distance(a, b):.12f}" for b in rows)]


def newick():
    text = io.StringIO()
    Phylo.write(joined_globins(), text, "newick", format_branch_length="%.12f")
    return text.getvalue()


def spreads():
    """Places of CA atoms as files have them, in Angstrom, and the mean of their distances."""
    chance = numpy.random.default_rng(20261123)
    yield ["column", "mean", "places"]
    for number in range(130):
        count = number % 13 if number < 120 else 40 * (number - 118)
        wide = float(chance.choice([0.5, 3, 30, 400]))
        places = numpy.round(chance.normal(chance.normal(0, 60, 3), wide, (count, 3)), 3)
        places = places.astype(numpy.float32).astype(float)
        apart = numpy.linalg.norm(places[:, None] - places[None, :], axis=2)
        pairs = apart[numpy.triu_indices(count, 1)]
        yield [f"places {number}", f"{pairs.mean():.9f}" if count > 1 else "none",
               " ".join(f"{value:.3f}" for value in places.ravel())]


def same(kept, made):
    """Numbers may differ in their last digits, where another processor computes them."""
    parts = [re.split(r"[\s:(),;]+", text) for text in (kept, made)]
    return len(parts[0]) == len(parts[1]) and all(
        a == b or (NUMBER.fullmatch(a) and NUMBER.fullmatch(b) and abs(float(a) - float(b)) < 1e-9)
        for a, b in zip(*parts))


def main():
    tables = {"columns/scores.tsv": scores(), "columns/blosum62.tsv": blosum62(), "columns/tree.tsv": tree(),
              "columns/spreads.tsv": spreads()}
    texts = {name: "".join("\t".join(line) + "\n" for line in lines) for name, lines in tables.items()}
    texts["trees/globins.nwk"] = newick()
    wrong = []
    for name, made in texts.items():
        file = DATA / name
        if "--check" not in sys.argv[1:]:
            file.parent.mkdir(exist_ok=True)
            file.write_text(made, encoding="utf-8")
        elif not same(file.read_text(encoding="utf-8"), made):
            wrong.append(name)
    for name in wrong:
        print(f"tests/data/{name} is not what {pathlib.Path(__file__).name} makes")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
