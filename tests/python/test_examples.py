# SPDX-License-Identifier: GPL-3.0-or-later
"""The example scripts, run as programs; what they write is held against values computed without the package."""
import ast
import csv
import io
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree

import numpy
import tambo
from Bio import SeqIO
from Bio.PDB.PDBParser import PDBParser

from cases import EXAMPLES, SOURCE, Case

SCRIPTS = EXAMPLES / "scripts"
DATA = SOURCE / "tests" / "data"
PROTEASES = EXAMPLES / "serine_proteases.ali"
GLOBINS = DATA / "alignments" / "stockholm" / "globins45.sto"


def stockholm(path):
    rows = {}
    for line in path.read_text().splitlines():
        if line.strip() and not line.startswith(("#", "//")):
            name, letters = line.split()
            rows[name] = rows.get(name, "") + letters.replace(".", "-")
    return rows


def pir(path):
    return {record.id: str(record.seq) for record in SeqIO.parse(path, "pir")}


def residues(name):
    """Number, type and CA position of each residue of a structure beside the example."""
    found = []
    for residue in PDBParser(QUIET=True).get_structure("x", EXAMPLES / f"{name}_superposed.pdb").get_residues():
        if residue.id[0] == " ":
            _, number, code = residue.id
            found.append((f"{number}{code.strip()}", residue.get_resname(), residue["CA"].coord.astype(float)))
    return found


def columns(text):
    return [column for column, letter in enumerate(text) if letter != "-"]


class Script(Case):
    def call(self, name, *arguments):
        return subprocess.run([sys.executable, "-B", SCRIPTS / f"{name}.py", *map(str, arguments)], capture_output=True,
                              text=True, cwd=self.folder, check=False)

    def good(self, name, *arguments):
        done = self.call(name, *arguments)
        self.assertEqual((done.returncode, "Traceback" in done.stderr), (0, False), done.stderr)
        return done.stdout

    def bad(self, name, *arguments, says):
        """Ends with status 1 and one line, and leaves the folder as it was."""
        before = {file: file.read_bytes() for file in self.folder.rglob("*") if file.is_file()}
        done = self.call(name, *arguments)
        self.assertEqual((done.returncode, done.stdout), (1, ""), done.stderr)
        self.assertRegex(done.stderr, rf"\A{name}: [^\n]*{says}[^\n]*\n\Z")
        self.assertEqual({file: file.read_bytes() for file in self.folder.rglob("*") if file.is_file()}, before)

    def write(self, name, text):
        (self.folder / name).write_text(text)
        return self.folder / name


class Alignments(Script):
    def test_a_family_is_cut_longest_first(self):
        # Here shortest first, or the upper rows first, would leave others.
        family = DATA / "alignments" / "stockholm" / "fibronectin3_seed.sto"
        printed = self.good("nonredundant", family, "left.sto", "--identity", 30)
        rows = {name: text.upper() for name, text in stockholm(family).items()}

        def share(one, other):
            same = sum(a == b != "-" for a, b in zip(rows[one], rows[other]))
            return same / min(len(columns(rows[one])), len(columns(rows[other])))
        stay = []
        for name in sorted(rows, key=lambda name: -len(columns(rows[name]))):
            if all(share(name, other) < 0.3 for other in stay):
                stay.append(name)
        left = stockholm(self.folder / "left.sto")
        self.assertEqual(list(left), [name for name in rows if name in stay])
        self.assertIn(len(left), range(2, len(rows) - 10))
        for name, text in left.items():
            self.assertEqual(text.replace("-", "").upper(), rows[name].replace("-", ""))
        self.assertTrue(all(any(letter != "-" for letter in column) for column in zip(*left.values())))
        for line in printed.splitlines()[1:]:
            name, like, percent = line.split("\t")
            self.assertIn(like, stay)
            self.assertAlmostEqual(float(percent), 100 * share(name, like), delta=0.051)
        self.bad("nonredundant", DATA / "malformed" / "alignments" / "fasta_digit_in_sequence.fasta", "x.fasta",
                 says=r'fasta_digit_in_sequence\.fasta:2: found "1"')

    def test_rows_get_the_names_of_a_table_and_stay_tied(self):
        names = self.write("names.tsv", "# short names\n1A0J_A\ttrypsin\n\n1PPF_E\telastase\n")
        self.good("rename_rows", PROTEASES, names, "renamed.ali")
        renamed = {"1A0J_A": "trypsin", "1PPF_E": "elastase"}
        self.assertEqual(list(pir(self.folder / "renamed.ali").items()),
                         [(renamed.get(name, name), text) for name, text in pir(PROTEASES).items()])
        for file in EXAMPLES.glob("*.pdb"):
            (self.folder / file.name).write_bytes(file.read_bytes())
        family = tambo.open(self.folder / "renamed.ali").alignment
        self.assertEqual(family["trypsin"].chain.numbers, [number for number, _, _ in residues("1A0J_A")])
        self.write("names.tsv", "1A0J_A\ttrypsin\n\n1a0j\telastase\n")
        self.bad("rename_rows", PROTEASES, names, "x.ali", says="names.tsv:3: no rows are called 1a0j")

    def test_a_row_without_structure_is_renamed_too(self):
        names = self.write("names.tsv", "MYG_HORSE\tHorse myoglobin\n")
        self.good("rename_rows", GLOBINS, names, "renamed.fasta")
        self.assertIn(">Horse_myoglobin\n", (self.folder / "renamed.fasta").read_text())
        self.assertNotIn("MYG_HORSE", (self.folder / "renamed.fasta").read_text())
        self.write("names.tsv", "MYG_HORSE\tMYG_MOUSE\n")
        self.bad("rename_rows", GLOBINS, names, "x.fasta", says="names.tsv:1: 2 rows would be called MYG_MOUSE")

    def test_a_part_goes_by_numbers_of_residues(self):
        self.good("part_by_residues", PROTEASES, "1A0J_A", 57, "184A", "part.ali")
        rows = pir(PROTEASES)
        numbers = [number for number, _, _ in residues("1A0J_A")]
        places = columns(rows["1A0J_A"])
        begin, end = places[numbers.index("57")], places[numbers.index("184A")] + 1
        self.assertEqual(pir(self.folder / "part.ali"), {name: text[begin:end] for name, text in rows.items()})
        self.bad("part_by_residues", PROTEASES, "1A0J_A", 57, 102, "part.ali", says="is there already; --force")
        self.bad("part_by_residues", PROTEASES, "1A0J_A", 57, "57Z", "x.ali", says="1A0J_A has no residue 57Z")
        self.good("part_by_residues", PROTEASES, "1A0J_A", 57, 57, "part.ali", "--force")
        self.assertEqual(pir(self.folder / "part.ali")["1A0J_A"], "H")

    def test_sequences_are_appended_with_their_gaps_if_they_are_as_wide(self):
        rows = pir(PROTEASES)
        wide = rows["1A0J_A"][::-1]
        sequences = self.write("more.fasta", f">wide\n{wide}\n>last\n{'-' * 302}K\n")
        self.good("append_sequences", PROTEASES, sequences, "all.fasta")
        found = {record.id: str(record.seq) for record in SeqIO.parse(self.folder / "all.fasta", "fasta")}
        self.assertEqual(found, {**rows, "wide": wide, "last": "-" * 302 + "K"})
        self.write("more.fasta", ">long\n" + "MKV" * 102 + "\n>1A0J_A\nMKV\n")
        self.bad("append_sequences", PROTEASES, sequences, "x.fasta", says="more.fasta: 1A0J_A is the name of a row")
        self.good("append_sequences", PROTEASES, sequences, "long.fasta", "--skip-known")
        found = {record.id: str(record.seq) for record in SeqIO.parse(self.folder / "long.fasta", "fasta")}
        self.assertEqual(found, {**{name: text + "---" for name, text in rows.items()}, "long": "MKV" * 102})

    def test_scores_of_two_alignments_are_the_kept_ones(self):
        with open(DATA / "compare" / "scores.tsv", encoding="utf-8") as file:
            kept = next(line for line in csv.reader(file, delimiter="\t") if line[0] == "globins45")
        for name, place in (("first", 7), ("second", 8)):
            rows = kept[place].split(",")
            # The order of rows does not count, nor does a column with one residue.
            order = range(len(rows)) if name == "first" else reversed(range(len(rows)))
            self.write(f"{name}.fasta", "".join(f">r{row}\n{rows[row]}{'-' if row else 'W'}\n" for row in order))
        printed = self.good("compare_alignments", "first.fasta", "second.fasta")
        pairs, total = list(csv.DictReader(io.StringIO(printed), delimiter="\t"))
        for line, what, counts in ((pairs, "SP", kept[1:4]), (total, "TC", kept[4:7])):
            equal, first, second = map(int, counts)
            self.assertEqual([line[name] for name in ("score", "equal", "of_first", "of_second")], [what, *counts])
            self.assertEqual(line["share_of_first"], f"{equal / first:.4f}")
            self.assertEqual(line["share_of_second"], f"{equal / second:.4f}")
        other = (self.folder / "second.fasta").read_text().replace("K", "R", 1)
        self.write("second.fasta", other)
        self.bad("compare_alignments", "first.fasta", "second.fasta", says="row r44 has not the residues")


class Figures(Script):
    def expected_sites(self):
        """The cells of residues 57, 189 and 195 of trypsin, by the files alone."""
        rows = pir(PROTEASES)
        numbers = [number for number, _, _ in residues("1A0J_A")]
        places = [columns(rows["1A0J_A"])[numbers.index(number)] for number in ("57", "189", "195")]
        cells = []
        for name, text in rows.items():
            own = dict(zip(columns(text), residues(name)))
            cells.append([name] + [text[place] + (own[place][0] if place in own else "") for place in places])
        return cells

    def test_sites_are_drawn_as_text(self):
        self.good("sites", PROTEASES, "1A0J_A", "57,189,195", "sites.svg", "--title", "a < b & c")
        drawn = xml.etree.ElementTree.parse(self.folder / "sites.svg").getroot()
        texts = [text.text for text in drawn.iter("{http://www.w3.org/2000/svg}text")]
        self.assertEqual(texts[:2], ["a < b & c", "1A0J_A"])
        self.assertEqual(texts[2:], ["H57", "D189", "S195"] + [cell for line in self.expected_sites() for cell in line])
        shaded = sum(cell == head for line in self.expected_sites() for cell, head in zip(line[1:], texts[2:5]))
        self.assertEqual(len(list(drawn.iter("{http://www.w3.org/2000/svg}rect"))), 1 + shaded)
        self.assertIn(shaded, range(3, 18))
        self.bad("sites", PROTEASES, "1A0J_A", "57,9999", "x.svg", says="1A0J_A has no residue 9999; they go from 16")

    def test_sites_are_a_table_of_a_page(self):
        self.good("sites", PROTEASES, "1A0J_A", "57,189,195", "sites.html")
        page = (self.folder / "sites.html").read_text()
        cells = [re.findall(r"<t[hd][^>]*>([^<]*)</t[hd]>", line) for line in page.splitlines() if "<td" in line]
        self.assertEqual(cells, self.expected_sites())

    def test_columns_are_colored_by_a_table(self):
        table = self.write("values.csv", "column;value\n1;0\n2;5\n3;10\n4;\n")
        self.good("color_by_csv", PROTEASES, table, "value", "colored.tambo")
        before = tambo.open(PROTEASES).alignment
        own = [row.chain.colors for row in before]
        tambo.clear()
        tambo.open_session(self.folder / "colored.tambo")
        for row, old in zip(tambo.alignments()[0], own):
            self.assertEqual([color & 0xffffff for color in row.chain.colors[:3]], [0xffffff, 0xe08080, 0xc00000])
            self.assertEqual(row.chain.colors[3:], old[3:])
        self.write("values.csv", "column,value\n1,0\n2,high\n")
        self.bad("color_by_csv", PROTEASES, table, "value", "x.tambo", says="values.csv:3: value is a number")

    def test_residues_of_a_row_are_colored_by_their_numbers(self):
        table = self.write("values.csv", "name,residue,value\nacid,102,1\nbase,57,-1\nend,184A,9\n")
        self.good("color_by_csv", PROTEASES, table, "value", "colored.tambo", "--row", "1A0J_A",
                  "--low", -1, "--high", 1, "--colors", "0000ff,ff0000")
        tambo.open_session(self.folder / "colored.tambo")
        colors = {number: color & 0xffffff for number, color in
                  zip([number for number, _, _ in residues("1A0J_A")], tambo.alignments()[0]["1A0J_A"].chain.colors)}
        self.assertEqual([colors[number] for number in ("57", "102", "184A")], [0x0000ff, 0xff0000, 0xff0000])
        self.assertNotIn(colors["58"], (0x0000ff, 0xff0000))


class Structures(Script):
    def test_distances_of_columns_are_the_kept_ones(self):
        self.good("ca_distances", PROTEASES, "distances.csv")
        with open(self.folder / "distances.csv", encoding="utf-8") as file:
            lines = list(csv.DictReader(file))
        with open(DATA / "families" / "serine_proteases" / "ca_spread_per_column.tsv", encoding="utf-8") as file:
            kept = {line["column"]: line for line in csv.DictReader(file, delimiter="\t")}
        rows = pir(PROTEASES)
        self.assertEqual([line["column"] for line in lines], [str(column + 1) for column in range(303)])
        compared = 0
        for place, line in enumerate(lines):
            self.assertEqual(int(line["residues"]), sum(text[place] != "-" for text in rows.values()))
            if line["mean_distance"]:
                compared += 1
                self.assertEqual(line["ca_atoms"], kept[line["column"]]["n_ca"])
                self.assertAlmostEqual(float(line["mean_distance"]), float(kept[line["column"]]["mean_pairwise"]),
                                       delta=0.0012)
        self.assertGreater(compared, 200)
        self.bad("ca_distances", GLOBINS, "x.csv", says="globins45.sto: 0 rows have a structure")

    def test_conservation_is_the_kept_one(self):
        printed = self.good("conservation", DATA / "alignments" / "stockholm" / "egf_seed.sto", "-")
        with open(DATA / "columns" / "scores.tsv", encoding="utf-8") as file:
            kept = [float(line["conservation"]) for line in csv.DictReader(file, delimiter="\t")
                    if line["column"].startswith("egf_seed ")]
        found = [float(line["conservation"]) for line in csv.DictReader(io.StringIO(printed))]
        numpy.testing.assert_allclose(found, kept, atol=0.00006)

    def test_conservation_becomes_b_factors(self):
        source = EXAMPLES / "1A0J_A_superposed.pdb"
        self.good("conservation", PROTEASES, "c.csv", "--row", "1A0J_A", "--structure", source, "--onto", "copy.pdb")
        with open(self.folder / "c.csv", encoding="utf-8") as file:
            scores = {line["residue"]: float(line["conservation"]) for line in csv.DictReader(file) if line["residue"]}
        self.assertEqual(list(scores), [number for number, _, _ in residues("1A0J_A")])
        before, after = source.read_text().splitlines(), (self.folder / "copy.pdb").read_text().splitlines()
        self.assertEqual([line[:60] + line[66:] for line in after], [line[:60] + line[66:] for line in before])
        factors = [(line[22:27].strip(), float(line[60:66])) for line in after if line.startswith("ATOM")]
        self.assertGreater(len(factors), 1000)
        for number, factor in factors:
            self.assertAlmostEqual(factor, 100 * scores[number], delta=0.0101)
        self.bad("conservation", PROTEASES, "x.csv", "--row", "1A0J_A", "--structure",
                 EXAMPLES / "1AU8_A_superposed.pdb", "--onto", "x.pdb",
                 says=r"1AU8_A_superposed\.pdb:\d+: residue 17 of chain A is ILE, and VAL in")

    def test_all_structures_are_superposed_and_saved(self):
        self.good("superpose_all", PROTEASES, "superposed", "--on", "1PPF_E")
        with open(self.folder / "superposed" / "rmsd.csv", encoding="utf-8") as file:
            told = {line["row"]: line for line in csv.DictReader(file)}
        rows = pir(PROTEASES)
        self.assertEqual(list(told), list(rows))
        places = {name: dict(zip(columns(text), (place for _, _, place in residues(name))))
                  for name, text in rows.items()}
        for name, line in told.items():
            if name == "1PPF_E":
                self.assertEqual((line["pairs"], line["rmsd"]), ("", ""))
                continue
            common = sorted(places[name].keys() & places["1PPF_E"].keys())
            one, other = (numpy.array([places[each][column] for column in common]) for each in (name, "1PPF_E"))
            one, other = one - one.mean(axis=0), other - other.mean(axis=0)
            singular = numpy.linalg.svd(one.T @ other)
            signs = numpy.array([1, 1, numpy.sign(numpy.linalg.det(singular[0] @ singular[2]))])
            square = (one ** 2).sum() + (other ** 2).sum() - 2 * (singular[1] * signs).sum()
            self.assertEqual(int(line["pairs"]), len(common))
            self.assertAlmostEqual(float(line["rmsd"]), (square / len(common)) ** 0.5, delta=0.002, msg=name)
        parser = PDBParser(QUIET=True)
        moved = parser.get_structure("x", self.folder / "superposed" / told["1A0J_A"]["file"])
        fixed = parser.get_structure("x", self.folder / "superposed" / told["1PPF_E"]["file"])
        cas = [numpy.array([residue["CA"].coord for residue in each.get_residues() if residue.id[0] == " "])
               for each in (moved, fixed)]
        pairs = [(columns(rows["1A0J_A"]).index(column), columns(rows["1PPF_E"]).index(column))
                 for column in sorted(places["1A0J_A"].keys() & places["1PPF_E"].keys())]
        apart = numpy.array([cas[0][one] - cas[1][other] for one, other in pairs])
        rmsd = float((apart ** 2).sum(axis=1).mean() ** 0.5)
        self.assertAlmostEqual(rmsd, float(told["1A0J_A"]["rmsd"]), delta=0.002)
        self.bad("superpose_all", PROTEASES, "superposed", says="superposed: has files already")
        self.bad("superpose_all", GLOBINS, "new", says="0 rows have a structure")
        self.assertFalse((self.folder / "new").exists())


class Explained(Case):
    def test_each_script_is_on_the_page_and_says_how_it_is_called(self):
        page = (SOURCE / "docs" / "python.md").read_text(encoding="utf-8")
        scripts = [file for file in sorted(SCRIPTS.glob("*.py")) if file.name != "common.py"]
        self.assertEqual(len(scripts), 10)
        for file in scripts:
            self.assertIn(f"(../examples/scripts/{file.name})", page)
            doc = ast.get_docstring(ast.parse(file.read_text(encoding="utf-8")))
            self.assertRegex(doc, rf"\n    {re.escape(file.name)} [A-Z]")
            self.assertTrue(file.stat().st_mode & 0o111, file)
        links = re.findall(r"\(\.\./(examples/scripts[^)]*)\)", page)
        self.assertEqual([link for link in links if not pathlib.Path(SOURCE / link).exists()], [])
