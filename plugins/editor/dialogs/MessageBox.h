// SPDX-License-Identifier: GPL-3.0-or-later
// Message boxes of the editor, whose texts may hold names with anything in them.
#pragma once

#include <QMessageBox>

namespace ZEP {

// Shows the text as it stands, and waits for the user. The window may be gone afterwards.
void tell(QWidget *window, QMessageBox::Icon icon, const QString &title, const QString &text);

} // namespace ZEP
