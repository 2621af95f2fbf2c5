// SPDX-License-Identifier: GPL-3.0-or-later
// One row of an alignment on the name canvas: the sequence's name and whether the row is selected.
#pragma once

#include "PlacedText.h"

namespace TAMBO {
class Alignment;
}

class RowItem : public PlacedText
{
public:
    static constexpr int RTTI = 67;

    // The alignment must outlive the item. The name's right edge stands at x.
    RowItem(TAMBO::Alignment *alignment, unsigned long row, const QFont &font, QCanvas *canvas,
            double x, double y);
    ~RowItem() override;
    void draw(QPainter &painter) override;
    [[nodiscard]] int rtti() const override;
    // Exactly one cell high, whatever the letters reach: a point is in one name only.
    [[nodiscard]] QRect boundingRect() const override;

    // Selects all residues of the row, or none when all are.
    void hit();

    [[nodiscard]] unsigned long getRow() const noexcept { return m_Row; }
    [[nodiscard]] TAMBO::Alignment *getTarget() const noexcept { return m_Target; }
    // No residue of the row is unselected; so a row that holds only gaps is.
    [[nodiscard]] bool selected() const;

private:
    TAMBO::Alignment *m_Target;
    unsigned long m_Row;
};
