// SPDX-License-Identifier: GPL-3.0-or-later
// From our own records to the text of structure files, and how what was read back compares.
#pragma once

#include "Records.h"
#include "Result.h"
#include "WriteOptions.h"

#include <span>
#include <string>
#include <vector>

namespace TAMBO::formats {

// The chains' names in the file. Chains of one name are told apart by the TER records of PDB files;
// elsewhere all but the first get another name.
[[nodiscard]] std::vector<std::string> chainNames(const StructureRecord &structure,
                                                  FileFormat format);

// The helices and strands between residues that there are.
[[nodiscard]] std::vector<ElementRecord> writableElements(const StructureRecord &structure);

// What they are called when the file is read: helices are counted, strands in each sheet.
[[nodiscard]] std::vector<std::string> elementNames(const std::vector<ElementRecord> &written,
                                                    FileFormat format);

// Throws what the coordinate library throws.
[[nodiscard]] std::string structureText(const StructureRecord &structure, FileFormat format);

// The same of several, each of which is a model of the file; helices and strands are those of the
// first one.
[[nodiscard]] std::string modelsText(std::span<const StructureRecord> structures,
                                     FileFormat format);

// Whether a structure read from the file is the same; the failure says where it differs.
[[nodiscard]] Result<void> checkSame(const StructureRecord &structure,
                                     const StructureRecord &readBack, FileFormat format);

} // namespace TAMBO::formats
