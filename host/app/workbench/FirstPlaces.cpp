// SPDX-License-Identifier: GPL-3.0-or-later
#include "FirstPlaces.h"

#include "BaseWindow.h"
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
// Its buttons have their texts.
constexpr int kNarrowest = 460;
constexpr int kWidest = 640;
constexpr int kHighest = 860;
// Of a window among several: below that one sees too little of an alignment, or of a picture.
constexpr int kBroad = 760;
constexpr int kLow = 300;

// The title of an editor window goes on with what it shows.
QString keyOf(const QWidget &window)
{
    const auto *const kept = qobject_cast<const BaseWindow *>(&window);
    return kept != nullptr ? kept->placeKey() : window.windowTitle();
}

int areaOf(const QRect &rect)
{
    return rect.isEmpty() ? 0 : rect.width() * rect.height();
}

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

std::vector<QRect> sharesBeside(const QRect &other, const QRect &room, std::size_t count)
{
    if (count == 0)
        return {};
    const int windows = int(count);
    QRect area = room;
    area.setLeft(std::max(room.left(), other.right() + 1 + kGap));
    const auto fits = [&] {
        return area.width() / windows >= kBroad ||
               (area.width() >= kBroad && area.height() / windows >= kLow);
    };
    if (!fits())
        area = room;
    const bool areSideBySide = area.width() / windows >= kBroad || area.height() / windows < kLow;
    std::vector<QRect> shares;
    for (int i = 0; i < windows; ++i) {
        const auto between = [&](int length, int index) { return length * index / windows; };
        QRect share = area;
        if (areSideBySide) {
            share.setLeft(area.left() + between(area.width(), i));
            share.setRight(area.left() + between(area.width(), i + 1) - 1);
        } else {
            share.setTop(area.top() + between(area.height(), i));
            share.setBottom(area.top() + between(area.height(), i + 1) - 1);
        }
        shares.push_back(share);
    }
    return shares;
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
        return other != &tool && other->isVisible() && keyOf(*other) == keyOf(tool);
    });
    QWidget probe;
    if (hasTwin || services::WindowPlaces::restore(probe, keyOf(tool)))
        return;
    const bool isThere = m_Workbench != nullptr && m_Workbench->isVisible();
    const QScreen *const screen =
        isThere ? m_Workbench->screen() : QGuiApplication::primaryScreen();
    const QRect room = screen->availableGeometry();
    const QSize size = services::WindowPlaces::comfortable(tool.size(), room.size());
    const QRect frame = QRect(QPoint(0, 0), size).marginsAdded(kFrame);
    const QRect other(workbench.topLeft(), workbench.size() + QSize(2 * kFrame.right(), 0));
    if (m_Sharing > 1)
        return placeInShare(tool, sharesBeside(other, room, m_Sharing));
    if (const std::optional<QPoint> place = placeBeside(frame, other, room))
        tool.move(*place);
}

// Some of them may have a place that is remembered: that of least others is taken.
void FirstPlaces::placeInShare(QWidget &tool, const std::vector<QRect> &shares) const
{
    const auto covered = [&](const QRect &share) {
        int area = 0;
        for (const QWidget *other : QApplication::topLevelWidgets())
            if (other != &tool && other != m_Workbench && other->isVisible() &&
                other->windowType() == Qt::Window)
                area += areaOf(other->frameGeometry() & share);
        return area;
    };
    const QRect place = std::ranges::min_element(shares, {}, covered)->marginsRemoved(kFrame);
    tool.resize(place.size());
    // Where what is inside of the frame is to be, as for the workbench.
    tool.move(place.topLeft());
}

} // namespace TAMBO::app

#include "moc_FirstPlaces.cpp"
