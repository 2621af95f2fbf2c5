// SPDX-License-Identifier: GPL-3.0-or-later
// Reads what a modelling job of the editor has built.
#pragma once

#include "BuiltModel.h"
#include "Loader.h"

#include <filesystem>

namespace TAMBO::app {

class ModelReader
{
public:
    // The job's alignment (template first, target second) and the template's coordinates must stand
    // beside the model as "seq.ali" and "str.pdb".
    [[nodiscard]] static bool isModel(const std::filesystem::path &file);

    // Reads the files, which the next job writes over.
    ModelReader(Loader &loader, const std::filesystem::path &file);

    // Once, and not while changes are being published. All in one step of undo, whatever command is
    // under way.
    LoadReport read();

private:
    Loader &m_Loader;
    std::filesystem::path m_File;
    ReadOutcome m_Outcome;
    BuiltModel m_Model;
};

} // namespace TAMBO::app
