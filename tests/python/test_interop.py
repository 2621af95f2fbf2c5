# SPDX-License-Identifier: GPL-3.0-or-later
import tambo

from cases import STRUCTURES, Case


class Biopython(Case):
    def test_alignments_go_there_and_back(self):
        family = self.family()
        theirs = family.to_biopython()
        self.assertEqual([str(record.seq) for record in theirs], self.texts(family))
        ours = tambo.from_biopython(theirs, name="back")
        self.assertEqual((ours.name, ours.names, self.texts(ours)),
                         ("back", family.names, self.texts(family)))

    def test_structures_go_there_and_back(self):
        structure = tambo.open(STRUCTURES / "lysozyme_1aki.pdb").structure
        theirs = structure.to_biopython()
        self.assertEqual([chain.id for chain in theirs.get_chains()], ["A"])
        steps = len(tambo.history())
        ours = tambo.from_biopython(theirs)
        self.assertEqual(ours["A"].letters, structure["A"].letters)
        self.assertEqual(ours["A"].ca_positions().tolist(), structure["A"].ca_positions().tolist())
        self.assertEqual(len(tambo.history()), steps + 1)


class Pandas(Case):
    def test_an_alignment_is_a_table_of_letters(self):
        table = self.family().to_dataframe()
        self.assertEqual(table.shape, (3, 6))
        self.assertEqual("".join(table.loc["two"]), "MRAV--")

    def test_a_matrix_has_the_names_of_its_rows(self):
        table = self.family().identity_matrix().to_dataframe()
        self.assertEqual((list(table.index), list(table.columns)), (["one", "two", "three"],) * 2)

    def test_a_structure_is_a_table_of_atoms(self):
        table = tambo.open(STRUCTURES / "lysozyme_1aki.pdb").structure.to_dataframe()
        self.assertEqual(sum(table["name"] == "CA"), 129)
        self.assertEqual(list(table.columns[-3:]), ["x", "y", "z"])


class Notebook(Case):
    def test_nothing_of_a_file_gets_into_the_page_as_it_is(self):
        family = self.family([("<b>one", "MK"), ("two&", "MR")])
        family.name = "<script>"
        for page in (family._repr_html_(), family.identity_matrix()._repr_html_()):
            self.assertNotIn("<script>", page)
            self.assertNotIn("<b>one", page)
            self.assertIn("&lt;b&gt;one", page)
        self.assertIn("MK", family._repr_html_())
        self.assertIn("50.0", family.identity_matrix()._repr_html_())

    def test_a_large_alignment_shows_its_beginning(self):
        page = self.family([(f"r{i}", "A" * 300) for i in range(60)])._repr_html_()
        self.assertIn("60 rows x 300 columns, of which 50 x 200 are shown", page)
        self.assertEqual(page.count("<tr>"), 50)

    def test_one_that_is_gone_says_so(self):
        family = self.family()
        family.delete()
        self.assertIn("gone", family._repr_html_())
