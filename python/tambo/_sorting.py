# SPDX-License-Identifier: GPL-3.0-or-later
"""Sorting rows, which Python does as it sorts anything."""


def sort(self, key="name", reverse=False):
    """Sorts the rows by "name", by "length" (residues), or by what key gives for each row.

    Rows that are alike keep their order. ValueError when key is another text.

    >>> import tambo
    >>> family = tambo.new_alignment("family", [("b", "MKV"), ("a", "M-V")])
    >>> family.sort()
    >>> family.names
    ['a', 'b']
    >>> family.sort(key=lambda row: row.letters.count("K"), reverse=True)
    >>> family.names
    ['b', 'a']
    """
    known = {"name": lambda row: row.name, "length": lambda row: len(row.letters)}
    if isinstance(key, str):
        if key not in known:
            raise ValueError(f"rows are sorted by 'name' or 'length', or by a function, and not by {key!r}")
        key = known[key]
    values = [key(row) for row in self]
    self.reorder(sorted(range(len(values)), key=values.__getitem__, reverse=reverse))
