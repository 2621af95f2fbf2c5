# SPDX-License-Identifier: GPL-3.0-or-later
import os
import struct
import unittest.mock

import numpy
import tambo

from cases import EXAMPLES, STRUCTURES, Case

SMALL = (200, 150)


def png_size(data):
    assert data.startswith(b"\x89PNG\r\n\x1a\n"), data[:20]
    return struct.unpack(">II", data[16:24])


class Pictures(Case):
    def setUp(self):
        super().setUp()
        user = unittest.mock.patch.dict(os.environ, TAMBO_USER_DIR=str(self.folder / "user"))
        user.start()
        self.addCleanup(user.stop)

    def files(self):
        return sorted(file.name for file in self.folder.iterdir() if file.is_file())

    def peptide(self):
        return tambo.open(STRUCTURES / "six_residue_peptide_5e5z.pdb").structure

    def test_an_alignment_is_printed_a_file_for_each_page(self):
        family = tambo.open(EXAMPLES / "serine_proteases.ali").alignment
        made = family.picture(self.folder / "family.png")
        self.assertEqual([file.name for file in made], ["family-1.png", "family-2.png"])
        self.assertEqual(self.files(), ["family-1.png", "family-2.png"])
        for file in made:
            self.assertEqual(png_size(file.read_bytes()), (1240, 1754))
        self.assertEqual(family.picture(), made[0].read_bytes())
        self.assertEqual(family.picture(page=1), made[1].read_bytes())
        with self.assertRaisesRegex(IndexError, "it|alignment has 2"):
            family.picture(page=2)

    def test_rows_columns_and_fonts_are_chosen(self):
        family = tambo.open(EXAMPLES / "serine_proteases.ali").alignment
        self.assertEqual(family.picture(self.folder / "a.svg", rows=[0, 2, 5], columns=slice(40, 60)),
                         [self.folder / "a.svg"])
        self.assertEqual(self.files(), ["a.svg"])
        part = family.part(rows=[0, 2, 5], columns=slice(40, 60), name="serine_proteases")
        self.assertNotEqual(part.picture(), family.picture())
        chosen = family.occupancy()[:, 50]
        many = family.picture(rows=chosen, columns=range(40, 60), style="slim", font=("DejaVu Sans Mono", 8))
        self.assertNotEqual(many, family.picture(columns=range(40, 60), style="slim"))
        self.assertTrue((family.picture(self.folder / "b.pdf", secondary_structure=True)[0]).read_bytes()
                        .startswith(b"%PDF"))
        self.assertTrue(family.picture(self.folder / "b.ps")[0].read_bytes().startswith(b"%!PS"))

    def test_the_alignment_is_drawn_as_it_is_now(self):
        family = self.family()
        other = tambo.new_alignment("family", [("one", "MW"), ("two", "MW")])
        before, steps = family.picture(), tambo.history()
        self.assertNotEqual(other.picture(), before)
        self.assertEqual(tambo.history(), steps)
        with tambo.step("Color"):
            family[0].chain.set_color(None, 0xff0000)
            self.assertNotEqual(family.picture(), before)
        tambo.undo()
        self.assertEqual(family.picture(), before)

    def test_a_structure_is_drawn(self):
        peptide = self.peptide()
        data = peptide.picture(size=SMALL)
        self.assertEqual(png_size(data), SMALL)
        self.assertEqual(peptide.picture(self.folder / "p.png", size=SMALL), [self.folder / "p.png"])
        self.assertEqual((self.folder / "p.png").read_bytes(), data)
        others = [peptide.picture(size=SMALL, **option) for option in (
            {"style": "spheres"}, {"view": "top"}, {"ground": "dark"}, {"transparent": True},
            {"color": "fold"}, {"perspective": True})]
        self.assertEqual(len({data, *others}), 7)
        self.assertEqual(png_size(peptide._repr_png_()), (640, 480))

    def test_a_structure_is_drawn_alone_and_several_as_they_lie(self):
        peptide = self.peptide()
        alone = peptide.picture(size=SMALL)
        ubiquitin = tambo.open(STRUCTURES / "ubiquitin_1ubi.pdb").structure
        self.assertEqual(peptide.picture(size=SMALL), alone)
        both = tambo.picture(size=SMALL)
        self.assertEqual(tambo.picture(structures=[ubiquitin, peptide], size=SMALL), both)
        self.assertEqual(len({alone, both, ubiquitin.picture(size=SMALL)}), 3)

    def test_colors_of_residues_are_drawn(self):
        peptide = self.peptide()
        before = peptide.picture(size=SMALL)
        peptide.chains[0].set_color(None, 0xff0000)
        self.assertNotEqual(peptide.picture(size=SMALL), before)

    def test_wrong_arguments_are_told_before(self):
        family, peptide = self.family(), self.peptide()
        for call in (lambda: family.picture(self.folder / "x.gif"), lambda: family.picture(style="thick"),
                     lambda: family.picture(rows=[]), lambda: family.picture(font="Times"),
                     lambda: family.picture(font=("A,b", 3)), lambda: peptide.picture(self.folder / "x.svg"),
                     lambda: peptide.picture(size=(0, 5)), lambda: peptide.picture(size=7),
                     lambda: peptide.picture(color="green"), lambda: tambo.picture(structures=[])):
            with self.assertRaises(ValueError):
                call()
        with self.assertRaises(IndexError):
            family.picture(rows=[9])
        family.delete()
        peptide.delete()
        for call in (family.picture, peptide.picture):
            with self.assertRaises(tambo.GoneError):
                call()
        self.assertEqual(self.files(), [])

    def test_what_the_program_refuses_is_one_message_and_leaves_the_old_file(self):
        many = self.family([(f"r{i}", "ACDEF") for i in range(400)])
        (self.folder / "x.pdf").write_text("old")
        with self.assertRaises(tambo.ProgramError) as caught:
            many.picture(self.folder / "x.pdf")
        self.assertEqual(str(caught.exception), "No picture of the alignment family was made: Too many sequences "
                         "to fit in one page. Consider smaller font.")
        self.assertEqual((caught.exception.program, caught.exception.status), ("tambo", 1))
        self.assertEqual((self.folder / "x.pdf").read_text(), "old")
        with self.assertRaisesRegex(tambo.ProgramError, "no font called Nowhere Sans is installed"):
            many.picture(font=("Nowhere Sans", 8))

    def test_without_the_program_there_is_one_clear_exception(self):
        peptide = self.peptide()
        with unittest.mock.patch("tambo._programs.installation", return_value=self.folder), \
                unittest.mock.patch.dict(os.environ, PATH=str(self.folder)):
            with self.assertRaisesRegex(tambo.ProgramError, "there is no program tambo"):
                peptide.picture()
            self.assertIsNone(peptide._repr_png_())
        self.assertGreater(numpy.isfinite(peptide.atom_positions()).sum(), 0)


if __name__ == "__main__":
    unittest.main()
