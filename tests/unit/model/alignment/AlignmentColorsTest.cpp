// SPDX-License-Identifier: GPL-3.0-or-later
// Colouring and selecting many residues at once does what colouring and selecting one after the
// other would, and is undone in one step.
#include "unit/model/AlignmentFixture.h"

#include "AminoAcids.h"
#include "ObjectOperations.h"

#include <array>
#include <functional>
#include <random>

using TAMBO::Alignment;
using TAMBO::Compound;
using TAMBO::Peptide;

namespace AlignmentColorsTest {

constexpr Color kRed(0xff0000);
constexpr Color kGreen(0x00ff00);

using Table = std::array<Color, 256>;

class AlignmentColors : public AlignmentFixture
{
protected:
    using Colors = std::vector<Color>;
    using Flags = std::vector<bool>;

    // Of every residue of every sequence.
    Colors colors() const
    {
        Colors all;
        for (Peptide *sequence : m_All)
            for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                all.push_back(sequence->ownColor(i));
        return all;
    }
    Flags flags() const
    {
        Flags all;
        for (Peptide *sequence : m_All)
            for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                all.push_back(sequence->isSelected(i));
        return all;
    }
    // What change does, found out and taken back.
    Colors colorsAfter(const std::function<void()> &change)
    {
        const std::size_t before = history.undoCount();
        {
            const TAMBO::ChangeScope scope;
            change();
        }
        Colors after = colors();
        while (history.undoCount() > before)
            history.undo();
        return after;
    }
    static void forEachCell(const Alignment &alignment,
                            const std::function<void(Compound &, unsigned long)> &visit)
    {
        for (unsigned long row = 0; row < alignment.height(); ++row) {
            for (unsigned long col = 0; col < alignment.width(); ++col) {
                if (Compound *const residue = alignment.getItem(row, col))
                    visit(*residue, col);
            }
        }
    }
    void expectAs(const std::function<void()> &expected, const std::function<void()> &actual)
    {
        const Colors before = colors();
        const Colors after = colorsAfter(expected);
        ASSERT_EQ(colors(), before);
        const std::size_t steps = history.undoCount();
        actual();
        ASSERT_EQ(colors(), after);
        ASSERT_EQ(history.undoCount(), steps + (after == before ? 0 : 1));
        if (after == before)
            return;
        history.undo();
        ASSERT_EQ(colors(), before);
        history.redo();
        ASSERT_EQ(colors(), after);
    }

    // Sequences with letters few enough to meet, one of them tied to two chains by residues of its
    // own and of other letters, some of them in two rows, columns taken out.
    Alignment &mixedAlignment(unsigned seed, std::size_t width)
    {
        m_Random.seed(seed);
        std::vector<std::pair<Peptide *, std::string>> rows;
        for (int i = 0; i < 4; ++i) {
            const std::string text = randomText(width);
            std::string letters = text;
            std::erase(letters, '-');
            m_All.push_back(&peptide("r" + std::to_string(i), letters));
            rows.emplace_back(m_All.back(), text);
        }
        Peptide &tied = *m_All.front();
        const std::size_t count = tied.residueCount();
        Peptide &same = peptide("same", std::string(tied.letters()));
        std::string turned(tied.letters());
        for (char &letter : turned)
            letter = letter == 'A' ? 'C' : letter;
        Peptide &other = peptide("other", turned);
        tied.tie(count / 8, same, count / 8, count / 4);
        tied.tie(count / 2, other, count / 2, count / 4);
        m_All.insert(m_All.end(), {&same, &other});
        rows.push_back(rows[1]);
        rows.back().second = "--" + rows.back().second;
        rows.emplace_back(&same, std::string(same.letters()));
        Alignment &made = alignmentOf(rows);
        made.remove({made.width() / 3, made.width() / 3 + 1 + below(5)});
        made.remove(made.width() / 2);
        history.clear();
        return made;
    }
    // A chain of which some residues have a CA atom.
    Peptide &chain(const std::string &letters)
    {
        TAMBO::ChainRecord record;
        for (const char letter : letters) {
            TAMBO::ResidueRecord &residue = record.residues.emplace_back();
            residue.letter = letter;
            residue.atoms.push_back({"N", "N", TAMBO::Vertex(1, 2, 3)});
            if (below(5) != 0)
                residue.atoms.push_back({"CA", "C", TAMBO::Vertex(float(below(100)), 5, 6)});
        }
        auto made = std::make_unique<Peptide>(std::move(record));
        Peptide &result = *made;
        TAMBO::ObjectSpace::get().add(std::move(made));
        m_All.push_back(&result);
        return result;
    }
    // Rows of chains, of a sequence without coordinates and of one that is tied to a chain; with
    // doubles a chain stands in two rows, and the one of the tied sequence in a row of its own.
    Alignment &alignmentOfChains(unsigned seed, std::size_t width, bool hasDoubles)
    {
        m_Random.seed(seed);
        const auto lettersOf = [](std::string text) {
            std::erase(text, '-');
            return text;
        };
        std::vector<std::pair<Peptide *, std::string>> rows;
        for (int i = 0; i < 3; ++i) {
            const std::string text = randomText(width);
            rows.emplace_back(&chain(lettersOf(text)), text);
        }
        const std::string text = randomText(width);
        m_All.push_back(&peptide("free", lettersOf(text)));
        rows.emplace_back(m_All.back(), text);
        Peptide &tied = peptide("tied", lettersOf(text));
        Peptide &owner = chain(lettersOf(text));
        tied.tie(tied.residueCount() / 8, owner, 0, tied.residueCount() / 2);
        m_All.push_back(&tied);
        rows.emplace_back(&tied, text);
        if (hasDoubles) {
            rows.emplace_back(rows[1].first, "--" + rows[1].second);
            rows.emplace_back(&owner, std::string(owner.letters()));
        }
        return alignmentOf(rows);
    }
    void colorSome(std::size_t different)
    {
        for (Peptide *sequence : m_All)
            for (std::size_t i = 0; i < sequence->residueCount(); i += 1 + below(6))
                sequence->setColor(i, Color(unsigned(below(different)) * 991U + 1U));
        history.clear();
    }
    void selectSome()
    {
        for (Peptide *sequence : m_All)
            for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                sequence->setSelected(i, below(3) == 0);
    }
    std::vector<char> someLetters(std::size_t count)
    {
        std::vector<char> letters;
        for (std::size_t i = 0; i < count; ++i)
            letters.push_back("AAC-X\0\0W"[below(8)]);
        return letters;
    }
    std::size_t below(std::size_t limit) { return m_Random() % limit; }

    std::vector<Peptide *> m_All;

private:
    std::string randomText(std::size_t width)
    {
        std::string text;
        for (std::size_t i = 0; i < width; ++i)
            text += "AAACCDW-X-"[below(10)];
        text += 'A';
        return text;
    }

    std::mt19937 m_Random;
};

class AlignmentColorsOfAnyLength : public AlignmentColors,
                                   public ::testing::WithParamInterface<std::size_t>
{
};

Table someTable(unsigned seed)
{
    Table table;
    for (std::size_t code = 0; code < table.size(); ++code)
        table[code] = Color(unsigned(code) * 7919U * seed);
    // As the type has it already.
    table['D'] = TAMBO::aminoAcidColor('D');
    return table;
}

TEST_P(AlignmentColorsOfAnyLength, TheTableColoursAsEachResidueByItself)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        m_All.clear();
        Alignment &sample = mixedAlignment(seed, GetParam());
        colorSome(seed % 2 == 0 ? 4 : 1000);
        const Table table = someTable(seed);
        const auto one = [&](Compound &residue, unsigned long) {
            residue.SetColor(table[static_cast<unsigned char>(residue.TypeCode())]);
        };
        expectAs([&] { forEachCell(sample, one); }, [&] { sample.colorByLetter(table); });
    }
}

TEST_P(AlignmentColorsOfAnyLength, SelectedResiduesAreColouredAsEachByItself)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        m_All.clear();
        Alignment &sample = mixedAlignment(seed, GetParam());
        colorSome(seed % 2 == 0 ? 4 : 1000);
        if (seed == 5)
            sample.select({0, sample.width()}, true);
        else
            selectSome();
        const auto one = [&](Compound &residue, unsigned long) {
            if (residue.IsSelected())
                residue.SetColor(kRed);
        };
        expectAs([&] { forEachCell(sample, one); }, [&] { sample.colorSelected(kRed); });
    }
}

TEST_P(AlignmentColorsOfAnyLength, ResiduesWithTheLettersOfTheirColumnsAreColoured)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        m_All.clear();
        Alignment &sample = mixedAlignment(seed, GetParam());
        colorSome(seed % 2 == 0 ? 4 : 1000);
        const std::vector<char> letters =
            seed == 5 ? std::vector<char>(sample.width(), 'A') : someLetters(sample.width());
        const auto one = [&](Compound &residue, unsigned long col) {
            if (residue.TypeCode() == letters[col])
                residue.SetColor(kRed);
        };
        expectAs([&] { forEachCell(sample, one); }, [&] { sample.colorLetters(letters, kRed); });
    }
}

TEST_P(AlignmentColorsOfAnyLength, ResiduesWithAPositionAreColouredByTheirColumnsAsEachByItself)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        m_All.clear();
        Alignment &sample = alignmentOfChains(seed, GetParam(), seed % 2 == 0);
        colorSome(seed % 4 < 2 ? 4 : 1000);
        // More different ones than fit a byte where there are so many columns.
        const std::size_t different = seed < 5 ? 7 : 1000;
        std::vector<Color> columns;
        for (unsigned long col = 0; col < sample.width(); ++col)
            columns.push_back(below(8) == 0 ? TAMBO::aminoAcidColor('A')
                                            : Color(unsigned(below(different)) * 77U));
        const auto eachByItself = [&] {
            for (unsigned long col = 0; col < sample.width(); ++col)
                for (unsigned long row = 0; row < sample.height(); ++row) {
                    Compound *const residue = sample.getItem(row, col);
                    if (residue != nullptr && residue->Position().isDefined())
                        residue->SetColor(columns[col]);
                }
        };
        expectAs(eachByItself, [&] { sample.colorPositioned(columns); });
    }
}

TEST_P(AlignmentColorsOfAnyLength, ResiduesWithTheLettersOfTheirColumnsAreSelected)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        m_All.clear();
        Alignment &sample = mixedAlignment(seed, GetParam());
        if (seed % 2 == 0)
            selectSome();
        const std::vector<char> letters = someLetters(sample.width());
        const Flags before = flags();
        forEachCell(sample, [&](Compound &residue, unsigned long col) {
            if (residue.TypeCode() == letters[col])
                residue.SetSelected(true);
        });
        const Flags expected = flags();
        std::size_t place = 0;
        for (Peptide *sequence : m_All)
            for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                sequence->setSelected(i, before[place++]);
        ASSERT_EQ(flags(), before);
        sample.selectLetters(letters);
        EXPECT_EQ(flags(), expected);
        for (const Peptide *sequence : m_All) {
            std::size_t count = 0;
            for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                count += sequence->isSelected(i) ? 1 : 0;
            EXPECT_EQ(sequence->selectedCount(), count);
        }
    }
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_P(AlignmentColorsOfAnyLength, ARangeOfARowIsSelectedAndNothingElse)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        m_All.clear();
        Alignment &sample = mixedAlignment(seed, GetParam());
        for (int i = 0; i < 10; ++i) {
            sample.select({0, sample.width()}, false);
            const unsigned long row = below(sample.height());
            const unsigned long begin = below(sample.width());
            const unsigned long end = begin + below(sample.width() + 3);
            Flags expected = flags();
            for (unsigned long col = begin; col < std::min(end, sample.width()); ++col) {
                if (Compound *const residue = sample.getItem(row, col))
                    residue->SetSelected(true);
            }
            expected = flags();
            sample.select({0, sample.width()}, false);
            sample.selectInRow(row, {begin, end});
            ASSERT_EQ(flags(), expected);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Lengths, AlignmentColorsOfAnyLength,
                         ::testing::Values(3, 20, 63, 64, 65, 130, 700));

TEST_F(AlignmentColors, ARangeOfARowOutOfBoundsIsLeftOut)
{
    Alignment &sample = alignment({"AC-D", "AAAA"});
    sample.selectInRow(2, {0, 4});
    sample.selectInRow(0, {4, 9});
    sample.selectInRow(0, {3, 1});
    sample.selectInRow(0, {2, 3});
    EXPECT_EQ(sequence(sample, 0).selectedCount(), 0U);
    EXPECT_EQ(sequence(sample, 1).selectedCount(), 0U);
    sample.selectInRow(0, {1, 100});
    EXPECT_EQ(sequence(sample, 0).selectedCount(), 2U);
}

TEST_F(AlignmentColors, LettersForFewerOrMoreColumnsThanThereAreAreNoMatter)
{
    Alignment &sample = alignment({"AAAA"});
    sample.colorLetters({'A', 'A'}, kRed);
    sample.selectLetters(std::vector<char>(100, 'A'));
    EXPECT_EQ(sequence(sample, 0).ownColor(1), kRed);
    EXPECT_NE(sequence(sample, 0).ownColor(2), kRed);
    EXPECT_EQ(sequence(sample, 0).selectedCount(), 4U);
    sample.colorLetters({}, kGreen);
    EXPECT_EQ(sequence(sample, 0).ownColor(0), kRed);
}

TEST_F(AlignmentColors, ColoursForFewerOrMoreColumnsThanThereAreAreNoMatter)
{
    Peptide &row = chain("AAAAAAAAAA");
    Alignment &sample = alignmentOf({{&row, "AAAAAAAAAA"}});
    const auto colored = [&] {
        std::size_t count = 0;
        for (std::size_t i = 0; i < row.residueCount(); ++i)
            count += row.ownColor(i) == kRed ? 1 : 0;
        return count;
    };
    const auto positioned = [&](std::size_t end) {
        std::size_t count = 0;
        for (std::size_t i = 0; i < end; ++i)
            count += row.position(i).isDefined() ? 1 : 0;
        return count;
    };
    sample.colorPositioned({});
    EXPECT_EQ(colored(), 0U);
    sample.colorPositioned(std::vector<Color>(4, kRed));
    EXPECT_EQ(colored(), positioned(4));
    sample.colorPositioned(std::vector<Color>(20, kRed));
    EXPECT_EQ(colored(), positioned(10));
    EXPECT_GT(positioned(10), 0U);
}

TEST_F(AlignmentColors, ALockedAlignmentIsColouredAndALockedSequenceIsNot)
{
    Alignment &sample = alignment({"AC", "AC"});
    TAMBO::setObjectLocked(sample, true);
    TAMBO::setObjectLocked(sequence(sample, 1), true);
    history.clear();
    log.clear();
    Table table;
    table.fill(kRed);
    sample.select({0, 2}, true);
    sample.selectInRow(1, {0, 2});
    {
        const TAMBO::ChangeScope scope;
        sample.colorByLetter(table);
        sample.colorLetters({'A', 'C'}, kRed);
        sample.colorSelected(kRed);
        sample.colorPositioned({kRed, kRed});
    }
    EXPECT_EQ(sequence(sample, 0).ownColor(0), kRed);
    EXPECT_NE(sequence(sample, 1).ownColor(0), kRed);
    EXPECT_EQ(std::ranges::count(log, "\"s1\" is locked and was not changed."), 1);
    EXPECT_EQ(history.undoCount(), 1U);
}

TEST_F(AlignmentColors, ALockedChainKeepsTheColoursOfTheRowsTiedToIt)
{
    Peptide &chain = peptide("chain", "ACD");
    Peptide &row = peptide("row", "ACD");
    row.tie(0, chain, 0, 2);
    Alignment &sample = alignmentOf({{&row, "ACD"}});
    TAMBO::setObjectLocked(chain, true);
    Table table;
    table.fill(kRed);
    sample.colorByLetter(table);
    EXPECT_NE(chain.ownColor(0), kRed);
    EXPECT_NE(row.ownColor(1), kRed);
    EXPECT_EQ(row.ownColor(2), kRed);
}

TEST_F(AlignmentColors, ColouringAgainTheSameIsNoStep)
{
    Alignment &sample = alignment({"ACDA", "-AC-"});
    Table table = someTable(3);
    sample.colorByLetter(table);
    EXPECT_EQ(history.undoCount(), 1U);
    sample.colorByLetter(table);
    sample.colorLetters({'A', 'A', 'C', 'A'}, table['X']);
    history.clear();
    sample.colorLetters({'A', 'A', 'C', 'A'}, table['X']);
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_F(AlignmentColors, TheColourOfTheTypeIsNoColourOfItsOwn)
{
    Alignment &sample = alignment({"ACDA"});
    Table table;
    for (std::size_t code = 0; code < table.size(); ++code)
        table[code] = TAMBO::aminoAcidColor(char(code));
    const std::size_t bytes = sequence(sample, 0).bytes();
    sample.colorByLetter(table);
    EXPECT_EQ(history.undoCount(), 0U);
    EXPECT_EQ(sequence(sample, 0).bytes(), bytes);
    sample.colorByLetter(someTable(1));
    EXPECT_GT(sequence(sample, 0).bytes(), bytes + sizeof(TAMBO::PeptideExtras));
    sample.colorByLetter(table);
    // Steps of undo refer to the place of the colors, which stays.
    EXPECT_EQ(sequence(sample, 0).bytes(), bytes + sizeof(TAMBO::PeptideExtras));
}

TEST_F(AlignmentColors, AColouringAndItsUndoTakeLittleMemory)
{
    constexpr std::size_t kLength = 10000;
    std::string letters;
    for (std::size_t i = 0; i < kLength; ++i)
        letters += "ARNDCQEGHILKMFPSTWYV"[i * 7 % 20];
    Alignment &sample = alignment({letters});
    const auto table = [](unsigned shift) {
        Table colors;
        for (std::size_t code = 0; code < colors.size(); ++code)
            colors[code] = Color(unsigned(code % 20) * 10 + shift);
        return colors;
    };
    const std::size_t bytes = sequence(sample, 0).bytes();
    sample.colorByLetter(table(1));
    // A byte a residue: no objects were made.
    EXPECT_LT(sequence(sample, 0).bytes(), bytes + kLength + 1000);
    EXPECT_LT(history.last().front()->bytes(), 300U);
    sample.colorByLetter(table(2));
    EXPECT_LT(history.last().front()->bytes(), kLength + 1000);
    sample.colorLetters(std::vector<char>(kLength, 'W'), kRed);
    EXPECT_LT(history.last().front()->bytes(), kLength + 1000);
    std::vector<char> first(kLength, '\0');
    first[0] = letters[0];
    sample.colorLetters(first, kGreen);
    EXPECT_LT(history.last().front()->bytes(), 300U);
}

TEST_F(AlignmentColors, SeveralColouringsInOneStepAreUndoneTogether)
{
    Alignment &sample = alignment({std::string(300, 'A') + std::string(300, 'C'), "AC"});
    m_All = {&sequence(sample, 0), &sequence(sample, 1)};
    colorSome(500);
    const Colors before = colors();
    {
        const TAMBO::ChangeScope scope;
        sequence(sample, 0).setColor(5, kGreen);
        sample.colorLetters(std::vector<char>(600, 'A'), kRed);
        sample.colorByLetter(someTable(1));
        sequence(sample, 0).setColor(5, kGreen);
        sample.colorByLetter(someTable(2));
        sample.select({3, 9}, true);
        sample.colorSelected(kGreen);
    }
    const Colors after = colors();
    EXPECT_EQ(history.undoCount(), 1U);
    history.undo();
    EXPECT_EQ(colors(), before);
    history.redo();
    EXPECT_EQ(colors(), after);
}

TEST_F(AlignmentColors, ATransparentColourIsKeptAsItIs)
{
    Alignment &sample = alignment({std::string(600, 'A')});
    m_All = {&sequence(sample, 0)};
    const Color faint(0x80000000U);
    // With few colours, and with more than fit a byte.
    for (const std::size_t different : {2, 600}) {
        for (std::size_t i = 0; i < 600; ++i)
            m_All[0]->setColor(i, Color(unsigned(i % different) + 1));
        sample.selectInRow(0, {3, 4});
        sample.colorSelected(faint);
        EXPECT_EQ(m_All[0]->ownColor(3), faint);
        EXPECT_EQ(m_All[0]->ownColor(4), Color(unsigned(4 % different) + 1));
    }
}

TEST_F(AlignmentColors, OnlyChainsAndWhatIsTiedToThemHavePositions)
{
    TAMBO::ResidueRecord residue;
    residue.letter = 'A';
    residue.atoms.push_back({"CA", "C", TAMBO::Vertex(1, 2, 3)});
    TAMBO::ChainRecord record;
    record.residues = {residue, residue};
    auto made = std::make_unique<Peptide>(std::move(record));
    Peptide &chain = *made;
    TAMBO::ObjectSpace::get().add(std::move(made));
    Peptide &tied = peptide("tied", "AAA");
    tied.tie(1, chain, 0, 1);
    const Alignment &sample =
        alignmentOf({{&chain, "AA"}, {&tied, "AAA"}, {&peptide("free", "AA"), "AA"}});
    EXPECT_TRUE(sample.hasPositions(0));
    EXPECT_TRUE(sample.hasPositions(1));
    EXPECT_FALSE(sample.hasPositions(2));
    EXPECT_FALSE(sample.hasPositions(3));
}

TEST_F(AlignmentColors, PositionsOfACellRangeAreThoseOfItsResidues)
{
    Alignment &sample = alignmentOfChains(3, 60, true);
    sample.remove({20, 25});
    using Places = std::vector<TAMBO::Vertex>;
    const auto isSame = [](const TAMBO::Vertex &one, const TAMBO::Vertex &two) {
        return one.isDefined() == two.isDefined() && one.coordinates() == two.coordinates();
    };
    for (unsigned long row = 0; row < sample.height(); ++row) {
        for (const auto &[begin, end] : {std::pair(0UL, sample.width()), {7UL, 31UL}, {9UL, 9UL}}) {
            Places found(2);
            sample.readPositions(row, begin, end, found);
            ASSERT_EQ(found.size(), 2 + end - begin);
            for (unsigned long col = begin; col < end; ++col) {
                const Compound *const residue = sample.getItem(row, col);
                const TAMBO::Vertex expected =
                    residue == nullptr ? TAMBO::Vertex() : residue->Position();
                EXPECT_TRUE(isSame(found[2 + col - begin], expected)) << row << ", " << col;
            }
        }
    }
    Places none;
    sample.readPositions(sample.height(), 0, 5, none);
    sample.readPositions(0, sample.width(), sample.width() + 5, none);
    sample.readPositions(0, 5, 3, none);
    EXPECT_TRUE(none.empty());
    sample.readPositions(0, sample.width() - 2, sample.width() + 5, none);
    EXPECT_EQ(none.size(), 2U);
}

} // namespace AlignmentColorsTest
