// SPDX-License-Identifier: GPL-3.0-or-later
// Paints cells of a lattice: on pixels by copying tiles, or colors alone where cells have no
// letters; on anything else cell by cell.
#pragma once

#include "TileCache.h"

#include <QImage>

#include <vector>

class QPainter;
class QTransform;

class LatticePainter
{
public:
    // The cells must be cells of the lattice.
    void paint(QPainter &painter, const CellLattice &lattice, const LatticeSource &source,
               const CellRange &cells);

    [[nodiscard]] const TileCache &tiles() const noexcept { return m_Tiles; }

private:
    void paintTiles(QPainter &painter, const CellLattice &lattice, const LatticeSource &source,
                    const CellRange &cells);
    void paintBackgrounds(QPainter &painter, const CellLattice &lattice,
                          const LatticeSource &source, const CellRange &cells);
    void findEdges(const CellLattice &lattice, const CellRange &cells, const QTransform &device);
    void paintStrip(QPainter &painter, const LatticeSource &source, int top, int height,
                    double scale);
    void paintCells(QPainter &painter, const CellLattice &lattice, const LatticeSource &source,
                    const CellRange &cells);

    TileCache m_Tiles;
    // The left edges of the columns being painted on the device, and the right edge of the last.
    std::vector<int> m_Edges;
    std::vector<CellLook> m_Looks;
    std::vector<QRgb> m_Backgrounds;
    // One row of cells, or of backgrounds as many as fit. Small enough to stay in the processor's
    // cache until it is copied on.
    QImage m_Strip;
};
