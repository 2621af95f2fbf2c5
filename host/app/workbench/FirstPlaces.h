// SPDX-License-Identifier: GPL-3.0-or-later
// Where windows stand when nobody has placed them yet: the workbench at the left edge of the
// screen, the first tool window beside it, and several that come together beside one another.
#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>

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

    QPointer<QWidget> m_Workbench;
    std::optional<QRect> m_Expected;
    std::size_t m_Sharing = 0;
};

} // namespace TAMBO::app
