// SPDX-License-Identifier: GPL-3.0-or-later
// Texts and numbers as SVG and HTML have them.
#pragma once

#include <QByteArray>
#include <QRgb>
#include <QString>

namespace companion {

// Escaped, UTF-8. What no such file may have, as control characters, becomes U+FFFD.
[[nodiscard]] QByteArray markupText(const QString &text);
// Of points and parts of them, without needless digits.
[[nodiscard]] QByteArray markupNumber(double number);
// "#rrggbb"
[[nodiscard]] QByteArray markupColor(QRgb color);

} // namespace companion
