// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellLooks.h"

namespace companion {

QRgb groundOf(const TAMBO::AlignmentCell &cell) noexcept
{
    if (cell.isGap())
        return kWhiteGround;
    const QRgb own = cell.color.argb();
    if (cell.color.isOpaque())
        return own;
    const auto overWhite = [alpha = qAlpha(own)](int part) {
        return 255 - (255 - part) * alpha / 255;
    };
    return qRgb(overWhite(qRed(own)), overWhite(qGreen(own)), overWhite(qBlue(own)));
}

bool hasWhiteLetter(QRgb ground) noexcept
{
    constexpr int kDarkest = 126;
    return (11 * qRed(ground) + 16 * qGreen(ground) + 5 * qBlue(ground)) >> 5 <= kDarkest;
}

} // namespace companion
