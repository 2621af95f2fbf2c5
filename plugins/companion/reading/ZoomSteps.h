// SPDX-License-Identifier: GPL-3.0-or-later
// The sizes of cells that zooming goes through.
#pragma once

#include <QSize>

namespace companion {

// What zooming in or out by one step makes of cells of the size now, in logical pixels: an eighth
// more or less, at least a pixel, from 1 x 1 to largest, and never past own without stopping there.
[[nodiscard]] QSize zoomedIn(const QSize &now, const QSize &own, const QSize &largest);
[[nodiscard]] QSize zoomedOut(const QSize &now, const QSize &own);
// The cells so wide, as high as goes with it.
[[nodiscard]] QSize cellsOfWidth(int width, const QSize &own);

} // namespace companion
