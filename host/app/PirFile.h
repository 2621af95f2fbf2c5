// SPDX-License-Identifier: GPL-3.0-or-later
// Writes an alignment as a PIR file with the structure links of modelling programs.
#pragma once

#include <QString>

#include <string>

namespace TAMBO {
class Alignment;
}

namespace TAMBO::app {

// What a file said of a row is kept; the range of residues is that of the row as it is now.
[[nodiscard]] std::string pirText(const Alignment &alignment);

// The old file is replaced only by a complete new one. Empty, or one sentence that says why not.
[[nodiscard]] QString writePirFile(const QString &path, const Alignment &alignment);

} // namespace TAMBO::app
