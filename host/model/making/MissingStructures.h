// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Records.h"

#include <string>
#include <vector>

namespace TAMBO {

// The structures that rows name and that are not loaded, each as the file writes it first.
[[nodiscard]] std::vector<std::string> missingStructures(const AlignmentRecord &alignment);

} // namespace TAMBO
