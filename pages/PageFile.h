// SPDX-License-Identifier: GPL-3.0-or-later
// Files of finished pages: the toolkit paints pages into PDF only, users want PostScript as well.
#pragma once

#include "PostScript.h"

#include <QString>

namespace Pages {

struct PageFile
{
    // A name that ends in ".ps" becomes PostScript, every other one PDF.
    QString target;
    // What a viewer shows for the file's name; may be empty.
    QString title;
    Progress progress;
};

// Writes the pages of a PDF file. The file at the target is replaced only by a complete one. The
// error is empty, or one sentence.
[[nodiscard]] QString writePageFile(const QString &pdf, const PageFile &file);

// The toolkit does not notice a full disk; a file that broke off lacks its end.
[[nodiscard]] bool isCompletePdf(const QString &pdf);

} // namespace Pages
