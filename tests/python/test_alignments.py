# SPDX-License-Identifier: GPL-3.0-or-later

import sys
import threading
import time

import numpy
import tambo

from cases import ROWS, Case


class Reading(Case):
    def test_an_alignment_is_a_sequence_of_rows(self):
        family = self.family()
        self.assertEqual(len(family), 3)
        self.assertEqual(family.shape, (3, 6))
        self.assertEqual([row.name for row in family], ["one", "two", "three"])
        self.assertEqual([row.name for row in family[1:]], ["two", "three"])
        self.assertEqual(family[-1], family["three"])
        self.assertIn("two", family)
        self.assertNotIn("four", family)
        with self.assertRaises(KeyError):
            family["four"]
        for place in (3, -4):
            with self.assertRaises(IndexError):
                family[place]

    def test_a_row_is_text(self):
        row = self.family()["one"]
        self.assertEqual(str(row), "MK-V-L")
        self.assertEqual(row[0] + row[-1], "ML")
        self.assertEqual(row[1:4], "K-V")
        self.assertEqual(row.letters, "MKVL")
        self.assertEqual(row.column_of(2), 3)
        self.assertEqual(len(row), 6)
        with self.assertRaises(IndexError):
            row[6]

    def test_letters_are_an_array_of_codes(self):
        letters = self.family().letters()
        self.assertEqual((letters.shape, letters.dtype), ((3, 6), numpy.uint8))
        self.assertEqual([bytes(line).decode() for line in letters], [text for _, text in ROWS])
        part = self.family().letters(rows=[2, 0], columns=slice(1, 4), gap=".")
        self.assertEqual([bytes(line) for line in part], [b".AV", b"K.V"])

    def test_letters_and_occupancy_are_those_of_the_text_at_any_width(self):
        random = numpy.random.default_rng(7)
        for width in (1, 7, 8, 63, 64, 65, 72, 130, 1000):
            cells = random.choice(numpy.frombuffer(b"ACDEFW--", dtype=numpy.uint8), size=(20, width))
            cells[:, -1] = ord("A")
            family = self.family([(f"r{i}", bytes(line).decode()) for i, line in enumerate(cells)])
            numpy.testing.assert_array_equal(family.letters(), cells)
            numpy.testing.assert_array_equal(family.occupancy(), cells != ord("-"))
            cut = slice(width // 3, width - width // 4)
            numpy.testing.assert_array_equal(family.letters(columns=cut), cells[:, cut])
            numpy.testing.assert_array_equal(family.occupancy(columns=cut), cells[:, cut] != ord("-"))

    def test_letters_of_a_row_that_has_lost_columns_are_those_that_stayed(self):
        random = numpy.random.default_rng(8)
        cells = random.choice(numpy.frombuffer(b"ACDEFW--", dtype=numpy.uint8), size=(5, 300))
        cells[:, -1] = ord("A")
        family = self.family([(f"r{i}", bytes(line).decode()) for i, line in enumerate(cells)])
        gone = random.random(300) < 0.3
        gone[-1] = False
        family.remove_columns(gone)
        numpy.testing.assert_array_equal(family.letters(), cells[:, ~gone])

    def test_identity_is_a_share_of_what_is_asked_for(self):
        family = self.family([("one", "MKV--L"), ("two", "MR-VAL")])
        for of, share in (("shorter", 2 / 4), ("aligned", 2 / 3), ("overlap", 2 / 6)):
            matrix = family.identity_matrix(of=of)
            self.assertAlmostEqual(matrix[0, 1], share, msg=of)
            numpy.testing.assert_array_equal(numpy.asarray(matrix), matrix.values.T)
            self.assertEqual(list(numpy.diag(matrix.values)), [1, 1])
        with self.assertRaises(ValueError):
            family.identity_matrix(of="anything")

    def test_conservation_is_highest_where_all_rows_agree(self):
        scores = self.family([("one", "WA-"), ("two", "WG-"), ("three", "WV-")]).conservation()
        self.assertEqual(scores.shape, (3,))
        self.assertGreater(scores[0], scores[1])
        self.assertEqual(scores[2], 0)

    def test_distances_need_positions(self):
        self.assertTrue(numpy.isnan(self.family().column_distances()).all())

    def test_other_threads_run_while_the_letters_of_a_large_alignment_are_read(self):
        family = tambo.new_alignment("large", [(f"r{i}", "ACDEFGHIKL" * 200) for i in range(2000)])
        looks, has_ended = [0], False

        def look():
            while not has_ended:
                looks[0] += 1
                time.sleep(0)

        interval = sys.getswitchinterval()
        thread = threading.Thread(target=look)
        thread.start()
        try:
            # From here on it runs only where the interpreter is given up.
            sys.setswitchinterval(1000)
            time.sleep(0.01)
            before, deadline = looks[0], time.monotonic() + 60
            while looks[0] == before and time.monotonic() < deadline:
                family.letters()
            self.assertGreater(looks[0], before)
        finally:
            sys.setswitchinterval(interval)
            has_ended = True
            thread.join()


class Editing(Case):
    def test_gaps_come_and_move(self):
        family = self.family()
        family.insert_gaps(1, 1, 2)
        self.assertEqual(str(family["two"]), "M--RAV")
        family.move_gaps(1, 1, 2, 4)
        self.assertEqual(str(family["two"]), "MRAV--")
        family.drag(0, 2, 1, single=True)
        self.assertEqual(str(family["one"]), "M-KV-L")
        with self.assertRaisesRegex(ValueError, "are gaps"):
            family.move_gaps(0, 2, 2, 0)
        with self.assertRaises(IndexError):
            family.insert_gaps(0, 7)
        with self.assertRaises(ValueError):
            family.insert_gaps(0, 0, -1)

    def test_rows_and_columns_are_named_in_any_way(self):
        for columns in (2, [2], slice(2, 3), numpy.array([2]), numpy.arange(6) == 2,
                        [False, False, True, False, False, False]):
            family = self.family()
            family.remove_columns(columns)
            self.assertEqual(self.texts(family), ["MKV-L", "MRV--", "--VGL"], columns)
        family.remove_rows([-1])
        self.assertEqual(family.names, ["one", "two"])
        with self.assertRaises(IndexError):
            family.remove_columns([True, False])

    def test_residues_are_pushed_to_an_end(self):
        family = self.family()
        family.push(rows=[0], columns=slice(0, 5), to="right")
        self.assertEqual(self.texts(family)[0], "--MKVL")
        with self.assertRaises(ValueError):
            family.push(to="up")

    def test_rows_are_put_in_order(self):
        family = self.family()
        family.move_row(0, 2)
        self.assertEqual(family.names, ["two", "three", "one"])
        family.sort()
        self.assertEqual(family.names, ["one", "three", "two"])
        family.sort(key=lambda row: str(row), reverse=True)
        self.assertEqual(family.names, ["two", "one", "three"])
        for order in ([0, 0, 1], [0, 1], [0, 1, 3]):
            with self.assertRaises((ValueError, IndexError)):
                family.reorder(order)

    def test_a_part_is_an_alignment_of_its_own(self):
        family = self.family()
        part = family.part(rows=[0, 2], columns=slice(0, 4), name="part")
        self.assertEqual(self.texts(part), ["MK-V", "--AV"])
        part.insert_columns(0)
        self.assertEqual(family.width, 6)
        self.assertEqual([alignment.name for alignment in tambo.alignments()], ["family", "part"])

    def test_chains_become_rows(self):
        family = self.family()
        family.add_rows([tambo.new_sequence("new", "MKVLL")])
        self.assertEqual(self.texts(family)[-1], "MKVLL-")

    def test_rows_are_added_as_text(self):
        family = self.family()
        family.add_rows(texts=[("four", "-M.K~V"), ("five", "--------W-")])
        self.assertEqual(self.texts(family)[3:], ["-M-K-V---", "--------W"])
        self.assertEqual((family.names[3:], family["four"].chain.letters), (["four", "five"], "MKV"))
        chain = tambo.new_sequence("six", "MKVLL")
        family.add_rows([chain, chain], texts=["M-KVLL", "MKVLL"])
        self.assertEqual(self.texts(family)[5:], ["M-KVLL---", "MKVLL----"])
        for _ in range(3):
            tambo.undo()
        self.assertEqual((family.shape, tambo.history()), ((3, 6), ["add family"]))

    def test_texts_that_are_no_rows_add_nothing(self):
        family = self.family()
        chain = tambo.new_sequence("new", "MKV")
        steps = tambo.history()
        for texts in ([("a", "M K")], [("a", "MK"), ("", "M")], [("a", "---")]):
            with self.assertRaises(ValueError):
                family.add_rows(texts=texts)
        for texts in (["MKL"], ["MKV", "MKV"], ["MKVV"]):
            with self.assertRaises(ValueError):
                family.add_rows([chain], texts=texts)
        with self.assertRaises(TypeError):
            family.add_rows()
        family.locked = True
        for arguments in ({"texts": [("a", "MK")]}, {"chains": [chain]}):
            with self.assertRaisesRegex(tambo.RefusedError, "family is locked"):
                family.add_rows(**arguments)
        self.assertEqual((family.shape, tambo.history()), ((3, 6), steps))

    def test_what_cannot_be_an_alignment_leaves_nothing(self):
        for rows in ([("one", "MK"), ("two", "M")], [("one", "M K")], [("one", "M\xe9")]):
            with self.assertRaises(ValueError):
                tambo.new_alignment("bad", rows)
        self.assertEqual(tambo.alignments(), [])
        self.assertEqual(tambo.history(), [])


class Lifetimes(Case):
    def test_a_deleted_object_raises_until_undo_brings_it_back(self):
        family = self.family()
        row = family[0]
        family.delete()
        self.assertFalse(family.exists)
        for use in (lambda: family.width, lambda: family[0], lambda: str(row), lambda: family.delete()):
            with self.assertRaises(tambo.GoneError):
                use()
        self.assertIn("gone", repr(family))
        self.assertIn("gone", repr(row))
        tambo.undo()
        self.assertEqual(str(row), "MK-V-L")

    def test_a_row_stays_the_same_row_when_others_move(self):
        family = self.family()
        row = family["two"]
        family.move_row(2, 0)
        self.assertEqual((row.index, str(row)), (2, "MRAV--"))
        family.remove_rows([row.index])
        with self.assertRaisesRegex(tambo.GoneError, "no more"):
            row.index
        tambo.undo()
        self.assertEqual(row.index, 2)

    def test_what_was_cleared_is_gone(self):
        family = self.family()
        tambo.clear()
        with self.assertRaises(tambo.GoneError):
            family.letters()

    def test_objects_are_equal_when_they_are_the_same(self):
        family = self.family()
        self.assertEqual(family, tambo.alignments()[0])
        self.assertEqual(len({family, tambo.alignments()[0]}), 1)
        self.assertEqual(len({row for row in family} | {row for row in family}), 3)
        self.assertNotEqual(family, self.family())

    def test_a_locked_alignment_refuses(self):
        family = self.family()
        family.locked = True
        with self.assertRaisesRegex(tambo.RefusedError, "locked"):
            family.insert_gaps(0, 0)
        self.assertEqual(self.texts(family)[0], "MK-V-L")
        family.locked = False
        family.name = "renamed"
        self.assertEqual(tambo.alignments()[0].name, "renamed")
