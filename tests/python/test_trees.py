# SPDX-License-Identifier: GPL-3.0-or-later
import io

import tambo

from cases import Case

ROWS = [("a", "MKVLAAGG"), ("b", "MKVLAAGC"), ("c", "MRVIAAHC"), ("d", "MRVIYYHC")]


class OfRows(Case):
    def tree(self):
        self.alignment = self.family(ROWS)
        return self.alignment.neighbor_tree()

    def test_its_leaves_are_the_rows(self):
        tree = self.tree()
        self.assertEqual(len(tree), 4)
        self.assertEqual(sorted(tree.names), ["a", "b", "c", "d"])
        self.assertEqual({leaf.row for leaf in tree.leaves}, set(self.alignment))
        for leaf in tree.leaves:
            self.assertEqual((leaf.row.name, leaf.is_leaf, leaf.leaves, leaf.children),
                             (leaf.name, True, [leaf], []))
        self.assertEqual(tree.alignment, self.alignment)
        self.assertEqual([row.name for row in tree.rows], tree.names)

    def test_its_text_is_newick_and_is_read_again(self):
        tree = self.tree()
        again = tambo.Tree(str(tree))
        self.assertTrue(str(tree).endswith(";"))
        self.assertEqual(str(again), str(tree))
        self.assertIsNone(again.alignment)
        self.assertEqual((again.rows, again.leaves[0].row), ([], None))
        self.assertEqual(tambo.Tree(str(tree), self.alignment).rows, tree.rows)

    def test_ways_between_leaves_are_the_shares_that_differ_when_these_add_up(self):
        tree = self.tree().midpoint_rooted()
        shares = 1 - self.alignment.identity_matrix(of="aligned").values
        self.assertEqual(len(tree.root.children), 2)
        for one in tree.leaves:
            for other in tree.leaves:
                self.assertAlmostEqual(self.way(one, other), shares[one.row.index, other.row.index])

    def way(self, one, other):
        above = {}
        clade = one
        while clade is not None:
            above[clade] = one.depth - clade.depth
            clade = clade.parent
        clade = other
        while clade not in above:
            clade = clade.parent
        return above[clade] + other.depth - clade.depth

    def test_rows_come_to_stand_as_its_leaves_in_one_step(self):
        tree = self.tree().midpoint_rooted().ladderized()
        self.alignment.move_row(0, 2)
        before, steps = self.alignment.names, len(tambo.history())
        self.alignment.reorder(tree)
        self.assertEqual(self.alignment.names, tree.names)
        self.assertEqual([leaf.row.index for leaf in tree.leaves], [0, 1, 2, 3])
        self.assertEqual(len(tambo.history()), steps + 1)
        tambo.undo()
        self.assertEqual(self.alignment.names, before)

    def test_rows_of_one_name_are_told_apart_by_the_tree_that_was_made_of_them(self):
        alignment = self.family([("x", "MKVL"), ("x", "WWWW"), ("x", "MKVC")])
        tree = alignment.neighbor_tree().midpoint_rooted()
        alignment.reorder(tree)
        self.assertEqual(sorted(self.texts(alignment)[1:] if "W" in self.texts(alignment)[0]
                                else self.texts(alignment)[:2]), ["MKVC", "MKVL"])
        with self.assertRaisesRegex(ValueError, "several rows have: 'x', 'x', 'x'"):
            alignment.reorder(tambo.Tree(str(tree)))

    def test_a_tree_of_other_rows_changes_nothing(self):
        tree = self.tree()
        self.alignment.remove_rows([0])
        for other in (tree, tambo.Tree("(b,c,(d,x));"), tambo.Tree("(b,c);")):
            with self.assertRaisesRegex(ValueError, "not one of these rows"):
                self.alignment.reorder(other)
        self.assertEqual(self.alignment.names, ["b", "c", "d"])
        gone = next(leaf for leaf in tree.leaves if leaf.name == "a")
        with self.assertRaises(tambo.GoneError):
            gone.row.index
        self.alignment.reorder(tambo.Tree("(d,(c,b));"))
        self.assertEqual(self.alignment.names, ["d", "c", "b"])

    def test_trees_keep_what_they_are_of_no_longer_than_it_is_there(self):
        tree = self.tree()
        tambo.clear()
        self.assertEqual(len(tree.names), 4)
        self.assertEqual(len(tree.midpoint_rooted()), 4)
        with self.assertRaises(tambo.GoneError):
            tree.rows[0].name

    def test_few_rows_have_a_tree_too(self):
        self.assertEqual(str(self.family([("one", "MK")]).neighbor_tree()), "one;")
        pair = self.family([("one", "MK"), ("two", "MR")]).neighbor_tree()
        self.assertEqual([leaf.length for leaf in pair.leaves], [0.25, 0.25])
        alignment = self.family()
        alignment.remove_rows(None)
        with self.assertRaises(tambo.RefusedError):
            alignment.neighbor_tree()


class AsText(Case):
    def test_clades_know_what_is_above_and_below(self):
        tree = tambo.Tree("((a:1,'b b':2.5)0.9:0.5,c)root;")
        self.assertEqual([clade.name for clade in tree], ["root", "0.9", "a", "b b", "c"])
        pair = tree["0.9"]
        self.assertEqual((pair.parent, pair.length, pair.depth, len(pair)), (tree.root, 0.5, 0.5, 2))
        self.assertEqual([child.name for child in pair.children], ["a", "b b"])
        self.assertEqual(list(pair), [pair] + pair.children)
        self.assertEqual((tree["b b"].depth, tree["c"].length), (3.0, None))
        self.assertIsNone(tree.root.parent)
        self.assertEqual(tree["a"].tree, tree)
        self.assertEqual(len({tree["a"], tree.leaves[0]}), 1)
        with self.assertRaises(KeyError):
            tree["x"]

    def test_a_clade_keeps_its_tree(self):
        self.assertEqual(str(tambo.Tree("(a,b)ab;")["a"].parent.tree), "(a,b)ab;")

    def test_what_is_no_tree_is_told_with_its_place(self):
        for text, said in (("(a,(b;", "line 1, column 6"), ("", "no tree"), ("(a,\nb]);", "line 2, column 2")):
            with self.assertRaisesRegex(tambo.FormatError, said):
                tambo.Tree(text)

    def test_a_deep_tree_is_no_matter(self):
        tree = tambo.Tree("(" * 50_000 + "a" + ")" * 50_000 + ";")
        self.assertEqual((len(tree), len(list(tree))), (1, 50_001))
        self.assertEqual(str(tambo.from_biopython(tree.to_biopython())).count("("), 50_000)


class AsFiles(Case):
    def test_they_are_written_and_read(self):
        tree = self.family(ROWS).neighbor_tree()
        tree.save(self.folder / "tree.nwk")
        self.assertEqual((self.folder / "tree.nwk").read_text(), f"{tree}\n")
        again = tambo.read_tree(self.folder / "tree.nwk", alignment=tree.alignment)
        self.assertEqual((str(again), again.rows), (str(tree), tree.rows))

    def test_names_may_have_underscores_for_blanks(self):
        alignment = self.family([("a b", "MK"), ("c:d", "MR")])
        (self.folder / "tree.nwk").write_text("(c_d,a_b);")
        alignment.reorder(tambo.read_tree(self.folder / "tree.nwk"))
        self.assertEqual(alignment.names, ["c:d", "a b"])

    def test_what_is_wrong_in_a_file_is_told_with_file_and_line(self):
        alignment = self.family([("a", "MK"), ("b", "MR")])
        file = self.folder / "bad.nwk"
        for text, line, said in ((b"(a,\nb]);\n", 2, "bad.nwk:2: column 2: found"),
                                 (b"(a,\nb,\n\nx);\n", 4, "bad.nwk:4: .*no row: 'x'"),
                                 (b"(a,\n\xff);\n", 2, "bad.nwk:2: .*UTF-8")):
            file.write_bytes(text)
            with self.assertRaisesRegex(tambo.FormatError, said) as caught:
                tambo.read_tree(file, alignment)
            self.assertEqual((caught.exception.file, caught.exception.line), ("bad.nwk", line))
        with self.assertRaises(FileNotFoundError):
            tambo.read_tree(self.folder / "none.nwk")
        with self.assertRaises(OSError):
            tambo.read_tree(self.folder)
        with self.assertRaises(OSError):
            tambo.Tree("a;").save(self.folder / "none" / "tree.nwk")

    def test_biopython_gets_and_gives_the_same_tree(self):
        from Bio import Phylo
        tree = tambo.Tree("((a:1,'it''s b':2.5)'0.9':0.5,c:1e-07);")
        theirs = tree.to_biopython()
        self.assertEqual([leaf.name for leaf in theirs.get_terminals()], tree.names)
        self.assertEqual(theirs.distance("a", "c"), 1.5 + 1e-07)
        self.assertEqual(str(tambo.from_biopython(theirs)), str(tree))
        # Their reader takes names of inner clades for supports, which come back as names.
        read = Phylo.read(io.StringIO("((a:1,b:2.5)0.9:0.5,c);"), "newick")
        self.assertEqual(str(tambo.from_biopython(read)), "((a:1,b:2.5)0.9:0.5,c);")


if __name__ == "__main__":
    import unittest
    unittest.main()
