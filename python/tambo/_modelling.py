# SPDX-License-Identifier: GPL-3.0-or-later
"""Homology models of rows on the structures of others."""
import errno
import json
import os

import numpy

from . import _programs, _tambo
from ._programs import ProgramError

# kestram ends its engine after five seconds at the latest.
PATIENCE = 10.0


class Model:
    """A homology model, and what the engine says of it. What nobody knows is None, or nan.

    The score is made for choosing between models of one alignment, and is no measure of how right one
    is (docs/modelling.md).
    """

    def __init__(self, structure, target, template, record, messages):
        self._structure = structure
        self._names = target.name, template.name
        self._record = record
        self._messages = messages
        self._scores = numpy.full(len(target.letters), numpy.nan)
        for place, score in record.get("residue_scores") or []:
            self._scores[place - 1] = score

    def __repr__(self):
        distance = "" if self.ca_rms is None else f", {self.ca_rms:.2f} Angstrom from it"
        return f"<tambo.Model of {self.target!r} on {self.template!r}{distance}>"

    @property
    def structure(self):
        """The model itself."""
        return self._structure

    @property
    def target(self):
        """The name of its row."""
        return self._names[0]

    @property
    def template(self):
        """The name of the row that it was built on."""
        return self._names[1]

    @property
    def score(self):
        """ProMod3's own score of the whole backbone per residue, without a unit; lower is better."""
        return self._record.get("backbone_score")

    @property
    def residue_scores(self):
        """The share of each letter of the target in the score, an array of float64; nan where there is none."""
        return self._scores

    @property
    def ca_rms(self):
        """The root mean square distance of the CA atoms to those of the template, in Angstrom."""
        return self._record.get("ca_rms")

    @property
    def ca_count(self):
        """The columns that both fill, over which ca_rms is taken."""
        return self._record.get("ca_count")

    @property
    def residues(self):
        """Letters of the target."""
        return self._record.get("residues")

    @property
    def modelled(self):
        """How many of them the model has."""
        return self._record.get("modelled")

    @property
    def gaps(self):
        """Stretches between its ends that had to be built without the template."""
        return self._record.get("gaps")

    @property
    def engine(self):
        """The versions of ProMod3 and OpenStructure, as they say themselves."""
        return self._record.get("engine") or ""

    @property
    def seconds(self):
        """How long it took."""
        return self._record.get("seconds") or 0.0

    @property
    def messages(self):
        """What the programs have remarked, one sentence each."""
        return self._messages


Model.__module__ = "tambo"


def model(self, target, template, path=None, format=None):
    """Builds a homology model of a row on the structure of another one, and gives a Model.

    Rows are named by places or names. What stands in one column becomes one place; residues before
    the first and behind the last one of the template are not modelled. The work is done by ProMod3
    (Studer et al., PLoS Comput Biol 2021, 17:e1008667) in a process of its own, within seconds to
    minutes; docs/modelling.md says more.

    The model is the structure of the target's row then, in every alignment that shows the sequence,
    and has its numbers, colors and secondary structure; a row with measured coordinates keeps them. It
    lies on the template, and is one step of undo. With path it is saved there, too, as by save().

    A template without measured coordinates raises RefusedError; a program that is missing or builds no
    model raises ProgramError. Ctrl+C ends the programs. Nothing has changed then.
    """
    target, template = (_row_of(self, row) for row in (target, template))
    building = _tambo._Modelling(target, template)
    if path is not None:
        _tambo._check_format(path, format, True)
        folder = os.path.dirname(os.path.abspath(path))
        if not os.path.isdir(folder):
            raise FileNotFoundError(errno.ENOENT, os.strerror(errno.ENOENT), folder)
    with _programs.work_folder() as folder:
        record, messages = _build(building, folder, target.name, template.name)
        with _tambo.step("Build model"):
            structure, remarks = building.read(folder / "model.pdb")
            if path is not None:
                remarks += structure.save(path, format)
    return Model(structure, target, template, record, messages + remarks)


def _row_of(alignment, row):
    return row if isinstance(row, _tambo.Row) else alignment[row]


def _build(building, folder, target, template):
    files = [str(folder / name) for name in ("record.json", "model.pdb", "rows.ali", "template.pdb")]
    building.write(*files[2:])
    failed = f"No model of {target} on {template} was built: "
    kestram = _programs.own_program("kestram")
    if kestram is None:
        raise ProgramError(f"{failed}there is no program kestram. It comes with the package tambo.", "kestram")
    ended = _programs.run([kestram, "--job", *files], folder, patience=PATIENCE)
    prefix = "kestram: "
    messages = [line[len(prefix):] for line in ended.errors if line.startswith(prefix)]
    record = _record_in(files[0])
    if ended.status == 0 and record.get("state") == "ok":
        return record, messages
    if ended.status is None:
        why = "kestram cannot be started"
    elif ended.status < 0:
        why = f"kestram was ended by signal {-ended.status}"
    else:
        why = record.get("message") or ended.last_line or f"kestram ended with status {ended.status}"
    # What the engine itself, or a launcher before it, has said last.
    others = [line for line in ended.errors if not line.startswith(prefix)]
    if others and others[-1] not in why:
        why += f" ({others[-1]})"
    raise ProgramError(failed + why, "kestram", ended.status)


def _record_in(file):
    try:
        with open(file, encoding="utf-8") as text:
            record = json.load(text)
    except (OSError, ValueError):
        return {}
    return record if isinstance(record, dict) else {}
