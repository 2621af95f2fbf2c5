// SPDX-License-Identifier: GPL-3.0-or-later
#include "PairIdentity.h"

#include "Bits.h"

#include <cstring>
#include <limits>

namespace TAMBO {

namespace {

// How many characters of two texts of that many bytes, a multiple of eight, are the same.
std::uint64_t countEqual(const char *first, const char *second, std::size_t size) noexcept
{
    std::uint64_t count = 0;
    for (std::size_t i = 0; i < size; i += sizeof(std::uint64_t)) {
        std::uint64_t a = 0;
        std::uint64_t b = 0;
        std::memcpy(&a, first + i, sizeof(a));
        std::memcpy(&b, second + i, sizeof(b));
        count += bits::count(bits::sameBytes(a, b));
    }
    return count;
}

} // namespace

PairIdentities::PairIdentities(const AlignmentRecord &alignment) : m_Alignment(alignment)
{
    m_Texts.reserve(alignment.rows.size());
    for (const RowRecord &row : alignment.rows) {
        std::string &text = m_Texts.emplace_back(row.sequence.text());
        text.resize((text.size() + 7) / 8 * 8, '-');
    }
}

PairIdentity PairIdentities::compare(std::size_t first, std::size_t second) const
{
    const GappedSequence &a = m_Alignment.rows[first].sequence;
    const GappedSequence &b = m_Alignment.rows[second].sequence;
    constexpr std::uint64_t none = std::numeric_limits<std::uint64_t>::max();
    PairIdentity result;
    result.firstLength = a.letters.size();
    result.secondLength = b.letters.size();
    std::uint64_t firstBoth = none;
    std::uint64_t lastBoth = 0;
    std::uint64_t both = 0;
    for (std::size_t i = 0; i < a.occupancy.size(); ++i) {
        result.hangs += bits::count(a.occupancy[i] | b.occupancy[i]);
        const std::uint64_t shared = a.occupancy[i] & b.occupancy[i];
        if (shared == 0)
            continue;
        both += bits::count(shared);
        if (firstBoth == none)
            firstBoth = i * bits::kPerWord + bits::first(shared);
        lastBoth = i * bits::kPerWord + bits::last(shared);
    }
    // Without a column that both have, the overlap is the first column of all.
    if (firstBoth == none)
        firstBoth = 0;
    for (std::size_t i = bits::wordOf(firstBoth);
         i < a.occupancy.size() && i * bits::kPerWord <= lastBoth; ++i) {
        std::uint64_t either = a.occupancy[i] | b.occupancy[i];
        const std::uint64_t begin = i * bits::kPerWord;
        if (firstBoth > begin)
            either = bits::without(either, firstBoth - begin);
        either &= bits::low(lastBoth - begin + 1);
        result.overlap += bits::count(either);
    }
    const std::string &text = m_Texts[first];
    // Gaps in both rows look the same too.
    result.identical =
        countEqual(text.data(), m_Texts[second].data(), text.size()) - (text.size() - result.hangs);
    result.different = both - result.identical;
    return result;
}

} // namespace TAMBO
