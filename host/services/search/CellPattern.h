// SPDX-License-Identifier: GPL-3.0-or-later
// The simple language of the sub-sequence search: "." is any cell, "-" a gap, any other character
// the residue of that code.
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace TAMBO::services {

class CellPattern
{
public:
    explicit CellPattern(const QString &text);

    // Calls visit(begin, end) for the columns that one match or several overlapping ones cover, in
    // ascending order. The row has one character per column, '-' for a gap.
    using Visitor = std::function<void(unsigned long, unsigned long)>;
    void forEachMatch(std::string_view row, const Visitor &visit) const;

private:
    using Word = std::uint64_t;

    std::size_t m_Length;
    std::size_t m_Words;
    // For each character code the places of the pattern where it fits, m_Words words.
    std::vector<Word> m_Fitting;
};

} // namespace TAMBO::services
