// SPDX-License-Identifier: GPL-3.0-or-later
// One column of an alignment on the header canvas: the column's consensus letter.
#pragma once

#include "PlacedText.h"

namespace TAMBO {
class Alignment;
}

class IdItem : public PlacedText
{
public:
    static constexpr int RTTI = 69;

    // The alignment must outlive the item. The letter is centred on x.
    IdItem(TAMBO::Alignment *alignment, unsigned long col, const QFont &font, QCanvas *canvas,
           double x, double y);
    ~IdItem() override;
    void draw(QPainter &painter) override;
    [[nodiscard]] int rtti() const override;

    [[nodiscard]] unsigned long getCol() const noexcept { return m_Col; }

private:
    TAMBO::Alignment *m_Target;
    unsigned long m_Col;
};
