// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the pages of a PDF file.
#pragma once

#include "PagePainter.h"

namespace TAMBO::app {

// One file per page: "out.png" becomes out-1.png, out-2.png, … Old files are replaced when all
// pages are complete.
[[nodiscard]] Result<void> writePagePictures(const QString &pdf, const QString &target,
                                             PagePicture kind);

} // namespace TAMBO::app
