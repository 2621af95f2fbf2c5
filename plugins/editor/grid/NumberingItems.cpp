// SPDX-License-Identifier: GPL-3.0-or-later
#include "NumberingItems.h"

#include "Alignment.h"
#include "Check.h"
#include "HeaderItems.h"
#include "QCanvasRectangle.h"
#include "QCanvasText.h"

#include <QFontMetrics>

#include <algorithm>

namespace {

// Every so many residues there is a number.
constexpr unsigned long kStep = 10;
// A sign, ten digits and an insertion code.
constexpr int kLongestNumber = 12;

} // namespace

NumberingItems::NumberingItems(TAMBO::Alignment *alignment, const Measures &measures,
                               QCanvasItemList &made)
    : m_Target(alignment),
      m_Columns(alignment->width()),
      m_Measures(measures),
      m_Made(made),
      m_Reach(std::max(QCanvasText::farthest(measures.numberFont, kLongestNumber, Qt::AlignHCenter),
                       QCanvasText::farthest(measures.letterFont, 1, Qt::AlignHCenter)))
{ }

NumberingItems::~NumberingItems() = default;

SlotRange NumberingItems::slotsIn(const QRect &rect) const
{
    const SlotRange columns =
        placesIn(rect.left() - m_Reach, rect.right() + m_Reach, m_Measures.cellWidth, m_Columns);
    return {2 * columns.begin, 2 * columns.end};
}

QCanvasItem *NumberingItems::makeItem(QCanvas &canvas, unsigned long slot)
{
    const unsigned long col = slot / 2;
    QCanvasItem *item = slot % 2 == 0 ? makeNumber(canvas, col) : makeElement(canvas, col);
    if (item != nullptr)
        m_Made.append(item);
    return item;
}

void NumberingItems::itemGoes(QCanvasItem *item)
{
    m_Made.removeOne(item);
}

QCanvasItem *NumberingItems::makeNumber(QCanvas &canvas, unsigned long col)
{
    const bool isDue = (m_Target->residueCount(0, col) + 1) % kStep == 0;
    if (!isDue || residueIn(col) == nullptr || !hasRoom(col))
        return nullptr;
    return makeText(canvas, numberIn(col), m_Measures.numberFont, col, 0);
}

QCanvasItem *NumberingItems::makeElement(QCanvas &canvas, unsigned long col) const
{
    const auto *residue = dynamic_cast<const TAMBO::Residue *>(residueIn(col));
    const TAMBO::Compound *element = residue == nullptr ? nullptr : residue->GetSSE();
    if (element == nullptr)
        return nullptr;
    // Kept: the letters stand a cell's width below the top, not a cell's height.
    const int top = m_Measures.ownCell.width();
    if (m_Measures.hasLetters)
        return makeText(canvas, QChar(QLatin1Char(element->TypeCode())).toLower(),
                        m_Measures.letterFont, col, top);
    const int width = m_Measures.cellWidth;
    const int third = m_Measures.ownCell.height() / 3;
    auto *bar =
        new QCanvasRectangle(static_cast<int>(col) * width, top + third, width, third, &canvas);
    bar->setPen(Qt::NoPen);
    bar->setBrush(Qt::darkGray);
    bar->setZ(2.0);
    return bar;
}

QCanvasItem *NumberingItems::makeText(QCanvas &canvas, const QString &text, const QFont &font,
                                      unsigned long col, int y) const
{
    auto *item = new QCanvasText(text, font, &canvas);
    TAMBO_CHECK_PTR(item, "KALMO2", 431);
    item->setTextFlags(Qt::AlignHCenter);
    item->move((static_cast<double>(col) + 0.5) * m_Measures.cellWidth, y);
    item->setZ(2.0);
    return item;
}

const TAMBO::Compound *NumberingItems::residueIn(unsigned long col) const
{
    return m_Target->getItem(0, col);
}

QString NumberingItems::numberIn(unsigned long col) const
{
    const auto *residue = dynamic_cast<const TAMBO::Residue *>(residueIn(col));
    return residue == nullptr ? QString() : QString::fromStdString(residue->GetSeqId().getValue());
}

bool NumberingItems::hasRoom(unsigned long col)
{
    if (m_Measures.isOwnSize)
        return true;
    thinOutTo(col);
    return std::ranges::binary_search(m_WithRoom, col);
}

// Which numbers have room depends on all before them.
void NumberingItems::thinOutTo(unsigned long col)
{
    const QFontMetrics metrics(m_Measures.numberFont);
    for (;; m_NextResidue += kStep) {
        const unsigned long next = m_Target->columnOfResidue(0, m_NextResidue);
        if (next > col || next >= m_Columns)
            return;
        const int centre = HeaderItems::centreOf(next, m_Measures.cellWidth);
        // However short it is: most need not be measured.
        if (centre < m_Free)
            continue;
        const int length = metrics.horizontalAdvance(numberIn(next));
        const int left = centre - length / 2;
        if (left < m_Free)
            continue;
        m_WithRoom.push_back(next);
        m_Free = left + length + m_Measures.ownCell.width();
    }
}
