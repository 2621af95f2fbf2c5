// SPDX-License-Identifier: GPL-3.0-or-later
#include "IdentityReport.h"

#include "Alignment.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

struct Identity
{
    unsigned long len0 = 0;
    unsigned long lenR = 0;
    // Columns where either row has a residue.
    unsigned long hangs = 0;
    unsigned long identicals = 0;
    unsigned long different = 0;
    // The part of the hangs between the first and the last column where both have one.
    unsigned long overlap = 0;
};

// As the text of a row has it.
constexpr char kGap = '-';
// So many columns are counted at once, in bytes that cannot run over.
constexpr std::size_t kBlock = 128;
using Count = std::uint8_t;

using Block = std::array<char, kBlock>;

// The last columns, and gaps behind them up to the end of a block.
Block lastBlock(const std::string &row, std::size_t begin)
{
    Block block{};
    block.fill(kGap);
    row.copy(block.data(), kBlock, begin);
    return block;
}

// Without a question about a single column, so that many are looked at in one instruction.
void countBlock(const char *rowA, const char *rowB, Identity &result)
{
    Count inA = 0;
    Count inB = 0;
    Count inBoth = 0;
    Count same = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        const Count a = rowA[i] != kGap ? 1 : 0;
        const Count b = rowB[i] != kGap ? 1 : 0;
        const Count equal = rowA[i] == rowB[i] ? 1 : 0;
        inA = static_cast<Count>(inA + a);
        inB = static_cast<Count>(inB + b);
        inBoth = static_cast<Count>(inBoth + (a & b));
        same = static_cast<Count>(same + (a & equal));
    }
    result.len0 += inA;
    result.lenR += inB;
    result.hangs += static_cast<unsigned long>(inA) + inB - inBoth;
    result.identicals += same;
    result.different += static_cast<unsigned long>(inBoth) - same;
}

Identity compare(const TAMBO::Alignment &alignment, unsigned long row)
{
    const std::string rowA = alignment.GetSequence(0, false);
    const std::string rowB = alignment.GetSequence(row, false);
    const std::size_t columns = std::min(rowA.size(), rowB.size());
    Identity result;
    std::size_t begin = 0;
    for (; begin + kBlock <= columns; begin += kBlock)
        countBlock(rowA.data() + begin, rowB.data() + begin, result);
    if (begin < columns)
        countBlock(lastBlock(rowA, begin).data(), lastBlock(rowB, begin).data(), result);
    const auto hangs = [&](std::size_t i) { return rowA[i] != kGap || rowB[i] != kGap; };
    const auto hasBoth = [&](std::size_t i) { return rowA[i] != kGap && rowB[i] != kGap; };
    if (result.identicals + result.different == 0) {
        // Kept: then the overlap is the first column of all.
        result.overlap = columns > 0 && hangs(0) ? 1 : 0;
        return result;
    }
    result.overlap = result.hangs;
    for (std::size_t i = 0; !hasBoth(i); ++i)
        result.overlap -= hangs(i) ? 1 : 0;
    for (std::size_t i = columns; !hasBoth(i - 1); --i)
        result.overlap -= hangs(i - 1) ? 1 : 0;
    return result;
}

// Filling in place markers one after the other, and writing fractions for any place and language,
// took longer than comparing rows of some thousand columns.
class Text
{
public:
    Text() { m_Text.reserve(kRoom); }

    Text &operator<<(std::string_view text)
    {
        m_Text += text;
        return *this;
    }
    Text &operator<<(unsigned long number)
    {
        std::array<char, 20> digits{};
        const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
        m_Text.append(digits.data(), result.ptr);
        return *this;
    }
    // With two decimals, halves rounded up, in six places.
    Text &operator<<(double fraction)
    {
        constexpr std::size_t places = 6;
        const std::size_t begin = m_Text.size();
        if (std::isnan(fraction)) {
            *this << "nan";
        } else {
            // Exact: a hundred takes seven bits more than the fraction has.
            const long double hundredths = 100.0L * fraction;
            const long double whole = std::floor(hundredths);
            const auto count =
                static_cast<unsigned long>(whole) + (hundredths - whole >= 0.5L ? 1 : 0);
            *this << count / 100 << "." << count / 10 % 10 << count % 10;
        }
        if (const std::size_t length = m_Text.size() - begin; length < places)
            m_Text.insert(begin, places - length, ' ');
        return *this;
    }
    [[nodiscard]] QString string() const { return QString::fromStdString(m_Text); }

private:
    static constexpr std::size_t kRoom = 320;

    // Names are in the coding of files.
    std::string m_Text;
};

} // namespace

// The wording, misspellings included, is what people's scripts and habits go by. The value behind
// the pairs is a fraction, not a percentage.
std::optional<QString> identityReport(const TAMBO::Alignment &alignment, unsigned long row)
{
    const Identity id = compare(alignment, row);
    if (id.len0 < 1 || id.lenR < 1 || id.overlap < 1)
        return std::nullopt;
    const unsigned long pairs = id.identicals + id.different;
    const float pairsFraction = static_cast<float>(id.identicals) / static_cast<float>(pairs);
    const double percent = static_cast<double>(id.identicals) * 100;
    const auto share = [percent](unsigned long of) { return percent / static_cast<double>(of); };
    Text text;
    text << "Percentage identity between '" << alignment.GetSeqName(0) << "' and '"
         << alignment.GetSeqName(row) << "':\n"
         << "identicals " << id.identicals << "\tdifferent " << id.different << "\n"
         << "pairs " << pairs << ": \t" << double(pairsFraction) << "\n"
         << "seq lenghts " << id.len0 << ", " << id.lenR << " : " << share(id.len0) << ", "
         << share(id.lenR) << "\n"
         << "align lenght " << id.overlap << " (with hangs " << id.hangs
         << ") : " << share(id.overlap) << " ( " << share(id.hangs) << " )";
    return text.string();
}
