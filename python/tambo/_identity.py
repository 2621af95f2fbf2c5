# SPDX-License-Identifier: GPL-3.0-or-later
"""How alike the rows of an alignment are."""
import numpy

from . import _notebook


class IdentityMatrix:
    """Shares of identical pairs: values[i, j], from 0 to 1, of the rows called names[i] and names[j].

    values is an array of rows x rows of float64; nan where there is nothing to compare. of is what
    they are a share of. numpy.asarray() of it gives values.
    """

    def __init__(self, names, values, of):
        self.names = names
        self.values = values
        self.of = of

    def __array__(self, dtype=None):
        """What numpy makes of it: values."""
        return numpy.asarray(self.values, dtype=dtype)

    def __len__(self):
        """How many rows it is of."""
        return len(self.names)

    def __getitem__(self, place):
        """Of values."""
        return self.values[place]

    def __repr__(self):
        return f"<tambo.IdentityMatrix of {len(self)} rows, share of {self.of}>"

    def _repr_html_(self):
        return _notebook.matrix_html(self)

    def to_dataframe(self):
        """The matrix with the names of its rows, for pandas."""
        import pandas  # type: ignore
        return pandas.DataFrame(self.values, index=self.names, columns=self.names)


IdentityMatrix.__module__ = "tambo"


def identity_matrix(self, of="shorter"):
    """The identical pairs of each two rows as a share of what `of` says.

    "shorter": the residues of the row that has fewer; "aligned": the columns in which both have one;
    "overlap": the columns from the first to the last one in which both have one, without those in which
    both have a gap (A. C. W. May, Structure 12, 737, 2004, compares such measures). A pair is identical
    when both have the same letter; a small one is another than a capital one. ValueError when `of` is
    none of these.

    >>> import tambo
    >>> family = tambo.new_alignment("family", [("one", "MK-V"), ("two", "MRAV")])
    >>> float(family.identity_matrix(of="overlap")[0, 1])
    0.5
    """
    return IdentityMatrix(self.names, self._identities(of), of)
