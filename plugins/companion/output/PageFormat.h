// SPDX-License-Identifier: GPL-3.0-or-later
// The kinds of files that pages are written into, by the ending of the name.
#pragma once

#include "PageWriter.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class QIODevice;

namespace companion {

enum class PageFormat { Pdf, Svg, Png, Html };

// Nothing when the name has another ending.
[[nodiscard]] std::optional<PageFormat> pageFormatOf(const QString &file);
// For a file dialog.
[[nodiscard]] QStringList pageFilters();
// Of one of these filters, without the point.
[[nodiscard]] QString endingOf(const QString &filter);

// Why pages cannot be written in the format, and what to do; empty when they can.
[[nodiscard]] QString obstacleOf(PageFormat format, const PagePlan &plan, double dotsOfInch);
// The device is open; plan and device outlive what is made.
[[nodiscard]] std::unique_ptr<PageWriter> makePageWriter(PageFormat format, const PagePlan &plan,
                                                         QIODevice &device, double dotsOfInch);

} // namespace companion
