// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueSelection.h"

#include "ValueBytes.h"

#include <utility>

namespace TAMBO {

ResidueSelection::ResidueSelection(std::vector<std::uint64_t> words) : m_Words(std::move(words))
{
    for (const std::uint64_t word : m_Words)
        m_Count += bits::count(word);
}

bool ResidueSelection::set(std::size_t begin, std::size_t end, bool selected) noexcept
{
    bool isChanged = false;
    bits::forEachMask(begin, end, [&](std::size_t word, std::uint64_t mask) {
        const std::uint64_t before = m_Words[word];
        const std::uint64_t after = selected ? before | mask : before & ~mask;
        m_Count += bits::count(after);
        m_Count -= bits::count(before);
        m_Words[word] = after;
        isChanged = isChanged || after != before;
    });
    return isChanged;
}

bool ResidueSelection::add(const ResidueSelection &other, std::size_t begin,
                           std::size_t end) noexcept
{
    const std::size_t before = m_Count;
    bits::forEachMask(begin, end, [&](std::size_t word, std::uint64_t mask) {
        const std::uint64_t added = other.m_Words[word] & mask & ~m_Words[word];
        m_Count += bits::count(added);
        m_Words[word] |= added;
    });
    return m_Count != before;
}

bool ResidueSelection::remove(const ResidueSelection &other) noexcept
{
    const std::size_t before = m_Count;
    for (std::size_t i = 0; i < m_Words.size(); ++i) {
        const std::uint64_t removed = m_Words[i] & other.m_Words[i];
        m_Count -= bits::count(removed);
        m_Words[i] &= ~removed;
    }
    return m_Count != before;
}

void ResidueSelection::write(ValueWriter &out) const
{
    out.words(m_Words);
}

ResidueSelection ResidueSelection::read(ValueReader &in, std::size_t count)
{
    std::vector<std::uint64_t> words(bits::wordsFor(count), 0);
    in.words(words);
    if (count % bits::kPerWord != 0 && (words.back() & ~bits::low(count % bits::kPerWord)) != 0) {
        in.fail("residues are selected that are not there");
        words.back() &= bits::low(count % bits::kPerWord);
    }
    return ResidueSelection(std::move(words));
}

std::size_t ResidueSelection::runs() const noexcept
{
    std::size_t count = 0;
    std::uint64_t carry = 0;
    for (const std::uint64_t word : m_Words) {
        count += bits::count(word & ~(word << 1 | carry));
        carry = word >> (bits::kPerWord - 1);
    }
    return count;
}

std::size_t ResidueSelection::count(std::size_t begin, std::size_t end) const noexcept
{
    std::size_t count = 0;
    bits::forEachMask(begin, end, [&](std::size_t word, std::uint64_t mask) {
        count += bits::count(m_Words[word] & mask);
    });
    return count;
}

} // namespace TAMBO
