# SPDX-License-Identifier: GPL-3.0-or-later
"""What arguments may be, for checkers of types."""
import collections.abc
import os
from typing import Any, Union

from numpy.typing import NDArray

# Rows, columns or residues: all, one, a slice, places, or an array of truth values.
Places = Union[None, int, slice, collections.abc.Sequence[int], NDArray[Any]]
Path = Union[str, "os.PathLike[str]"]
