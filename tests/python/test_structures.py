# SPDX-License-Identifier: GPL-3.0-or-later
import numpy
import tambo

from cases import STRUCTURES, Case


class Structures(Case):
    def lysozyme(self):
        return tambo.open(STRUCTURES / "lysozyme_1aki.pdb").structure

    def test_chains_have_residues(self):
        structure = self.lysozyme()
        chain = structure["A"]
        self.assertEqual(structure.chains, [chain])
        self.assertEqual(len(chain), 129)
        self.assertTrue(chain.letters.startswith("KVFGRCELAA"))
        self.assertEqual(chain.numbers[:3], ["1", "2", "3"])
        self.assertEqual(chain.type_names[:2], ["LYS", "VAL"])
        self.assertEqual(len(chain.secondary_structure), 129)
        self.assertIn("H", chain.secondary_structure)
        with self.assertRaises(KeyError):
            structure["B"]

    def test_positions_are_arrays_in_angstrom(self):
        structure = self.lysozyme()
        places = structure["A"].ca_positions()
        self.assertEqual((places.shape, places.dtype), ((129, 3), numpy.float32))
        steps = numpy.linalg.norm(numpy.diff(places, axis=0), axis=1)
        numpy.testing.assert_allclose(steps, 3.8, atol=0.2)
        atoms = structure.atoms()
        cas = [i for i, name in enumerate(atoms["name"]) if name == "CA"]
        numpy.testing.assert_array_equal(structure.atom_positions()[cas], places)
        self.assertEqual({len(column) for column in atoms.values()}, {len(structure.atom_positions())})

    def test_insertion_codes_are_part_of_numbers(self):
        chain = tambo.open(STRUCTURES / "insertion_codes_1dix.pdb").structure.chains[0]
        self.assertTrue(any(number[-1].isalpha() for number in chain.numbers))

    def test_residues_are_renumbered(self):
        chain = self.lysozyme()["A"]
        chain.renumber("10", slice(0, 3))
        self.assertEqual(chain.numbers[:4], ["10", "11", "12", "4"])
        tambo.undo()
        self.assertEqual(chain.numbers[0], "1")
        with self.assertRaises(ValueError):
            chain.renumber("x1")

    def test_elements_are_made_of_free_residues(self):
        chain = tambo.new_sequence("made", "MKVLAAGG")
        chain.make_element("H1", "H", slice(1, 5))
        self.assertEqual(chain.secondary_structure, "-HHHH---")
        with self.assertRaisesRegex(ValueError, "already"):
            chain.make_element("H2", "H", slice(4, 8))
        for type, residues in (("X", slice(5, 8)), ("H", [5, 6])):
            with self.assertRaises(ValueError):
                chain.make_element("bad", type, residues)

    def test_colors_are_set_and_taken_back(self):
        chain = tambo.new_sequence("made", "MKV")
        before = chain.colors
        chain.set_color([0, -1], 0x123456)
        self.assertEqual([color & 0xffffff for color in chain.colors][::2], [0x123456] * 2)
        tambo.undo()
        self.assertEqual(chain.colors, before)

    def superposable(self):
        """A chain and its copy, a rotation away, as two rows."""
        fixed = self.lysozyme()
        text = (STRUCTURES / "lysozyme_1aki.pdb").read_text().splitlines()
        moved = []
        for line in text:
            if line.startswith(("ATOM", "HETATM")):
                x, y, z = (float(line[i:i + 8]) for i in (30, 38, 46))
                line = f"{line[:30]}{-y + 5:8.3f}{x - 3:8.3f}{z + 1:8.3f}{line[54:]}"
            moved.append(line)
        (self.folder / "moved.pdb").write_text("\n".join(moved) + "\n")
        other = tambo.open(self.folder / "moved.pdb").structure
        pair = self.family([("a", "A")])
        pair.add_rows([fixed["A"], other["A"]])
        pair.remove_rows([0])
        return fixed, other, pair

    def test_structures_are_superposed_along_rows(self):
        fixed, other, pair = self.superposable()
        before = other.atom_positions()
        with tambo.step("Superpose"):
            told = tambo.superpose(pair)
        self.assertEqual([(fit["row"], fit["pairs"]) for fit in told], [(1, 129)])
        self.assertLess(told[0]["rmsd"], 0.01)
        numpy.testing.assert_allclose(other["A"].ca_positions(), fixed["A"].ca_positions(), atol=0.01)
        self.assertLess(numpy.nanmax(pair.column_distances()), 0.01)
        tambo.undo()
        numpy.testing.assert_array_equal(other.atom_positions(), before)

    def test_rows_without_structures_cannot_be_superposed(self):
        with self.assertRaises(tambo.RefusedError):
            tambo.superpose(self.family(), rows=[1])

    def test_a_sequence_is_tied_to_a_chain(self):
        chain = self.lysozyme()["A"]
        sequence = tambo.new_sequence("tied", "VFG")
        sequence.tie(chain, [(0, 1), (2, 3)])
        self.assertEqual(sequence.tied_to, [chain])
        self.assertEqual(sequence.numbers[::2], ["2", "4"])
        places = sequence.ca_positions()
        numpy.testing.assert_array_equal(places[::2], chain.ca_positions()[1:4:2])
        self.assertTrue(numpy.isnan(places[1]).all())
        tambo.undo()
        self.assertEqual(sequence.tied_to, [])
        tambo.redo()
        sequence.untie(chain)
        self.assertEqual(sequence.tied_to, [])

    def test_ties_that_make_no_sense_are_refused(self):
        chain = self.lysozyme()["A"]
        sequence = tambo.new_sequence("tied", "VFG")
        for one, other, pairs in ((sequence, chain, [(1, 1), (0, 0)]), (sequence, chain, [(0, 0), (0, 1)]),
                                  (chain, chain, [(0, 0)]), (sequence, sequence, [(0, 0)])):
            with self.assertRaises(ValueError):
                one.tie(other, pairs)
        with self.assertRaises(IndexError):
            sequence.tie(chain, [(3, 0)])
        self.assertEqual(sequence.tied_to, [])

    def test_a_deleted_structure_takes_its_chains_along(self):
        structure = self.lysozyme()
        chain = structure["A"]
        structure.delete()
        with self.assertRaises(tambo.GoneError):
            chain.ca_positions()
        with self.assertRaises(tambo.GoneError):
            structure.chains
        tambo.undo()
        self.assertEqual(len(chain), 129)

    def test_a_chain_is_not_deleted_by_itself(self):
        with self.assertRaisesRegex(tambo.RefusedError, "part of another"):
            self.lysozyme()["A"].delete()
