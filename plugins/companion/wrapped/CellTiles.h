// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of cells, painted quickly: a letter on its ground is drawn once and copied afterwards.
#pragma once

#include "Alignment.h"

#include <QFont>
#include <QHash>
#include <QPixmap>
#include <QSize>

#include <optional>
#include <span>

class QPainter;

namespace companion {

class CellTiles
{
public:
    // Without a font cells are colors alone.
    void setCells(const QSize &size, const std::optional<QFont> &font, double pixelRatio);
    [[nodiscard]] const QSize &size() const noexcept { return m_Size; }
    [[nodiscard]] bool hasLetters() const noexcept { return m_Font.has_value(); }

    // Beside each other, the first one with its upper left corner at the place.
    void paintRow(QPainter &painter, const QPoint &place,
                  std::span<const TAMBO::AlignmentCell> cells);

private:
    const QPixmap &tile(char letter, QRgb ground);

    QSize m_Size{1, 1};
    std::optional<QFont> m_Font;
    double m_PixelRatio = 1;
    QHash<quint64, QPixmap> m_Tiles;
};

} // namespace companion
