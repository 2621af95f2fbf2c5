// SPDX-License-Identifier: GPL-3.0-or-later
// A line at the lower edge of an alignment window that says what the colors mean.
#pragma once

#include "Legend.h"

#include <QToolBar>

class QMainWindow;

namespace companion {

// Out of sight until there is something to be said.
class LegendBar : public QToolBar
{
    Q_OBJECT

public:
    // A child of the window.
    explicit LegendBar(QMainWindow &window);
    ~LegendBar() override;

    // Goes out of sight when it has no entries.
    void show(const Legend &legend);
    using QToolBar::show;

signals:
    // By the user.
    void closed();
};

} // namespace companion
