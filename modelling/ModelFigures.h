// SPDX-License-Identifier: GPL-3.0-or-later
// What a model can be judged by, beside the engine's own score.
#pragma once

#include "ModelFit.h"
#include "ModellingInput.h"
#include "Result.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace kestram {

// Stretches that an engine has to build without the template: of the columns between the first and
// the last that both rows fill, each run of those in which one row is empty.
[[nodiscard]] std::size_t rebuiltGaps(const std::string &templateRow, const std::string &targetRow);

struct ModelFigures
{
    // Residues of the model that are letters of the target; none when it is one of another
    // sequence.
    std::size_t modelled = 0;
    // To the residues of the template that the engine was given.
    std::optional<TAMBO::ModelFit> fit;
};

// Of a model in a file of the PDB.
[[nodiscard]] TAMBO::Result<ModelFigures> figuresOf(const ModellingInput &input,
                                                    const std::filesystem::path &model);

} // namespace kestram
