// SPDX-License-Identifier: GPL-3.0-or-later
// How a cell of an alignment looks wherever it is drawn: as in the grid of the window.
#pragma once

#include "Alignment.h"

#include <QRgb>

namespace companion {

inline constexpr QRgb kWhiteGround = 0xffffffffU;

// The color behind the letter. A transparent one shines over white, and a gap has white.
[[nodiscard]] QRgb groundOf(const TAMBO::AlignmentCell &cell) noexcept;
// On a dark ground letters are white, else black.
[[nodiscard]] bool hasWhiteLetter(QRgb ground) noexcept;
// Of a gap '-'.
[[nodiscard]] inline char letterOf(const TAMBO::AlignmentCell &cell) noexcept
{
    return cell.isGap() ? '-' : cell.letter;
}

} // namespace companion
