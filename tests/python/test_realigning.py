# SPDX-License-Identifier: GPL-3.0-or-later
import os
import pathlib
import signal
import subprocess
import sys
import threading
import time
from unittest import mock

import tambo
from tambo import _programs, _realigning, _settings

from cases import EXAMPLES, Case

ROWS = [("one", "AC-DEF"), ("two", "A-CDEF"), ("three", "ACD-EF")]
GOOD = "printf '>r0\\nCD\\n>r1\\nCD\\n>r2\\nCD\\n'\n"


class Realigning(Case):
    def setUp(self):
        super().setUp()
        self.use_settings("")

    def use_settings(self, text):
        user = self.folder / "user"
        (user / "config").mkdir(parents=True, exist_ok=True)
        (user / "config" / "tambo.ini").write_text(text)
        before = os.environ.get("TAMBO_USER_DIR")
        os.environ["TAMBO_USER_DIR"] = str(user)
        self.addCleanup(lambda: os.environ.pop("TAMBO_USER_DIR") if before is None
                        else os.environ.__setitem__("TAMBO_USER_DIR", before))

    def stand_in(self, script):
        """A program that is called with the input's name and may write into a file."""
        file = self.folder / "an aligner"
        file.write_text("#!/bin/sh\n" + script)
        file.chmod(0o755)
        return file

    def refusal(self, script, type=tambo.ProgramError):
        family = self.family(ROWS)
        before, steps = self.texts(family), tambo.history()
        with self.assertRaises(type) as caught:
            family.realign(slice(1, 4), program=self.stand_in(script), arguments=["{input}"])
        self.assertEqual((self.texts(family), tambo.history()), (before, steps))
        return str(caught.exception).replace(str(self.folder / "an aligner"), "PROGRAM")

    def test_columns_give_way_to_new_ones_in_one_step(self):
        family = self.family(ROWS)
        columns = family.realign(slice(1, 4), program=self.stand_in(GOOD), arguments=["{input}"])
        self.assertEqual(columns, slice(1, 3, 1))
        self.assertEqual(self.texts(family), ["ACDEF", "ACDEF", "ACDEF"])
        self.assertEqual(tambo.history()[1:], ["realign in family"])
        tambo.undo()
        self.assertEqual(self.texts(family), ["AC-DEF", "A-CDEF", "ACD-EF"])

    def test_the_workbenchs_program_aligns_and_no_residue_is_lost(self):
        family = tambo.open(EXAMPLES / "serine_proteases.ali").alignment
        before = [(row.name, row.letters) for row in family]
        self.assertEqual(_realigning.command()[0], "mafft")
        columns = family.realign()
        self.assertEqual((columns.start, columns.stop), (0, family.width))
        self.assertEqual([(row.name, row.letters) for row in family], before)
        # The serine of the catalytic triad stands in one column of them all.
        serine = family[0].column_of(family[0].letters.index("GDSGGP") + 2)
        self.assertEqual({row[serine] for row in family}, {"S"})
        self.assertGreater(family.identity_matrix(of="aligned").values.min(), 0.2)
        tambo.undo()
        self.assertEqual(family.shape, (6, 303))

    def test_rows_that_are_not_named_keep_their_cells(self):
        family = self.family([("one", "AC-DEF"), ("two", "A-CDEF"), ("three", "ACDWEF"), ("four", "A----F")])
        told = "test $(grep -c '>' \"$1\") = 2 || exit 9\n"
        script = told + "printf '>r0\\nC-D\\n>r1\\nCD-\\n'\n"
        family.realign(slice(1, 4), rows=[0, 1], program=self.stand_in(script), arguments=["{input}"])
        self.assertEqual(self.texts(family), ["AC-DEF", "ACD-EF", "ACDWEF", "A----F"])
        family.realign(slice(1, 4), rows=["o" in row.name for row in family][:2] + [False, False],
                       program=self.stand_in(told + "printf '>r0\\n-CD--\\n>r1\\nC---D\\n'\n"), arguments=["{input}"])
        self.assertEqual(self.texts(family), ["A-CD-EF", "AC--DEF", "ACDW-EF", "A-----F"])

    def test_an_answer_may_come_in_a_file(self):
        family = self.family(ROWS)
        family.realign(slice(1, 4), program=self.stand_in('exec > "$2"\n' + GOOD), arguments=["{input}", "{output}"])
        self.assertEqual(family.width, 5)

    def test_fewer_than_two_rows_with_residues_need_no_program(self):
        family = self.family([("one", "ACD"), ("two", "A--")])
        self.assertEqual(family.realign(slice(1, 3), program="no-such-aligner {input}"), slice(1, 3, 1))
        self.assertEqual(len(tambo.history()), 1)

    def test_what_goes_wrong_is_one_message_and_changes_nothing(self):
        said = "The columns of family were not realigned: PROGRAM "
        self.assertEqual(self.refusal("echo first >&2; echo no memory >&2; exit 3\n"), said + "failed: no memory.")
        self.assertEqual(self.refusal("exit 3\n"), said + "failed with status 3.")
        self.assertEqual(self.refusal("kill -SEGV $$\n"), said + "crashed.")
        self.assertIn("it changed the residues", self.refusal("printf '>r0\\nCW\\n>r1\\nCD\\n>r2\\nCD\\n'\n"))
        self.assertIn("lacks a sequence", self.refusal("printf '>r0\\nCD\\n'\n"))
        self.assertIn("is no FASTA", self.refusal("echo nonsense\n"))
        self.assertIn("printed more", self.refusal("exec yes AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA\n"))

    def test_a_program_that_is_not_there_is_told(self):
        family = self.family(ROWS)
        with self.assertRaises(tambo.ProgramError) as caught:
            family.realign(program="no-such-aligner {input}")
        self.assertEqual(str(caught.exception), "The columns of family were not realigned: no-such-aligner was not "
                         "found or cannot be started. Install it, or choose another aligner.")
        self.assertEqual((caught.exception.program, caught.exception.status), ("no-such-aligner", None))
        self.assertIn("Install it", self.refusal("no-such-part-of-it\n"))

    def test_a_locked_alignment_needs_no_program(self):
        family = self.family(ROWS)
        family.locked = True
        with self.assertRaisesRegex(tambo.RefusedError, "locked"):
            family.realign(program="no-such-aligner {input}")

    def test_wrong_arguments_are_told_before(self):
        family = self.family(ROWS)
        with self.assertRaisesRegex(ValueError, r"has no \{input\}"):
            family.realign(program="mafft")
        with self.assertRaisesRegex(ValueError, "empty"):
            family.realign(program="")
        with self.assertRaises(TypeError):
            family.realign(columns=3)
        with self.assertRaises(IndexError):
            family.realign(rows=[7])

    def test_programs_are_named_as_in_the_settings(self):
        self.use_settings('# mine\n[Realign]\nAligner = Own\nOwn = mafft --localpair\n  --quiet {input}\n'
                          'Quoted = " a \\"b c\\" {input}"\n')
        self.assertEqual(_realigning.command(), ["mafft", "--localpair", "--quiet", "{input}"])
        self.assertEqual(_realigning.command("Quoted"), ["a", "b c", "{input}"])
        self.assertEqual(_realigning.command("Kalign"), ["kalign", "-f", "fasta", "-i", "{input}", "-o", "{output}"])
        self.assertEqual(_realigning.command("Own", ["x{input}"]), ["mafft", "x{input}"])
        self.assertEqual(_realigning.command("a b {input}"), ["a", "b", "{input}"])
        self.assertEqual(_realigning.split('a  "b c"d """e""" ""'), ["a", "b cd", '"e"', ""])
        self.use_settings("[Realign]\nbroken\n")
        self.assertEqual(_realigning.command()[0], "mafft")
        with self.assertRaises(ValueError):
            _settings.parse("key = 1\n")

    def test_ctrl_c_ends_the_program_and_all_that_it_has_started(self):
        script = "echo $$ > \"$MARK\"; sleep 600 & echo $! >> \"$MARK\"; echo $TMPDIR >> \"$MARK\"; echo + >> \"$MARK\"; wait\n"
        mark = self.folder / "mark"
        os.environ["MARK"] = str(mark)
        self.addCleanup(os.environ.pop, "MARK")

        def interrupt():
            while not mark.exists() or "+" not in mark.read_text():
                time.sleep(0.01)
            signal.pthread_kill(threading.main_thread().ident, signal.SIGINT)

        thread = threading.Thread(target=interrupt)
        thread.start()
        self.refusal(script, KeyboardInterrupt)
        thread.join()
        *processes, folder, _ = mark.read_text().split()
        for process in processes:
            while os.path.exists(f"/proc/{process}/stat") and \
                    pathlib.Path(f"/proc/{process}/stat").read_text().split(")")[1].split()[0] != "Z":
                time.sleep(0.01)
        self.assertFalse(pathlib.Path(folder).exists())
        self.assertFalse(pathlib.Path(folder).parent.exists())

    def test_ctrl_c_while_a_program_is_being_started_ends_it(self):
        started = []

        class Interrupted(subprocess.Popen):
            def __init__(self, *words, **how):
                super().__init__(*words, **how)
                started.append(self.pid)
                signal.pthread_kill(threading.main_thread().ident, signal.SIGINT)
                time.sleep(0.2)

        with mock.patch.object(_programs.subprocess, "Popen", Interrupted):
            with self.assertRaises(KeyboardInterrupt):
                _programs.run(["sleep", "600"], self.folder)
        self.assertEqual(len(started), 1)
        with self.assertRaises(ProcessLookupError):
            os.kill(started[0], 0)

    def test_a_program_that_is_not_there_was_not_started(self):
        self.assertIsNone(_programs.run([str(self.folder / "none")], self.folder).status)
