// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueSelection.h"

#include <algorithm>
#include <bit>

namespace TAMBO {

namespace {

// Calls function(word, mask) for the words that the residues [begin, end) touch.
template <typename Function>
void forEachWord(std::size_t begin, std::size_t end, const Function &function)
{
    while (begin < end) {
        const std::size_t word = begin / 64;
        const std::size_t stop = std::min(end, (word + 1) * 64);
        const std::size_t length = stop - begin;
        const std::uint64_t ones =
            length == 64 ? ~std::uint64_t(0) : (std::uint64_t(1) << length) - 1;
        function(word, ones << (begin % 64));
        begin = stop;
    }
}

} // namespace

bool ResidueSelection::set(std::size_t begin, std::size_t end, bool selected) noexcept
{
    bool isChanged = false;
    forEachWord(begin, end, [&](std::size_t word, std::uint64_t mask) {
        const std::uint64_t before = m_Words[word];
        const std::uint64_t after = selected ? before | mask : before & ~mask;
        m_Count += static_cast<std::size_t>(std::popcount(after));
        m_Count -= static_cast<std::size_t>(std::popcount(before));
        m_Words[word] = after;
        isChanged = isChanged || after != before;
    });
    return isChanged;
}

std::size_t ResidueSelection::count(std::size_t begin, std::size_t end) const noexcept
{
    std::size_t count = 0;
    forEachWord(begin, end, [&](std::size_t word, std::uint64_t mask) {
        count += static_cast<std::size_t>(std::popcount(m_Words[word] & mask));
    });
    return count;
}

std::size_t ResidueSelection::next(std::size_t begin, std::size_t end, bool selected) const noexcept
{
    while (begin < end) {
        const std::uint64_t word = selected ? m_Words[begin / 64] : ~m_Words[begin / 64];
        const std::uint64_t rest = word >> (begin % 64);
        if (rest != 0)
            return std::min(end, begin + static_cast<std::size_t>(std::countr_zero(rest)));
        begin = (begin / 64 + 1) * 64;
    }
    return end;
}

} // namespace TAMBO
