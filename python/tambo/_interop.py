# SPDX-License-Identifier: GPL-3.0-or-later
"""To and from files, and Biopython and pandas, where they are installed."""
import io
import os
import tempfile

from . import _tambo


def save(self, path, format=None):
    """Writes it into a file, and tells what that has lost, one sentence each.

    Without a format, as 'pir' or 'pdb', the ending of the file's name says which. Raises ValueError when
    that is none of its kind, and OSError when the file cannot be written; what was there stays then.
    """
    return _tambo.save(self, path, format)


def alignment_to_biopython(self):
    """A Bio.Align.MultipleSeqAlignment of the same rows, with '-' for gaps. Needs Biopython."""
    from Bio.Align import MultipleSeqAlignment  # type: ignore
    from Bio.Seq import Seq  # type: ignore
    from Bio.SeqRecord import SeqRecord  # type: ignore
    return MultipleSeqAlignment(
        [SeqRecord(Seq(str(row)), id=row.name, name=row.name, description="") for row in self])


def alignment_to_dataframe(self):
    """A pandas.DataFrame with a row for each row and a column for each column: one letter, '-' for a gap."""
    import pandas  # type: ignore
    letters = self.letters()
    return pandas.DataFrame(letters.view("S1").astype("U1"), index=self.names)


def structure_to_biopython(self):
    """A Bio.PDB structure of what a file of mmCIF would say of this one. Needs Biopython."""
    from Bio.PDB.MMCIFParser import MMCIFParser  # type: ignore
    with tempfile.TemporaryDirectory() as folder:
        file = os.path.join(folder, "structure.cif")
        _tambo.write_copy(self, file)
        return MMCIFParser(QUIET=True).get_structure(self.name, file)


def structure_to_dataframe(self):
    """A pandas.DataFrame with a row for each atom: chain, number, residue, name, element, b_factor,
    occupancy, and x, y, z in Angstrom."""
    import pandas  # type: ignore
    table = pandas.DataFrame(self.atoms())
    table[["x", "y", "z"]] = self.atom_positions()
    return table


def tree_to_biopython(self):
    """A Bio.Phylo tree of the same clades, names and lengths; it has as many branches at its root as this one."""
    from Bio.Phylo.Newick import Clade, Tree  # type: ignore
    made = {}
    for clade in self:
        made[clade] = Clade(branch_length=clade.length, name=clade.name or None)
        if clade.parent is not None:
            made[clade.parent].clades.append(made[clade])
    return Tree(root=made[self.root], rooted=False)


def from_biopython(what, name="biopython"):
    """Loads a Bio.Align.MultipleSeqAlignment, or a structure of Bio.PDB, and gives the new object.

    Of a tree of Bio.Phylo a Tree, which belongs to no alignment.
    """
    if hasattr(what, "get_level"):
        return _structure_from_biopython(what)
    if hasattr(what, "get_terminals"):
        return _tambo.Tree(_newick(what.root) + ";")
    return _tambo.new_alignment(name, [(record.id, str(record.seq)) for record in what])


def _newick(root):
    # A tree may be as deep as it has clades, so no function calls itself.
    parts, waiting = [], [(root, False)]
    while waiting:
        clade, is_done = waiting.pop()
        if isinstance(clade, str):
            parts.append(clade)
        elif clade.clades and not is_done:
            parts.append("(")
            waiting.append((clade, True))
            for i, child in enumerate(reversed(clade.clades)):
                waiting += [(",", True)] * (i > 0) + [(child, False)]
        else:
            said = clade.name if clade.name is not None else getattr(clade, "confidence", None)
            name = "" if said is None else str(said)
            parts.append((")" if is_done else "") + "'" + name.replace("'", "''") + "'")
            if clade.branch_length is not None:
                parts.append(f":{float(clade.branch_length)!r}")
    return "".join(parts)


def _structure_from_biopython(structure):
    from Bio.PDB.mmcifio import MMCIFIO  # type: ignore
    writer = MMCIFIO()
    writer.set_structure(structure)
    text = io.StringIO()
    writer.save(text)
    with tempfile.TemporaryDirectory() as folder:
        # The name of the structure is that of its file.
        file = os.path.join(folder, f"{_file_name(structure.id)}.cif")
        with open(file, "w", encoding="utf-8") as out:
            out.write(text.getvalue())
        return _tambo.open_copy(file).structure


def _file_name(name):
    return "".join(c if c.isalnum() or c in "-_" else "_" for c in str(name)) or "structure"
