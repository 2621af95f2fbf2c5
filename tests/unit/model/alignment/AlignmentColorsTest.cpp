// SPDX-License-Identifier: GPL-3.0-or-later
// Colouring and selecting many residues at once does what colouring and selecting one after the
// other would, and is undone in one step.
#include "unit/model/alignment/AlignmentColorsFixture.h"

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

TEST_P(AlignmentColorsOfAnyLength, CellsAreSelectedAsOneResidueAfterTheOtherWouldBe)
{
    using How = Alignment::Selecting;
    for (unsigned seed = 1; seed <= 4; ++seed) {
        m_All.clear();
        Alignment &sample = mixedAlignment(seed, GetParam());
        for (const How how : {How::Add, How::Replace, How::Toggle, How::Remove, How::Toggle}) {
            // Sparse and dense ones, blocks, and fewer or more than there are.
            std::vector<bool> rows(sample.height() + below(3) - 1);
            std::vector<bool> columns(sample.width() + below(3) - 1);
            const unsigned share = 1 + below(9);
            for (std::size_t i = 0; i < rows.size(); ++i)
                rows[i] = below(10) < 6;
            for (std::size_t i = 0; i < columns.size(); ++i)
                columns[i] = seed == 1 ? i > 3 && i < 40 : below(10) < share;
            const Flags before = flags();
            std::vector<std::pair<Compound *, bool>> wanted;
            for (unsigned long row = 0; row < sample.height(); ++row) {
                for (unsigned long col = 0; col < sample.width(); ++col) {
                    Compound *const residue = sample.getItem(row, col);
                    if (residue == nullptr)
                        continue;
                    if (row < rows.size() && rows[row] && col < columns.size() && columns[col])
                        wanted.emplace_back(residue, residue->IsSelected());
                }
            }
            if (how == How::Replace)
                forEachCell(sample, [](Compound &each, unsigned long) { each.SetSelected(false); });
            for (const auto &[residue, wasSelected] : wanted)
                residue->SetSelected(how == How::Toggle ? !wasSelected : how != How::Remove);
            const Flags expected = flags();
            std::size_t place = 0;
            for (Peptide *sequence : m_All)
                for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                    sequence->setSelected(i, before[place++]);
            ASSERT_EQ(flags(), before);
            sample.selectCells(rows, columns, how);
            ASSERT_EQ(flags(), expected) << seed << ", " << int(how);
            for (const Peptide *sequence : m_All) {
                std::size_t count = 0;
                for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                    count += sequence->isSelected(i) ? 1 : 0;
                ASSERT_EQ(sequence->selectedCount(), count);
            }
        }
    }
    EXPECT_EQ(history.undoCount(), 0U);
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
