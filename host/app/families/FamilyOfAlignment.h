// SPDX-License-Identifier: GPL-3.0-or-later
// A loaded alignment as the family that models are built of.
#pragma once

#include "FamilyPlan.h"
#include "FamilyPreparing.h"

#include <filesystem>

namespace TAMBO {
class Alignment;
}

namespace TAMBO::app {

// Models do not count as structures, so that a target stays one when its model has been opened.
[[nodiscard]] families::Family familyOf(const Alignment &alignment,
                                        const std::filesystem::path &source = {});
// The coordinates of each row; the alignment stays as it is meanwhile.
[[nodiscard]] families::TemplateSource templatesOf(const Alignment &alignment);

} // namespace TAMBO::app
