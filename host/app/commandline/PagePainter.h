// SPDX-License-Identifier: GPL-3.0-or-later
// What a library of its own does, which is opened when pictures are asked for: a start would wait
// for the two dozen libraries that read the pages back.
#pragma once

#include "Result.h"

#include <QString>

namespace TAMBO::app {

enum class PagePicture { Svg, Png };

// The library beside the folder of plug-ins, and its one function, without their "lib" and ".so".
constexpr const char *kPagePainter = "tambo-page-painter";
constexpr const char *kPaintPages = "tamboPaintPages";

using PaintPages = void (*)(const QString &pdf, const QString &target, PagePicture kind,
                            Result<void> &outcome);

} // namespace TAMBO::app
