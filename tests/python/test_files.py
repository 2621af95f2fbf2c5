# SPDX-License-Identifier: GPL-3.0-or-later
import tambo

from cases import EXAMPLES, STRUCTURES, Case


class Files(Case):
    def test_a_file_is_opened_and_saved(self):
        family = tambo.open(EXAMPLES / "serine_proteases.ali").alignment
        self.assertEqual(family.shape, (6, 303))
        losses = family.save(self.folder / "family.fasta")
        self.assertEqual(len(losses), 1)
        self.assertIn("not tied", losses[0])
        again = tambo.open(self.folder / "family.fasta").alignment
        self.assertEqual(self.texts(again), self.texts(family))
        self.assertEqual(tambo.save(family, self.folder / "same.ali"), [])

    def test_a_format_can_be_named(self):
        family = self.family()
        family.save(self.folder / "family.txt", format="clustal")
        self.assertTrue((self.folder / "family.txt").read_text().startswith("CLUSTAL"))
        for format in (None, "nonsense", "pdb"):
            with self.assertRaises(ValueError):
                family.save(self.folder / "family.other", format=format)
        self.assertFalse((self.folder / "family.other").exists())

    def test_sequences_come_without_an_alignment(self):
        (self.folder / "two.fasta").write_text(">one\nMKV\n>two\nMK\n")
        opened = tambo.open(self.folder / "two.fasta")
        self.assertEqual([chain.letters for chain in opened.sequences], ["MKV", "MK"])
        with self.assertRaisesRegex(ValueError, "0 alignments"):
            opened.alignment

    def test_a_structure_is_opened_and_saved(self):
        structure = tambo.open(STRUCTURES / "lysozyme_1aki.pdb").structure
        structure.save(self.folder / "copy.cif")
        again = tambo.open(self.folder / "copy.cif").structure
        self.assertEqual([chain.letters for chain in again.chains],
                         [chain.letters for chain in structure.chains])
        self.assertEqual(again.atom_positions().tolist(), structure.atom_positions().tolist())

    def test_a_bad_file_names_its_line_and_leaves_nothing(self):
        bad = self.folder / "bad.ali"
        bad.write_text(">P1;one\nsequence:one::::::::\nMKV*\nnonsense\n>P1;")
        with self.assertRaises(tambo.FormatError) as caught:
            tambo.open(bad)
        self.assertEqual(caught.exception.file, "bad.ali")
        self.assertGreater(caught.exception.line, 0)
        self.assertIn(f"bad.ali:{caught.exception.line}: ", str(caught.exception))
        self.assertIsInstance(caught.exception, ValueError)
        self.assertEqual((tambo.alignments(), tambo.history()), ([], []))

    def test_a_file_that_is_not_there_is_what_python_calls_it(self):
        with self.assertRaises(FileNotFoundError) as caught:
            tambo.open(self.folder / "none.ali")
        self.assertEqual(caught.exception.filename, str(self.folder / "none.ali"))

    def test_a_file_that_cannot_be_written_raises(self):
        with self.assertRaises(OSError):
            self.family().save(self.folder / "none" / "family.fasta")

    def test_opening_is_a_step_of_undo(self):
        opened = tambo.open(EXAMPLES / "serine_proteases.ali")
        tambo.undo()
        self.assertFalse(opened.alignments[0].exists)
        tambo.redo()
        self.assertTrue(opened.alignment.exists)
