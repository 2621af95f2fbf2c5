# SPDX-License-Identifier: GPL-3.0-or-later
import os
import pathlib
import shutil
import signal
import threading
import time

import numpy
import tambo

from cases import STRUCTURES, Case

# A plant protein of 46 residues, and two that are like it.
FAMILY = """>P1;crambin
structureX:crambin.pdb:1:A:46:A::::
TTCCPSIVARSNFNVCRLPGTPEALCATYTGCIIIPGATCPGDYAN*
>P1;viscotoxin
sequence:::::::::
KSCCPNTTGRNIYNACRLTGAPRPTCAKLSGCKIISGSTCPSDYPK*
>P1;purothionin
sequence:::::::::
KSCCRSTLGRNCYNLCRARGAQ-KLCAGVCRCKISSGLSCPKGFPK*
"""


class Modelling(Case):
    def setUp(self):
        super().setUp()
        shutil.copy(STRUCTURES / "altlocs_crambin_1ejg.pdb", self.folder / "crambin.pdb")
        (self.folder / "family.ali").write_text(FAMILY)
        self.family = tambo.open(self.folder / "family.ali").alignment

    def set_variable(self, name, value):
        before = os.environ.get(name)
        os.environ[name] = value
        self.addCleanup(lambda: os.environ.__delitem__(name) if before is None
                        else os.environ.__setitem__(name, before))

    def refused(self, type=tambo.ProgramError):
        steps = tambo.history()
        with self.assertRaises(type) as caught:
            self.family.model("viscotoxin", "crambin")
        self.assertEqual((len(tambo.structures()), tambo.history()), (1, steps))
        self.assertEqual(self.family["viscotoxin"].chain.tied_to, [])
        return caught.exception

    def test_a_model_is_the_structure_of_its_row_on_the_template(self):
        numbers = self.family["purothionin"].chain.numbers
        model = self.family.model("purothionin", 0, self.folder / "model.cif")
        self.assertEqual((model.target, model.template), ("purothionin", "crambin"))
        self.assertEqual((model.residues, model.modelled, model.gaps), (45, 45, 1))
        self.assertEqual(model.structure.name, "purothionin on crambin")
        self.assertTrue(model.structure.is_model)
        self.assertIn("ProMod3", model.engine)
        self.assertLess(model.score, 0)
        self.assertEqual(model.residue_scores.shape, (45,))
        self.assertTrue(numpy.isfinite(model.residue_scores).all())
        chain = model.structure.chains[0]
        self.assertEqual((chain.letters, chain.numbers), (self.family["purothionin"].letters, numbers))
        self.assertEqual(self.family["purothionin"].chain.tied_to, [chain])
        # It lies on the template, as far as the record says, which columns tell, too.
        self.assertEqual(model.ca_count, 45)
        distances = self.family.column_distances()
        self.assertAlmostEqual(float(numpy.sqrt(numpy.nanmean(distances ** 2))), model.ca_rms, places=2)
        self.assertLess(model.ca_rms, 1.0)
        saved = tambo.open(self.folder / "model.cif").structure
        self.assertEqual(saved.chains[0].letters, chain.letters)
        tambo.undo()
        self.assertEqual(tambo.history()[-1], "Build model purothionin on crambin")
        tambo.undo()
        self.assertFalse(model.structure.exists)
        self.assertEqual(self.family["purothionin"].chain.tied_to, [])

    def test_without_an_engine_there_is_one_clear_exception(self):
        self.set_variable("PATH", str(self.folder))
        error = self.refused()
        self.assertIn("No model of viscotoxin on crambin was built: ", str(error))
        self.assertIn("promod", str(error).lower())
        self.assertEqual((error.program, error.status), ("kestram", 3))

    def test_an_engine_that_fails_is_told_with_what_it_said(self):
        launcher = self.folder / "launcher"
        launcher.write_text("#!/bin/sh\necho the queue is closed >&2\nexit 9\n")
        launcher.chmod(0o755)
        self.set_variable("KESTRAM_RUN", str(launcher))
        error = self.refused()
        self.assertEqual(error.status, 4)
        self.assertIn("the queue is closed", str(error))

    def test_ctrl_c_ends_the_programs(self):
        launcher, mark = self.folder / "launcher", self.folder / "mark"
        launcher.write_text(f"#!/bin/sh\npwd > '{mark}.new'; echo $$ >> '{mark}.new'; mv '{mark}.new' '{mark}'\nexec sleep 600\n")
        launcher.chmod(0o755)
        self.set_variable("KESTRAM_RUN", str(launcher))

        def interrupt():
            while not mark.exists():
                time.sleep(0.01)
            signal.pthread_kill(threading.main_thread().ident, signal.SIGINT)

        thread = threading.Thread(target=interrupt)
        thread.start()
        self.refused(KeyboardInterrupt)
        thread.join()
        folder, process = mark.read_text().split()
        self.assertFalse(pathlib.Path(folder).exists())
        while pathlib.Path(f"/proc/{process}").exists():
            time.sleep(0.01)

    def test_what_cannot_be_asked_for_is_told_before(self):
        family = self.family
        with self.assertRaisesRegex(tambo.RefusedError, "backbone"):
            family.model("crambin", "viscotoxin")
        with self.assertRaises(KeyError):
            family.model("nobody", "crambin")
        with self.assertRaisesRegex(ValueError, "template of itself"):
            family.model(0, 0)
        with self.assertRaisesRegex(ValueError, "two alignments"):
            family.model(self.family.part(name="other")[1], "crambin")
        with self.assertRaises(ValueError):
            family.model(1, 0, self.folder / "model.fasta")
        with self.assertRaises(FileNotFoundError):
            family.model(1, 0, self.folder / "none" / "model.pdb")
        self.assertEqual(len(tambo.structures()), 1)
