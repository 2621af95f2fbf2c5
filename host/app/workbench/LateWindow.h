// SPDX-License-Identifier: GPL-3.0-or-later
// When the workbench's own window comes up: at the start with a file after the editor, which is
// what the user is waiting for, and below it. Where nothing is to be seen for a while, it comes
// first.
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class QWidget;

namespace TAMBO::app {

class LateWindow : public QObject
{
    Q_OBJECT

public:
    // window: makes it, or gives what has been made.
    explicit LateWindow(std::function<QWidget &()> window);
    ~LateWindow() override;

    // It is to be shown, at the latest after a time that nobody notices.
    void expect();
    // Something is to be seen on top of it, or nothing else is to come: now, if it is expected.
    void showNow();
    // As soon as that window is painted, if it is expected.
    void showBelow(QWidget &other);

    [[nodiscard]] bool isExpected() const noexcept { return m_IsExpected; }

    static constexpr int kPatienceMilliseconds = 100;
    // Window managers may keep a window from the screen.
    static constexpr int kLongestMilliseconds = 1000;
    // They may change the size of a new window once more.
    static constexpr int kRestMilliseconds = 20;

private:
    void showBelowNow();

    std::function<QWidget &()> m_Window;
    QPointer<QWidget> m_Other;
    QTimer m_Patience;
    bool m_IsExpected = false;
};

} // namespace TAMBO::app
