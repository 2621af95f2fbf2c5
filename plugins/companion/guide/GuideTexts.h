// SPDX-License-Identifier: GPL-3.0-or-later
// What is said of a place where gaps could be let go.
#pragma once

#include <QString>

#include <optional>

namespace companion {

// "3.42 → 2.87 Å"; "…" for what is not known yet is up to who asks. A dash where no column has a
// distance.
[[nodiscard]] QString changeText(const std::optional<double> &before,
                                 const std::optional<double> &after);
// Of a half-open range, as people count: "Columns 118–131", "Column 118".
[[nodiscard]] QString columnsText(unsigned long begin, unsigned long end);

} // namespace companion
