// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueItem.h"

#include "Alignment.h"
#include "Check.h"
#include "DataPoint.h"
#include "LetterColor.h"
#include "QCanvas.h"

#include <QColor>
#include <QPainter>

#include <vector>

ResidueItem::ResidueItem(TAMBO::Alignment *alignment, unsigned long row, unsigned long col,
                         const QFont &font, QCanvas *canvas, int x, int y, int w, int h)
    : QCanvasRectangle(x, y, 1, 1, canvas),
      m_Target(alignment),
      m_Row(row),
      m_Col(col),
      m_Font(font)
{
    TAMBO_CHECK_PTR(m_Target, "ResidueItem", 34);
    setSize(w, h);
    m_Rect = QRect(x, y, w, h);
}

ResidueItem::~ResidueItem() = default;

void ResidueItem::draw(QPainter &painter)
{
    char letter = '-';
    QColor background = Qt::white;
    std::vector<TAMBO::AlignmentCell> cell;
    if (m_Target != nullptr)
        m_Target->readRow(m_Row, m_Col, m_Col + 1, cell);
    if (!cell.empty() && !cell.front().isGap()) {
        letter = cell.front().letter;
        background = shownColor(cell.front().color);
    }
    drawCell(painter, m_Rect, m_Font, letter, background);
}

int ResidueItem::rtti() const
{
    return RTTI;
}

void ResidueItem::hit()
{
    TAMBO::Compound *residue = m_Target->getItem(m_Row, m_Col);
    if (residue == nullptr) {
        qDebug("It's a gap");
        return;
    }
    DataPoint<TAMBO::Compound> guard(nullptr, residue);
    if (!guard.m_good)
        return;
    guard->ToggleSelected();
    if (canvas() != nullptr)
        canvas()->setChanged(m_Rect);
}

bool ResidueItem::isGap() const
{
    return m_Target->getItem(m_Row, m_Col) == nullptr;
}

QColor ResidueItem::shownColor(const Color &color)
{
    const QColor own = color.toQColor();
    if (color.isOpaque())
        return own;
    const auto overWhite = [alpha = own.alpha()](int part) {
        return 255 - (255 - part) * alpha / 255;
    };
    return {overWhite(own.red()), overWhite(own.green()), overWhite(own.blue())};
}

void ResidueItem::drawCell(QPainter &painter, const QRectF &rect, const QFont &font, char letter,
                           const QColor &background)
{
    painter.fillRect(rect, background);
    painter.setFont(font);
    painter.setPen(ZEP::letterColorOn(background));
    painter.drawText(rect, Qt::AlignCenter, QString(QLatin1Char(letter)));
}
