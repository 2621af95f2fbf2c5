// SPDX-License-Identifier: GPL-3.0-or-later
// The arguments of a script as users type them: words, as in a shell, of which nothing is expanded.
#pragma once

#include "Result.h"

#include <QString>

#include <string>
#include <vector>

namespace TAMBO::app {

// Apart at spaces that stand neither in quotes nor behind a "\". Refused when a quote has no end.
[[nodiscard]] Result<std::vector<std::string>> scriptArguments(const QString &text);

} // namespace TAMBO::app
