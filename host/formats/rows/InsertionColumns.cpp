// SPDX-License-Identifier: GPL-3.0-or-later
#include "InsertionColumns.h"

#include "Bits.h"
#include "CellScan.h"
#include "CellText.h"
#include "Text.h"

#include <algorithm>

namespace TAMBO::formats {

namespace {

bool hasSmallLetters(std::string_view letters)
{
    std::size_t begin = 0;
    for (; begin + kScanWidth <= letters.size(); begin += kScanWidth) {
        if (scanCells(letters.data() + begin).lowerCase != 0)
            return true;
    }
    return std::any_of(letters.begin() + static_cast<std::ptrdiff_t>(begin), letters.end(),
                       isSmallLetter);
}

std::string textOf(const GappedView &row)
{
    std::string text;
    CellText(row).append(row.width, '-', text);
    return text;
}

} // namespace

InsertionColumns::InsertionColumns(const AlignmentSource &alignment)
{
    if (alignment.rowCount() == 0)
        return;
    const std::uint64_t width = alignment.cells(0).width;
    std::vector<std::uint64_t> capitals(bits::wordsFor(width));
    std::vector<std::uint64_t> smallLetters(bits::wordsFor(width));
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        const GappedView cells = alignment.cells(row);
        if (!hasSmallLetters(cells.letters)) {
            for (std::size_t word = 0; word < capitals.size(); ++word)
                capitals[word] |= cells.occupancy[word];
            continue;
        }
        std::size_t letter = 0;
        for (std::size_t word = 0; word < capitals.size(); ++word) {
            bits::forEach(cells.occupancy[word], 0, [&](std::size_t place) {
                const bool isSmall = isSmallLetter(cells.letters[letter++]);
                (isSmall ? smallLetters : capitals)[word] |= bits::one(place);
            });
        }
    }
    findRuns(capitals, smallLetters, width);
    for (std::size_t row = 0; row < alignment.rowCount() && !m_Runs.empty(); ++row) {
        const std::string text = textOf(alignment.cells(row));
        for (Run &run : m_Runs) {
            const auto begin = text.begin() + static_cast<std::ptrdiff_t>(run.begin);
            const auto end = text.begin() + static_cast<std::ptrdiff_t>(run.end);
            run.longest = std::max(
                run.longest, static_cast<std::uint64_t>(end - begin - std::count(begin, end, '-')));
        }
    }
}

// Where nothing is a capital, nothing can be inserted between capitals.
void InsertionColumns::findRuns(const std::vector<std::uint64_t> &capitals,
                                const std::vector<std::uint64_t> &smallLetters, std::uint64_t width)
{
    if (std::all_of(capitals.begin(), capitals.end(), [](std::uint64_t word) { return word == 0; }))
        return;
    for (std::uint64_t column = 0; column < width; ++column) {
        if (!bits::isSet(smallLetters, column) || bits::isSet(capitals, column))
            continue;
        if (!m_Runs.empty() && m_Runs.back().end == column)
            ++m_Runs.back().end;
        else
            m_Runs.push_back({column, column + 1, 0});
    }
}

std::optional<GappedSequence> InsertionColumns::capitalised(const GappedView &row) const
{
    if (!hasSmallLetters(row.letters))
        return std::nullopt;
    GappedSequence changed{
        std::string(row.letters), {row.occupancy.begin(), row.occupancy.end()}, row.width};
    bool isChanged = false;
    std::size_t letter = 0;
    std::size_t run = 0;
    bits::forEachIn(row.occupancy, [&](std::uint64_t column) {
        while (run < m_Runs.size() && m_Runs[run].end <= column)
            ++run;
        const bool isInserted = run < m_Runs.size() && m_Runs[run].begin <= column;
        char &cell = changed.letters[letter++];
        if (!isInserted && isSmallLetter(cell)) {
            cell = capitalLetter(cell);
            isChanged = true;
        }
    });
    return isChanged ? std::optional(std::move(changed)) : std::nullopt;
}

std::string InsertionColumns::dotted(const GappedView &row) const
{
    std::string text = textOf(row);
    for (const Run &run : m_Runs)
        std::replace(text.begin() + static_cast<std::ptrdiff_t>(run.begin),
                     text.begin() + static_cast<std::ptrdiff_t>(run.end), '-', '.');
    return text;
}

std::string InsertionColumns::packed(const GappedView &row) const
{
    std::string text = dotted(row);
    std::erase(text, '.');
    return text;
}

std::string InsertionColumns::unpacked(const GappedView &row) const
{
    const std::string wide = textOf(row);
    std::string text;
    std::uint64_t done = 0;
    for (const Run &run : m_Runs) {
        text.append(wide, done, run.begin - done);
        const std::size_t begin = text.size();
        for (std::uint64_t column = run.begin; column < run.end; ++column) {
            if (wide[column] != '-')
                text += wide[column];
        }
        text.resize(begin + run.longest, '-');
        done = run.end;
    }
    text.append(wide, done, std::string::npos);
    return text;
}

} // namespace TAMBO::formats
