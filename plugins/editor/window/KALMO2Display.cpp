// SPDX-License-Identifier: GPL-3.0-or-later
// Keeping the canvases in step with the alignment: rebuilding, clearing, notifications, and the
// small edits that the views and panels ask for.
#include "AlignmentWindowService.h"
#include "Check.h"
#include "CornerLabel.h"
#include "DataPoint.h"
#include "KALMO2.h"
#include "PlainText.h"
#include "ShownObjects.h"
#include "Space.h"
#include "View.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace ZEP {

void KALMO2::Populate(TAMBO::Compound *obj)
{
    auto *alignment = dynamic_cast<TAMBO::Alignment *>(obj);
    // A rebuild of the same alignment leaves the user looking at the same place.
    const bool isRebuild = alignment != nullptr && alignment == m_Data;
    const QPoint place = isRebuild ? QPoint(m_View->contentsX(), m_View->contentsY()) : QPoint();
    {
        const QScopedValueRollback isPopulating(m_IsPopulating, true);
        Clear();
    }
    m_Data = alignment;
    if (m_Data == nullptr) {
        m_Service->shows(nullptr);
        return;
    }
    ShownObjects::Set(this, m_Data);
    qDebug("Got Alignment %ld by %ld", static_cast<long>(m_Data->height()),
           static_cast<long>(m_Data->width()));
    createItems();
    Update();
    m_View->setContentsPos(place.x(), place.y());
    scroll(m_View->contentsX(), m_View->contentsY());
    m_Service->shows(m_Data);
}

void KALMO2::showName()
{
    const QString name = QString::fromStdString(m_Data->Name());
    m_Corner->setText(name);
    m_Corner->setToolTip(TAMBO::plainToolTip(name));
}

void KALMO2::showRange()
{
    m_ShownRange = m_Data->range();
    m_Header->SetRange(m_ShownRange.first, m_ShownRange.second);
}

bool KALMO2::isCurrent() const
{
    return m_Data == nullptr ||
           (m_Data->layoutRevision() == m_ShownRevision && m_Data->range() == m_ShownRange);
}

void KALMO2::Clear()
{
    // A rebuild shows what was there, or the next alignment.
    const bool isEmptied = m_Service != nullptr && !m_IsPopulating;
    if (isEmptied)
        m_Service->forgets();
    clearItems();
    m_Data = nullptr;
    ShownObjects::Set(this, nullptr);
    m_Corner->clear();
    m_Corner->setToolTip(QString());
    if (isEmptied)
        m_Service->shows(nullptr);
    commUpdate();
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
