// SPDX-License-Identifier: GPL-3.0-or-later
// The one change of an alignment that is made of orders of rows.
#pragma once

#include "RowOrders.h"

#include <string>

namespace TAMBO {
class Alignment;
}

namespace companion {

enum class Reordered {
    Done,
    // The rows stand so already.
    Not,
    // The alignment cannot be changed now.
    Refused
};

// One step of undo with that name.
[[nodiscard]] Reordered reorder(TAMBO::Alignment &alignment, const RowOrder &order,
                                const std::string &step);

} // namespace companion
