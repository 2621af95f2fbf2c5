#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Lets Biopython read what `tambo convert` makes of every alignment in tests/data.

independent_reader.py TAMBO DATA FORMAT: names, letters, gaps and the annotation of Stockholm files
are those that Biopython finds in the original as well.
"""
import csv
import gzip
import io
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

from Bio import AlignIO
from Bio.AlignIO import PhylipIO
from Bio.Data import IUPACData
from Bio.Nexus.Nexus import NexusError

TAMBO, DATA, FORMAT = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3]


class RelaxedSequential(PhylipIO.SequentialPhylipIterator):
    """Rows one after the other with names of any length, which no iterator there has together."""

    _split_id = PhylipIO.RelaxedPhylipIterator._split_id


def parser(name):
    return lambda text: list(AlignIO.parse(io.StringIO(text), name))


READERS = {name: parser(name) for name in ("pir", "fasta", "clustal", "stockholm", "msf", "nexus")}
READERS["a2m"] = parser("fasta")
READERS |= {name: parser(name) for name in ("phylip", "phylip-relaxed", "phylip-sequential")}
READERS["phylip-relaxed-sequential"] = lambda text: list(RelaxedSequential(io.StringIO(text)))
HOLD_SEVERAL = ("stockholm", "phylip")
# Letters that it takes for no residues in NEXUS files.
IUPACData.protein_letters += "JOU"
REFUSALS = (ValueError, AssertionError, NexusError)

# Originals that Biopython refuses or reads otherwise: rows in groups of ten, lengths or headers
# that it does not know, no header at all, no "*", insertions without gaps, comments among residues, symbols
# for "as in the first row" in blocks. Of these it reads our FASTA or PIR file instead.
NOT_READ = (
    "alignments/fasta/easel_a2m_1.a2m",
    "alignments/clustal/globins.aln",
    "alignments/msf/hla_doa.msf",
    "alignments/one_alignment_many_formats/fourteen_three_three.msf",
    "alignments/one_alignment_many_formats/fourteen_three_three.pfam",
    "alignments/nexus/ferredoxins_by_hand.nex",
    "malformed/alignments/pir_missing_terminators.pir",
    "malformed/alignments/fasta_text_and_semicolon_comments.fasta",
)


def run(*arguments):
    return subprocess.run([TAMBO, *map(str, arguments)], capture_output=True, encoding="utf-8")


def text_of(path):
    data = path.read_bytes()
    if path.suffix == ".gz":
        data = gzip.decompress(data)
    return io.TextIOWrapper(io.BytesIO(data), "utf-8").read()


def cells_of(row):
    """What is no letter is a gap. In A2M files small letters are insertions."""
    cells = re.sub("[^A-Za-z]", "-", str(row.seq).replace("?", "X"))
    return cells.upper() if FORMAT == "a2m" else cells


def said_of(row):
    """All that is said of a row and its residues; nothing can be said of a gap."""
    cells = cells_of(row)
    said = {
        tag: "".join("." if cell == "-" else mark for cell, mark in zip(cells, marks, strict=True))
        for tag, marks in row.letter_annotations.items()
    }
    return [said, row.annotations, row.description, row.dbxrefs]


def fits(alignment, fact):
    """Whether a reading has the numbers of rows, columns and letters that the table gives."""
    first = cells_of(alignment[0])
    return (
        len(alignment) == int(fact["rows"])
        and (".." in fact["columns"] or len(first) == int(fact["columns"]))
        and len(first) - first.count("-") == int(fact["letters_in_first_row"])
    )


def original(name, format_name, fact, folder):
    """The alignments in a file of the collection."""
    path = DATA / name
    if name in NOT_READ:
        # Names of one format only have blanks.
        format_name = "pir" if name.endswith(".nex") else "fasta"
        path = folder / f"original.{format_name}"
        run("convert", DATA / name, path)
    for kind in (kind for kind in READERS if kind.startswith(format_name)):
        try:
            alignments = READERS[kind](text_of(path))
        except REFUSALS:
            continue
        if len(alignments) > 1 or fits(alignments[0], fact):
            return alignments
    raise AssertionError(f"{name} is not read as {format_name}")


def is_kept(name, new_name):
    """Whether the beginning of a name is still there, but for characters that cannot be."""
    held, begin = (re.sub("[^A-Za-z0-9]", "_", text) for text in (name, new_name))
    return name == "" or held.startswith((begin, re.sub(r"_\d+$", "", begin)))


def differences(expected, found, losses, compare_annotation):
    """Where two readings differ, a sentence each; names may as far as the losses say."""
    if [len(one) for one in expected] != [len(one) for one in found]:
        return [f"rows: {[len(one) for one in found]}"]
    sentences, renamed = [], []
    for one, other in zip(expected, found):
        for row, other_row in zip(one, other):
            if cells_of(row) != cells_of(other_row):
                sentences.append(f"{row.id}: {cells_of(other_row)} instead of {cells_of(row)}")
            if row.id != other_row.id:
                renamed.append((row.id, other_row.id))
            elif compare_annotation and said_of(row) != said_of(other_row):
                sentences.append(f"{row.id}: {said_of(other_row)} instead of {said_of(row)}")
        if compare_annotation and one.column_annotations != other.column_annotations:
            sentences.append(f"of columns: {other.column_annotations}")
    announced = [int(count) for count in re.findall(r"(\d+) of \d+ (?:names|rows) ", losses)]
    # One that is cut and numbered is announced twice.
    if not max(announced, default=0) <= len(renamed) <= sum(announced):
        sentences.append(f"{announced} new names announced, not {renamed}")
    return sentences + [f"{new} instead of {old}" for old, new in renamed if not is_kept(old, new)]


class EveryAlignment(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(temporary.cleanup)
        cls.folder = pathlib.Path(temporary.name)
        with open(DATA / "facts_alignments.tsv", encoding="utf-8", errors="replace") as table:
            facts = {fact["file"]: fact for fact in csv.DictReader(table, delimiter="\t")}
        lines = run("info", *(DATA / name for name in facts)).stdout.splitlines()
        cls.files = [
            (name, json.loads(line)["format"], fact)
            for (name, fact), line in zip(facts.items(), lines, strict=True)
            if json.loads(line).get("alignments")
        ]

    def converted(self, name):
        path = self.folder / "converted"
        return run("convert", DATA / name, path, "--to", FORMAT), path

    def test_has_the_same_names_letters_gaps_and_annotation(self):
        read = 0
        for name, format_name, fact in self.files:
            with self.subTest(name):
                expected = original(name, format_name, fact, self.folder)
                conversion, path = self.converted(name)
                if len(expected) > 1 and not FORMAT.startswith(HOLD_SEVERAL):
                    self.assertEqual(conversion.returncode, 1)
                    continue
                self.assertEqual(conversion.returncode, 0, conversion.stderr)
                found = READERS[FORMAT](text_of(path))
                is_annotated = FORMAT == format_name == "stockholm" and name not in NOT_READ
                self.assertEqual(
                    differences(expected, found, conversion.stderr, is_annotated), []
                )
                read += 1
        self.assertGreater(read, 50)

    def test_shows_when_a_file_is_changed(self):
        name = "alignments/stockholm/cbs_domain_with_gr_lines.sto"
        expected = READERS["stockholm"](text_of(DATA / name))
        conversion, path = self.converted(name)
        text = text_of(path)
        is_annotated = FORMAT == "stockholm"
        written = READERS[FORMAT](text)[0]
        row = next(row for row in written if row.letter_annotations or not is_annotated)
        start = re.search("[A-Z]{4}", str(row.seq)[:10]).group()
        changes = [(start, "W" + start[1:]), (start, "-" + start[1:]), (row.id, "?" + row.id)]
        if is_annotated:
            lines = [*row.letter_annotations.values(), *written.column_annotations.values()]
            self.assertGreater(len(lines), 1)
            changes += [(line, line.replace(line.strip(".-")[0], "~", 1)) for line in lines]
        for old, new in [("", "")] + changes:
            with self.subTest(f"{new} for {old}"):
                self.assertIn(old, text)
                try:
                    found = READERS[FORMAT](text.replace(old, new))
                except REFUSALS:
                    self.assertNotEqual(old, new)
                    continue
                said = differences(expected, found, conversion.stderr, is_annotated)
                self.assertEqual(said == [], old == new, said)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
