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
    explicit RowLetters(std::span<const std::string> rows)
    {
        for (const std::string &row : rows)
            m_Columns = std::max(m_Columns, row.size());
        m_Blocks = (m_Columns + kPairBlock - 1) / kPairBlock;
        m_Letters.resize(rows.size() * m_Blocks * kPairBlock);
        m_Residues.resize(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            std::uint8_t *letters = m_Letters.data() + i * m_Blocks * kPairBlock;
            for (const char letter : rows[i]) {
                const bool isGap = letterKind(letter) == kGapLetter;
                *letters++ = isGap ? std::uint8_t(0) : std::uint8_t(capital(letter));
                m_Residues[i] += isGap ? 0 : 1;
            }
        }
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
    std::size_t m_Columns = 0;
    std::size_t m_Blocks = 0;
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

} // namespace companion
