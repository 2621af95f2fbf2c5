// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <array>

class QAction;
class QMenu;

namespace structures {

class MeasureTool;

// The commands of measuring.
class MeasureMenu final : public QObject
{
    Q_OBJECT

public:
    // Puts them into the menu, which owns this. The tool outlives it.
    MeasureMenu(QMenu &menu, MeasureTool &tool);

private:
    void show();

    MeasureTool &m_Tool;
    std::array<QAction *, 3> m_Kinds{};
    QAction *m_End = nullptr;
    QAction *m_Remove = nullptr;
    QAction *m_RemoveAll = nullptr;
};

} // namespace structures
