// SPDX-License-Identifier: GPL-3.0-or-later
// Keeping the canvases in step with the alignment: rebuilding, clearing, notifications, and the
// small edits that the views and panels ask for.
#include "Check.h"
#include "ColItem.h"
#include "DataPoint.h"
#include "IdItem.h"
#include "KALMO2.h"
#include "PlainText.h"
#include "QCanvasRectangle.h"
#include "ResidueLattice.h"
#include "RowItem.h"
#include "ShownObjects.h"
#include "Space.h"
#include "View.h"

#include <QLabel>

#include <algorithm>
#include <memory>

namespace ZEP {

void KALMO2::Populate(TAMBO::Compound *obj)
{
    auto *alignment = dynamic_cast<TAMBO::Alignment *>(obj);
    // A rebuild of the same alignment leaves the user looking at the same place.
    const bool isRebuild = alignment != nullptr && alignment == m_Data;
    const QPoint place = isRebuild ? QPoint(m_View->contentsX(), m_View->contentsY()) : QPoint();
    Clear();
    m_Data = alignment;
    if (m_Data == nullptr)
        return;
    ShownObjects::Set(this, m_Data);
    qDebug("Got Alignment %ld by %ld", static_cast<long>(m_Data->height()),
           static_cast<long>(m_Data->width()));
    createItems();
    m_ShownRevision = m_Data->layoutRevision();
    Update();
    m_View->setContentsPos(place.x(), place.y());
    scroll(m_View->contentsX(), m_View->contentsY());
}

void KALMO2::createItems()
{
    const unsigned long rows = m_Data->height();
    const unsigned long columns = m_Data->width();
    const int width = (static_cast<int>(columns) + 1) * m_CellWidth;
    const int height = (static_cast<int>(rows) + 1) * m_CellHeight;
    m_NameCanvas->resize(m_NameColumns * m_CellWidth, height);
    m_Canvas->resize(width, height);
    m_HeaderCanvas->resize(width, m_HeaderRows * m_CellHeight);

    m_Canvas->setLattice(ResidueLattice::latticeOf(*m_Data, m_CellWidth, m_CellHeight),
                         std::make_unique<ResidueLattice>(m_Data, m_Font));

    showName();
    for (unsigned long col = 0; col < columns; ++col) {
        const int x = cellCentre(col);
        auto *consensus = new IdItem(m_Data, col, m_Font, m_HeaderCanvas, x, 2.0 * m_CellHeight);
        TAMBO_CHECK_PTR(consensus, "KalmoIO", 95);
        consensus->show();
        auto *mark = new ColItem(m_Data, col, m_Font, m_HeaderCanvas, x, 3.0 * m_CellHeight);
        TAMBO_CHECK_PTR(mark, "KalmoIO", 98);
        mark->setZ(3.0);
        mark->show();
    }
    createMarker();
    CreateNumbering();
    for (unsigned long row = 0; row < rows; ++row) {
        auto *item =
            new RowItem(m_Data, row, m_Font, m_NameCanvas, (m_NameColumns - 1) * m_CellWidth,
                        static_cast<double>(row) * m_CellHeight);
        TAMBO_CHECK_PTR(item, "KalmoIO", 118);
        item->setZ(3.0);
        item->show();
    }
}

void KALMO2::showName()
{
    const QString name = QString::fromStdString(m_Data->Name());
    m_Corner->setText(name);
    m_Corner->setToolTip(TAMBO::plainToolTip(name));
}

void KALMO2::createMarker()
{
    auto *marker = new QCanvasRectangle(0, 3 * m_CellHeight, 1, 1, m_HeaderCanvas);
    TAMBO_CHECK_PTR(marker, "KalmoIO", 104);
    m_Header->setMarker(marker);
    showRange();
    marker->show();
}

void KALMO2::showRange()
{
    m_ShownRange = m_Data->range();
    m_Header->SetRange(m_ShownRange.first, m_ShownRange.second);
}

int KALMO2::cellCentre(unsigned long col) const
{
    return static_cast<int>((static_cast<double>(col) + 0.5) * m_CellWidth);
}

bool KALMO2::hasCurrentShape() const
{
    return m_Canvas->width() == (static_cast<int>(m_Data->width()) + 1) * m_CellWidth &&
           m_Canvas->height() == (static_cast<int>(m_Data->height()) + 1) * m_CellHeight;
}

bool KALMO2::isCurrent() const
{
    return m_Data == nullptr ||
           (m_Data->layoutRevision() == m_ShownRevision && m_Data->range() == m_ShownRange);
}

void KALMO2::Clear()
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
    m_Data = nullptr;
    ShownObjects::Set(this, nullptr);
    m_Corner->clear();
    m_Corner->setToolTip(QString());
    commUpdate();
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
        const unsigned long columns = m_Data->width();
        for (unsigned long col = 0; col < columns; ++col) {
            auto *residue = dynamic_cast<TAMBO::Residue *>(m_Data->getItem(0, col));
            if (residue == nullptr)
                continue;
            if (count % 10 == 0)
                addNumberingItem(QString::fromStdString(residue->GetSeqId().getValue()), col, 0);
            ++count;
            // Kept: the letters stand a cell's width below the top, not a cell's height.
            if (const TAMBO::Compound *element = residue->GetSSE())
                addNumberingItem(QChar(QLatin1Char(element->TypeCode())).toLower(), col,
                                 m_CellWidth);
        }
        if (hasCurrentShape())
            m_ShownRevision = m_Data->layoutRevision();
    }
    setAllChanged();
}

void KALMO2::addNumberingItem(const QString &text, unsigned long col, int y)
{
    auto *item = new QCanvasText(text, m_Font, m_HeaderCanvas);
    TAMBO_CHECK_PTR(item, "KALMO2", 431);
    item->setTextFlags(Qt::AlignHCenter);
    item->move((static_cast<double>(col) + 0.5) * m_CellWidth, y);
    item->setZ(2.0);
    item->show();
    m_Numbering.append(item);
}

void KALMO2::setAllChanged()
{
    m_Canvas->setAllChanged();
    m_NameCanvas->setAllChanged();
    m_HeaderCanvas->setAllChanged();
}

void KALMO2::Update()
{
    m_Canvas->update();
    m_NameCanvas->update();
    m_HeaderCanvas->update();
}

void KALMO2::ReCreate()
{
    Populate(m_Data);
}

void KALMO2::scroll(int x, int y)
{
    m_Header->setContentsPos(x, 0);
    m_Names->setContentsPos(0, y);
}

void KALMO2::commAdd() { }

void KALMO2::commUpdate()
{
    if (m_Data != nullptr) {
        // Undo, or an edit in another window, may have moved what the items were made for.
        if (m_Data->layoutRevision() != m_ShownRevision)
            Populate(m_Data);
        // The range is no part of the layout; another window may have set it.
        if (m_Data->range() != m_ShownRange)
            showRange();
        showName();
    }
    setAllChanged();
    Update();
}

void KALMO2::commDelete()
{
    if (m_Data == nullptr)
        return;
    qDebug("KALMO2::commDelete(): Did somebody killed my data?");
    TAMBO::Space *space = TAMBO::Space::instance();
    if (std::find(space->begin(), space->end(), m_Data) == space->end())
        Clear();
    commUpdate();
}

template <typename Edit> void KALMO2::editShape(Edit edit)
{
    const DataPoint<TAMBO::Alignment> guard(this, m_Data);
    if (!guard.m_good) {
        qDebug("Cannot update CDB!");
        return;
    }
    edit(*guard);
    ReCreate();
}

void KALMO2::InsertCol(unsigned long Index)
{
    if (m_Data == nullptr || Index > m_Data->width())
        return;
    editShape([Index](TAMBO::Alignment &alignment) { alignment.insertGapCol(Index, 1); });
}

void KALMO2::RemoveCol(unsigned long Index)
{
    // The last column can never be removed.
    if (m_Data == nullptr || m_Data->width() <= 1 || Index >= m_Data->width())
        return;
    editShape([Index](TAMBO::Alignment &alignment) { alignment.remove(Index); });
}

void KALMO2::RemoveRow(unsigned long Index)
{
    // The last row can never be removed.
    if (m_Data == nullptr || m_Data->height() <= 1 || Index >= m_Data->height())
        return;
    editShape([Index](TAMBO::Alignment &alignment) { alignment.removeRow(Index); });
}

// Kept: takes no guard, so other windows are not told until their next notification.
void KALMO2::AddGapColumn()
{
    if (m_Data == nullptr)
        return;
    m_Data->insertGapCol(m_Data->width(), 1);
    Populate(m_Data);
    m_Canvas->setAllChanged();
    m_Canvas->update();
}

// Redraws nothing: the header panel has moved its marker already. Only when the alignment keeps its
// range, a locked one say, the marker goes back; when it took less, the next painting shows that.
void KALMO2::ReRange(unsigned long begin, unsigned long end)
{
    if (!TAMBO_ASSERT(m_Data, "KALMO2", 531))
        return;
    const TAMBO::Alignment::Range before = m_Data->range();
    m_ShownRange = {begin, end};
    m_Data->range(m_ShownRange);
    if (m_Data->range() == before)
        showRange();
}

} // namespace ZEP
