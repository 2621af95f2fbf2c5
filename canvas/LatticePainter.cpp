// SPDX-License-Identifier: GPL-3.0-or-later
#include "LatticePainter.h"

#include <QPaintEngine>
#include <QPainter>
#include <QTransform>
#include <QtMath>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace {

// A pixel grid that is upright and not so coarse that cells get less than that many pixels.
bool isUprightGrid(const QPainter &painter, const CellLattice &lattice, double pixels)
{
    if (painter.paintEngine()->type() != QPaintEngine::Raster)
        return false;
    const QTransform device = painter.deviceTransform();
    if (device.type() > QTransform::TxScale || device.m11() <= 0 ||
        std::abs(device.m11() - device.m22()) > 1e-9)
        return false;
    return device.m11() * std::min(lattice.cellWidth(), lattice.cellHeight()) >= pixels;
}

// Neither may cells vanish, nor tiles grow out of proportion.
bool suitsTiles(const QPainter &painter, const CellLattice &lattice)
{
    return isUprightGrid(painter, lattice, 2) && painter.deviceTransform().m11() <= 8;
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
    if (!source.hasLetters() && isUprightGrid(painter, lattice, 1))
        paintBackgrounds(painter, lattice, source, cells);
    else if (suitsTiles(painter, lattice))
        paintTiles(painter, lattice, source, cells);
    else
        paintCells(painter, lattice, source, cells);
}

void LatticePainter::paintTiles(QPainter &painter, const CellLattice &lattice,
                                const LatticeSource &source, const CellRange &cells)
{
    const QTransform device = painter.deviceTransform();
    const double scale = device.m11();
    findEdges(lattice, cells, device);
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

void LatticePainter::findEdges(const CellLattice &lattice, const CellRange &cells,
                               const QTransform &device)
{
    m_Edges.clear();
    for (unsigned long col = cells.colBegin; col <= cells.colEnd; ++col)
        m_Edges.push_back(snapped(lattice.cellRect({0, col}).left() * device.m11() + device.dx()));
}

void LatticePainter::paintBackgrounds(QPainter &painter, const CellLattice &lattice,
                                      const LatticeSource &source, const CellRange &cells)
{
    const QTransform device = painter.deviceTransform();
    findEdges(lattice, cells, device);
    const int left = m_Edges.front();
    const int width = m_Edges.back() - left;
    const auto topOf = [&](unsigned long row) {
        return snapped(lattice.cellRect({row, 0}).top() * device.m11() + device.dy());
    };
    constexpr int kLines = 32;
    const int most = std::max(kLines, qCeil(lattice.cellHeight() * device.m11()) + 1);
    if (m_Strip.width() < width || m_Strip.height() < most)
        m_Strip = QImage(std::max(width, m_Strip.width()), std::max(most, m_Strip.height()),
                         QImage::Format_RGB32);
    m_Backgrounds.resize(m_Edges.size() - 1);
    painter.save();
    painter.setWorldTransform(device.inverted() * painter.worldTransform());
    int stripTop = topOf(cells.rowBegin);
    int lines = 0;
    const auto flush = [&] {
        painter.drawImage(QPoint(left, stripTop), m_Strip, QRect(0, 0, width, lines));
        stripTop += std::exchange(lines, 0);
    };
    for (unsigned long row = cells.rowBegin; row < cells.rowEnd; ++row) {
        const int height = topOf(row + 1) - topOf(row);
        if (lines + height > m_Strip.height())
            flush();
        auto *line = reinterpret_cast<QRgb *>(m_Strip.scanLine(lines));
        if (m_Backgrounds.size() == static_cast<std::size_t>(width)) {
            source.readBackgrounds(row, cells.colBegin, cells.colEnd, line);
        } else {
            source.readBackgrounds(row, cells.colBegin, cells.colEnd, m_Backgrounds.data());
            for (std::size_t i = 0; i < m_Backgrounds.size(); ++i)
                std::fill(line + (m_Edges[i] - left), line + (m_Edges[i + 1] - left),
                          m_Backgrounds[i]);
        }
        for (int y = 1; y < height; ++y)
            std::copy_n(line, width, reinterpret_cast<QRgb *>(m_Strip.scanLine(lines + y)));
        lines += height;
    }
    flush();
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
