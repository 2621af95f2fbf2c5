// SPDX-License-Identifier: GPL-3.0-or-later
// The names of rows, which the alignment may have lost meanwhile.
#pragma once

#include "ItemSeries.h"

#include <QFont>

namespace TAMBO {
class Alignment;
}

class NameItems : public ItemSeries
{
public:
    struct Measures
    {
        // Where the names end.
        int right = 0;
        int cellHeight = 0;
        QFont font;
        // Without letters something else shows what they would say.
        bool hasLetters = true;
        // Cells are as large as the font asks; otherwise each name has a place of its own.
        bool isOwnSize = true;
    };

    // The alignment must outlive this object.
    NameItems(TAMBO::Alignment *alignment, unsigned long rows, const Measures &measures);
    ~NameItems() override;

    [[nodiscard]] unsigned long slotCount() const override { return m_Rows; }
    [[nodiscard]] SlotRange slotsIn(const QRect &rect) const override;
    [[nodiscard]] QCanvasItem *makeItem(QCanvas &canvas, unsigned long slot) override;

private:
    TAMBO::Alignment *m_Target;
    unsigned long m_Rows;
    Measures m_Measures;
    int m_Reach;
};
