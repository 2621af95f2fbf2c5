// SPDX-License-Identifier: GPL-3.0-or-later
#include "FirstPlaces.h"

#include "WindowPlaces.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace TAMBO::app {

namespace {

constexpr int kGap = 12;
// Window managers add these at most; they are not known before a window has been shown.
constexpr QMargins kFrame(4, 32, 4, 4);
constexpr double kShareOfWidth = 0.33;
constexpr int kNarrowest = 420;
constexpr int kWidest = 640;
constexpr int kHighest = 860;

} // namespace

QRect workbenchPlace(const QRect &room)
{
    const int width = std::clamp(int(room.width() * kShareOfWidth), kNarrowest, kWidest);
    const int height = room.height() - kFrame.top() - kFrame.bottom() - 2 * kGap;
    // Some window managers put the frame there, others what is inside of it.
    const QPoint corner = room.topLeft() + QPoint(kGap + kFrame.left(), kFrame.top());
    return {corner, QSize(std::min(width, room.width()), std::min(height, kHighest))};
}

std::optional<QPoint> placeBeside(const QRect &frame, const QRect &other, const QRect &room)
{
    const QPoint right(other.right() + 1 + kGap, std::max(other.top(), room.top()));
    const QPoint left(other.left() - kGap - frame.width(), right.y());
    for (const QPoint &place : {right, left}) {
        if (place.x() >= room.left() && place.x() + frame.width() <= room.right() + 1)
            return place;
    }
    return std::nullopt;
}

FirstPlaces::FirstPlaces()
{
    qApp->installEventFilter(this);
}

FirstPlaces::~FirstPlaces() = default;

// Before the window system has heard of the window: later it would have to jump.
bool FirstPlaces::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && !event->spontaneous() && watched->isWidgetType()) {
        auto *window = static_cast<QWidget *>(watched);
        const bool isTool = window->windowType() == Qt::Window && window != m_Workbench &&
                            window->isWindow() && !window->testAttribute(Qt::WA_Moved);
        if (const std::optional<QRect> beside = workbench(); isTool && beside)
            place(*window, *beside);
    }
    return QObject::eventFilter(watched, event);
}

std::optional<QRect> FirstPlaces::workbench() const
{
    if (m_Workbench != nullptr && m_Workbench->isVisible())
        return m_Workbench->geometry();
    return m_Expected;
}

void FirstPlaces::place(QWidget &tool, const QRect &workbench) const
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool hasTwin = std::ranges::any_of(windows, [&](const QWidget *other) {
        return other != &tool && other->isVisible() && other->windowTitle() == tool.windowTitle();
    });
    QWidget probe;
    if (hasTwin || services::WindowPlaces::restore(probe, tool.windowTitle()))
        return;
    const bool isThere = m_Workbench != nullptr && m_Workbench->isVisible();
    const QScreen *const screen =
        isThere ? m_Workbench->screen() : QGuiApplication::primaryScreen();
    const QRect room = screen->availableGeometry();
    const QSize size = services::WindowPlaces::comfortable(tool.size(), room.size());
    const QRect frame = QRect(QPoint(0, 0), size).marginsAdded(kFrame);
    const QRect other(workbench.topLeft(), workbench.size() + QSize(2 * kFrame.right(), 0));
    if (const std::optional<QPoint> place = placeBeside(frame, other, room))
        tool.move(*place);
}

} // namespace TAMBO::app

#include "moc_FirstPlaces.cpp"
