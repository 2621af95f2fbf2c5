// SPDX-License-Identifier: GPL-3.0-or-later
// The template of a modelling job as a file.
#pragma once

#include <QString>

namespace TAMBO {
class Alignment;
}

namespace ZEP {

// Writes an ATOM record for each atom of the first row's residues, in the order of the columns.
// Residues and atoms are numbered from 1; the chain is A; coordinates are in Angstrom. Records are
// laid out as in the Protein Data Bank's format 3.30 and end after the coordinates; a value that is
// too long shifts the rest of its record. A file that cannot be opened is left alone, silently.
void writePDB(const QString &path, const TAMBO::Alignment *alignment);

} // namespace ZEP
