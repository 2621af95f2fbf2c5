// SPDX-License-Identifier: GPL-3.0-or-later
#include "IdentityDistances.h"

#include "AminoAcidOrder.h"

#include <algorithm>
#include <cstdint>

namespace companion {

namespace {

// So many columns are counted at once, in bytes that cannot run over.
constexpr std::size_t kPairBlock = 128;

struct Pairs
{
    std::uint64_t identical = 0;
    std::uint64_t aligned = 0;
};

// Rows behind each other, each filled up with gaps to whole blocks; gaps are 0, and letters
// capital.
class RowLetters
{
public:
    explicit RowLetters(std::span<const std::string> rows) : RowLetters(rows.size(), longest(rows))
    {
        for (std::size_t i = 0; i < rows.size(); ++i)
            set(i, rows[i]);
    }
    // All of them are gaps.
    RowLetters(std::size_t rows, std::size_t columns)
        : m_Columns(columns), m_Blocks((columns + kPairBlock - 1) / kPairBlock)
    {
        m_Letters.resize(rows * m_Blocks * kPairBlock);
        m_Residues.resize(rows);
    }

    void set(std::size_t row, std::span<const char> text)
    {
        std::uint8_t *letters = m_Letters.data() + row * m_Blocks * kPairBlock;
        const std::size_t count = std::min(text.size(), m_Columns);
        m_Residues[row] = 0;
        for (std::size_t col = 0; col < count; ++col) {
            const bool isGap = letterKind(text[col]) == kGapLetter;
            letters[col] = isGap ? std::uint8_t(0) : std::uint8_t(capital(text[col]));
            m_Residues[row] += isGap ? 0 : 1;
        }
        std::fill(letters + count, letters + m_Columns, std::uint8_t(0));
    }

    [[nodiscard]] std::size_t columns() const noexcept { return m_Columns; }
    [[nodiscard]] std::uint64_t residues(std::size_t row) const noexcept { return m_Residues[row]; }

    [[nodiscard]] Pairs pairsOf(std::size_t a, std::size_t b) const noexcept
    {
        Pairs pairs;
        const std::uint8_t *lettersA = m_Letters.data() + a * m_Blocks * kPairBlock;
        const std::uint8_t *lettersB = m_Letters.data() + b * m_Blocks * kPairBlock;
        for (std::size_t block = 0; block < m_Blocks; ++block) {
            std::uint8_t identical = 0;
            std::uint8_t aligned = 0;
            // Without a question about a single column, so that many are looked at in one
            // instruction.
            for (std::size_t i = 0; i < kPairBlock; ++i) {
                const std::uint8_t inA = lettersA[i] != 0 ? 1 : 0;
                const std::uint8_t inB = lettersB[i] != 0 ? 1 : 0;
                const std::uint8_t equal = lettersA[i] == lettersB[i] ? 1 : 0;
                aligned = std::uint8_t(aligned + (inA & inB));
                identical = std::uint8_t(identical + (inA & equal));
            }
            pairs.identical += identical;
            pairs.aligned += aligned;
            lettersA += kPairBlock;
            lettersB += kPairBlock;
        }
        return pairs;
    }

private:
    static std::size_t longest(std::span<const std::string> rows) noexcept
    {
        std::size_t columns = 0;
        for (const std::string &row : rows)
            columns = std::max(columns, row.size());
        return columns;
    }

    std::size_t m_Columns;
    std::size_t m_Blocks;
    std::vector<std::uint8_t> m_Letters;
    std::vector<std::uint64_t> m_Residues;
};

std::uint64_t comparedPairs(const RowLetters &letters, std::size_t a, std::size_t b,
                            const Pairs &pairs, IdentityOf compared) noexcept
{
    switch (compared) {
    case IdentityOf::AlignmentLength:
        return letters.columns();
    case IdentityOf::ShorterSequence:
        return std::min(letters.residues(a), letters.residues(b));
    case IdentityOf::AlignedPairs:
        break;
    }
    return pairs.aligned;
}

} // namespace

std::optional<DistanceMatrix> identityDistances(std::span<const std::string> rows,
                                                IdentityOf compared, const GoOn &goOn)
{
    const RowLetters letters(rows);
    DistanceMatrix distances(rows.size());
    const double all = double(rows.size()) * double(rows.size());
    for (std::size_t a = 0; a < rows.size(); ++a) {
        if (goOn && !goOn(double(a) * double(a) / all))
            return std::nullopt;
        for (std::size_t b = 0; b < a; ++b) {
            const Pairs pairs = letters.pairsOf(a, b);
            const std::uint64_t most = comparedPairs(letters, a, b, pairs, compared);
            distances.set(a, b, most == 0 ? 1 : double(most - pairs.identical) / double(most));
        }
    }
    return distances;
}

// The row, and the one that it is compared with.
struct IdentityTo::Rows
{
    RowLetters letters;
};

IdentityTo::IdentityTo(const std::string &row, std::size_t columns, IdentityOf compared)
    : m_Rows(std::make_unique<Rows>(Rows{RowLetters(2, std::max(row.size(), columns))})),
      m_Compared(compared)
{
    m_Rows->letters.set(0, row);
}

IdentityTo::~IdentityTo() = default;

double IdentityTo::of(std::span<const char> row)
{
    RowLetters &letters = m_Rows->letters;
    letters.set(1, row);
    const Pairs pairs = letters.pairsOf(0, 1);
    const std::uint64_t most = comparedPairs(letters, 0, 1, pairs, m_Compared);
    return most == 0 ? 0 : double(pairs.identical) / double(most);
}

} // namespace companion
