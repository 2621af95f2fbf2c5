// SPDX-License-Identifier: GPL-3.0-or-later
#include "FirstPlaces.h"

#include "BaseWindow.h"
#include "WindowPlaces.h"

#include <QApplication>
#include <QEvent>
#include <QMargins>
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
// Lower than this no window is made so that it covers no other.
constexpr int kLowest = 280;

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

int coveredBy(const QRect &frame, const std::vector<QRect> &others)
{
    int area = 0;
    for (const QRect &other : others)
        area += areaOf(other & frame);
    return area;
}

// Tops and left edges at which a window of that size begins or ends where another one does, or the
// room.
std::vector<QPoint> cornersFor(const QSize &size, const std::vector<QRect> &others,
                               const QRect &room)
{
    std::vector<int> lefts;
    std::vector<int> tops;
    for (const QRect &other : others) {
        lefts.insert(lefts.end(),
                     {other.right() + 1 + kGap, other.left(), other.left() - kGap - size.width()});
        tops.insert(tops.end(),
                    {other.top(), other.bottom() + 1 + kGap, other.top() - kGap - size.height()});
    }
    lefts.insert(lefts.end(), {room.left(), room.right() + 1 - size.width()});
    tops.insert(tops.end(), {room.top(), room.bottom() + 1 - size.height()});
    std::vector<QPoint> corners;
    for (const int top : tops)
        for (const int left : lefts)
            if (room.contains(QRect(QPoint(left, top), size)))
                corners.emplace_back(left, top);
    return corners;
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

QRect freestPlace(const QRect &frame, int lowest, const std::vector<QRect> &others,
                  const QRect &room)
{
    const QSize size = frame.size().boundedTo(room.size());
    QRect freest(room.topLeft(), size);
    int least = coveredBy(freest, others) + 1;
    for (const QPoint &corner : cornersFor(size, others, room)) {
        const QRect place(corner, size);
        if (const int covered = coveredBy(place, others); covered < least) {
            least = covered;
            freest = place;
        }
    }
    if (least == 0)
        return freest;
    QRect lowered;
    for (const QPoint &corner : cornersFor({size.width(), lowest}, others, room)) {
        QRect place(corner, QSize(size.width(), lowest));
        if (coveredBy(place, others) > 0)
            continue;
        int bottom = std::min(room.bottom(), place.top() + size.height() - 1);
        for (const QRect &other : others)
            if (other.top() > place.bottom() && other.left() <= place.right() &&
                other.right() >= place.left())
                bottom = std::min(bottom, other.top() - 1 - kGap);
        place.setBottom(std::max(bottom, place.bottom()));
        if (place.height() > lowered.height())
            lowered = place;
    }
    return lowered.isEmpty() ? freest : lowered;
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
    const std::optional<QPoint> beside = placeBeside(frame, other, room);
    std::vector<QRect> others = toolsIn(room, tool);
    const bool coversOne =
        beside ? coveredBy(QRect(*beside, frame.size()), others) > 0 : !others.empty();
    if (coversOne) {
        others.insert(others.begin(), other);
        placeFreely(tool, size, others, room);
    } else if (beside) {
        tool.move(*beside);
    }
}

void FirstPlaces::placeFreely(QWidget &tool, const QSize &size, const std::vector<QRect> &others,
                              const QRect &room) const
{
    const QMargins margins = frameMargins();
    const bool isFixed = tool.minimumHeight() == tool.maximumHeight();
    const int lowest = isFixed ? size.height() : std::max(kLowest, tool.minimumSizeHint().height());
    const auto framed = [&margins](const QSize &inside) {
        return QRect(QPoint(0, 0), inside).marginsAdded(margins);
    };
    const QRect place = freestPlace(framed(size), framed({0, lowest}).height(), others, room);
    if (const QSize inside = place.marginsRemoved(margins).size();
        !isFixed && inside.height() < tool.height())
        tool.resize(tool.width(), inside.height());
    tool.move(place.topLeft());
}

std::vector<QRect> FirstPlaces::toolsIn(const QRect &room, const QWidget &butFor) const
{
    std::vector<QRect> tools;
    for (const QWidget *other : QApplication::topLevelWidgets()) {
        if (other == &butFor || other == m_Workbench || !other->isVisible() ||
            other->isMinimized() || other->windowType() != Qt::Window)
            continue;
        // One that has just been shown is not known to have a frame.
        const QRect frame =
            other->frameGeometry().united(other->geometry().marginsAdded(frameMargins()));
        if (frame.intersects(room))
            tools.push_back(frame);
    }
    return tools;
}

QMargins FirstPlaces::frameMargins() const
{
    if (m_Workbench == nullptr || !m_Workbench->isVisible())
        return kFrame;
    const QRect outside = m_Workbench->frameGeometry();
    const QRect inside = m_Workbench->geometry();
    if (outside == inside || !outside.contains(inside))
        return kFrame;
    return {inside.left() - outside.left(), inside.top() - outside.top(),
            outside.right() - inside.right(), outside.bottom() - inside.bottom()};
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
