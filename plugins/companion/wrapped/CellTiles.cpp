// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellTiles.h"

#include "CellLooks.h"

#include <QImage>
#include <QPainter>

namespace companion {

namespace {

// Of some kilobytes each.
constexpr qsizetype kMostTiles = 4096;

} // namespace

void CellTiles::setCells(const QSize &size, const std::optional<QFont> &font, double pixelRatio)
{
    if (size == m_Size && font == m_Font && pixelRatio == m_PixelRatio)
        return;
    m_Size = size;
    m_Font = font;
    m_PixelRatio = pixelRatio;
    m_Tiles.clear();
}

void CellTiles::paintRow(QPainter &painter, const QPoint &place,
                         std::span<const TAMBO::AlignmentCell> cells)
{
    if (cells.empty())
        return;
    if (hasLetters()) {
        QPoint at = place;
        for (const TAMBO::AlignmentCell &cell : cells) {
            painter.drawPixmap(at, tile(letterOf(cell), groundOf(cell)));
            at.rx() += m_Size.width();
        }
        return;
    }
    QImage line(int(cells.size()), 1, QImage::Format_RGB32);
    auto *out = reinterpret_cast<QRgb *>(line.scanLine(0));
    for (const TAMBO::AlignmentCell &cell : cells)
        *out++ = groundOf(cell);
    painter.drawImage(QRect(place, QSize(m_Size.width() * line.width(), m_Size.height())), line);
}

const QPixmap &CellTiles::tile(char letter, QRgb ground)
{
    const quint64 key = quint64(ground) << 8U | quint64(static_cast<unsigned char>(letter));
    if (const auto found = m_Tiles.constFind(key); found != m_Tiles.constEnd())
        return *found;
    if (m_Tiles.size() >= kMostTiles)
        m_Tiles.clear();
    QPixmap made(m_Size * m_PixelRatio);
    made.setDevicePixelRatio(m_PixelRatio);
    QPainter painter(&made);
    const QRectF cell(QPointF(0, 0), m_Size);
    painter.fillRect(cell, QColor::fromRgb(ground));
    painter.setFont(*m_Font);
    painter.setPen(hasWhiteLetter(ground) ? Qt::white : Qt::black);
    painter.drawText(cell, Qt::AlignCenter, QString(QLatin1Char(letter)));
    painter.end();
    return *m_Tiles.insert(key, made);
}

} // namespace companion
