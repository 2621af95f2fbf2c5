// SPDX-License-Identifier: GPL-3.0-or-later
// The cells of an alignment with stretches laid out as in another one, row by row.
#pragma once

#include "Comparison.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace companion {

class TakeOver
{
public:
    // What it is made of stays as it is until all is done.
    struct Source
    {
        const TAMBO::Alignment *alignment = nullptr;
        const ComparedLayout *here = nullptr;
        const ComparedLayout *there = nullptr;
        // Of each row of the alignment its place among the compared ones, or kNone.
        const std::vector<std::uint32_t> *places = nullptr;
        // Ascending, at least one.
        std::vector<Stretch> stretches;
        // Which rows of the alignment are laid out anew, if the other has them.
        std::vector<bool> rows;
    };

    explicit TakeOver(Source source);

    // Lays out further rows, for about that time; false when nothing is left to do.
    bool goOn(std::chrono::microseconds most);
    [[nodiscard]] int percent() const;

    // A row that has a residue in a stretch which the other does not have: it cannot be done then.
    [[nodiscard]] std::optional<unsigned long> misfit() const { return m_Misfit; }

    // These columns give way to so many others, with these cells, as RowLayouts::place() takes
    // them.
    [[nodiscard]] TAMBO::Alignment::Range range() const;
    [[nodiscard]] unsigned long count() const noexcept { return m_Count; }
    [[nodiscard]] const std::vector<std::vector<std::uint64_t>> &cells() const noexcept
    {
        return m_Cells;
    }
    // How many rows are laid out otherwise than before.
    [[nodiscard]] unsigned long changedRows() const noexcept { return m_Changed; }

private:
    // False when the row is a misfit.
    [[nodiscard]] bool layOut(unsigned long row);

    Source m_Source;
    // Of each stretch, how wide it becomes.
    std::vector<unsigned long> m_Widths;
    unsigned long m_Count = 0;
    std::vector<std::vector<std::uint64_t>> m_Cells;
    unsigned long m_Changed = 0;
    std::optional<unsigned long> m_Misfit;
};

} // namespace companion
