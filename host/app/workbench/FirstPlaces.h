// SPDX-License-Identifier: GPL-3.0-or-later
// Where windows stand when nobody has placed them yet: the workbench at the left edge of the
// screen, the first tool window beside it, several that come together beside one another, and one
// that comes later where it covers least.
#pragma once

#include <QMargins>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QSize>

#include <cstddef>
#include <optional>
#include <vector>

class QWidget;

namespace TAMBO::app {

// Of the workbench, for the room that the desktop leaves to windows.
[[nodiscard]] QRect workbenchPlace(const QRect &room);
// The top left corner of a window's frame beside another; nothing when there is no room for it.
[[nodiscard]] std::optional<QPoint> placeBeside(const QRect &frame, const QRect &other,
                                                const QRect &room);
// The frames of several windows that share the room beside another: next to each other where that
// makes them broad enough, otherwise one below the other. All of the room where too little is left
// beside it.
[[nodiscard]] std::vector<QRect> sharesBeside(const QRect &other, const QRect &room,
                                              std::size_t count);
// The frame of a window where it covers least of the others, as high as it is, or lowered as far as
// the given height where that makes it cover none. The place that is tried first is at the right of
// the first of them, or at the left.
[[nodiscard]] QRect freestPlace(const QRect &frame, int lowest, const std::vector<QRect> &others,
                                const QRect &room);
// Puts each tool window that is about to be shown for the first time beside the workbench, unless
// its place is remembered or one of its kind is there already.
class FirstPlaces : public QObject
{
    Q_OBJECT

public:
    // Watches all windows of the application while it lives.
    FirstPlaces();
    ~FirstPlaces() override;

    // Until the workbench's window is seen: where it will be.
    void expectWorkbench(const QRect &place) { m_Expected = place; }
    void setWorkbench(QWidget &workbench) { m_Workbench = &workbench; }

    // So many tool windows are about to come together, and share the room beside the workbench
    // until 0 is said.
    void shareRoom(std::size_t windows) { m_Sharing = windows; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Of the workbench; nothing while it is not seen and not expected.
    [[nodiscard]] std::optional<QRect> workbench() const;
    void place(QWidget &tool, const QRect &workbench) const;
    void placeInShare(QWidget &tool, const std::vector<QRect> &shares) const;
    // Where it covers least of them, of which the first is the workbench.
    void placeFreely(QWidget &tool, const QSize &size, const std::vector<QRect> &others,
                     const QRect &room) const;
    // Frames of the tool windows that are seen in the room.
    [[nodiscard]] std::vector<QRect> toolsIn(const QRect &room, const QWidget &butFor) const;
    // Around what a window shows.
    [[nodiscard]] QMargins frameMargins() const;

    QPointer<QWidget> m_Workbench;
    std::optional<QRect> m_Expected;
    std::size_t m_Sharing = 0;
};

} // namespace TAMBO::app
