# SPDX-License-Identifier: GPL-3.0-or-later
import ast
import doctest
import os
import pathlib
import pkgutil
import subprocess
import sys
import unittest

import tambo

from cases import SOURCE, Case

PACKAGE = pathlib.Path(tambo.__file__).parent
STUB = PACKAGE / "__init__.pyi"

SCRIPT = """
import tambo
family = tambo.open("x.ali").alignment
with tambo.step("name"):
    family.sort(key=lambda row: len(row.letters))
names: list[str] = [row.name for row in family]
first: str = family[0][3:5]
share = family.occupancy().mean(axis=0)
losses: list[str] = family.save("y.ali")
"""
WRONG = """
import tambo
tambo.alignments()[0].insert_gaps("one", 2)
"""


class Examples(Case):
    def test_those_of_the_package_are_true(self):
        for module in [tambo] + [__import__(f"tambo.{entry.name}", fromlist=["x"])
                                 for entry in pkgutil.iter_modules([str(PACKAGE)])]:
            tambo.clear()
            self.assertEqual(doctest.testmod(module).failed, 0, module)

    def test_those_of_the_page_are_true(self):
        before = os.getcwd()
        self.addCleanup(os.chdir, before)
        for name in ("serine_proteases.ali",):
            (self.folder / name).write_bytes((SOURCE / "examples" / name).read_bytes())
        os.chdir(self.folder)
        found = doctest.testfile(str(SOURCE / "docs" / "python.md"), module_relative=False)
        self.assertGreater(found.attempted, 10)
        self.assertEqual(found.failed, 0)


class Stubs(unittest.TestCase):
    def mypy(self, text):
        environment = dict(os.environ, MYPYPATH=str(PACKAGE.parent))
        return subprocess.run(["mypy", "--strict", "--cache-dir", os.devnull, "-c", text],
                              capture_output=True, text=True, env=environment, cwd="/")

    def test_they_are_sound_and_know_what_scripts_do(self):
        checked = self.mypy(SCRIPT)
        self.assertEqual(checked.returncode, 0, checked.stdout)

    def test_they_tell_of_a_wrong_argument(self):
        checked = self.mypy(WRONG)
        self.assertIn('Argument 1 to "insert_gaps"', checked.stdout)

    def test_they_are_what_there_is(self):
        environment = dict(os.environ, MYPYPATH=str(PACKAGE.parent))
        checked = subprocess.run([sys.executable, "-m", "mypy.stubtest", "--concise", "tambo"],
                                 capture_output=True, text=True, env=environment, cwd="/")
        self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)

    def test_they_have_what_the_package_has(self):
        tree = ast.parse(STUB.read_text())
        functions = {node.name for node in tree.body if isinstance(node, ast.FunctionDef)}
        classes = {node.name: node for node in tree.body
                   if isinstance(node, ast.ClassDef) and not node.name.startswith("_")}
        self.assertEqual(functions | set(classes), set(tambo.__all__))
        for name, node in classes.items():
            said = {entry.name for entry in node.body if isinstance(entry, ast.FunctionDef)}
            said |= {entry.target.id for entry in node.body if isinstance(entry, ast.AnnAssign)}
            there = {member for member in vars(getattr(tambo, name)) if not member.startswith("_")}
            public = {member for member in said if not member.startswith("_")}
            if not issubclass(getattr(tambo, name), Exception):
                missing = public - there - ({"names", "values", "of"} if name == "IdentityMatrix" else set())
                self.assertEqual((missing, there - public), (set(), set()), name)

    def test_everything_public_is_documented(self):
        for name in tambo.__all__:
            what = getattr(tambo, name)
            self.assertTrue(what.__doc__, name)
            members = vars(what) if isinstance(what, type) and not issubclass(what, Exception) else {}
            for member in members:
                if not member.startswith("_"):
                    # The compiled half says arguments first.
                    text = (getattr(what, member).__doc__ or "").split(" -> ")[-1]
                    self.assertRegex(text, r"[A-Za-z]{3}.*[.]", f"{name}.{member}")

    def test_the_reference_is_what_the_docstrings_say(self):
        checked = subprocess.run([sys.executable, str(SOURCE / "docs" / "make-python-reference"), "--check"],
                                 capture_output=True, text=True)
        self.assertEqual(checked.returncode, 0, checked.stderr)


if __name__ == "__main__":
    unittest.main()
