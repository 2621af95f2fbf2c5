// SPDX-License-Identifier: GPL-3.0-or-later
// What is said of each of many residues, as runs: [count, value, count, value, ...].
#pragma once

#include "Style.h"

#include <QJsonArray>

#include <cstddef>
#include <optional>
#include <vector>

namespace structures {

[[nodiscard]] QJsonArray runsOf(const std::vector<bool> &values);
[[nodiscard]] QJsonArray runsOf(const std::vector<ResidueStyle> &styles);

// Nothing for what is no such list, or is one of another number of residues.
template <typename Value>
[[nodiscard]] std::optional<std::vector<Value>> readRuns(const QJsonArray &runs, std::size_t count);

} // namespace structures
