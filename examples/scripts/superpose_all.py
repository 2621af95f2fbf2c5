#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Superposes all structures of an alignment on one of them along its columns, and saves them.

    superpose_all.py FAMILY FOLDER [--on ROW]

The structures stand beside the alignment and are named by its rows. FOLDER is made; it gets a PDB file of each
structure and rmsd.csv, with the row, the file, the pairs of CA atoms in common columns, and their RMSD in Angstrom.
They are superposed on that of ROW, or of the first row with a structure.
"""
import os
import pathlib
import tempfile

import common
import tambo


def move(made, folder, force):
    """Puts all files that were made into the folder, when all are there."""
    folder.mkdir(exist_ok=True)
    for file in sorted(made.iterdir()):
        common.check_output(folder / file.name, force)
    for file in sorted(made.iterdir()):
        os.replace(file, folder / file.name)


def main():
    parser = common.parser(__doc__)
    parser.add_argument("family", help="a file with one alignment")
    common.add_output(parser, "the folder of the superposed structures")
    parser.add_argument("--on", help="the row whose structure stays where it is")
    given = parser.parse_args()
    if given.output.exists() and not given.output.is_dir():
        raise common.BadInput(f"{given.output}: is no folder")
    if not given.output.parent.is_dir():
        raise common.BadInput(f"{given.output}: there is no folder {given.output.parent}")
    if given.output.is_dir() and any(given.output.iterdir()) and not given.force:
        raise common.BadInput(f"{given.output}: has files already; --force replaces those of the same names")

    family = common.open_family(given.family)
    structures = {}
    for row in family:
        structure = common.structure_of(row)[0]
        if structure is not None and structure not in structures.values():
            structures[row.index] = structure
    if len(structures) < 2:
        raise common.BadInput(f"{given.family}: {len(structures)} rows have a structure of their own beside the "
                              "file, and two are needed")
    fixed = next(iter(structures)) if given.on is None else common.row_named(family, given.on, given.family).index
    if fixed not in structures:
        raise common.BadInput(f"{given.family}: row {given.on} has no structure of its own beside the file")
    fits = {fit["row"]: fit for fit in tambo.superpose(family, fixed=fixed,
                                                       rows=[row for row in structures if row != fixed])}
    names = [structure.name for structure in structures.values()]
    losses = set()
    with tempfile.TemporaryDirectory(dir=given.output.parent, prefix=f".{given.output.name}.") as folder:
        lines = ["row,file,pairs,rmsd"]
        for row, structure in structures.items():
            name = "".join(letter if letter.isalnum() or letter in "-_." else "_" for letter in structure.name)
            if names.count(structure.name) > 1:
                name = f"{name}_{row + 1}"
            losses.update(structure.save(pathlib.Path(folder) / f"{name}.pdb"))
            fit = fits.get(row)
            quoted = '"' + family[row].name.replace('"', '""') + '"'
            numbers = f"{fit['pairs']},{fit['rmsd']:.3f}" if fit else ","
            lines.append(f"{quoted},{name}.pdb,{numbers}")
        common.write_text(pathlib.Path(folder) / "rmsd.csv", "\n".join(lines) + "\n")
        move(pathlib.Path(folder), given.output, given.force)
    for loss in sorted(losses):
        common.tell(loss)
    print("\n".join(lines))


if __name__ == "__main__":
    common.run(main)
