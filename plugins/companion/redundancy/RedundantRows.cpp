// SPDX-License-Identifier: GPL-3.0-or-later
#include "RedundantRows.h"

#include "AminoAcidOrder.h"

#include <algorithm>
#include <numeric>

namespace companion {

namespace {

// So many columns are counted at once, in bytes that cannot run over. After each of them it is
// asked whether two rows can still be alike.
constexpr std::size_t kCompareBlock = 64;
// Shares of whole numbers are less exact than that.
constexpr double kShareSlack = 1e-7;

struct BlockPairs
{
    std::uint32_t identical = 0;
    std::uint32_t aligned = 0;
};

// Without a question about a single column, so that many are looked at in one instruction.
std::uint32_t identicalIn(const std::uint8_t *a, const std::uint8_t *b) noexcept
{
    std::uint8_t identical = 0;
    for (std::size_t i = 0; i < kCompareBlock; ++i) {
        const std::uint8_t isResidue = a[i] != 0 ? 1 : 0;
        const std::uint8_t isEqual = a[i] == b[i] ? 1 : 0;
        identical = std::uint8_t(identical + (isResidue & isEqual));
    }
    return identical;
}

std::uint32_t alignedIn(const std::uint8_t *a, const std::uint8_t *b) noexcept
{
    std::uint8_t aligned = 0;
    for (std::size_t i = 0; i < kCompareBlock; ++i) {
        const std::uint8_t inA = a[i] != 0 ? 1 : 0;
        const std::uint8_t inB = b[i] != 0 ? 1 : 0;
        aligned = std::uint8_t(aligned + (inA & inB));
    }
    return aligned;
}

std::vector<std::uint32_t> keepingOrder(const ComparedRows &rows, bool keepsStructures)
{
    std::vector<std::uint32_t> order(rows.rows());
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::stable_sort(order, [&](std::uint32_t a, std::uint32_t b) {
        if (keepsStructures && rows.hasStructure(a) != rows.hasStructure(b))
            return rows.hasStructure(a);
        return rows.residues(a) > rows.residues(b);
    });
    return order;
}

} // namespace

// One row against others.
class RowComparison
{
public:
    RowComparison(const ComparedRows &rows, const RedundancyRule &rule) : m_Rows(rows), m_Rule(rule)
    { }

    // The identity, if it is large enough.
    [[nodiscard]] std::optional<double> likeness(std::size_t a, std::size_t b) const noexcept
    {
        switch (m_Rule.compared) {
        case IdentityOf::AlignedPairs:
            return ofAligned(a, b);
        case IdentityOf::ShorterSequence:
            return ofMost(a, b, std::min(m_Rows.residues(a), m_Rows.residues(b)));
        case IdentityOf::AlignmentLength:
            break;
        }
        return ofMost(a, b, m_Rows.columns());
    }

private:
    [[nodiscard]] const std::uint8_t *letters(std::size_t row) const noexcept
    {
        return m_Rows.m_Letters.data() + row * m_Rows.m_Blocks * kCompareBlock;
    }
    // At the begin of each block.
    [[nodiscard]] const std::uint32_t *left(std::size_t row) const noexcept
    {
        return m_Rows.m_Residues.data() + row * (m_Rows.m_Blocks + 1);
    }

    // The best that can still come is that all that is left is identical.
    [[nodiscard]] std::optional<double> ofMost(std::size_t a, std::size_t b,
                                               std::size_t compared) const noexcept
    {
        const double needed = m_Rule.identity * double(compared) - kShareSlack;
        const std::uint32_t *const leftA = left(a);
        const std::uint32_t *const leftB = left(b);
        const std::uint8_t *lettersA = letters(a);
        const std::uint8_t *lettersB = letters(b);
        std::uint32_t identical = 0;
        for (std::size_t block = 0;; ++block) {
            if (double(identical + std::min(leftA[block], leftB[block])) < needed)
                return std::nullopt;
            if (block == m_Rows.m_Blocks)
                break;
            identical += identicalIn(lettersA, lettersB);
            lettersA += kCompareBlock;
            lettersB += kCompareBlock;
        }
        return compared == 0 ? std::nullopt
                             : std::optional<double>(double(identical) / double(compared));
    }
    [[nodiscard]] std::optional<double> ofAligned(std::size_t a, std::size_t b) const noexcept
    {
        const std::uint32_t *const leftA = left(a);
        const std::uint32_t *const leftB = left(b);
        const std::uint8_t *lettersA = letters(a);
        const std::uint8_t *lettersB = letters(b);
        BlockPairs pairs;
        for (std::size_t block = 0;; ++block) {
            const std::uint32_t most = std::min(leftA[block], leftB[block]);
            if (double(pairs.identical + most) <
                m_Rule.identity * double(pairs.aligned + most) - kShareSlack)
                return std::nullopt;
            if (block == m_Rows.m_Blocks)
                break;
            pairs.identical += identicalIn(lettersA, lettersB);
            pairs.aligned += alignedIn(lettersA, lettersB);
            lettersA += kCompareBlock;
            lettersB += kCompareBlock;
        }
        return pairs.aligned == 0
                   ? std::nullopt
                   : std::optional<double>(double(pairs.identical) / double(pairs.aligned));
    }

    const ComparedRows &m_Rows;
    const RedundancyRule &m_Rule;
};

// ---- The copy

std::uint64_t ComparedRows::bytesOf(std::uint64_t rows, std::uint64_t columns) noexcept
{
    const std::uint64_t blocks = (columns + kCompareBlock - 1) / kCompareBlock;
    return rows * (blocks * kCompareBlock + (blocks + 1) * sizeof(std::uint32_t));
}

ComparedRows::ComparedRows(std::size_t columns)
    : m_Columns(columns), m_Blocks((columns + kCompareBlock - 1) / kCompareBlock)
{ }

void ComparedRows::reserve(std::size_t rows)
{
    m_Letters.reserve(rows * m_Blocks * kCompareBlock);
    m_Residues.reserve(rows * (m_Blocks + 1));
    m_HasStructure.reserve(rows);
}

void ComparedRows::add(std::span<const char> row, bool hasStructure)
{
    m_HasStructure.push_back(hasStructure);
    const std::size_t first = m_Letters.size();
    m_Letters.resize(first + m_Blocks * kCompareBlock);
    const std::size_t count = std::min(row.size(), m_Columns);
    for (std::size_t col = 0; col < count; ++col)
        m_Letters[first + col] =
            letterKind(row[col]) == kGapLetter ? std::uint8_t(0) : std::uint8_t(capital(row[col]));
    const std::size_t firstCount = m_Residues.size();
    m_Residues.resize(firstCount + m_Blocks + 1);
    for (std::size_t block = m_Blocks; block-- > 0;) {
        const auto begin = m_Letters.begin() + std::ptrdiff_t(first + block * kCompareBlock);
        const auto gaps = std::count(begin, begin + std::ptrdiff_t(kCompareBlock), 0);
        m_Residues[firstCount + block] =
            m_Residues[firstCount + block + 1] + std::uint32_t(kCompareBlock - std::size_t(gaps));
    }
}

// ---- The rows

std::optional<std::vector<RedundantRow>> redundantRows(const ComparedRows &rows,
                                                       const RedundancyRule &rule, const GoOn &goOn)
{
    const RowComparison comparison(rows, rule);
    std::vector<RedundantRow> redundant;
    std::vector<std::uint32_t> kept;
    const std::vector<std::uint32_t> order = keepingOrder(rows, rule.keepsStructures);
    for (std::size_t i = 0; i < order.size(); ++i) {
        // There are more and more to compare with.
        const double share = double(i) / double(order.size());
        if (goOn && !goOn(share * share))
            return std::nullopt;
        const std::uint32_t row = order[i];
        if (rows.residues(row) == 0)
            continue;
        bool isLike = false;
        for (const std::uint32_t each : kept) {
            if (const std::optional<double> identity = comparison.likeness(row, each)) {
                redundant.push_back({row, each, *identity});
                isLike = true;
                break;
            }
        }
        if (!isLike)
            kept.push_back(row);
    }
    std::ranges::sort(redundant, {}, &RedundantRow::row);
    return redundant;
}

} // namespace companion
