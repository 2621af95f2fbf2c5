// SPDX-License-Identifier: GPL-3.0-or-later
// What stands on the canvases, and in which measures.
#include "AlignmentWindowService.h"
#include "Check.h"
#include "HeaderItems.h"
#include "KALMO2.h"
#include "NameItems.h"
#include "NumberingItems.h"
#include "QCanvasRectangle.h"
#include "ResidueLattice.h"
#include "View.h"

#include <memory>
#include <utility>

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
    createHeader();
    createMarker();
    CreateNumbering();
    createNames(rows);
    m_ShownRevision = m_Data->layoutRevision();
    m_Service->rebuilt();
}

void KALMO2::createHeader()
{
    const CellMeasures::Letters &letters = m_Measures.columnLetters();
    m_HeaderCanvas->addSeries(std::make_unique<HeaderItems>(
        m_Data, HeaderItems::Measures{m_Measures.cellWidth(), m_CellHeight, letters.font,
                                      letters.areShown, m_Measures.isOwn()}));
}

void KALMO2::createNames(unsigned long rows)
{
    const CellMeasures::Letters &letters = m_Measures.nameLetters();
    // The last column beside the cells stays free.
    const int right = nameWidth() - m_CellWidth;
    m_NameCanvas->addSeries(std::make_unique<NameItems>(
        m_Data, rows,
        NameItems::Measures{right, m_Measures.cellHeight(), letters.font, letters.areShown,
                            m_Measures.isOwn()}));
}

void KALMO2::createMarker()
{
    auto *marker = new QCanvasRectangle(0, 3 * m_CellHeight, 1, 1, m_HeaderCanvas);
    TAMBO_CHECK_PTR(marker, "KalmoIO", 104);
    m_Header->setMarker(marker);
    showRange();
    marker->show();
}

bool KALMO2::hasCurrentShape() const
{
    return m_Canvas->width() == (static_cast<int>(m_Data->width()) + 1) * m_Measures.cellWidth() &&
           m_Canvas->height() == (static_cast<int>(m_Data->height()) + 1) * m_Measures.cellHeight();
}

void KALMO2::CreateNumbering()
{
    m_HeaderCanvas->removeSeries(std::exchange(m_NumberingItems, nullptr));
    m_Numbering.clear();
    if (m_Data != nullptr) {
        const CellMeasures::Letters &letters = m_Measures.columnLetters();
        m_NumberingItems = m_HeaderCanvas->addSeries(
            std::make_unique<NumberingItems>(m_Data,
                                             NumberingItems::Measures{m_Measures.cellWidth(),
                                                                      {m_CellWidth, m_CellHeight},
                                                                      m_Font,
                                                                      letters.font,
                                                                      letters.areShown,
                                                                      m_Measures.isOwn()},
                                             m_Numbering));
        if (hasCurrentShape())
            m_ShownRevision = m_Data->layoutRevision();
    }
    setAllChanged();
}

void KALMO2::clearItems()
{
    // The cell or row that is held may be another one afterwards.
    m_View->endDrag();
    m_Names->endDrag();
    m_Numbering.clear();
    m_Spare.clear();
    m_NumberingItems = nullptr;
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
