// SPDX-License-Identifier: GPL-3.0-or-later
// The residue numbers at the ends of rows.
#pragma once

#include <QString>

namespace TAMBO {
class Alignment;
}

namespace companion {

// Of the last residue of the row in the columns [begin, end), as the residue has it, with its
// insertion code. Empty when there is none.
[[nodiscard]] QString lastNumber(const TAMBO::Alignment &alignment, unsigned long row,
                                 unsigned long begin, unsigned long end);

} // namespace companion
