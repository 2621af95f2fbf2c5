# SPDX-License-Identifier: GPL-3.0-or-later
import signal
import subprocess
import sys
import threading

import tambo

from cases import Case


class Steps(Case):
    def test_a_with_block_is_one_step_of_undo(self):
        family = self.family()
        with tambo.step("Tidy up"):
            family.insert_gaps(0, 0)
            family.remove_rows([1])
            with tambo.step("Inner"):
                family.move_row(1, 0)
        self.assertEqual(tambo.history()[1:], ["Tidy up in family"])
        after = self.texts(family)
        self.assertTrue(tambo.undo())
        self.assertEqual(self.texts(family), ["MK-V-L", "MRAV--", "--AVGL"])
        self.assertTrue(tambo.redo())
        self.assertEqual(self.texts(family), after)
        self.assertFalse(tambo.redo())

    def test_an_exception_takes_the_step_back(self):
        family = self.family()
        with self.assertRaises(ZeroDivisionError), tambo.step("Fails"):
            family.remove_rows([0])
            with tambo.step("Inner"):
                family.insert_columns(0)
                1 / 0
        self.assertEqual(self.texts(family), ["MK-V-L", "MRAV--", "--AVGL"])
        self.assertEqual(len(tambo.history()), 1)

    def test_undo_inside_of_a_step_raises(self):
        family = self.family()
        with tambo.step("Step"):
            family.insert_gaps(0, 0)
            for moved in (tambo.undo, tambo.redo, tambo.clear):
                with self.assertRaises(tambo.StepError):
                    moved()
        self.assertTrue(tambo.undo())
        self.assertTrue(tambo.undo())
        self.assertFalse(tambo.undo())

    def test_steps_end_in_their_order(self):
        outer, inner = tambo.step("outer"), tambo.step("inner")
        outer.__enter__()
        inner.__enter__()
        with self.assertRaises(tambo.StepError):
            outer.__enter__()
        inner.__exit__(None, None, None)
        with self.assertRaises(tambo.StepError):
            inner.__exit__(None, None, None)
        outer.__exit__(None, None, None)
        self.assertFalse(tambo.undo())

    def test_a_step_without_a_change_is_none(self):
        with tambo.step("Nothing"):
            pass
        self.assertEqual(tambo.history(), [])


class Threads(Case):
    def test_a_second_thread_is_refused(self):
        family = self.family()
        told = []

        def use():
            for call in (lambda: family.width, tambo.undo, lambda: repr(family), tambo.alignments,
                         lambda: tambo.step("x").__enter__()):
                try:
                    call()
                except tambo.ThreadError as error:
                    told.append(str(error))

        thread = threading.Thread(target=use)
        thread.start()
        thread.join()
        self.assertEqual(len(told), 5)

    def test_long_work_lets_other_threads_run_and_hears_ctrl_c(self):
        big = self.family([(f"r{i}", "ACDEFGHIKL" * 200) for i in range(3000)])
        main = threading.main_thread().ident
        has_run = []

        def interrupt():
            has_run.append(True)
            signal.pthread_kill(main, signal.SIGINT)

        thread = threading.Thread(target=interrupt)
        with self.assertRaises(KeyboardInterrupt):
            thread.start()
            big.identity_matrix()
        thread.join()
        self.assertEqual(has_run, [True])
        self.assertEqual(big.shape, (3000, 2000))


class Ending(Case):
    def run_script(self, text):
        return subprocess.run([sys.executable, "-c", text], capture_output=True, text=True)

    def test_an_interpreter_that_ends_in_a_step_ends_well(self):
        done = self.run_script("import tambo\nkept = tambo.new_alignment('a', [('one', 'MK')])\n"
                               "step = tambo.step('open'); step.__enter__(); kept.insert_gaps(0, 0)\n")
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_no_toolkit_is_loaded(self):
        done = self.run_script("import tambo\nprint('libQt' in open('/proc/self/maps').read())")
        self.assertEqual(done.stdout, "False\n", done.stderr)
