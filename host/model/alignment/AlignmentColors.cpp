// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-ins' door to colouring and selecting many residues of an alignment at once.
#include "Alignment.h"

#include "AlignmentTable.h"
#include "Bits.h"
#include "ChangeScope.h"
#include "LetterColors.h"
#include "LetterCopy.h"
#include "LongWork.h"
#include "ResidueSelection.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace TAMBO {

namespace {

using bits::Word;

constexpr const char *kColoring = "Coloring";

// Bit i says whether a[i] is b[i], for eight letters.
Word sameLetters(const char *a, const char *b) noexcept
{
    Word x = 0;
    Word y = 0;
    std::memcpy(&x, a, sizeof(x));
    std::memcpy(&y, b, sizeof(y));
    // The top bits of bytes, then those bits side by side.
    const Word same = bits::sameBytes(x, y);
    if constexpr (std::endian::native == std::endian::big)
        return (same >> 7) * 0x8040201008040201 >> 56;
    return (same >> 7) * 0x0102040810204080 >> 56;
}

// The same for up to 64 letters that stand in texts of other lengths.
Word sameLetters(std::string_view a, std::string_view b, std::size_t count) noexcept
{
    constexpr std::size_t kStep = 8;
    const std::size_t room = std::min(a.size(), b.size());
    Word same = 0;
    std::size_t i = 0;
    for (; i < count && i + kStep <= room; i += kStep)
        same |= sameLetters(a.data() + i, b.data() + i) << i;
    for (; i < count; ++i)
        same |= Word(a[i] == b[i] ? 1 : 0) << i;
    return same & bits::low(count);
}

// The residues of a row's sequence that have the letters of their columns. Without a branch on
// them: in a column that is half conserved no guess is right.
class MatchFinder
{
public:
    explicit MatchFinder(const std::vector<char> &letters)
        : m_Wanted(letters.begin(), letters.end())
    {
        m_Wanted.resize(bits::wordsFor(letters.size()) * bits::kPerWord + kCopyReadSlack);
    }

    [[nodiscard]] ResidueSelection find(const AlignmentRow &row)
    {
        const std::size_t count = row.sequence().residueCount();
        return row.isComplete() ? findAmongAll(row, count) : findInRuns(row, count);
    }

private:
    // The letters of the row's columns, gaps left out, stand as those of the sequence.
    [[nodiscard]] ResidueSelection findAmongAll(const AlignmentRow &row, std::size_t count)
    {
        const std::span<const Word> cells = row.cells().allWords();
        if (m_Here.size() < cells.size() * bits::kPerWord + kCopyWriteSlack)
            m_Here.resize(cells.size() * bits::kPerWord + kCopyWriteSlack);
        char *to = m_Here.data();
        const std::size_t known = (m_Wanted.size() - kCopyReadSlack) / bits::kPerWord;
        for (std::size_t i = 0; i < std::min(cells.size(), known); ++i)
            to = copyLetters(to, m_Wanted.data() + i * bits::kPerWord, cells[i]);
        const std::string_view wanted(m_Here.data(), static_cast<std::size_t>(to - m_Here.data()));
        const std::string_view residues = row.sequence().letters();
        std::vector<Word> words(bits::wordsFor(count));
        for (std::size_t begin = 0; begin < wanted.size(); begin += bits::kPerWord)
            words[bits::wordOf(begin)] =
                sameLetters(residues.substr(begin), wanted.substr(begin),
                            std::min(wanted.size() - begin, bits::kPerWord));
        return ResidueSelection(std::move(words));
    }
    [[nodiscard]] ResidueSelection findInRuns(const AlignmentRow &row, std::size_t count) const
    {
        const std::string_view residues = row.sequence().letters();
        const std::string_view wanted(m_Wanted);
        // One more, which no bit reaches.
        std::vector<Word> words(bits::wordsFor(count) + 1);
        const auto visit = [&](unsigned long col, std::uint32_t index, std::uint32_t length) {
            for (std::size_t done = 0; done < length; done += bits::kPerWord) {
                const Word same =
                    sameLetters(residues.substr(index + done), wanted.substr(col + done),
                                std::min<std::size_t>(bits::kPerWord, length - done));
                const std::size_t first = index + done;
                const unsigned place = bits::placeOf(first);
                words[bits::wordOf(first)] |= same << place;
                words[bits::wordOf(first) + 1] |= same >> 1 >> (bits::kPerWord - 1 - place);
            }
        };
        row.forEachRun(0, m_Wanted.size() - kCopyReadSlack, visit);
        words.pop_back();
        return ResidueSelection(std::move(words));
    }

    // Of whole words, and what is read behind them; '\0' in columns that do not matter.
    std::string m_Wanted;
    // What is wanted of the residues of one row.
    std::string m_Here;
};

// All residues of the row.
ResidueSelection residuesOf(const AlignmentRow &row)
{
    ResidueSelection residues(row.sequence().residueCount());
    for (const ResidueRun &run : row.residueRuns(0, row.cells().residues()))
        residues.set(run.index, std::size_t(run.index) + run.count, true);
    return residues;
}

// The residues of a row's sequence that stand in some columns.
class ColumnFinder
{
public:
    ColumnFinder(const std::vector<bool> &columns, unsigned long width)
    {
        const std::size_t end = std::min<std::size_t>(columns.size(), width);
        m_Marks.resize(bits::wordsFor(width) * bits::kPerWord + kCopyReadSlack);
        for (std::size_t col = 0; col < end; ++col) {
            if (!columns[col])
                continue;
            m_Marks[col] = kMark;
            if (m_Runs.empty() || m_Runs.back().second != col)
                m_Runs.emplace_back(col, col);
            ++m_Runs.back().second;
        }
    }

    [[nodiscard]] bool isEmpty() const noexcept { return m_Runs.empty(); }
    [[nodiscard]] ResidueSelection find(const AlignmentRow &row)
    {
        // From here on it is quicker to take all columns at once.
        constexpr std::size_t manyRuns = 4;
        if (row.isComplete() && m_Runs.size() > manyRuns)
            return findAmongAll(row);
        ResidueSelection found(row.sequence().residueCount());
        for (const Alignment::Range &columns : m_Runs) {
            const std::uint32_t first = row.cells().rank(columns.first);
            const std::uint32_t behind = row.cells().rank(columns.second);
            if (row.isComplete()) {
                found.set(first, behind, true);
                continue;
            }
            for (const ResidueRun &run : row.residueRuns(first, behind))
                found.set(run.index, std::size_t(run.index) + run.count, true);
        }
        return found;
    }

private:
    static constexpr char kMark = '\1';

    // The marks of the row's columns, gaps left out, are those of its residues.
    [[nodiscard]] ResidueSelection findAmongAll(const AlignmentRow &row)
    {
        const std::span<const Word> cells = row.cells().allWords();
        const std::size_t words =
            std::min(cells.size(), (m_Marks.size() - kCopyReadSlack) / bits::kPerWord);
        m_Here.resize(cells.size() * bits::kPerWord + kCopyWriteSlack);
        if (m_All.size() < m_Here.size())
            m_All.resize(m_Here.size(), kMark);
        char *to = m_Here.data();
        for (std::size_t i = 0; i < words; ++i)
            to = copyLetters(to, m_Marks.data() + i * bits::kPerWord, cells[i]);
        const auto count = static_cast<std::size_t>(to - m_Here.data());
        const std::string_view marks(m_Here.data(), count);
        std::vector<Word> found(bits::wordsFor(row.sequence().residueCount()));
        for (std::size_t begin = 0; begin < count; begin += bits::kPerWord)
            found[bits::wordOf(begin)] =
                sameLetters(marks.substr(begin), std::string_view(m_All).substr(begin),
                            std::min(count - begin, bits::kPerWord));
        return ResidueSelection(std::move(found));
    }

    std::vector<Alignment::Range> m_Runs;
    // Of whole words, and what is read behind them.
    std::string m_Marks;
    std::string m_Here;
    std::string m_All;
};

// The colours of columns as numbers of the different ones among them.
class NumberedColors
{
public:
    explicit NumberedColors(const std::vector<Color> &columns) : m_Choices(columns.size(), '\0')
    {
        std::vector<Color> different;
        for (std::size_t col = 0; col < columns.size(); ++col) {
            const auto found = std::ranges::find(different, columns[col]);
            const auto choice = static_cast<std::size_t>(found - different.begin()) + 1;
            if (choice == LetterColors::kLetters) {
                m_IsComplete = false;
                return;
            }
            if (found == different.end())
                different.push_back(columns[col]);
            m_Choices[col] = static_cast<char>(choice);
        }
        m_Colors = LetterColors(different);
    }

    // Whether there are not too many.
    [[nodiscard]] bool isComplete() const noexcept { return m_IsComplete; }
    [[nodiscard]] const std::string &choices() const noexcept { return m_Choices; }
    [[nodiscard]] const LetterColors &colors() const noexcept { return m_Colors; }

private:
    bool m_IsComplete = true;
    std::string m_Choices;
    LetterColors m_Colors{Color()};
};

// A residue that stands in two rows may stand in two columns.
bool isEachChainInOneRow(const AlignmentTable &table)
{
    std::unordered_map<const Peptide *, std::size_t> rows;
    bool isInOne = true;
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        const auto take = [&](const Peptide &chain) {
            isInOne = isInOne && rows.emplace(&chain, i).first->second == i;
        };
        const Peptide &sequence = table.row(i).sequence();
        isInOne = isInOne && rows.emplace(&sequence, i).second;
        sequence.forEachTiedChain(take);
    }
    return isInOne;
}

void colorCellByCell(const Alignment &alignment, const std::vector<Color> &colors)
{
    for (unsigned long col = 0; col < std::min<unsigned long>(alignment.width(), colors.size());
         ++col) {
        for (unsigned long row = 0; row < alignment.height(); ++row) {
            Compound *const residue =
                alignment.hasPositions(row) ? alignment.getItem(row, col) : nullptr;
            if (residue != nullptr && residue->Position().isDefined())
                residue->SetColor(colors[col]);
        }
    }
}

bool isEmpty(const std::vector<char> &letters)
{
    return std::ranges::all_of(letters, [](char letter) { return letter == '\0'; });
}

} // namespace

bool Alignment::colorByLetter(const std::array<Color, 256> &colors)
{
    LongWork work(kColoring, height(), LongWork::Kind::Changing);
    const ChangeScope scope;
    const LetterColors prepared(colors);
    for (unsigned long i = 0; i < height(); ++i) {
        if (!work.goesOn())
            return false;
        const AlignmentRow &row = m_Table->row(i);
        if (row.isComplete())
            row.sequence().setColors(prepared);
        else
            row.sequence().setColors(residuesOf(row), prepared);
    }
    return true;
}

bool Alignment::colorSelected(const Color &color)
{
    LongWork work(kColoring, height(), LongWork::Kind::Changing);
    const ChangeScope scope;
    const LetterColors prepared(color);
    for (unsigned long i = 0; i < height(); ++i) {
        if (!work.goesOn())
            return false;
        const AlignmentRow &row = m_Table->row(i);
        if (row.sequence().selectedCount() == 0)
            continue;
        ResidueSelection selected(row.sequence().residueCount());
        for (const ResidueRun &run : row.residueRuns(0, row.cells().residues()))
            row.sequence().addSelected(run.index, std::size_t(run.index) + run.count, selected);
        row.sequence().setColors(selected, prepared);
    }
    return true;
}

bool Alignment::colorLetters(const std::vector<char> &letters, const Color &color)
{
    if (isEmpty(letters))
        return true;
    LongWork work(kColoring, height(), LongWork::Kind::Changing);
    const ChangeScope scope;
    const LetterColors prepared(color);
    MatchFinder matches(letters);
    for (unsigned long i = 0; i < height(); ++i) {
        if (!work.goesOn())
            return false;
        const AlignmentRow &row = m_Table->row(i);
        row.sequence().setColors(matches.find(row), prepared);
    }
    return true;
}

bool Alignment::colorPositioned(const std::vector<Color> &colors)
{
    const unsigned long columns = std::min<unsigned long>(m_Width, colors.size());
    LongWork work(kColoring, height(), LongWork::Kind::Changing);
    const ChangeScope scope;
    const NumberedColors numbered(colors);
    if (!numbered.isComplete() || !isEachChainInOneRow(*m_Table)) {
        colorCellByCell(*this, colors);
        return true;
    }
    for (unsigned long i = 0; i < height(); ++i) {
        if (!work.goesOn())
            return false;
        const AlignmentRow &row = m_Table->row(i);
        if (!row.sequence().hasAtoms())
            continue;
        std::string choices(row.sequence().residueCount(), '\0');
        row.forEachRun(0, columns,
                       [&](unsigned long col, std::uint32_t index, std::uint32_t count) {
                           numbered.choices().copy(choices.data() + index, count, col);
                       });
        row.sequence().setPositionedColors(std::move(choices), numbered.colors());
    }
    return true;
}

bool Alignment::selectLetters(const std::vector<char> &letters)
{
    if (isEmpty(letters))
        return true;
    LongWork work("Selecting", height(), LongWork::Kind::Reading);
    const ChangeScope scope;
    // No history takes a selection back, so that nothing is selected before all is found.
    std::vector<std::unique_ptr<ResidueSelection>> found;
    found.reserve(height());
    MatchFinder matches(letters);
    for (unsigned long i = 0; i < height(); ++i) {
        if (!work.goesOn())
            return false;
        found.push_back(std::make_unique<ResidueSelection>(matches.find(m_Table->row(i))));
    }
    for (unsigned long i = 0; i < height(); ++i)
        m_Table->row(i).sequence().select(std::move(found[i]));
    return true;
}

bool Alignment::selectCells(const std::vector<bool> &rows, const std::vector<bool> &columns,
                            Selecting how)
{
    LongWork work("Selecting", height(), LongWork::Kind::Reading);
    const ChangeScope scope;
    struct Found
    {
        Peptide *sequence;
        std::unique_ptr<ResidueSelection> residues;
        // Those of them that were selected before, where that matters.
        std::optional<ResidueSelection> before;
    };
    // As above; and a sequence that stands in several rows is as it was for all of them.
    std::vector<Found> found;
    ColumnFinder finder(columns, m_Width);
    const unsigned long end = finder.isEmpty() ? 0 : std::min<unsigned long>(height(), rows.size());
    for (unsigned long i = 0; i < end; ++i) {
        if (!work.goesOn())
            return false;
        if (!rows[i])
            continue;
        Peptide &sequence = m_Table->row(i).sequence();
        Found &here = found.emplace_back(
            Found{&sequence, std::make_unique<ResidueSelection>(finder.find(m_Table->row(i))), {}});
        if (how != Selecting::Toggle || sequence.selectedCount() == 0)
            continue;
        here.before.emplace(sequence.residueCount());
        here.residues->forEachRun([&](std::size_t begin, std::size_t behind) {
            sequence.addSelected(begin, behind, *here.before);
        });
    }
    if (how == Selecting::Replace) {
        for (unsigned long i = 0; i < height(); ++i) {
            Peptide &sequence = m_Table->row(i).sequence();
            if (sequence.selectedCount() > 0)
                sequence.deselect(residuesOf(m_Table->row(i)));
        }
    }
    for (Found &here : found) {
        if (how == Selecting::Remove) {
            here.sequence->deselect(*here.residues);
            continue;
        }
        here.sequence->select(std::move(here.residues));
        if (here.before)
            here.sequence->deselect(*here.before);
    }
    return true;
}

void Alignment::selectInRow(unsigned long row, const Range &range)
{
    const unsigned long end = std::min(range.second, m_Width);
    if (row >= height() || range.first >= end)
        return;
    const ChangeScope scope;
    const AlignmentRow &line = m_Table->row(row);
    const std::uint32_t first = line.cells().rank(range.first);
    const std::uint32_t behind = line.cells().rank(end);
    if (first == behind)
        return;
    const std::uint32_t index = line.residueIndex(first);
    // Mostly they are neighbours in the sequence too.
    if (line.residueIndex(behind - 1) - index == behind - 1 - first) {
        line.sequence().setSelected(index, std::size_t(index) + (behind - first), true);
        return;
    }
    for (const ResidueRun &run : line.residueRuns(first, behind))
        line.sequence().setSelected(run.index, std::size_t(run.index) + run.count, true);
}

} // namespace TAMBO
