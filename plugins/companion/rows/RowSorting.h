// SPDX-License-Identifier: GPL-3.0-or-later
// The orders that rows are sorted into. What takes long shows how far it is and can be cancelled.
#pragma once

#include "RowOrders.h"

#include <optional>

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

// Each of the alignment that the window shows; nothing when the user has given it up. Rows that are
// equal keep their order.

[[nodiscard]] std::optional<RowOrder> orderByName(TAMBO::AlignmentWindow &window);
// Those with the most residues first.
[[nodiscard]] std::optional<RowOrder> orderByLength(TAMBO::AlignmentWindow &window);
// The row itself first, then the most identical ones, by the share of the columns in which both
// have a residue.
[[nodiscard]] std::optional<RowOrder> orderByIdentity(TAMBO::AlignmentWindow &window,
                                                      unsigned long row);

} // namespace companion
