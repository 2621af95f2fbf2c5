// SPDX-License-Identifier: GPL-3.0-or-later
// What a plug-in lacks, in words that help its developer.
#pragma once

#include <QString>

namespace TAMBO::services {

// A sentence about a symbol that nobody supplies to the plug-in of this file name, from what the
// system's loader says of it: the symbol as it stands in the source, and what probably is the
// cause.
[[nodiscard]] QString missingSymbol(const QString &plugin, const QString &loaderError);

// About a function that the plug-in does not export. isMangled: it exports one of C++ in its place.
[[nodiscard]] QString missingFunction(const QString &plugin, const QString &function,
                                      bool isMangled);

// "Execute0" of C++, without arguments, as the linker knows it.
[[nodiscard]] QString mangledName(const QString &function);

} // namespace TAMBO::services
