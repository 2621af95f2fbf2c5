// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColItem.h"

#include "Alignment.h"
#include "Check.h"
#include "DataPoint.h"
#include "QCanvas.h"

ColItem::ColItem(TAMBO::Alignment *alignment, unsigned long col, const QFont &font, QCanvas *canvas,
                 double x, double y)
    : PlacedText(QStringLiteral("O"), font, canvas), m_Target(alignment), m_Col(col)
{
    TAMBO_CHECK_PTR(m_Target, "ColItem", 29);
    move(x, y);
    setTextFlags(Qt::AlignHCenter);
}

ColItem::~ColItem() = default;

void ColItem::draw(QPainter &painter)
{
    const bool isSelected = m_Target != nullptr && m_Target->isColumnSelected(m_Col);
    setText(isSelected ? QStringLiteral("X") : QStringLiteral("O"));
    setColor(isSelected ? Qt::green : Qt::black);
    if (isLetterless() && isSelected)
        fillPlace(painter, Qt::green);
    drawText(painter);
}

int ColItem::rtti() const
{
    return RTTI;
}

void ColItem::hit()
{
    DataPoint<TAMBO::Alignment> guard(nullptr, m_Target);
    if (!guard.m_good)
        return;
    guard->select({m_Col, m_Col + 1}, !guard->isColumnSelected(m_Col));
    if (canvas() != nullptr)
        canvas()->setAllChanged();
}
