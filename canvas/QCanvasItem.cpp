// SPDX-License-Identifier: GPL-3.0-or-later
#include "QCanvasItem.h"

QCanvasItem::QCanvasItem(QCanvas *canvas) : m_Host(ItemHost::of(canvas))
{
    ++s_Alive;
    if (m_Host != nullptr)
        m_Host->addItem(this);
}

QCanvasItem::~QCanvasItem()
{
    --s_Alive;
    if (m_Host != nullptr)
        m_Host->removeItem(this);
}

void QCanvasItem::move(double x, double y)
{
    aboutToChange();
    m_X = x;
    m_Y = y;
    hasChanged();
}

void QCanvasItem::setZ(double z)
{
    m_Z = z;
    if (m_Visible && m_Host != nullptr)
        m_Host->itemChanged(*this);
}

void QCanvasItem::setVisible(bool visible)
{
    if (visible == m_Visible)
        return;
    aboutToChange();
    m_Visible = visible;
    hasChanged();
}

int QCanvasItem::rtti() const
{
    return Rtti_Item;
}

bool QCanvasItem::collidesWith(const QCanvasItem *other) const
{
    return other != nullptr && boundingRect().intersects(other->boundingRect());
}

void QCanvasItem::aboutToChange()
{
    if (m_Visible && m_Host != nullptr)
        m_Host->itemLeaves(*this);
}

void QCanvasItem::hasChanged()
{
    if (m_Visible && m_Host != nullptr)
        m_Host->itemEnters(*this);
}
