// SPDX-License-Identifier: GPL-3.0-or-later
// From the molecules of the coordinate library to our own records. Shared by both formats.
#pragma once

#include "Records.h"

#include <string>

namespace gemmi {
struct Model;
}

namespace TAMBO::formats {

// Fills in the chains, drops elements of chains that the file lacks, and remarks on what had to be
// left out. The file's name is for the remarks.
void convertModel(const gemmi::Model &model, const std::string &file, StructureRecord &structure);

// Adds an element unless its ends are unusable or it is listed already, as the first strand of a
// barrel is again as its last.
void addElement(std::vector<ElementRecord> &elements, ElementRecord element);

} // namespace TAMBO::formats
