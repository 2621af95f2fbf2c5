// SPDX-License-Identifier: GPL-3.0-or-later
// A text of "[section]" and "key = value" lines. Comments and the order of lines survive a change.
#pragma once

#include "Result.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::services {

// A line that starts with "#" or ";" is a comment; a line that starts with a blank goes on with the
// value above it. A value in double quotes keeps its blanks and may hold \n, \" and \\.
class IniFile
{
public:
    // The failure names the file, the line and what was expected.
    static Result<IniFile> parse(std::string_view text, const std::string &fileName);

    [[nodiscard]] std::optional<std::string> value(std::string_view section,
                                                   std::string_view key) const;
    // Those that have keys, in the order of the text.
    [[nodiscard]] std::vector<std::string> sections() const;
    [[nodiscard]] std::vector<std::string> keys(std::string_view section) const;
    // Where the value stands in the text that was read, from 1. 0 for one that is not in it.
    [[nodiscard]] unsigned long lineOf(std::string_view section, std::string_view key) const;
    void setValue(std::string_view section, std::string_view key, std::string_view value);
    void remove(std::string_view section, std::string_view key);
    [[nodiscard]] std::string text() const;

private:
    struct Line
    {
        // As it stands in the file, continuation lines included, without the last line end.
        std::string raw;
        std::string section;
        // Empty for comments, blank lines and section headings.
        std::string key;
        std::string value;
        unsigned long number = 0;
    };

    [[nodiscard]] const Line *find(std::string_view section, std::string_view key) const;

    std::vector<Line> m_Lines;
};

} // namespace TAMBO::services
