// SPDX-License-Identifier: GPL-3.0-or-later
// The small text files of colors and scales: a fact a line, "#" before a comment.
#pragma once

#include "Result.h"
#include "Text.h"

#include <QString>

#include <optional>
#include <sstream>
#include <string>
#include <string_view>

namespace TAMBO::services {

// All of it.
[[nodiscard]] Result<std::string> readDataFile(const QString &path);

// The next field of a line, which goes from it, as a number. Nothing for what is written otherwise
// than with digits, a sign and a point: that is the streams' to judge, which take their time.
template <typename Number> std::optional<Number> takePlainNumber(std::string_view &line)
{
    const std::string_view field = takeWord(line);
    if (field.find_first_not_of("-.0123456789") != std::string_view::npos)
        return std::nullopt;
    return numberIn<Number>(field);
}

// Its lines without comments and blanks around; those that are empty then are passed over.
class DataLines
{
public:
    explicit DataLines(std::string_view text);

    // False behind the last line.
    bool next();
    [[nodiscard]] const std::string &line() const noexcept { return m_Line; }
    // Counts from 1.
    [[nodiscard]] unsigned long number() const noexcept { return m_Number; }

private:
    std::istringstream m_Lines;
    std::string m_Line;
    unsigned long m_Number = 0;
};

} // namespace TAMBO::services
