// SPDX-License-Identifier: GPL-3.0-or-later
// The buttons of a tool bar as the settings describe them.
#pragma once

#include "Result.h"

#include <QString>

#include <vector>

namespace TAMBO::services {

struct ToolbarButton
{
    int number = 0;
    // A file in the icon directory; may be empty.
    QString icon;
    QString text;
    // The text when the settings give none.
    QString toolTip;
    bool isToggle = false;
    // Stands for a gap between buttons; everything else is unset then.
    bool isSeparator = false;
};

// "number|icon|text|tool tip|toggle" separated by ";", a lone "-" for a separator. Fields may be
// left out from the end. What cannot be read is left out and told in problems.
[[nodiscard]] std::vector<ToolbarButton> parseToolbarButtons(const QString &description,
                                                             std::vector<QString> &problems);

} // namespace TAMBO::services
