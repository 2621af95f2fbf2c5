// SPDX-License-Identifier: GPL-3.0-or-later
// What the characters of a NEXUS matrix mean, as its FORMAT command has it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TAMBO::formats {

// What readers take each character for: a letter, '-' for a gap, '*' for a stop, a blank for what
// is passed over; or one of these.
using NexusTable = std::array<char, 256>;
constexpr char kForeign = '\0';
constexpr char kSameAsFirstRow = '\1';

struct NexusSymbols
{
    // "-" is a gap in any case, but for what follows.
    std::optional<char> gap;
    std::optional<char> missing;
    std::optional<char> match;
    bool respectsCase = false;
    // A symbol and what it stands for.
    std::vector<std::pair<char, std::string>> equates;

    // From "B=(DN) x=A"; false when it is not like that.
    [[nodiscard]] bool addEquates(std::string_view text);
    [[nodiscard]] NexusTable table() const;
};

} // namespace TAMBO::formats
