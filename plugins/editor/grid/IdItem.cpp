// SPDX-License-Identifier: GPL-3.0-or-later
#include "IdItem.h"

#include "Alignment.h"
#include "Check.h"

namespace {

// The letter that all rows share, in lower case the one that more than half of them have.
QString consensus(const TAMBO::Alignment &alignment, unsigned long col)
{
    const unsigned long rows = alignment.height();
    if (rows < 2)
        return {};
    const TAMBO::AlignmentMajority most = alignment.majority(col);
    const QChar letter = QLatin1Char(most.letter);
    if (most.count == rows)
        return letter;
    if (most.count <= rows / 2)
        return {};
    return letter.toLower();
}

} // namespace

IdItem::IdItem(TAMBO::Alignment *alignment, unsigned long col, const QFont &font, QCanvas *canvas,
               double x, double y)
    : PlacedText(QStringLiteral("O"), font, canvas), m_Target(alignment), m_Col(col)
{
    TAMBO_CHECK_PTR(m_Target, "IdItem", 29);
    move(x, y);
    setTextFlags(Qt::AlignHCenter);
}

IdItem::~IdItem() = default;

void IdItem::draw(QPainter &painter)
{
    setText(m_Target == nullptr ? QString() : consensus(*m_Target, m_Col));
    if (isLetterless() && !text().isEmpty()) {
        // A letter that all rows share is in upper case.
        constexpr int kBesideLine = 3;
        fillPlace(painter, text().front().isUpper() ? Qt::black : Qt::lightGray, kBesideLine);
    }
    drawText(painter);
}

int IdItem::rtti() const
{
    return RTTI;
}
