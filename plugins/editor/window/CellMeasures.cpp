// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellMeasures.h"

#include <QFontInfo>
#include <QFontMetrics>

#include <algorithm>

namespace ZEP {

namespace {

constexpr int kLargestPoints = 40;
// In pixels; below, letters are stains.
constexpr int kSmallestLetters = 6;

int widestLetter(const QFontMetrics &metrics)
{
    int widest = metrics.boundingRect(QLatin1Char('-')).width();
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        widest = std::max(widest, metrics.boundingRect(QLatin1Char(letter)).width());
    return widest;
}

QSize cellOf(const QFont &font)
{
    const QFontMetrics metrics(font);
    return {widestLetter(metrics) + 4, metrics.lineSpacing()};
}

// Letters of residues are capitals, so the room below the line is not needed.
bool hasRoom(const QFontMetrics &metrics, const QSize &place)
{
    return metrics.capHeight() + 2 <= place.height() && widestLetter(metrics) + 1 <= place.width();
}

// The largest size up to most for which fits holds.
template <typename Fits> CellMeasures::Letters fitted(const QFont &own, int most, Fits fits)
{
    CellMeasures::Letters letters{own, false};
    int low = kSmallestLetters;
    int high = most;
    while (low <= high) {
        const int middle = (low + high) / 2;
        QFont tried = own;
        tried.setPixelSize(middle);
        if (fits(QFontMetrics(tried))) {
            letters = {tried, true};
            low = middle + 1;
        } else {
            high = middle - 1;
        }
    }
    return letters;
}

} // namespace

void CellMeasures::setFont(const QFont &font)
{
    m_Font = font;
    m_OwnCell = cellOf(font);
    setCell(m_OwnCell);
}

QSize CellMeasures::largestCell() const
{
    QFont font = m_Font;
    font.setPointSize(kLargestPoints);
    return cellOf(font).expandedTo(m_OwnCell);
}

void CellMeasures::setCell(const QSize &size)
{
    m_Cell = size == m_OwnCell ? size : size.expandedTo({1, 1}).boundedTo(largestCell());
    m_CellLetters = m_ColumnLetters = m_NameLetters = {m_Font, true};
    if (isOwn())
        return;
    const int own = QFontInfo(m_Font).pixelSize();
    const QFontInfo largest(QFont(m_Font.family(), kLargestPoints));
    const auto fitsIn = [](const QSize &place) {
        return [place](const QFontMetrics &metrics) { return hasRoom(metrics, place); };
    };
    m_CellLetters = fitted(m_Font, std::max(own, largest.pixelSize()), fitsIn(m_Cell));
    m_ColumnLetters = fitted(m_Font, own, fitsIn({m_Cell.width(), m_OwnCell.height()}));
    m_NameLetters = fitted(m_Font, own, [this](const QFontMetrics &metrics) {
        return metrics.height() <= m_Cell.height();
    });
}

} // namespace ZEP
