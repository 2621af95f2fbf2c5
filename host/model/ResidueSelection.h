// SPDX-License-Identifier: GPL-3.0-or-later
// The selection flags of a peptide's residues, with their number at hand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TAMBO {

class ResidueSelection
{
public:
    explicit ResidueSelection(std::size_t count) : m_Words((count + 63) / 64, 0) { }

    [[nodiscard]] bool at(std::size_t index) const noexcept
    {
        return ((m_Words[index / 64] >> (index % 64)) & 1U) != 0;
    }
    // False when nothing changes.
    bool set(std::size_t begin, std::size_t end, bool selected) noexcept;
    [[nodiscard]] std::size_t count() const noexcept { return m_Count; }
    [[nodiscard]] std::size_t count(std::size_t begin, std::size_t end) const noexcept;
    // Calls visit(begin, end) for the selected ones among [begin, end), those side by side at once.
    template <typename Visit> void forEachRun(std::size_t begin, std::size_t end, Visit visit) const
    {
        while ((begin = next(begin, end, true)) < end) {
            const std::size_t behind = next(begin, end, false);
            visit(begin, behind);
            begin = behind;
        }
    }
    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return sizeof(*this) + m_Words.capacity() * sizeof(std::uint64_t);
    }

private:
    // The first in [begin, end) that is, or is not, selected; end when there is none.
    [[nodiscard]] std::size_t next(std::size_t begin, std::size_t end,
                                   bool selected) const noexcept;

    std::vector<std::uint64_t> m_Words;
    std::size_t m_Count = 0;
};

} // namespace TAMBO
