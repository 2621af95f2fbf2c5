// SPDX-License-Identifier: GPL-3.0-or-later
// The stops ("*") of a file that were read as gaps, for one remark on all of them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace TAMBO::formats {

class StopCount
{
public:
    void add(std::uint64_t count, std::uint64_t line, std::string_view row);
    void add(const StopCount &other);
    [[nodiscard]] bool isEmpty() const noexcept { return m_Count == 0; }
    // "x.fa:3: a stop (...) in row ... was read as a gap"
    [[nodiscard]] std::string remark(const std::string &file) const;

private:
    std::uint64_t m_Count = 0;
    // Of the first one.
    std::uint64_t m_Line = 0;
    std::string m_Row;
};

} // namespace TAMBO::formats
