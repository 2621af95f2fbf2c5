// SPDX-License-Identifier: GPL-3.0-or-later
// The version of the kit. A plug-in names the one that it was built against in its descriptor
// (tambo_plugin() writes it there), and the workbench looks at it before it opens the library: it
// takes the same major version, and the same or an older minor one.
#pragma once

namespace TAMBO {

// Counted up when a plug-in that was built before would not work any more.
inline constexpr int kKitMajor = 1;
// Counted up when something is added that a plug-in can rely on.
inline constexpr int kKitMinor = 0;

} // namespace TAMBO
