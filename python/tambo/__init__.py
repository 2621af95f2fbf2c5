# SPDX-License-Identifier: GPL-3.0-or-later
"""Alignments and structures as the Tambo workbench has them, for scripts.

Rows, columns and residues count from 0, and ranges are half-open. Every change is a step of undo,
and all of a with-block of step() are one. What is called from another thread than the one that has
imported the package raises ThreadError.

>>> import tambo
>>> family = tambo.new_alignment("family", [("one", "MK-V"), ("two", "MRAV")])
>>> family
<tambo.Alignment 'family', 2 rows, 4 columns>
>>> with tambo.step("Tidy up"):
...     family.remove_columns([2])
...     family.move_row(1, 0)
>>> [str(row) for row in family]
['MRV', 'MKV']
>>> tambo.undo()
True
>>> [str(row) for row in family]
['MK-V', 'MRAV']
"""
from . import _interop, _notebook
from ._sorting import sort as _sort
from ._tambo import (
    Alignment,
    Atom,
    Chain,
    Clade,
    FormatError,
    GoneError,
    Opened,
    RefusedError,
    Residue,
    Row,
    Step,
    StepError,
    Structure,
    ThreadError,
    Tree,
    __version__,
    alignments,
    clear,
    history,
    new_alignment,
    new_sequence,
    open,
    open_session,
    read_tree,
    redo,
    save,
    save_session,
    step,
    structures,
    superpose,
    undo,
    unsaved,
)
from ._identity import IdentityMatrix, identity_matrix as _identity_matrix
from ._interop import from_biopython
from ._modelling import Model, model as _model
from ._pictures import (
    alignment_picture as _alignment_picture,
    picture,
    structure_picture as _structure_picture,
    structure_png as _structure_png,
)
from ._programs import ProgramError
from ._realigning import realign as _realign

__all__ = [
    "Alignment",
    "Atom",
    "Chain",
    "Clade",
    "FormatError",
    "GoneError",
    "IdentityMatrix",
    "Model",
    "Opened",
    "ProgramError",
    "RefusedError",
    "Residue",
    "Row",
    "Step",
    "StepError",
    "Structure",
    "ThreadError",
    "Tree",
    "alignments",
    "clear",
    "from_biopython",
    "history",
    "new_alignment",
    "new_sequence",
    "open",
    "open_session",
    "picture",
    "read_tree",
    "redo",
    "save",
    "save_session",
    "step",
    "structures",
    "superpose",
    "undo",
    "unsaved",
]

# What is written in Python belongs to the classes all the same.
Alignment.model = _model
Alignment.picture = _alignment_picture
Alignment.sort = _sort
Alignment.realign = _realign
Alignment.identity_matrix = _identity_matrix
Alignment.to_biopython = _interop.alignment_to_biopython
Alignment.to_dataframe = _interop.alignment_to_dataframe
Alignment._repr_html_ = _notebook.alignment_html
Structure.picture = _structure_picture
Structure._repr_png_ = _structure_png
Structure.to_biopython = _interop.structure_to_biopython
Structure.to_dataframe = _interop.structure_to_dataframe
Alignment.save = _interop.save
Structure.save = _interop.save
Tree.to_biopython = _interop.tree_to_biopython
# Wherever it is written, a class is known by the package's name.
for _name in __all__:
    if isinstance(globals()[_name], type):
        globals()[_name].__module__ = "tambo"
del _name
