// SPDX-License-Identifier: GPL-3.0-or-later
// Some of a peptide's residues, with their number at hand: the selected ones, or those that are to
// be coloured.
#pragma once

#include "Bits.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TAMBO {

class ValueReader;
class ValueWriter;

class ResidueSelection
{
public:
    explicit ResidueSelection(std::size_t count) : m_Words(bits::wordsFor(count), 0) { }
    // Bit i is residue i; as many words as the residues need.
    explicit ResidueSelection(std::vector<std::uint64_t> words);

    [[nodiscard]] const std::vector<std::uint64_t> &words() const noexcept { return m_Words; }
    [[nodiscard]] bool at(std::size_t index) const noexcept { return bits::isSet(m_Words, index); }
    // False when nothing changes.
    bool set(std::size_t begin, std::size_t end, bool selected) noexcept;
    // Those of other among [begin, end). False when nothing changes.
    bool add(const ResidueSelection &other, std::size_t begin, std::size_t end) noexcept;
    // Those of other, which is of as many residues. False when nothing changes.
    bool remove(const ResidueSelection &other) noexcept;
    [[nodiscard]] std::size_t count() const noexcept { return m_Count; }
    [[nodiscard]] std::size_t count(std::size_t begin, std::size_t end) const noexcept;
    // So many visits forEachRun() makes.
    [[nodiscard]] std::size_t runs() const noexcept;
    // Calls visit(begin, end) for the selected ones among [begin, end), those side by side at once.
    template <typename Visit> void forEachRun(std::size_t begin, std::size_t end, Visit visit) const
    {
        while ((begin = next(begin, end, true)) < end) {
            const std::size_t behind = next(begin, end, false);
            visit(begin, behind);
            begin = behind;
        }
    }
    template <typename Visit> void forEachRun(Visit visit) const
    {
        forEachRun(0, m_Words.size() * bits::kPerWord, visit);
    }
    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return sizeof(*this) + m_Words.capacity() * sizeof(std::uint64_t);
    }

    void write(ValueWriter &out) const;
    // Of so many residues.
    [[nodiscard]] static ResidueSelection read(ValueReader &in, std::size_t count);

private:
    // The first in [begin, end) that is, or is not, selected; end when there is none.
    [[nodiscard]] std::size_t next(std::size_t begin, std::size_t end, bool selected) const noexcept
    {
        const std::uint64_t flip = selected ? 0 : ~std::uint64_t(0);
        while (begin < end) {
            const std::uint64_t rest =
                (m_Words[bits::wordOf(begin)] ^ flip) >> bits::placeOf(begin);
            if (rest != 0)
                return std::min(end, begin + bits::first(rest));
            begin = (bits::wordOf(begin) + 1) * bits::kPerWord;
        }
        return end;
    }

    std::vector<std::uint64_t> m_Words;
    std::size_t m_Count = 0;
};

} // namespace TAMBO
