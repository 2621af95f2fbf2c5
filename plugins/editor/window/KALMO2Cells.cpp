// SPDX-License-Identifier: GPL-3.0-or-later
// What stands on the canvases, and in which measures.
#include "AlignmentWindowService.h"
#include "Check.h"
#include "ColItem.h"
#include "IdItem.h"
#include "KALMO2.h"
#include "QCanvasRectangle.h"
#include "ResidueLattice.h"
#include "RowItem.h"
#include "View.h"

#include <QFontMetrics>

#include <limits>
#include <memory>

namespace ZEP {

void KALMO2::createItems()
{
    const unsigned long rows = m_Data->height();
    const unsigned long columns = m_Data->width();
    const int width = (static_cast<int>(columns) + 1) * m_Measures.cellWidth();
    const int height = (static_cast<int>(rows) + 1) * m_Measures.cellHeight();
    m_NameCanvas->resize(nameWidth(), height);
    m_Canvas->resize(width, height);
    m_HeaderCanvas->resize(width, m_HeaderRows * m_CellHeight);

    const CellMeasures::Letters &letters = m_Measures.cellLetters();
    m_Canvas->setLattice(
        ResidueLattice::latticeOf(*m_Data, m_Measures.cellWidth(), m_Measures.cellHeight()),
        std::make_unique<ResidueLattice>(m_Data, letters.font, letters.areShown));

    showName();
    createHeader(columns);
    createMarker();
    CreateNumbering();
    createNames(rows);
    m_ShownRevision = m_Data->layoutRevision();
    m_Service->rebuilt();
}

void KALMO2::createHeader(unsigned long columns)
{
    const CellMeasures::Letters &letters = m_Measures.columnLetters();
    const int line = m_CellHeight;
    const auto place = [&](PlacedText &item, unsigned long col, int number) {
        if (!m_Measures.isOwn())
            item.setPlace(QRect(static_cast<int>(col) * m_Measures.cellWidth(), number * line,
                                m_Measures.cellWidth(), line),
                          letters.areShown);
    };
    for (unsigned long col = 0; col < columns; ++col) {
        const int x = cellCentre(col);
        auto *consensus = new IdItem(m_Data, col, letters.font, m_HeaderCanvas, x, 2.0 * line);
        TAMBO_CHECK_PTR(consensus, "KalmoIO", 95);
        place(*consensus, col, 2);
        consensus->show();
        auto *mark = new ColItem(m_Data, col, letters.font, m_HeaderCanvas, x, 3.0 * line);
        TAMBO_CHECK_PTR(mark, "KalmoIO", 98);
        place(*mark, col, 3);
        mark->setZ(3.0);
        mark->show();
    }
}

void KALMO2::createNames(unsigned long rows)
{
    const CellMeasures::Letters &letters = m_Measures.nameLetters();
    // The last column beside the cells stays free.
    const int right = nameWidth() - m_CellWidth;
    const int height = m_Measures.cellHeight();
    for (unsigned long row = 0; row < rows; ++row) {
        const int y = static_cast<int>(row) * height;
        auto *item = new RowItem(m_Data, row, letters.font, m_NameCanvas, right, y);
        TAMBO_CHECK_PTR(item, "KalmoIO", 118);
        if (!m_Measures.isOwn())
            item->setPlace(QRect(0, y, right, height), letters.areShown);
        item->setZ(3.0);
        item->show();
    }
}

void KALMO2::createMarker()
{
    auto *marker = new QCanvasRectangle(0, 3 * m_CellHeight, 1, 1, m_HeaderCanvas);
    TAMBO_CHECK_PTR(marker, "KalmoIO", 104);
    m_Header->setMarker(marker);
    showRange();
    marker->show();
}

int KALMO2::cellCentre(unsigned long col) const
{
    return static_cast<int>((static_cast<double>(col) + 0.5) * m_Measures.cellWidth());
}

bool KALMO2::hasCurrentShape() const
{
    return m_Canvas->width() == (static_cast<int>(m_Data->width()) + 1) * m_Measures.cellWidth() &&
           m_Canvas->height() == (static_cast<int>(m_Data->height()) + 1) * m_Measures.cellHeight();
}

// The first row's every tenth residue gets its own number, every residue of it that lies in a
// secondary-structure element the element's letter.
void KALMO2::CreateNumbering()
{
    for (QCanvasItem *item : std::as_const(m_Numbering))
        delete item;
    m_Numbering.clear();
    if (m_Data != nullptr) {
        unsigned long count = 1;
        int free = std::numeric_limits<int>::min();
        const unsigned long columns = m_Data->width();
        for (unsigned long col = 0; col < columns; ++col) {
            auto *residue = dynamic_cast<TAMBO::Residue *>(m_Data->getItem(0, col));
            if (residue == nullptr)
                continue;
            if (count % 10 == 0)
                addNumber(QString::fromStdString(residue->GetSeqId().getValue()), col, free);
            ++count;
            if (const TAMBO::Compound *element = residue->GetSSE())
                addElement(QChar(QLatin1Char(element->TypeCode())).toLower(), col);
        }
        if (hasCurrentShape())
            m_ShownRevision = m_Data->layoutRevision();
    }
    setAllChanged();
}

// Over cells that are smaller than the font asks, there is room for some of the numbers.
void KALMO2::addNumber(const QString &text, unsigned long col, int &free)
{
    if (!m_Measures.isOwn()) {
        const int length = QFontMetrics(m_Font).horizontalAdvance(text);
        const int left = cellCentre(col) - length / 2;
        if (left < free)
            return;
        free = left + length + m_CellWidth;
    }
    addNumberingItem(text, m_Font, col, 0);
}

void KALMO2::addElement(const QString &letter, unsigned long col)
{
    const CellMeasures::Letters &letters = m_Measures.columnLetters();
    // Kept: the letters stand a cell's width below the top, not a cell's height.
    const int top = m_CellWidth;
    if (letters.areShown) {
        addNumberingItem(letter, letters.font, col, top);
        return;
    }
    const int width = m_Measures.cellWidth();
    auto *bar = new QCanvasRectangle(static_cast<int>(col) * width, top + m_CellHeight / 3, width,
                                     m_CellHeight / 3, m_HeaderCanvas);
    bar->setPen(Qt::NoPen);
    bar->setBrush(Qt::darkGray);
    bar->setZ(2.0);
    bar->show();
    m_Numbering.append(bar);
}

void KALMO2::addNumberingItem(const QString &text, const QFont &font, unsigned long col, int y)
{
    auto *item = new QCanvasText(text, font, m_HeaderCanvas);
    TAMBO_CHECK_PTR(item, "KALMO2", 431);
    item->setTextFlags(Qt::AlignHCenter);
    item->move((static_cast<double>(col) + 0.5) * m_Measures.cellWidth(), y);
    item->setZ(2.0);
    item->show();
    m_Numbering.append(item);
}

void KALMO2::clearItems()
{
    // The cell or row that is held may be another one afterwards.
    m_View->endDrag();
    m_Names->endDrag();
    m_Numbering.clear();
    m_Spare.clear();
    m_Header->resetRange();
    for (QCanvas *canvas : {m_Canvas, m_NameCanvas, m_HeaderCanvas}) {
        canvas->clear();
        canvas->resize(0, 0);
    }
}

void KALMO2::setCellSize(const QSize &size)
{
    const QSize before = m_Measures.cell();
    m_Measures.setCell(size);
    if (m_Measures.cell() == before || m_Data == nullptr)
        return;
    clearItems();
    createItems();
    Update();
}

int KALMO2::nameWidth() const
{
    return m_NameWidth > 0 ? m_NameWidth : m_NameColumns * m_CellWidth;
}

void KALMO2::setNameWidth(int width)
{
    if (width == m_NameWidth)
        return;
    m_NameWidth = width;
    fitNames();
    if (m_Data == nullptr)
        return;
    m_Names->endDrag();
    m_NameCanvas->clear();
    m_NameCanvas->resize(nameWidth(), m_NameCanvas->height());
    createNames(m_Canvas->lattice().rows());
    m_NameCanvas->update();
}

// Kept: only the panels' maxima follow a new font, their minima stay as they were made.
void KALMO2::fitNames()
{
    m_Names->setMinimumWidth(m_NameWidth > 0 ? m_NameWidth : m_FirstNameWidth);
    m_Names->setMaximumWidth(nameWidth());
}

} // namespace ZEP
