// SPDX-License-Identifier: GPL-3.0-or-later
// A main window that notes which buttons of its tool bars were pressed.
#pragma once

#include <QMainWindow>

#include <vector>

struct Press
{
    int number;
    int second;
    bool state;

    friend bool operator==(const Press &, const Press &) = default;
};

namespace ZEP {

class ToolWindow : public QMainWindow
{
    Q_OBJECT

public:
    [[nodiscard]] const std::vector<Press> &presses() const { return m_Presses; }

private slots:
    void ButtonPressed(int number, int second, bool state)
    {
        m_Presses.push_back({number, second, state});
    }

private:
    std::vector<Press> m_Presses;
};

} // namespace ZEP
