// SPDX-License-Identifier: GPL-3.0-or-later
// The main window that every tool of the workbench derives from.
#pragma once

#include "Export.h"

#include <QMainWindow>
#include <QSize>
#include <QString>

// Remembers its size and place under its caption (or the given settings key) and carries the undo
// keys of the workbench.
class TAMBO_API BaseWindow : public QMainWindow
{
    Q_OBJECT

public:
    // size is what the window asks for at its very first opening; one that asks for little gets a
    // comfortable size. placeKey: where size and place are kept, the caption when it is null.
    // fixedSize: the user cannot resize the window.
    BaseWindow(const QString &caption, const QSize &size, const QString &placeKey, bool fixedSize,
               QWidget *parent, const char *name);
    ~BaseWindow() override;

    virtual void setFont(const QFont &font);
    // The close hook, called with the window being closed, once the close has been handled: at once
    // by close(bool), from the event loop after a click on the frame. A window that is made with
    // new overrides it to delete itself.
    virtual void Kill(BaseWindow *window);

    // Under which size and place are kept. A window steps aside of others with the same one.
    [[nodiscard]] const QString &placeKey() const noexcept { return m_PlaceKey; }

    // The place is chosen before the window system hears of the window.
    void setVisible(bool visible) override;
    using QWidget::close;
    // With alsoDelete the window is deleted even when Kill() leaves it alone.
    virtual bool close(bool alsoDelete);

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void placeOnce();
    void choosePlace();
    void stepAsideOfTwins();
    void savePlace() const;

    QString m_PlaceKey;
    QSize m_FirstSize;
    bool m_FixedSize;
    bool m_Placed = false;
    // Inside close(bool), which calls Kill() itself.
    bool m_Closing = false;
    // Closed at the frame; Kill() comes from the event loop.
    bool m_KillPending = false;
};
