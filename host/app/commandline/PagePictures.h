// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the pages of a PDF file.
#pragma once

#include <QString>

namespace TAMBO::app {

enum class PagePicture { Svg, Png };

// One file per page: "out.png" becomes out-1.png, out-2.png, … Old files are replaced when all
// pages are complete. The error is empty, or one sentence.
[[nodiscard]] QString writePagePictures(const QString &pdf, const QString &target,
                                        PagePicture kind);

} // namespace TAMBO::app
