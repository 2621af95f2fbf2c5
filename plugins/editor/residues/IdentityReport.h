// SPDX-License-Identifier: GPL-3.0-or-later
// The percentage identity of a row of an alignment against the first row.
#pragma once

#include <QString>

#include <optional>

namespace TAMBO {
class Alignment;
}

// The text to be shown to the user. Nothing when one of the rows holds no residue or they do not
// overlap.
[[nodiscard]] std::optional<QString> identityReport(const TAMBO::Alignment &alignment,
                                                    unsigned long row);
