// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowItem.h"

#include "Alignment.h"
#include "Check.h"
#include "DataPoint.h"
#include "QCanvas.h"

#include <QFontMetrics>

namespace {

QString textOf(const TAMBO::Alignment *alignment, unsigned long row, QLatin1String mark)
{
    return alignment == nullptr ? QString(mark)
                                : QString::fromStdString(alignment->GetSeqName(row)) + mark;
}

constexpr QLatin1String kSelected("  X");
constexpr QLatin1String kUnselected("  O");

} // namespace

RowItem::RowItem(TAMBO::Alignment *alignment, unsigned long row, const QFont &font, QCanvas *canvas,
                 double x, double y)
    : PlacedText(textOf(alignment, row, kUnselected), font, canvas), m_Target(alignment), m_Row(row)
{
    TAMBO_CHECK_PTR(m_Target, "RowItem", 31);
    move(x, y);
    setTextFlags(Qt::AlignRight);
}

RowItem::~RowItem() = default;

void RowItem::draw(QPainter &painter)
{
    const bool isSelected = selected();
    setText(textOf(m_Target, m_Row, isSelected ? kSelected : kUnselected));
    setColor(isSelected ? Qt::green : Qt::black);
    if (isLetterless() && isSelected)
        fillPlace(painter, Qt::green);
    drawText(painter, Qt::AlignRight | Qt::AlignVCenter);
}

int RowItem::rtti() const
{
    return RTTI;
}

QRect RowItem::boundingRect() const
{
    QRect area = PlacedText::boundingRect();
    if (isPlaced())
        return area;
    area.setHeight(QFontMetrics(font()).lineSpacing());
    return area;
}

void RowItem::hit()
{
    DataPoint<TAMBO::Alignment> guard(nullptr, m_Target);
    if (!guard.m_good)
        return;
    const bool select = !selected();
    const unsigned long columns = guard->width();
    for (unsigned long col = 0; col < columns; ++col) {
        if (TAMBO::Compound *residue = guard->getItem(m_Row, col))
            residue->SetSelected(select);
    }
    if (canvas() != nullptr)
        canvas()->setAllChanged();
}

bool RowItem::selected() const
{
    return m_Target != nullptr && m_Target->isRowSelected(m_Row);
}
