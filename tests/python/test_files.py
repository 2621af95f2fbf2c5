# SPDX-License-Identifier: GPL-3.0-or-later
import numpy
import tambo

from cases import EXAMPLES, SOURCE, STRUCTURES, Case


class Sessions(Case):
    def test_a_session_keeps_objects_and_steps(self):
        family = self.family()
        family.insert_gaps(0, 0)
        tambo.save_session(self.folder / "all.tambo")
        with self.assertRaisesRegex(tambo.RefusedError, "nothing is loaded"):
            tambo.open_session(self.folder / "all.tambo")
        tambo.clear()
        tambo.open_session(self.folder / "all.tambo")
        self.assertFalse(family.exists)
        again = tambo.alignments()[0]
        self.assertEqual(str(again[0]), "-MK-V-L")
        tambo.undo()
        self.assertEqual(str(again[0]), "MK-V-L")

    def test_those_of_the_workbench_open(self):
        for file in sorted((SOURCE / "tests" / "data" / "sessions").glob("*.tambo")):
            tambo.clear()
            tambo.open_session(file)
            self.assertTrue(tambo.alignments() or tambo.structures(), file)
            tambo.save_session(self.folder / file.name)
            tambo.clear()
            tambo.open_session(self.folder / file.name)
            self.assertTrue(tambo.alignments() or tambo.structures(), file)

    def test_an_object_of_before_is_not_taken_for_one_of_the_session(self):
        tambo.save_session(self.folder / "empty.tambo")
        before = [self.family() for _ in range(5)]
        structure = tambo.open(STRUCTURES / "lysozyme_1aki.pdb").structure
        tambo.save_session(self.folder / "all.tambo")
        tambo.clear()
        tambo.open_session(self.folder / "all.tambo")
        for one in (*before, structure):
            self.assertFalse(one.exists)
        self.assertEqual(len(set(before) & set(tambo.alignments())), 0)

    def test_what_is_no_session_is_refused_and_leaves_nothing(self):
        (self.folder / "bad.tambo").write_text("nonsense")
        with self.assertRaises((tambo.FormatError, tambo.RefusedError, OSError)) as caught:
            tambo.open_session(self.folder / "bad.tambo")
        self.assertIn("bad.tambo", str(caught.exception))
        with self.assertRaises(FileNotFoundError):
            tambo.open_session(self.folder / "none.tambo")
        with tambo.step("open"), self.assertRaises(tambo.StepError):
            tambo.save_session(self.folder / "x.tambo")
        self.assertEqual(tambo.alignments(), [])


class Files(Case):
    def test_a_file_is_opened_and_saved(self):
        family = tambo.open(EXAMPLES / "serine_proteases.ali").alignment
        self.assertEqual(family.shape, (6, 303))
        losses = family.save(self.folder / "family.fasta")
        self.assertEqual(len(losses), 1, losses)
        self.assertIn("not tied", losses[0])
        again = tambo.open(self.folder / "family.fasta").alignment
        self.assertEqual(self.texts(again), self.texts(family))
        self.assertEqual(tambo.save(family, self.folder / "same.ali"), [])

    def test_structures_beside_an_alignment_come_with_it(self):
        for file in EXAMPLES.iterdir():
            if file.is_file():
                (self.folder / file.name).write_bytes(file.read_bytes())
        opened = tambo.open(self.folder / "serine_proteases.ali")
        self.assertGreater(len(opened.structures), 1)
        family = opened.alignment
        self.assertGreater(numpy.isfinite(family.column_distances()).sum(), 100)
        self.assertEqual(family.save(self.folder / "same.ali"), [])
        tambo.undo()
        self.assertEqual((tambo.structures(), tambo.alignments()), ([], []))

    def test_a_format_can_be_named(self):
        family = self.family()
        family.save(self.folder / "family.txt", format="clustal")
        self.assertTrue((self.folder / "family.txt").read_text().startswith("CLUSTAL"))
        for format in (None, "nonsense", "pdb"):
            with self.assertRaises(ValueError):
                family.save(self.folder / "family.other", format=format)
        self.assertFalse((self.folder / "family.other").exists())

    def test_annotations_of_columns_and_residues_are_texts(self):
        (self.folder / "a.sto").write_text("# STOCKHOLM 1.0\none MK-V\n#=GR one SS HH.E\ntwo MRAV\n"
                                           "#=GC SS_cons HH.E\n//\n")
        family = tambo.open(self.folder / "a.sto").alignment
        self.assertEqual(family.annotations, {"SS_cons": "HH.E"})
        self.assertEqual((family[0].annotations, family[1].annotations), ({"SS": "HH.E"}, {}))
        family.remove_columns(0)
        self.assertEqual(family.annotations, {"SS_cons": "H.E"})

    def test_remarks_of_files_and_rows_are_pairs(self):
        (self.folder / "a.sto").write_text("# STOCKHOLM 1.0\n#=GF ID fam\n#=GF CC one\n#=GF CC two\n"
                                           "#=GS one AC P1\none MK\ntwo MR\n//\n")
        family = tambo.open(self.folder / "a.sto").alignment
        self.assertEqual(family.remarks, [("ID", "fam"), ("CC", "one"), ("CC", "two")])
        self.assertEqual([row.remarks for row in family], [[("AC", "P1")], []])
        (self.folder / "a.fasta").write_text(">one of  many\nMK\n>two\nMR\n")
        self.assertEqual([row.description for row in tambo.open(self.folder / "a.fasta").alignment],
                         ["of  many", ""])

    def test_what_files_say_of_rows_and_columns_is_set_in_steps_of_undo(self):
        (self.folder / "a.sto").write_text("# STOCKHOLM 1.0\none MK-V\n#=GR one SS HH.E\ntwo MRAV\n"
                                           "#=GC SS_cons HH.E\n//\n")
        family = tambo.open(self.folder / "a.sto").alignment
        one, two = family
        one.annotations = {"SS": "H-xE", "SA": "0123"}
        self.assertEqual(one.annotations, {"SS": "H-.E", "SA": "01.3"})
        family.insert_gaps(0, 0)
        self.assertEqual(one.annotations, {"SS": ".H-.E", "SA": ".01.3"})
        two.remarks = [("AC", "P2"), ("DE", "the second")]
        two.description = "another  one"
        family.annotations = {"SS_cons": "EEEEE"}
        family.save(self.folder / "b.sto")
        said = tambo.open(self.folder / "b.sto").alignment
        self.assertEqual((said[0].annotations, said.annotations), (one.annotations, {"SS_cons": "EEEEE"}))
        self.assertIn(("AC", "P2"), said[1].remarks)
        tambo.undo()
        for _ in range(5):
            tambo.undo()
        self.assertEqual((one.annotations, two.annotations, family.annotations), ({"SS": "HH.E"}, {}, {"SS_cons": "HH.E"}))
        self.assertEqual((two.remarks, two.description, two.index), ([], "", 1))

    def test_what_is_said_already_is_no_step_of_undo(self):
        (self.folder / "a.sto").write_text("# STOCKHOLM 1.0\n#=GF ID fam\n#=GS one OS x\none MK-V\n#=GR one SS HH.E\n"
                                           "#=GC RF xx.x\n//\n")
        family = tambo.open(self.folder / "a.sto").alignment
        before = tambo.history()
        family.remarks = family.remarks
        family.annotations = family.annotations
        family[0].remarks = family[0].remarks
        family[0].annotations = family[0].annotations
        family[0].description = family[0].description
        self.assertEqual((tambo.history(), family.modified), (before, False))

    def test_a_line_that_is_no_text_of_plain_characters_is_refused_and_named(self):
        (self.folder / "a.fasta").write_text(">one\nMK-V\n")
        family = tambo.open(self.folder / "a.fasta").alignment
        for said in (family, family[0]):
            with self.assertRaisesRegex(ValueError, "line SS has other characters than those of ASCII"):
                said.annotations = {"SS": "\u00e9\u00e9"}
            with self.assertRaisesRegex(TypeError, "a line is a text by its tag, and not 5 by 'SS'"):
                said.annotations = {"SS": 5}
            self.assertEqual(said.annotations, {})

    def test_lines_and_remarks_that_no_file_had_are_set_in_steps_of_undo(self):
        (self.folder / "a.fasta").write_text(">one\nMK-V\n>two\nMRAV\n")
        family = tambo.open(self.folder / "a.fasta").alignment
        self.assertEqual((family.annotations, family.remarks), ({}, []))
        family.annotations = {"SS_cons": "HH.E", "RF": "xx.x"}
        family.remarks = [("ID", "fam"), ("CC", "one"), ("CC", "two")]
        self.assertEqual(tambo.history()[1:], ["annotate columns in a", "write remarks in a"])
        family.insert_columns(1)
        self.assertEqual(family.annotations, {"SS_cons": "H.H.E", "RF": "x.x.x"})
        family.save(self.folder / "b.sto")
        said = tambo.open(self.folder / "b.sto").alignment
        self.assertEqual((said.annotations, said.remarks), (family.annotations, family.remarks))
        said.delete()
        tambo.save_session(self.folder / "a.tambo")
        tambo.clear()
        tambo.open_session(self.folder / "a.tambo")
        family, = tambo.alignments()
        self.assertEqual(family.annotations, {"SS_cons": "H.H.E", "RF": "x.x.x"})
        while tambo.history()[-1] != "write remarks in a":
            tambo.undo()
        self.assertEqual(family.remarks[0], ("ID", "fam"))
        family.annotations = {"RF": "xxxx"}
        self.assertEqual((family.annotations, family.remarks[0]), ({"RF": "xxxx"}, ("ID", "fam")))
        family.annotations = {}
        tambo.undo()
        tambo.undo()
        tambo.undo()
        self.assertEqual((family.annotations, family.remarks), ({"SS_cons": "HH.E", "RF": "xx.x"}, []))
        tambo.undo()
        self.assertEqual((family.annotations, family.remarks), ({}, []))

    def test_what_no_file_could_say_is_refused(self):
        family = self.family()
        row = family[0]
        for change in (lambda: setattr(row, "name", ""), lambda: setattr(row, "name", "a\nb"),
                       lambda: setattr(row, "description", "a\rb"), lambda: setattr(row, "remarks", [("a b", "x")]),
                       lambda: setattr(row, "annotations", {"SS": "HH"}), lambda: setattr(row, "annotations", {"": "HH----"}),
                       lambda: setattr(family, "annotations", {"SS": "HH"}), lambda: setattr(family, "annotations", {"a b": "HHHHHH"}),
                       lambda: setattr(family, "remarks", [("CC", "a\nb")])):
            with self.assertRaises(ValueError):
                change()
        family.locked = True
        with self.assertRaises(tambo.RefusedError):
            row.description = "x"
        self.assertEqual(tambo.history(), ["add family"])

    def test_a_row_of_a_chain_is_renamed_and_keeps_what_its_file_says(self):
        for file in EXAMPLES.iterdir():
            if file.is_file():
                (self.folder / file.name).write_bytes(file.read_bytes())
        family = tambo.open(self.folder / "serine_proteases.ali").alignment
        row = family["1BRU_P"]
        chain, index, text, annotations = row.chain, row.index, str(row), row.annotations
        row.name = "elastase"
        self.assertEqual((family["elastase"], row.name, row.chain, row.index, str(row), row.annotations),
                         (row, "elastase", chain, index, text, annotations))
        self.assertIsNotNone(row.structure)
        self.assertEqual(len(family), 6)
        self.assertEqual(family.save(self.folder / "renamed.ali"), [])
        before = (self.folder / "serine_proteases.ali").read_text().split(">P1;1BRU_P\n")[1].split("\n")[0]
        after = (self.folder / "renamed.ali").read_text().split(">P1;elastase\n")[1].split("\n")[0]
        self.assertEqual(after.strip(), before.strip())
        tambo.save_session(self.folder / "all.tambo")
        tambo.undo()
        self.assertEqual((row.name, row.index), ("1BRU_P", index))
        tambo.clear()
        tambo.open_session(self.folder / "all.tambo")
        again = tambo.alignments()[0]
        self.assertEqual(again.names[index], "elastase")
        tambo.undo()
        self.assertEqual(again.names[index], "1BRU_P")

    def test_a_sequence_of_its_own_is_renamed_as_in_the_workbench(self):
        family = self.family()
        part = family.part(rows=[0])
        family[0].name = "other"
        self.assertEqual((part.names, family[0].chain.name), (["other"], "other"))
        tambo.undo()
        self.assertEqual(part.names, ["one"])

    def test_a_part_tells_the_range_that_it_has(self):
        family = tambo.open(EXAMPLES / "serine_proteases.ali").alignment
        part = family.part(rows=[0], columns=slice(50, 100))
        part.save(self.folder / "part.fasta")
        self.assertEqual((self.folder / "part.fasta").read_text().split("\n")[0],
                         ">1A0J_A structureX:1A0J_A_superposed.pdb:59:A:91:A:serine protease: : :")

    def test_structures_that_are_not_found_are_told(self):
        (self.folder / "a.ali").write_text(">P1;one\nstructure:2abc:1:A:2:A::::\nMK*\n"
                                           ">P1;two\nstructureX:3abc_A:::::::: \nMR*\n")
        opened = tambo.open(self.folder / "a.ali")
        self.assertEqual(opened.missing_structures, ["2abc", "3abc_A"])
        self.assertEqual(opened.remarks, [
            "a.ali: found no structure for rows that name 2abc, 3abc_A: none is loaded, and no such file "
            "stands beside a.ali. These rows have no coordinates."])
        whole = tambo.open(STRUCTURES / "lysozyme_1aki.pdb")
        self.assertEqual(whole.missing_structures, [])

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


class Unsaved(Case):
    def test_what_no_file_has_is_unsaved_until_it_is_saved(self):
        self.assertEqual(tambo.unsaved(), [])
        family = self.family()
        opened = tambo.open(STRUCTURES / "ubiquitin_1ubi.pdb").structure
        self.assertEqual((tambo.unsaved(), family.modified, opened.modified), ([family], True, False))
        family.save(self.folder / "family.ali")
        self.assertEqual((tambo.unsaved(), family.modified), ([], False))
        family.insert_gaps(0, 0)
        self.assertTrue(family.modified)
        tambo.undo()
        self.assertFalse(family.modified)

    def test_a_session_saves_all(self):
        family = self.family()
        sequence = tambo.new_sequence("alone", "MKV")
        structure = tambo.open(STRUCTURES / "ubiquitin_1ubi.pdb").structure
        structure.chains[0].renumber("5")
        self.assertEqual(set(tambo.unsaved()), {family, sequence, structure})
        tambo.save_session(self.folder / "all.tambo")
        self.assertEqual((tambo.unsaved(), family.modified), ([], False))
        family.insert_gaps(0, 0)
        later = tambo.new_sequence("later", "MKV")
        self.assertEqual((set(tambo.unsaved()), structure.modified), ({family, later}, False))
        tambo.undo()
        tambo.undo()
        self.assertEqual(tambo.unsaved(), [])
        tambo.undo()
        # Its own file has it as it is now.
        self.assertEqual(tambo.unsaved(), [])
        tambo.clear()
        self.assertEqual(tambo.unsaved(), [])
        tambo.open_session(self.folder / "all.tambo")
        self.assertEqual((len(tambo.alignments()), tambo.unsaved()), (1, []))
        tambo.alignments()[0].insert_gaps(0, 0)
        self.assertEqual(tambo.unsaved(), tambo.alignments())

    def test_a_session_that_was_not_written_saves_nothing(self):
        family = self.family()
        with self.assertRaises(OSError):
            tambo.save_session(self.folder / "none" / "all.tambo")
        self.assertEqual(tambo.unsaved(), [family])
        with self.assertRaises(tambo.StepError), tambo.step("open"):
            tambo.save_session(self.folder / "all.tambo")
        self.assertEqual(tambo.unsaved(), [family])
