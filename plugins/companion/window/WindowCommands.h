// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of one alignment window: by their keys, and in a menu on its corner.
#pragma once

#include "CellEventFilter.h"

#include <QObject>

namespace companion {

class Companion;

class WindowCommands : public QObject, public TAMBO::CellEventFilter
{
    Q_OBJECT

public:
    // The companion is that of the window, and outlives this.
    WindowCommands(TAMBO::AlignmentWindow &window, Companion &companion);
    ~WindowCommands() override;

    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    Companion &m_Companion;
};

} // namespace companion
