// SPDX-License-Identifier: GPL-3.0-or-later
#include "ServedAlignmentWindow.h"

#include "AlignmentWindows.h"
#include "WindowUsers.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

#include <utility>

namespace TAMBO {

using services::AlignmentWindows;
using services::WindowUsers;

namespace {

template <typename Users> bool anyIn(const Users &users, WindowArea area)
{
    return users.any([area](const auto &user) { return user.areas().testFlag(area); });
}

bool isPress(QEvent::Type type)
{
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
}

bool isOfMouse(QEvent::Type type)
{
    return isPress(type) || type == QEvent::MouseButtonRelease || type == QEvent::MouseMove;
}

} // namespace

ServedAlignmentWindow::ServedAlignmentWindow()
{
    m_Users->changed = [this] { usersChanged(); };
}

// Whoever has not said that it is going has no way to be called any more; nobody hears of it.
ServedAlignmentWindow::~ServedAlignmentWindow()
{
    AlignmentWindows::instance().forget(*this);
    m_Users->changed = nullptr;
    m_Users->isClosed = true;
    m_Users->holder = nullptr;
    m_Users->observers.changeAll([](AlignmentViewObserver &user) { user.m_Window = nullptr; });
    m_Users->overlays.changeAll([](CellOverlay &user) { user.m_Window = nullptr; });
    m_Users->filters.changeAll([](CellEventFilter &user) { user.m_Window = nullptr; });
    m_Users->observers.clear();
    m_Users->overlays.clear();
    m_Users->filters.clear();
}

void ServedAlignmentWindow::opened()
{
    AlignmentWindows::instance().open(*this);
}

void ServedAlignmentWindow::going()
{
    AlignmentWindows::instance().close(*this);
}

void ServedAlignmentWindow::activated()
{
    AlignmentWindows::instance().activate(*this);
}

void ServedAlignmentWindow::usersChanged() { }

bool ServedAlignmentWindow::hasOverlays(WindowArea area) const
{
    return anyIn(m_Users->overlays, area);
}

bool ServedAlignmentWindow::hasFilters(WindowArea area) const
{
    return anyIn(m_Users->filters, area);
}

void ServedAlignmentWindow::paintOverlays(WindowArea area, QPainter &painter, const QRect &exposed)
{
    if (exposed.isEmpty() || !hasOverlays(area))
        return;
    const std::shared_ptr<WindowUsers> users = m_Users;
    const OverlayExposure exposure{area, exposed, cellsIn(exposed, area)};
    users->overlays.each([&](CellOverlay &overlay) {
        if (!overlay.areas().testFlag(area))
            return;
        // Also for one that throws.
        struct Saved
        {
            explicit Saved(QPainter &saved) : painter(saved) { painter.save(); }
            ~Saved() { painter.restore(); }
            QPainter &painter;
        } const saved(painter);
        painter.setClipRect(exposed, Qt::IntersectClip);
        overlay.paint(painter, *this, exposure);
    });
}

bool ServedAlignmentWindow::offer(WindowArea area, QEvent &event)
{
    const std::shared_ptr<WindowUsers> users = m_Users;
    const QEvent::Type type = event.type();
    const auto handle = [&](CellEventFilter &filter) {
        return filter.areas().testFlag(area) && filter.handle(*this, area, event);
    };
    if (!isOfMouse(type)) {
        const bool isTaken = users->filters.firstOf([&](CellEventFilter &filter) {
            return handle(filter) && type != QEvent::Enter && type != QEvent::Leave;
        }) != nullptr;
        return isTaken;
    }

    const auto &mouse = static_cast<const QMouseEvent &>(event);
    const Qt::MouseButton button = mouse.button();
    const Qt::MouseButtons others = mouse.buttons() & ~Qt::MouseButtons(button);
    // A release may get lost; then the next event shows that no other button is held.
    if ((isPress(type) && others == Qt::NoButton) ||
        (type == QEvent::MouseMove && mouse.buttons() == Qt::NoButton)) {
        users->isHeld = false;
        users->windowButtons = Qt::NoButton;
    }
    const bool isWindows = users->windowButtons.testFlag(button) && button != Qt::NoButton;
    if (type == QEvent::MouseButtonRelease)
        users->windowButtons.setFlag(button, false);
    if (users->isHeld) {
        if (type == QEvent::MouseButtonRelease && mouse.buttons() == Qt::NoButton)
            users->isHeld = false;
        (void)users->filters.one(users->holder, handle);
        return !(type == QEvent::MouseButtonRelease && isWindows);
    }
    CellEventFilter *const taker = users->filters.firstOf(handle);
    if (type == QEvent::MouseButtonRelease)
        return false;
    if (isPress(type)) {
        users->isHeld = taker != nullptr;
        // It may have gone meanwhile.
        const bool isThere = users->filters.any([=](const auto &user) { return &user == taker; });
        users->holder = isThere ? taker : nullptr;
        if (taker == nullptr)
            users->windowButtons.setFlag(button);
    }
    return taker != nullptr;
}

void ServedAlignmentWindow::tellAlignmentShown()
{
    const std::shared_ptr<WindowUsers> users = m_Users;
    users->observers.each([](AlignmentViewObserver &observer) { observer.alignmentShown(); });
}

void ServedAlignmentWindow::tellGapDragBegan(const GapDrag &drag)
{
    const std::shared_ptr<WindowUsers> users = m_Users;
    users->observers.each([&](AlignmentViewObserver &observer) { observer.gapDragBegan(drag); });
}

void ServedAlignmentWindow::tellGapDragMoved(const GapDrag &drag)
{
    const std::shared_ptr<WindowUsers> users = m_Users;
    users->observers.each([&](AlignmentViewObserver &observer) { observer.gapDragMoved(drag); });
}

void ServedAlignmentWindow::tellGapDragEnded(const GapDrag &drag)
{
    const std::shared_ptr<WindowUsers> users = m_Users;
    users->observers.each([&](AlignmentViewObserver &observer) { observer.gapDragEnded(drag); });
}

void ServedAlignmentWindow::hasChanged(Change change)
{
    if (std::exchange(m_Changes, m_Changes | change) == 0)
        QMetaObject::invokeMethod(
            this, [this] { tellChanges(); }, Qt::QueuedConnection);
}

void ServedAlignmentWindow::tellChanges()
{
    const unsigned changes = std::exchange(m_Changes, 0U);
    const std::shared_ptr<WindowUsers> users = m_Users;
    using News = void (AlignmentViewObserver::*)();
    constexpr std::pair<Change, News> kNews[] = {
        {Rebuilt, &AlignmentViewObserver::layoutRebuilt},
        {CellSize, &AlignmentViewObserver::cellSizeChanged},
        {VisibleSize, &AlignmentViewObserver::visibleSizeChanged},
        {ScrollPosition, &AlignmentViewObserver::scrolled}};
    for (const auto &[change, news] : kNews) {
        if ((changes & change) != 0)
            users->observers.each(
                [call = news](AlignmentViewObserver &observer) { (observer.*call)(); });
    }
}

} // namespace TAMBO
