// SPDX-License-Identifier: GPL-3.0-or-later
#include "LetterFont.h"

#include <QFontMetrics>

#include <algorithm>

namespace companion {

namespace {

// In pixels; below, letters are stains.
constexpr int kSmallestLetter = 6;

// The largest size for which fits holds.
template <typename Fits>
std::optional<QFont> largestFont(const QFont &family, int most, const Fits &fits)
{
    std::optional<QFont> found;
    for (int low = kSmallestLetter, high = most; low <= high;) {
        const int middle = (low + high) / 2;
        QFont tried = family;
        tried.setPixelSize(middle);
        if (fits(QFontMetrics(tried))) {
            found = tried;
            low = middle + 1;
        } else {
            high = middle - 1;
        }
    }
    return found;
}

int widestCapital(const QFontMetrics &metrics)
{
    int widest = 0;
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        widest = std::max(widest, metrics.boundingRect(QLatin1Char(letter)).width());
    return widest;
}

} // namespace

// Letters of residues are capitals, so the room below the line is not needed.
std::optional<QFont> letterFont(const QFont &family, const QSize &cell)
{
    return largestFont(family, 2 * cell.height(), [&cell](const QFontMetrics &metrics) {
        return metrics.capHeight() + 2 <= cell.height() &&
               widestCapital(metrics) + 1 <= cell.width();
    });
}

std::optional<QFont> lineFont(const QFont &family, int height)
{
    return largestFont(family, height, [height](const QFontMetrics &metrics) {
        return metrics.height() <= height;
    });
}

} // namespace companion
