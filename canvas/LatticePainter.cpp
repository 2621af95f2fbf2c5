// SPDX-License-Identifier: GPL-3.0-or-later
#include "LatticePainter.h"

#include <QPaintEngine>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// A pixel grid that is upright and neither so coarse that cells vanish nor so fine that tiles grow
// out of proportion.
bool suitsTiles(const QPainter &painter, const CellLattice &lattice)
{
    if (painter.paintEngine()->type() != QPaintEngine::Raster)
        return false;
    const QTransform device = painter.deviceTransform();
    if (device.type() > QTransform::TxScale || device.m11() <= 0 ||
        std::abs(device.m11() - device.m22()) > 1e-9)
        return false;
    const double scale = device.m11();
    return scale <= 8 && scale * std::min(lattice.cellWidth(), lattice.cellHeight()) >= 2;
}

// Neighbouring cells share their edge, so every edge goes to the pixel grid in the same way: no
// pixel is left out or belongs to two cells, whatever the scale.
int snapped(double position) noexcept
{
    return static_cast<int>(std::floor(position + 0.5));
}

} // namespace

void LatticePainter::paint(QPainter &painter, const CellLattice &lattice,
                           const LatticeSource &source, const CellRange &cells)
{
    if (cells.isEmpty())
        return;
    if (suitsTiles(painter, lattice))
        paintTiles(painter, lattice, source, cells);
    else
        paintCells(painter, lattice, source, cells);
}

void LatticePainter::paintTiles(QPainter &painter, const CellLattice &lattice,
                                const LatticeSource &source, const CellRange &cells)
{
    const QTransform device = painter.deviceTransform();
    const double scale = device.m11();
    m_Edges.clear();
    for (unsigned long col = cells.colBegin; col <= cells.colEnd; ++col)
        m_Edges.push_back(snapped(lattice.cellRect({0, col}).left() * scale + device.dx()));
    m_Tiles.begin(source.font());
    painter.save();
    // From here on the painter's coordinates are the device's pixels.
    painter.setWorldTransform(device.inverted() * painter.worldTransform());
    for (unsigned long row = cells.rowBegin; row < cells.rowEnd; ++row) {
        const int top = snapped(lattice.cellRect({row, 0}).top() * scale + device.dy());
        const int bottom = snapped(lattice.cellRect({row + 1, 0}).top() * scale + device.dy());
        m_Looks.clear();
        source.readCells(row, cells.colBegin, cells.colEnd, m_Looks);
        paintStrip(painter, source, top, bottom - top, scale);
    }
    painter.restore();
}

void LatticePainter::paintStrip(QPainter &painter, const LatticeSource &source, int top, int height,
                                double scale)
{
    const int left = m_Edges.front();
    const int stripWidth = m_Edges.back() - left;
    if (m_Strip.width() < stripWidth || m_Strip.height() < height)
        m_Strip = QImage(std::max(stripWidth, m_Strip.width()), std::max(height, m_Strip.height()),
                         QImage::Format_RGB32);
    auto *pixels = reinterpret_cast<QRgb *>(m_Strip.bits());
    const auto pitch = static_cast<std::size_t>(m_Strip.bytesPerLine()) / sizeof(QRgb);

    int formatWidth = -1;
    unsigned int format = 0;
    const std::size_t count = std::min(m_Looks.size(), m_Edges.size() - 1);
    for (std::size_t i = 0; i < count; ++i) {
        const int width = m_Edges[i + 1] - m_Edges[i];
        if (width != formatWidth) {
            format = m_Tiles.formatNumber({QSize(width, height), scale});
            formatWidth = width;
        }
        const QRgb *from = m_Tiles.tile(m_Looks[i], format, source);
        QRgb *to = pixels + (m_Edges[i] - left);
        const auto line = static_cast<std::size_t>(width);
        for (int y = 0; y < height; ++y, from += line, to += pitch)
            std::memcpy(to, from, line * sizeof(QRgb));
    }
    painter.drawImage(QPoint(left, top), m_Strip, QRect(0, 0, stripWidth, height));
}

void LatticePainter::paintCells(QPainter &painter, const CellLattice &lattice,
                                const LatticeSource &source, const CellRange &cells)
{
    for (unsigned long row = cells.rowBegin; row < cells.rowEnd; ++row) {
        m_Looks.clear();
        source.readCells(row, cells.colBegin, cells.colEnd, m_Looks);
        for (std::size_t i = 0; i < m_Looks.size(); ++i)
            source.drawCell(painter, lattice.cellRect({row, cells.colBegin + i}), m_Looks[i]);
    }
}
