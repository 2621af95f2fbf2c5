// SPDX-License-Identifier: GPL-3.0-or-later
#include "CatchUp.h"

#include <QAbstractEventDispatcher>
#include <QAbstractScrollArea>
#include <QEvent>

#include <utility>

namespace ZEP {

namespace {

bool isPaintingOrInput(QEvent::Type type) noexcept
{
    switch (type) {
    // A window is told to paint what has changed before any of its widgets is: then a rebuild may
    // still add to it. Paint itself comes alone where a picture is taken or a part uncovered.
    case QEvent::UpdateRequest:
    case QEvent::Show:
    case QEvent::Paint:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::ToolTip:
        return true;
    default:
        return false;
    }
}

} // namespace

CatchUp::CatchUp(QWidget &window, std::function<bool()> isCurrent, std::function<void()> catchUp)
    : m_IsCurrent(std::move(isCurrent)), m_CatchUp(std::move(catchUp))
{
    window.installEventFilter(this);
    // Nothing else would tell a window that is only looked at.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            &CatchUp::askForPainting);
}

CatchUp::~CatchUp() = default;

void CatchUp::watch(QAbstractScrollArea &view)
{
    view.installEventFilter(this);
    view.viewport()->installEventFilter(this);
    m_Views.push_back(&view);
}

void CatchUp::now()
{
    if (m_IsBusy || m_IsCurrent())
        return;
    m_IsBusy = true;
    m_CatchUp();
    m_IsBusy = false;
}

bool CatchUp::eventFilter(QObject *, QEvent *event)
{
    if (isPaintingOrInput(event->type()))
        now();
    return false;
}

void CatchUp::askForPainting()
{
    if (m_IsCurrent())
        return;
    for (const QAbstractScrollArea *view : m_Views)
        view->viewport()->update();
}

} // namespace ZEP
