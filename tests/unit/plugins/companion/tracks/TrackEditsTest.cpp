// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of columns through edits: kept where it can be, and right at any moment.
#include "TrackColumns.h"

#include "unit/model/AlignmentFixture.h"

#include "ColumnScores.h"
#include "DataMaker.h"

#include <cmath>
#include <random>
#include <string>

namespace TrackEditsTest {

using companion::ColumnCounts;
using companion::ColumnSpread;
using companion::TrackColumn;
using companion::TrackColumns;
using TAMBO::Alignment;
using TAMBO::Peptide;

constexpr auto kForever = std::chrono::hours(1);
constexpr auto kNoTime = std::chrono::microseconds(0);

// Pair by pair, in double precision.
ColumnSpread spreadOf(const Alignment &alignment, unsigned long col)
{
    std::vector<TAMBO::Vertex> places;
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        std::vector<TAMBO::Vertex> cell;
        alignment.readPositions(row, col, col + 1, cell);
        if (!cell.empty() && cell.front().isDefined())
            places.push_back(cell.front());
    }
    double sum = 0;
    double pairs = 0;
    for (std::size_t i = 0; i < places.size(); ++i)
        for (std::size_t k = 0; k < i; ++k, ++pairs)
            sum += std::hypot(double(places[i].x()) - double(places[k].x()),
                              double(places[i].y()) - double(places[k].y()),
                              double(places[i].z()) - double(places[k].z()));
    return {places.size(), pairs == 0 ? std::nullopt : std::optional(sum / pairs)};
}

class EditedColumns : public AlignmentFixture
{
protected:
    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random() % limit; }

    std::string randomText(std::size_t length)
    {
        static const std::string letters = "ACDDEFGHKKLMNPQRSTVWYXac------";
        std::string text;
        while (text.size() < length)
            text += letters[below(letters.size())];
        return text;
    }
    // A chain with coordinates of so many residues, each tenth without.
    Peptide &chain(std::size_t residues)
    {
        TAMBO::StructureValues values;
        values.chains = {{"A", {}}};
        for (std::size_t i = 0; i < residues; ++i) {
            const auto coordinate = [this] { return float(below(300)) / 10; };
            const TAMBO::Vertex place(coordinate(), coordinate(), coordinate());
            values.chains[0].residues.push_back(
                {"ALA",
                 TAMBO::SequenceNumber(std::to_string(i + 1)),
                 {{i % 10 == 9 ? "N" : "CA", i % 10 == 9 ? "N" : "C", place}}});
        }
        TAMBO::Compound *const structure = TAMBO::DataMaker::makeStructure("made", values);
        history.clear();
        return *Peptide::from(structure->Child(0));
    }
    Alignment &mixed(std::size_t rows, std::size_t columns, std::size_t withStructures)
    {
        std::vector<std::pair<Peptide *, std::string>> texts;
        for (std::size_t row = 0; row < rows; ++row) {
            std::string text = randomText(columns);
            std::string letters = text;
            std::erase(letters, '-');
            Peptide &sequence = row < withStructures
                                    ? chain(letters.size())
                                    : peptide("row " + std::to_string(row), letters);
            texts.emplace_back(&sequence, text);
        }
        return alignmentOf(texts);
    }
    void edit(Alignment &alignment)
    {
        const unsigned long row = below(alignment.height());
        const unsigned long col = below(alignment.width());
        const unsigned long to = below(alignment.width());
        switch (below(14)) {
        case 0:
            return alignment.insertGapCol(col, 1 + below(3));
        case 1:
            if (alignment.width() > 30)
                alignment.remove({col, col + 1 + below(3)});
            return;
        case 2:
            if (alignment.height() > 3)
                alignment.removeRow(row);
            return;
        case 3:
            return alignment.addRows({&peptide("new", randomText(5) + 'A')});
        case 4:
            return alignment.bubbleRow(row, below(alignment.height()));
        case 5:
        case 6:
            return alignment.insertGap(row, col);
        case 7:
        case 8:
        case 9:
            return alignment.moveGap(row, col, to, false);
        case 10:
        case 11:
            if (history.undoCount() > 0)
                history.undo();
            return;
        case 12:
            if (history.redoCount() > 0)
                history.redo();
            return;
        default:
            return alignment.moveGap(row, col, to, true);
        }
    }
    static void expectRight(const TrackColumns &columns, const Alignment &alignment,
                            unsigned long begin, unsigned long end, bool withSpread)
    {
        for (unsigned long col = begin; col < end; ++col) {
            if (!columns.isKnown(col))
                continue;
            std::vector<char> letters;
            alignment.readColumn(col, letters);
            const ColumnCounts counts(letters);
            const TrackColumn &found = *columns.at(col);
            ASSERT_EQ(found.counts, counts) << col;
            ASSERT_EQ(found.conservation, companion::conservation(counts)) << col;
            ASSERT_EQ(found.occupancy, companion::occupancy(counts)) << col;
            ASSERT_EQ(found.bits, companion::informationContent(counts)) << col;
            ASSERT_EQ(found.logo, companion::logo(counts)) << col;
            if (!withSpread)
                continue;
            const ColumnSpread spread = spreadOf(alignment, col);
            ASSERT_TRUE(found.spread) << col;
            ASSERT_EQ(found.spread->positions, spread.positions) << col;
            ASSERT_EQ(found.spread->distance.has_value(), spread.distance.has_value()) << col;
            if (spread.distance)
                ASSERT_NEAR(*found.spread->distance, *spread.distance, 1e-5 * *spread.distance);
        }
    }
    static void expectAllKnown(const TrackColumns &columns, unsigned long begin, unsigned long end)
    {
        for (unsigned long col = begin; col < end; ++col)
            ASSERT_TRUE(columns.isKnown(col)) << col;
    }
    // As much as is asked for, of all that was changed since.
    struct Work
    {
        std::size_t columns = 0;
        std::size_t spreads = 0;
    };
    static Work finish(TrackColumns &columns, const Alignment &alignment)
    {
        const Work before{columns.computed(), columns.spreads()};
        columns.goOn(alignment, kForever);
        return {columns.computed() - before.columns, columns.spreads() - before.spreads};
    }

    std::mt19937 random;
};

class EditedColumnsOfSeed : public EditedColumns, public ::testing::WithParamInterface<int>
{
};

TEST_P(EditedColumnsOfSeed, AfterAnyEditUndoAndRedoAreThoseThatAreCountedFromScratch)
{
    random.seed(unsigned(GetParam()));
    const bool withSpread = GetParam() % 2 == 0;
    Alignment &alignment = mixed(12, 90, withSpread ? 5 : 0);
    TrackColumns columns;
    columns.wantSpread(withSpread);
    for (int round = 0; round < 400; ++round) {
        // Sometimes several before anybody looks.
        for (std::size_t count = 1 + below(3); count > 0; --count)
            edit(alignment);
        const unsigned long begin = below(alignment.width());
        const unsigned long end = begin + below(alignment.width() - begin) + 1;
        if (below(2) == 0)
            columns.want(begin, end);
        columns.follow(alignment);
        ASSERT_NO_FATAL_FAILURE(expectRight(columns, alignment, 0, alignment.width(), withSpread));
        // In the middle of a pass the next edit comes.
        for (std::size_t part = below(30); part > 0; --part)
            columns.goOn(alignment, kNoTime);
        ASSERT_NO_FATAL_FAILURE(expectRight(columns, alignment, 0, alignment.width(), withSpread));
        if (below(5) != 0)
            continue;
        columns.want(begin, end);
        finish(columns, alignment);
        ASSERT_NO_FATAL_FAILURE(expectAllKnown(columns, begin, end));
        ASSERT_NO_FATAL_FAILURE(expectRight(columns, alignment, begin, end, withSpread));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, EditedColumnsOfSeed, ::testing::Range(1, 13));

TEST_F(EditedColumns, AMovedGapIsTakenInWithoutALookAtAnyOtherRow)
{
    Alignment &alignment = mixed(200, 100, 0);
    TrackColumns columns;
    columns.want(0, 100);
    finish(columns, alignment);
    const std::size_t before = columns.rowsRead();
    alignment.insertGap(7, 20);
    alignment.moveGap(9, 3, 60, true);
    EXPECT_EQ(finish(columns, alignment).columns, 0U);
    EXPECT_EQ(columns.rowsRead(), before);
    expectAllKnown(columns, 0, 100);
    expectRight(columns, alignment, 0, 100, false);
}

TEST_F(EditedColumns, ARowThatComesIsTakenInWithoutALookAtAnyOtherRow)
{
    Alignment &alignment = mixed(200, 100, 0);
    TrackColumns columns;
    columns.want(0, 100);
    alignment.removeRow(50);
    finish(columns, alignment);
    history.undo();
    const std::size_t before = columns.rowsRead();
    EXPECT_EQ(finish(columns, alignment).columns, 0U);
    EXPECT_EQ(columns.rowsRead(), before);
    expectAllKnown(columns, 0, 100);
    expectRight(columns, alignment, 0, 100, false);
}

TEST_F(EditedColumns, OfColumnsThatComeOnlyTheseAreCounted)
{
    Alignment &alignment = mixed(30, 200, 0);
    TrackColumns columns;
    columns.want(50, 150);
    finish(columns, alignment);
    alignment.insertGapCol(70, 3);
    EXPECT_EQ(finish(columns, alignment).columns, 3U);
    alignment.remove({60, 65});
    EXPECT_EQ(finish(columns, alignment).columns, 2U) << "those that come from the right";
    expectRight(columns, alignment, 50, 150, false);
    alignment.bubbleRow(3, 20);
    EXPECT_EQ(finish(columns, alignment).columns, 0U);
}

TEST_F(EditedColumns, ColumnsShowWhatTheyWereUntilTheNewIsThere)
{
    Alignment &alignment = mixed(300, 40, 0);
    TrackColumns columns;
    columns.want(0, 40);
    finish(columns, alignment);
    const ColumnCounts before = columns.at(5)->counts;
    alignment.removeRow(2);
    columns.goOn(alignment, kNoTime);
    ASSERT_NE(columns.at(5), nullptr);
    EXPECT_FALSE(columns.isKnown(5));
    EXPECT_EQ(columns.at(5)->counts, before);
    finish(columns, alignment);
    EXPECT_TRUE(columns.isKnown(5));
    EXPECT_EQ(columns.at(5)->counts.rows(), 299U);
}

TEST_F(EditedColumns, AGapThatMovesInARowThatIsCountedAlreadyIsTakenIntoThePass)
{
    Alignment &alignment = mixed(40, 60, 0);
    TrackColumns columns;
    columns.want(0, 60);
    for (int part = 0; part < 20; ++part)
        columns.goOn(alignment, kNoTime);
    alignment.insertGap(4, 10);
    alignment.insertGap(33, 12);
    const std::size_t before = columns.rowsRead();
    finish(columns, alignment);
    EXPECT_EQ(columns.rowsRead() - before, 20U) << "the rest of the pass alone";
    expectAllKnown(columns, 0, 60);
    expectRight(columns, alignment, 0, 60, false);
}

TEST_F(EditedColumns, DistancesAreFoundAnewOnlyWhereARowWithCoordinatesHasMoved)
{
    Alignment &alignment = mixed(20, 100, 4);
    TrackColumns columns;
    columns.wantSpread(true);
    columns.want(0, 100);
    EXPECT_EQ(finish(columns, alignment).spreads, 100U);
    const unsigned long gap = alignment.GetSequence(10, false).find('-', 30);
    alignment.moveGap(10, gap, gap - 5, true);
    EXPECT_EQ(finish(columns, alignment).spreads, 0U);
    const unsigned long other = alignment.GetSequence(2, false).find('-', 30);
    alignment.moveGap(2, other, other - 5, true);
    const Work work = finish(columns, alignment);
    EXPECT_EQ(work.spreads, 6U);
    EXPECT_EQ(work.columns, 0U);
    expectRight(columns, alignment, 0, 100, true);
}

TEST_F(EditedColumns, DistancesFollowStructuresThatMoveOrCome)
{
    Alignment &alignment = mixed(5, 50, 3);
    TrackColumns columns;
    columns.wantSpread(true);
    columns.want(0, 50);
    finish(columns, alignment);
    chain(3);
    const Work work = finish(columns, alignment);
    EXPECT_EQ(work.spreads, 50U);
    EXPECT_EQ(work.columns, 0U) << "no letter has changed";
    expectRight(columns, alignment, 0, 50, true);
}

TEST_F(EditedColumns, DistancesAreFoundWhenTheyAreAskedForAndNotBefore)
{
    Alignment &alignment = mixed(5, 50, 3);
    TrackColumns columns;
    columns.want(0, 50);
    EXPECT_EQ(finish(columns, alignment).spreads, 0U);
    EXPECT_EQ(columns.at(3)->spread, std::nullopt);
    columns.wantSpread(true);
    EXPECT_FALSE(columns.isKnown(3));
    const Work work = finish(columns, alignment);
    EXPECT_EQ(work.spreads, 50U);
    EXPECT_EQ(work.columns, 0U);
    expectRight(columns, alignment, 0, 50, true);
}

} // namespace TrackEditsTest
