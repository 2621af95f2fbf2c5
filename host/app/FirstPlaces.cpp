// SPDX-License-Identifier: GPL-3.0-or-later
#include "FirstPlaces.h"

#include "WindowPlaces.h"

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

void placeFirstTime(QWidget &tool, const QWidget &workbench)
{
    QWidget probe;
    if (services::WindowPlaces::restore(probe, tool.windowTitle()))
        return;
    const QRect room = tool.screen()->availableGeometry();
    // The frame of a window that has just been shown is not there yet.
    const QRect frame = tool.frameGeometry().size() == tool.size()
                            ? tool.frameGeometry().marginsAdded(kFrame)
                            : tool.frameGeometry();
    QRect other = workbench.frameGeometry();
    if (other.size() == workbench.size())
        other = QRect(other.topLeft(), other.marginsAdded(kFrame).size());
    if (const std::optional<QPoint> place = placeBeside(frame, other, room))
        tool.move(*place);
}

} // namespace TAMBO::app
