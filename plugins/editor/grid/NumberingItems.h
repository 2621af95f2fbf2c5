// SPDX-License-Identifier: GPL-3.0-or-later
// The numbering over the first row: every tenth residue gets its own number, every residue that
// lies in a secondary-structure element the element's letter. Each column has two slots, most of
// which are empty.
#pragma once

#include "ItemSeries.h"
#include "QCanvasItem.h"

#include <QFont>
#include <QSize>

#include <limits>
#include <vector>

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

class NumberingItems : public ItemSeries
{
public:
    struct Measures
    {
        int cellWidth = 0;
        // As the font asks.
        QSize ownCell;
        QFont numberFont;
        QFont letterFont;
        // Without letters elements are bars.
        bool hasLetters = true;
        // Cells are as large as the font asks; otherwise there may be room for some numbers only.
        bool isOwnSize = true;
    };

    // For the columns that the alignment has now. made lists the items that there are, and need not
    // be emptied when the series goes. Both must outlive this object.
    NumberingItems(TAMBO::Alignment *alignment, const Measures &measures, QCanvasItemList &made);
    ~NumberingItems() override;

    [[nodiscard]] unsigned long slotCount() const override { return 2 * m_Columns; }
    [[nodiscard]] SlotRange slotsIn(const QRect &rect) const override;
    [[nodiscard]] QCanvasItem *makeItem(QCanvas &canvas, unsigned long slot) override;
    void itemGoes(QCanvasItem *item) override;

private:
    [[nodiscard]] QCanvasItem *makeNumber(QCanvas &canvas, unsigned long col);
    [[nodiscard]] QCanvasItem *makeElement(QCanvas &canvas, unsigned long col) const;
    [[nodiscard]] QCanvasItem *makeText(QCanvas &canvas, const QString &text, const QFont &font,
                                        unsigned long col, int y) const;
    // Of the first row; null for a gap.
    [[nodiscard]] const TAMBO::Compound *residueIn(unsigned long col) const;
    [[nodiscard]] QString numberIn(unsigned long col) const;
    [[nodiscard]] bool hasRoom(unsigned long col);
    void thinOutTo(unsigned long col);

    TAMBO::Alignment *m_Target;
    unsigned long m_Columns;
    Measures m_Measures;
    QCanvasItemList &m_Made;
    int m_Reach;

    // The columns whose numbers have room beside those before them, as far as that is known.
    std::vector<unsigned long> m_WithRoom;
    // The first residue for which it is not.
    unsigned long m_NextResidue = 9;
    // Where the numbers end that have room, with a blank.
    int m_Free = std::numeric_limits<int>::min();
};
