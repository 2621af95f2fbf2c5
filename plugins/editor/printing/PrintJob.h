// SPDX-License-Identifier: GPL-3.0-or-later
// One print command: asks where to, paints, and makes the file or sends it to the printer.
#pragma once

#include <QString>

#include <functional>

class QPainter;
class QPrinter;
class QWidget;

namespace ZEP {

struct PrintJob
{
    QString title;
    // Where a file is offered, and where names without a folder go.
    QString folder;
    std::function<void(QPainter &painter)> paint;
    // Why the printer's pages cannot hold it, a sentence; empty when they can.
    std::function<QString(const QPrinter &printer)> obstacle;
};

// Offers a file called after the title. A name that ends in ".ps" becomes PostScript, every other
// one PDF. A file takes the place of an old one only when it is complete; when that fails, one
// message says so. Nothing is painted when the user cancels, and what is painted goes nowhere when
// the pages cannot hold it.
void runPrintJob(QWidget *window, const PrintJob &job);

} // namespace ZEP
