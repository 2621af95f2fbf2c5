// SPDX-License-Identifier: GPL-3.0-or-later
#include "Keyboard.h"

#include <QWidget>

namespace companion {

void takeKeyboard(QWidget &widget)
{
    QWidget &window = *widget.window();
    if (!window.isActiveWindow()) {
        window.raise();
        window.activateWindow();
    }
    widget.setFocus(Qt::ShortcutFocusReason);
}

} // namespace companion
