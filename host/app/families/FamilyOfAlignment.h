// SPDX-License-Identifier: GPL-3.0-or-later
// A loaded alignment as the family that models are built of.
#pragma once

#include "FamilyPlan.h"
#include "FamilyPreparing.h"
#include "Records.h"
#include "Result.h"

#include <cstddef>
#include <filesystem>

namespace TAMBO {
class Alignment;
}

namespace TAMBO::app {

// A row has a structure when one of its residues has a whole backbone (N, CA, C) that was measured;
// models do not count, so that a target stays one when its model has been opened.
[[nodiscard]] families::Family familyOf(const Alignment &alignment,
                                        const std::filesystem::path &source = {});
// The residues of the row that have such coordinates, as one chain called A, numbered by the
// letters of the row from 1.
[[nodiscard]] Result<StructureRecord> templateRecord(const Alignment &alignment, std::size_t row);
// The same for each row; the alignment stays as it is meanwhile.
[[nodiscard]] families::TemplateSource templatesOf(const Alignment &alignment);

} // namespace TAMBO::app
