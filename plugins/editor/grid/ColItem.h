// SPDX-License-Identifier: GPL-3.0-or-later
// One column of an alignment on the header canvas: whether the column is selected.
#pragma once

#include "PlacedText.h"

namespace TAMBO {
class Alignment;
}

class ColItem : public PlacedText
{
public:
    static constexpr int RTTI = 68;

    // The alignment must outlive the item. The mark is centred on x.
    ColItem(TAMBO::Alignment *alignment, unsigned long col, const QFont &font, QCanvas *canvas,
            double x, double y);
    ~ColItem() override;
    void draw(QPainter &painter) override;
    [[nodiscard]] int rtti() const override;

    // Selects all residues of the column, or none when all are.
    void hit();

    [[nodiscard]] unsigned long getCol() const noexcept { return m_Col; }

private:
    TAMBO::Alignment *m_Target;
    unsigned long m_Col;
};
