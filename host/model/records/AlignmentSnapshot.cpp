// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentSnapshot.h"

#include "Bits.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace TAMBO {

namespace {

// Words of a block: 128 KB. Half of one is not used on the average.
constexpr std::size_t kSnapshotBlock = std::size_t{1} << 14U;

} // namespace

AlignmentSnapshot::AlignmentSnapshot(AlignmentRecord whole, std::size_t rows)
    : m_Whole(std::move(whole))
{
    m_Rows.reserve(rows);
}

AlignmentSnapshot::Room AlignmentSnapshot::add(std::string_view name, std::size_t letters,
                                               std::uint64_t width)
{
    constexpr std::size_t wordBytes = sizeof(std::uint64_t);
    const std::size_t cells = bits::wordsFor(width);
    std::uint64_t *const start =
        allocate(cells + (letters + name.size() + wordBytes - 1) / wordBytes);
    auto *const text = reinterpret_cast<char *>(start + cells);
    if (!name.empty())
        std::memcpy(text + letters, name.data(), name.size());
    m_Rows.push_back({start, letters, name.size(), width});
    return {{text, letters}, {start, cells}};
}

// What is left of a block that has no room for a row is not used.
std::uint64_t *AlignmentSnapshot::allocate(std::size_t words)
{
    if (words > m_Left || m_Next == nullptr) {
        m_Left = std::max(words, kSnapshotBlock);
        m_Blocks.push_back(std::make_unique_for_overwrite<std::uint64_t[]>(m_Left));
        m_Next = m_Blocks.back().get();
        m_Words += m_Left;
    }
    m_Left -= words;
    return std::exchange(m_Next, m_Next + words);
}

void AlignmentSnapshot::say(RowRecord said)
{
    m_Said.insert_or_assign(m_Rows.size() - 1, std::move(said));
}

std::string_view AlignmentSnapshot::name(std::size_t row) const
{
    const Row &kept = m_Rows[row];
    const auto *const text =
        reinterpret_cast<const char *>(kept.start + bits::wordsFor(kept.width));
    return {text + kept.letters, kept.nameLength};
}

GappedView AlignmentSnapshot::cells(std::size_t row) const
{
    const Row &kept = m_Rows[row];
    const std::size_t words = bits::wordsFor(kept.width);
    return {{reinterpret_cast<const char *>(kept.start + words), kept.letters},
            {kept.start, words},
            kept.width};
}

const RowRecord &AlignmentSnapshot::row(std::size_t row) const
{
    static const RowRecord nothing;
    if (m_Said.empty())
        return nothing;
    const auto said = m_Said.find(row);
    return said == m_Said.end() ? nothing : said->second;
}

std::size_t AlignmentSnapshot::bytes() const noexcept
{
    return m_Words * sizeof(std::uint64_t) + m_Rows.capacity() * sizeof(Row);
}

} // namespace TAMBO
