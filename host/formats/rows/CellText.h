// SPDX-License-Identifier: GPL-3.0-or-later
// The cells of an alignment row as text, from left to right and as many at a time as a line takes.
#pragma once

#include "Bits.h"
#include "GappedView.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace TAMBO::formats {

class CellText
{
public:
    // What put() may touch behind the columns that it writes.
    static constexpr std::size_t kSlack = 8;

    // What is looked at outlives this.
    explicit CellText(const GappedView &row) noexcept : m_Row(row) { }

    // Appends the next columns to a text. There are so many.
    void append(std::uint64_t count, char gap, std::string &text);
    // Writes them where there is room for them and the slack, and returns the place behind them.
    char *put(std::uint64_t count, char gap, char *to);
    // Has the processor fetch what comes next, for who goes through many rows a piece of each at a
    // time.
    void prefetch() const noexcept
    {
#ifdef __GNUC__
        if (!m_Row.letters.empty())
            __builtin_prefetch(m_Row.letters.data() + m_Letter);
        if (!m_Row.occupancy.empty())
            __builtin_prefetch(m_Row.occupancy.data() + bits::wordOf(m_Column));
#endif
    }
    // The column that comes next.
    [[nodiscard]] std::uint64_t column() const noexcept
    {
        return m_Column;
    }

private:
    GappedView m_Row;
    std::uint64_t m_Column = 0;
    std::size_t m_Letter = 0;
};

} // namespace TAMBO::formats
