// SPDX-License-Identifier: GPL-3.0-or-later
// Where windows stand when nobody has placed them yet: the workbench at the left edge of the
// screen, the first tool window beside it.
#pragma once

#include <QObject>
#include <QRect>

#include <optional>

class QWidget;

namespace TAMBO::app {

// Of the workbench, for the room that the desktop leaves to windows.
[[nodiscard]] QRect workbenchPlace(const QRect &room);
// The top left corner of a window's frame beside another; nothing when there is no room for it.
[[nodiscard]] std::optional<QPoint> placeBeside(const QRect &frame, const QRect &other,
                                                const QRect &room);
// Puts each tool window that is about to be shown for the first time beside the workbench, unless
// its place is remembered or one of its kind is there already.
class FirstPlaces : public QObject
{
    Q_OBJECT

public:
    // Watches all windows of the application while it lives; the workbench's window outlives it.
    explicit FirstPlaces(const QWidget &workbench);
    ~FirstPlaces() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place(QWidget &tool) const;

    const QWidget &m_Workbench;
};

} // namespace TAMBO::app
