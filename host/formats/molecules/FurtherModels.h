// SPDX-License-Identifier: GPL-3.0-or-later
// The models of a structure's file that follow the first one: where they have its atoms.
#pragma once

#include "Records.h"

#include <cstddef>
#include <string>

namespace gemmi {
struct Model;
}

namespace TAMBO::formats {

class FurtherModels
{
public:
    // Both outlive this. The structure has its first model.
    FurtherModels(const std::string &file, StructureRecord &structure);

    // The next one; null for one that cannot be read. Of one that has hardly anything of the first
    // model nothing is kept: places for all of its atoms would take more than the file.
    void add(const gemmi::Model *model);
    // Remarks on what is missing.
    void finish();

private:
    const std::string &m_File;
    StructureRecord &m_Structure;
    std::size_t m_Atoms = 0;
    // Of the latest.
    std::size_t m_Number = 1;
    std::size_t m_Incomplete = 0;
    std::size_t m_FirstIncomplete = 0;
};

} // namespace TAMBO::formats
