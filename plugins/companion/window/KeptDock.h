// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a dock of an alignment window is shown, where and how high: as in the window that it was
// shown or hidden in last.
#pragma once

#include <QObject>

class QDockWidget;
class QMainWindow;

namespace companion {

// Goes before the dock does.
class KeptDock : public QObject
{
    Q_OBJECT

public:
    // The dock is in the window, and has a name for programs.
    KeptDock(QMainWindow &window, QDockWidget &dock);
    ~KeptDock() override;

private:
    struct Place
    {
        bool isShown = false;
        int area = 0;
        // 0 when it never had one.
        int height = 0;

        friend bool operator==(const Place &, const Place &) = default;
    };

    [[nodiscard]] Place kept() const;
    void set(const Place &place) const;
    void restore();
    void keep();

    QMainWindow &m_Window;
    QDockWidget &m_Dock;
    // Since then it has the height that the user gave it.
    bool m_WasSeen = false;
};

} // namespace companion
