// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueSelection.h"

#include <algorithm>
#include <bit>
#include <utility>

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

ResidueSelection::ResidueSelection(std::vector<std::uint64_t> words) : m_Words(std::move(words))
{
    for (const std::uint64_t word : m_Words)
        m_Count += static_cast<std::size_t>(std::popcount(word));
}

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

bool ResidueSelection::add(const ResidueSelection &other, std::size_t begin,
                           std::size_t end) noexcept
{
    const std::size_t before = m_Count;
    forEachWord(begin, end, [&](std::size_t word, std::uint64_t mask) {
        const std::uint64_t added = other.m_Words[word] & mask & ~m_Words[word];
        m_Count += static_cast<std::size_t>(std::popcount(added));
        m_Words[word] |= added;
    });
    return m_Count != before;
}

std::size_t ResidueSelection::runs() const noexcept
{
    std::size_t count = 0;
    std::uint64_t carry = 0;
    for (const std::uint64_t word : m_Words) {
        count += static_cast<std::size_t>(std::popcount(word & ~(word << 1 | carry)));
        carry = word >> 63;
    }
    return count;
}

std::size_t ResidueSelection::count(std::size_t begin, std::size_t end) const noexcept
{
    std::size_t count = 0;
    forEachWord(begin, end, [&](std::size_t word, std::uint64_t mask) {
        count += static_cast<std::size_t>(std::popcount(m_Words[word] & mask));
    });
    return count;
}

} // namespace TAMBO
