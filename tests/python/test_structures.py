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

    def test_what_a_lock_holds_is_refused_inside_of_a_step_as_well(self):
        fixed, other, pair = self.superposable()
        before = other.atom_positions()
        other.locked = True
        for name in ("Superpose", "Color"):
            with self.assertRaisesRegex(tambo.RefusedError, "locked"), tambo.step(name):
                pair.name = name
                if name == "Superpose":
                    tambo.superpose(pair)
                else:
                    sequence = tambo.new_sequence("tied", "VFG")
                    sequence.tie(other["A"], [(0, 1)])
                    sequence[0].color = 0x123456
        numpy.testing.assert_array_equal(other.atom_positions(), before)
        self.assertNotIn(pair.name, ("Superpose", "Color"))
        # Nothing of it is left for what comes next.
        with tambo.step("Rename"):
            pair.name = "next"
        self.assertEqual(pair.name, "next")

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


class Residues(Case):
    def chain(self):
        return tambo.open(STRUCTURES / "lysozyme_1aki.pdb").structure["A"]

    def test_a_chain_is_a_sequence_of_residues(self):
        chain = self.chain()
        self.assertEqual([residue.letter for residue in chain], list(chain.letters))
        self.assertEqual([residue.number for residue in chain[2:5]], ["3", "4", "5"])
        self.assertEqual((chain[-1], chain[0]), (chain["129"], chain["1"]))
        self.assertEqual(len({*chain, *chain}), 129)
        self.assertIn("7", chain)
        self.assertNotIn("130", chain)
        self.assertIn(chain[3], chain)
        for named, error in ((129, IndexError), (-130, IndexError), ("130", KeyError), ("x", KeyError)):
            with self.assertRaises(error):
                chain[named]

    def test_a_residue_tells_what_is_known_of_it(self):
        chain = self.chain()
        residue = chain["6"]
        self.assertEqual((residue.index, residue.chain, residue.letter, residue.type_name),
                         (5, chain, "C", "CYS"))
        self.assertEqual((residue.sequence_number, residue.insertion_code), (6, ""))
        self.assertEqual(residue.secondary_structure, chain.secondary_structure[5])
        self.assertEqual(residue.color, chain.colors[5])
        numpy.testing.assert_array_equal(residue.ca_position, chain.ca_positions()[5])
        self.assertIn("CYS", repr(residue))

    def test_insertion_codes_find_their_residue(self):
        chain = tambo.open(STRUCTURES / "insertion_codes_1dix.pdb").structure.chains[0]
        number = next(number for number in chain.numbers if number[-1].isalpha())
        residue = chain[number]
        self.assertEqual((residue.number, residue.index), (number, chain.numbers.index(number)))
        self.assertEqual((str(residue.sequence_number), residue.insertion_code), (number[:-1], number[-1]))

    def test_atoms_are_those_of_the_file(self):
        structure = tambo.open(STRUCTURES / "lysozyme_1aki.pdb").structure
        table, places = structure.atoms(), structure.atom_positions()
        atoms = [atom for residue in structure["A"] for atom in residue.atoms]
        self.assertEqual([atom.name for atom in atoms], table["name"][:len(atoms)])
        self.assertEqual([atom.element for atom in atoms], table["element"][:len(atoms)])
        self.assertEqual([atom.b_factor for atom in atoms], table["b_factor"][:len(atoms)].tolist())
        self.assertEqual({atom.occupancy for atom in atoms}, {1.0})
        numpy.testing.assert_array_equal([atom.position for atom in atoms], places[:len(atoms)])
        residue = structure["A"][0]
        numpy.testing.assert_array_equal(residue["CA"].position, residue.ca_position)
        self.assertEqual((residue["CA"].residue, len({*residue.atoms, *residue.atoms})), (residue, len(residue.atoms)))
        with self.assertRaises(KeyError):
            residue["XX"]

    def test_number_and_color_are_set_in_a_step_of_undo(self):
        residue = self.chain()[3]
        before, color = residue.number, residue.color
        residue.number = "60A"
        self.assertEqual((residue.number, residue.insertion_code), ("60A", "A"))
        residue.color = 0x123456
        self.assertEqual(residue.color, 0xff123456)
        tambo.undo()
        tambo.undo()
        self.assertEqual((residue.number, residue.color), (before, color))
        with self.assertRaisesRegex(ValueError, "no number"):
            residue.number = "x"
        residue.chain.structure.locked = True
        with self.assertRaises(tambo.RefusedError):
            residue.number = "60A"

    def test_selecting_is_no_step_of_undo(self):
        residue = self.chain()[3]
        steps = tambo.history()
        residue.selected = True
        self.assertEqual([other.index for other in residue.chain if other.selected], [3])
        self.assertEqual(tambo.history(), steps)

    def test_a_residue_of_what_is_gone_raises(self):
        chain = self.chain()
        residue, atom = chain[3], chain[3]["CA"]
        chain.structure.delete()
        for use in (lambda: residue.number, lambda: residue.atoms, lambda: atom.position, lambda: chain[3]):
            with self.assertRaises(tambo.GoneError):
                use()
        self.assertIn("gone", repr(residue))
        self.assertIn("gone", repr(atom))
        tambo.undo()
        self.assertEqual(residue["CA"], atom)

    def test_a_tied_residue_has_its_own_letter_and_the_atoms_of_the_chain(self):
        chain = self.chain()
        sequence = tambo.new_sequence("tied", "WFG")
        self.assertEqual((sequence[0].atoms, sequence.structure), ([], None))
        sequence.tie(chain, [(0, 1), (2, 3)])
        atom = sequence[0]["CA"]
        self.assertEqual((sequence[0].letter, sequence[0].number), ("W", "2"))
        numpy.testing.assert_array_equal(atom.position, chain[1].ca_position)
        self.assertEqual(sequence.structure, chain.structure)
        sequence.untie(chain)
        with self.assertRaises(tambo.GoneError):
            atom.position

    def test_a_row_leads_to_its_residues_and_its_structure(self):
        chain = self.chain()
        family = self.family([("a", "MK-V")])
        self.assertIsNone(family[0].structure)
        self.assertEqual([residue.letter for residue in family[0].residues], ["M", "K", "V"])
        self.assertEqual(family[0].residue_at(3), family[0].chain[2])
        self.assertIsNone(family[0].residue_at(2))
        family.add_rows([chain])
        self.assertEqual(family[1].structure, chain.structure)
        family.remove_columns([1, 2])
        self.assertEqual([residue.index for residue in family[1].residues][:3], [0, 3, 4])
        self.assertEqual(family[1].residue_at(1), chain[3])
