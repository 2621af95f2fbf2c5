// SPDX-License-Identifier: GPL-3.0-or-later
// The names under which plug-ins keep values, with objects and with the workbench.
#pragma once

#include "Text.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace TAMBO {

// As messages show it.
[[nodiscard]] inline std::string shownName(std::string_view name)
{
    constexpr std::size_t kShown = 60;
    std::string shown(isUtf8(name) ? shortened(name, kShown) : std::string_view("?"));
    std::ranges::replace_if(shown, isControl, ' ');
    return shown;
}

// Of what ("the key") is wrong with it; empty when it is a name of at most so many bytes.
[[nodiscard]] inline std::string nameProblem(std::string_view name, const std::string &what,
                                             std::size_t longest)
{
    if (name.empty())
        return what + " is empty";
    if (name.size() > longest)
        return what + " has more than " + std::to_string(longest) + " bytes";
    if (!isUtf8(name) || std::ranges::any_of(name, isControl))
        return what + " has characters that cannot be shown";
    return {};
}

[[nodiscard]] inline std::string valueNameProblem(std::string_view plugin, std::size_t longestName,
                                                  std::string_view key, std::size_t longestKey)
{
    const std::string problem = nameProblem(plugin, "the name of the plug-in", longestName);
    return problem.empty() ? nameProblem(key, "the key", longestKey) : problem;
}

} // namespace TAMBO
