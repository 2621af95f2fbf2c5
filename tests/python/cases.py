# SPDX-License-Identifier: GPL-3.0-or-later
"""What all cases begin with: an empty workbench."""
import os
import pathlib
import tempfile
import unittest

import tambo

SOURCE = pathlib.Path(os.environ["TAMBO_SOURCE_DIR"])
EXAMPLES = SOURCE / "examples"
STRUCTURES = SOURCE / "tests" / "data" / "structures"
ROWS = [("one", "MK-V-L"), ("two", "MRAV--"), ("three", "--AVGL")]


class Case(unittest.TestCase):
    def setUp(self):
        tambo.clear()
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def family(self, rows=ROWS):
        return tambo.new_alignment("family", rows)

    def texts(self, alignment):
        return [str(row) for row in alignment]
