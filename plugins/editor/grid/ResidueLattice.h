// SPDX-License-Identifier: GPL-3.0-or-later
// Fills the lattice of the residue canvas from an alignment.
#pragma once

#include "LatticeSource.h"

namespace TAMBO {
class Alignment;
struct AlignmentCell;
} // namespace TAMBO

class ResidueLattice : public LatticeSource
{
public:
    // The alignment must outlive the lattice. Without letters cells are painted in their colors.
    ResidueLattice(TAMBO::Alignment *alignment, const QFont &font, bool hasLetters = true);
    ~ResidueLattice() override;

    // A cell for every place of the alignment as it is now.
    [[nodiscard]] static CellLattice latticeOf(const TAMBO::Alignment &alignment, int cellWidth,
                                               int cellHeight);

    [[nodiscard]] QCanvasItem *makeItem(QCanvas &canvas, const Cell &cell,
                                        const QRect &rect) override;
    void readCells(unsigned long row, unsigned long begin, unsigned long end,
                   std::vector<CellLook> &out) const override;
    void drawCell(QPainter &painter, const QRectF &rect, const CellLook &look) const override;
    [[nodiscard]] QFont font() const override { return m_Font; }
    [[nodiscard]] bool hasLetters() const override { return m_HasLetters; }
    void readBackgrounds(unsigned long row, unsigned long begin, unsigned long end,
                         QRgb *out) const override;

private:
    TAMBO::Alignment *m_Target;
    QFont m_Font;
    bool m_HasLetters;
    // Kept between calls for its memory only.
    mutable std::vector<TAMBO::AlignmentCell> m_Cells;
};
