// SPDX-License-Identifier: GPL-3.0-or-later
// One print command: asks where to, paints, and makes the file or sends it to the printer.
#pragma once

#include <QString>

#include <functional>

class QPainter;
class QWidget;

namespace ZEP {

// Offers a file called after title. A name that ends in ".ps" becomes PostScript, every other one
// PDF. A file takes the place of an old one only when it is complete; when that fails, one message
// says so. Nothing is painted when the user cancels.
void runPrintJob(QWidget *window, const QString &title,
                 const std::function<void(QPainter &painter)> &paint);

} // namespace ZEP
