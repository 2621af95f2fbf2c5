// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "Bits.h"
#include "CellText.h"
#include "Text.h"
#include "TextBuffer.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kClustalBlock = 60;

using Letters = std::uint32_t;
constexpr Letters kGapBit = Letters{1} << 31U;

constexpr Letters bitOf(char letter) noexcept
{
    return Letters{1} << static_cast<unsigned>((letter | 0x20) - 'a');
}

constexpr Letters setOf(std::string_view letters) noexcept
{
    Letters set = 0;
    for (const char letter : letters)
        set |= bitOf(letter);
    return set;
}

// Residues that replace each other often, and those that do so now and then.
constexpr std::array kStrong = {setOf("STA"),  setOf("NEQK"), setOf("NHQK"),
                                setOf("NDEQ"), setOf("QHRK"), setOf("MILV"),
                                setOf("MILF"), setOf("HY"),   setOf("FYW")};
constexpr std::array kWeak = {setOf("CSA"),    setOf("ATV"),   setOf("SAG"),    setOf("STNK"),
                              setOf("STPA"),   setOf("SGND"),  setOf("SNDEQK"), setOf("NDEQHK"),
                              setOf("NEQHRK"), setOf("FVLIM"), setOf("HFY")};

template <typename Groups> bool isWithin(Letters letters, const Groups &groups)
{
    return std::any_of(groups.begin(), groups.end(),
                       [letters](Letters group) { return (letters & ~group) == 0; });
}

char markOf(Letters letters) noexcept
{
    if ((letters & kGapBit) != 0)
        return ' ';
    if ((letters & (letters - 1)) == 0)
        return '*';
    if (isWithin(letters, kStrong))
        return ':';
    return isWithin(letters, kWeak) ? '.' : ' ';
}

using LetterBits = std::array<Letters, 256>;

constexpr LetterBits makeLetterBits() noexcept
{
    LetterBits table{};
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        table[static_cast<unsigned char>(letter)] = bitOf(letter);
        table[static_cast<unsigned char>(letter - 'a' + 'A')] = bitOf(letter);
    }
    return table;
}

constexpr LetterBits kLetterBits = makeLetterBits();

// A character a column that says how alike its residues are. A column is looked at no more once a
// row has a gap there, which mostly comes soon.
std::string conservation(const FittedAlignment &alignment)
{
    std::vector<Letters> columns(alignment.width());
    std::vector<bits::Word> full(bits::wordsFor(alignment.width()), ~bits::Word{0});
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        const GappedView cells = alignment.cells(row);
        const char *letter = cells.letters.data();
        for (std::size_t word = 0; word < full.size(); ++word) {
            const bits::Word here = cells.occupancy[word];
            full[word] &= here;
            if (full[word] == 0) {
                letter += bits::count(here);
                continue;
            }
            bits::forEach(here, word * bits::kPerWord, [&](std::size_t column) {
                columns[column] |= kLetterBits[static_cast<unsigned char>(*letter++)];
            });
        }
    }
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (!bits::isSet(full, column))
            columns[column] = kGapBit;
    }
    std::string marks(columns.size(), ' ');
    std::transform(columns.begin(), columns.end(), marks.begin(), markOf);
    return marks;
}

} // namespace

void writeClustal(const FittedAlignment &alignment, TextSink &sink)
{
    const std::uint64_t block =
        alignment.options().lineLength == 0 ? kClustalBlock : alignment.options().lineLength;
    const std::string marks = conservation(alignment);
    std::vector<CellText> rows;
    std::size_t longest = 0;
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        rows.emplace_back(alignment.cells(row));
        longest = std::max(longest, characterCount(alignment.name(row)));
    }
    // Where the columns begin.
    const std::size_t place = std::max<std::size_t>(longest + 1, 16);
    TextBuffer text(sink);
    text.append("CLUSTAL multiple sequence alignment\n\n");
    for (std::uint64_t begin = 0; begin < alignment.width(); begin += block) {
        const std::uint64_t count = std::min(block, alignment.width() - begin);
        text.append('\n');
        for (std::size_t row = 0; row < rows.size() && text.isOpen(); ++row) {
            text.appendPadded(alignment.name(row), place);
            prefetchBehind(rows, row);
            text.append(rows[row], count, '-');
            text.append('\n');
        }
        text.append(place, ' ');
        text.append(std::string_view(marks).substr(begin, count));
        text.append('\n');
    }
    text.flush();
}

} // namespace TAMBO::formats
