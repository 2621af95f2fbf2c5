// SPDX-License-Identifier: GPL-3.0-or-later
// The tool bar beside those of an alignment window, for the coloring that is wanted most.
#pragma once

#include <QToolBar>

#include <functional>

class QMainWindow;

namespace companion {

class ColorTools : public QToolBar
{
    Q_OBJECT

public:
    // A child of the window. byConservation: what its button does.
    ColorTools(QMainWindow &window, const std::function<void()> &byConservation);
    ~ColorTools() override;
};

} // namespace companion
