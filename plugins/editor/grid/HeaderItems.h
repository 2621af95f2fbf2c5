// SPDX-License-Identifier: GPL-3.0-or-later
// The header's items of all columns: for each its consensus letter, then its mark.
#pragma once

#include "ItemSeries.h"

#include <QFont>

class PlacedText;

namespace TAMBO {
class Alignment;
}

class HeaderItems : public ItemSeries
{
public:
    struct Measures
    {
        int cellWidth = 0;
        // Of the header.
        int lineHeight = 0;
        QFont font;
        // Without letters something else shows what they would say.
        bool hasLetters = true;
        // Cells are as large as the font asks; otherwise each text has a place of its own.
        bool isOwnSize = true;
    };

    // For the columns that the alignment has now; it must outlive this object.
    HeaderItems(TAMBO::Alignment *alignment, const Measures &measures);
    ~HeaderItems() override;

    [[nodiscard]] unsigned long slotCount() const override { return 2 * m_Columns; }
    [[nodiscard]] SlotRange slotsIn(const QRect &rect) const override;
    [[nodiscard]] QCanvasItem *makeItem(QCanvas &canvas, unsigned long slot) override;

    // The middle of a column, as a whole pixel.
    [[nodiscard]] static int centreOf(unsigned long col, int cellWidth);

private:
    void place(PlacedText &item, unsigned long col, int line) const;

    TAMBO::Alignment *m_Target;
    unsigned long m_Columns;
    Measures m_Measures;
    int m_Reach;
};
