// SPDX-License-Identifier: GPL-3.0-or-later
// Structures that follow the edits of their alignment, as parts of the same steps.
#include "Refitting.h"

#include "DataMaker.h"
#include "FileReader.h"
#include "LetterColors.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace RefitTest {

namespace fs = std::filesystem;

using companion::isRefitted;
using companion::Refit;
using companion::setRefitted;
using TAMBO::FitChoice;
using TAMBO::StructureFit;
using TAMBO::StructureFits;

TEST_F(Refitting, IsOffAtFirst)
{
    TAMBO::Alignment &alignment = apart();
    EXPECT_FALSE(isRefitted(alignment));
    const auto before = bits();
    slide(alignment, 2, 10);
    EXPECT_EQ(bits(), before);
    EXPECT_EQ(refit.fits(), 0U);
}

TEST_F(Refitting, BeginsAtOnceAndUndoTakesItBackAsAWhole)
{
    TAMBO::Alignment &alignment = apart();
    const auto before = bits();
    ASSERT_TRUE(setRefitted(alignment, true));
    const auto after = bits();
    EXPECT_EQ(history.size(), 1U);
    EXPECT_EQ(history.undoLabel(), "Keep superposed s1 and another");
    EXPECT_EQ(after[0], before[0]) << "the first one stays";
    EXPECT_NE(after[1], before[1]);
    expectSuperposed(alignment);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(bits(), before);
    EXPECT_FALSE(isRefitted(alignment));
    slide(alignment, 2, 10);
    EXPECT_EQ(bits(), before);
    history.undo();
}

TEST_F(Refitting, AnEditAndItsMovesAreOneStepThereAndBack)
{
    TAMBO::Alignment &alignment = apart(4);
    setRefitted(alignment, true);
    std::vector<std::pair<std::vector<std::string>, std::vector<std::vector<std::uint32_t>>>>
        states;
    const auto note = [&] { states.emplace_back(textOf(alignment), bits()); };
    note();
    for (int round = 0; round < 40; ++round) {
        const std::size_t steps = history.size();
        slide(alignment, below(alignment.height()), below(30), 1 + below(2));
        if (history.size() == steps)
            continue;
        ASSERT_EQ(history.size(), steps + 1);
        ASSERT_NO_FATAL_FAILURE(expectSuperposed(alignment));
        note();
    }
    ASSERT_GT(states.size(), 20U);
    for (int pass = 0; pass < 2; ++pass) {
        for (auto state = states.rbegin() + 1; state != states.rend(); ++state) {
            ASSERT_TRUE(history.undo());
            ASSERT_EQ(textOf(alignment), state->first);
            ASSERT_EQ(bits(), state->second);
        }
        for (auto state = states.begin() + 1; state != states.end(); ++state) {
            ASSERT_TRUE(history.redo());
            ASSERT_EQ(textOf(alignment), state->first);
            ASSERT_EQ(bits(), state->second);
        }
    }
}

TEST_F(Refitting, FollowsRowsAndColumnsThatComeAndGo)
{
    TAMBO::Alignment &alignment = apart(4);
    setRefitted(alignment, true);
    const auto edit = [&](const auto &change) {
        {
            const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
            change();
        }
        expectSuperposed(alignment);
    };
    edit([&] { alignment.remove({3, 12}); });
    edit([&] { alignment.insertGapCol(5, 2); });
    edit([&] { alignment.bubbleRow(3, 0); });
    EXPECT_EQ(StructureFits::rows(alignment)[0].structure, structures[2]);
    edit([&] { alignment.removeRow(0); });
    EXPECT_EQ(StructureFits::rows(alignment)[0].structure, structures[0]);
    slide(alignment, 0, 6);
    expectSuperposed(alignment);
}

TEST_F(Refitting, OnlyWhatIsConcernedIsLookedAt)
{
    TAMBO::Alignment &alignment = apart(5);
    setRefitted(alignment, true);
    slide(alignment, 3, 8);
    EXPECT_EQ(refit.fits(), 1U) << "the row that was edited";
    slide(alignment, 1, 8);
    EXPECT_EQ(refit.fits(), 1U) << "a row without a structure";
    slide(alignment, 0, 8);
    EXPECT_EQ(refit.fits(), 5U) << "all of them, when the first one was";
}

TEST_F(Refitting, DoesNotRunWhenNoCellHasMoved)
{
    TAMBO::Alignment &alignment = apart();
    setRefitted(alignment, true);
    moveByHand(1);
    const auto before = bits();
    const std::size_t fits = refit.fits();
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
        std::array<Color, 256> colors;
        colors.fill(Color(0x123456U));
        alignment.colorByLetter(colors);
        alignment.select({0, 5}, true);
        alignment.range({2, 4});
    }
    TAMBO::renameObject(alignment, "other");
    EXPECT_EQ(refit.fits(), fits);
    EXPECT_EQ(bits(), before);
}

TEST_F(Refitting, NothingButAnEditMovesAnythingAfterUndoAndRedo)
{
    TAMBO::Alignment &alignment = apart(5);
    setRefitted(alignment, true);
    slide(alignment, 3, 8);
    slide(alignment, 1, 8);
    history.undo();
    history.undo();
    history.redo();
    history.undo();
    moveByHand(2);
    const auto before = bits();
    const std::size_t fits = refit.fits();
    setValue(alignment);
    TAMBO::renameObject(alignment, "other");
    EXPECT_EQ(refit.fits(), fits);
    EXPECT_EQ(bits(), before);
    slide(alignment, 4, 8);
    EXPECT_EQ(refit.fits(), fits + 1) << "the row that is edited now, not what was undone";
}

TEST_F(Refitting, ReadsTheRowsAnewThatUndoBringsBack)
{
    TAMBO::Alignment &alignment = apart(4);
    setRefitted(alignment, true);
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
        alignment.removeRow(0);
    }
    history.undo();
    const std::size_t fits = refit.fits();
    slide(alignment, 3, 8);
    EXPECT_EQ(refit.fits(), fits + 1);
    expectSuperposed(alignment);
}

TEST_F(Refitting, ANewNameMovesNothingWhenItIsOnAgainByUndo)
{
    TAMBO::Alignment &alignment = apart();
    setRefitted(alignment, true);
    const auto renamed = [&](const char *name) {
        moveByHand(1);
        const auto before = bits();
        const std::size_t fits = refit.fits();
        TAMBO::renameObject(alignment, name);
        EXPECT_EQ(refit.fits(), fits) << name;
        EXPECT_EQ(bits(), before) << name;
        history.undo();
        history.undo();
    };
    setRefitted(alignment, false);
    history.undo();
    ASSERT_TRUE(isRefitted(alignment));
    renamed("switched on again");
    TAMBO::DataMaker::Destroy(&alignment);
    history.undo();
    ASSERT_TRUE(isRefitted(alignment));
    renamed("there again");
    history.undo();
    ASSERT_FALSE(isRefitted(alignment));
    history.redo();
    ASSERT_TRUE(isRefitted(alignment));
    renamed("redone");
    slide(alignment, 2, 10);
    expectSuperposed(alignment);
}

TEST_F(Refitting, ANewNameMovesNothingWhenItWasOnBefore)
{
    TAMBO::Alignment &alignment = apart();
    setRefitted(alignment, true);
    Refit another;
    moveByHand(1);
    const auto before = bits();
    TAMBO::renameObject(alignment, "other");
    EXPECT_EQ(another.fits(), 0U);
    EXPECT_EQ(bits(), before);
    slide(alignment, 3, 10);
    EXPECT_EQ(another.fits(), 1U) << "the row that was edited";
}

TEST_F(Refitting, MakesUpForAnEditThatItCouldNotFollow)
{
    TAMBO::Alignment &alignment = apart(4);
    setRefitted(alignment, true);
    const auto before = bits();
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
        alignment.insertGap(3, alignment.columnOfResidue(3, 8));
        TAMBO::setObjectLocked(space(), true);
    }
    TAMBO::setObjectLocked(space(), false);
    EXPECT_EQ(bits(), before);
    const std::size_t fits = refit.fits();
    slide(alignment, 4, 8);
    EXPECT_EQ(refit.fits(), fits + 2);
    expectSuperposed(alignment);
}

TEST_F(Refitting, AnEditThatLeavesThePairsAsTheyAreMovesNothing)
{
    TAMBO::Alignment &alignment = apart();
    setRefitted(alignment, true);
    const auto before = bits();
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
        alignment.insertGapCol(7, 3);
    }
    EXPECT_EQ(bits(), before);
}

TEST_F(Refitting, EndsWhenItIsSwitchedOff)
{
    TAMBO::Alignment &alignment = apart();
    setRefitted(alignment, true);
    const auto before = bits();
    ASSERT_TRUE(setRefitted(alignment, false));
    EXPECT_EQ(history.undoLabel(), "Keep superposed no longer in family");
    slide(alignment, 2, 10);
    EXPECT_EQ(bits(), before);
    // It makes up for it when it is on again.
    ASSERT_TRUE(setRefitted(alignment, true));
    expectSuperposed(alignment);
}

TEST_F(Refitting, AfterUndoOfSwitchingItOnItCanBeSwitchedOnAgain)
{
    TAMBO::Alignment &alignment = apart();
    const auto before = bits();
    setRefitted(alignment, true);
    history.undo();
    ASSERT_EQ(bits(), before);
    ASSERT_TRUE(setRefitted(alignment, true));
    EXPECT_NE(bits(), before);
    expectSuperposed(alignment);
}

TEST_F(Refitting, FewerThanTwoStructuresMoveNothingAndAreTold)
{
    TAMBO::Alignment &alignment = apart(1);
    const auto before = bits();
    setRefitted(alignment, true);
    slide(alignment, 0, 3);
    EXPECT_EQ(bits(), before);
    EXPECT_EQ(lineOf(alignment),
              QString("Nothing to superpose: the rows have fewer than two structures"));
}

TEST_F(Refitting, FewerThanThreePairsMoveNothingAndAreTold)
{
    Points points = randomFold(5, 2);
    structures = {&structureAt("one", points), &structureAt("two", turned(points, 3))};
    TAMBO::Alignment &alignment =
        alignmentOf({{structures[0]->chain(0), "AAAAA---"}, {structures[1]->chain(0), "---AAAAA"}});
    const auto before = bits();
    setRefitted(alignment, true);
    EXPECT_EQ(bits(), before);
    EXPECT_EQ(lineOf(alignment),
              QString("two_A stays where it is: The chosen chains have CA atoms in 2 columns "
                      "together; superposing takes 3."));
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
        alignment.moveGap(1, 0, 6, true);
    }
    EXPECT_NE(bits(), before) << "three pairs are enough";
    EXPECT_EQ(found(alignment).fits().at(0).pairs, 3U);
}

TEST_F(Refitting, ALockedStructureStaysAndIsTold)
{
    TAMBO::Alignment &alignment = apart(3);
    TAMBO::setObjectLocked(*structures[1], true);
    const auto before = bits();
    setRefitted(alignment, true);
    EXPECT_EQ(bits()[1], before[1]);
    EXPECT_NE(bits()[2], before[2]);
    EXPECT_NE(lineOf(alignment).indexOf(QString("; s1_A stays where it is: s1 is locked.")), -1);
    TAMBO::setObjectLocked(*structures[1], false);
}

TEST_F(Refitting, ACopyOfTheAlignmentGoesOnByItself)
{
    TAMBO::Alignment &alignment = apart();
    setRefitted(alignment, true);
    TAMBO::Alignment *copy = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        copy = alignment.duplicate(alignment.height());
    }
    ASSERT_TRUE(isRefitted(*copy));
    slide(*copy, 2, 10);
    expectSuperposed(*copy);
}

TEST_F(Refitting, AnAlignmentThatHasGoneIsForgotten)
{
    TAMBO::Alignment &alignment = apart();
    setRefitted(alignment, true);
    TAMBO::DataMaker::Destroy(&alignment);
    history.clear();
    structures.clear();
    TAMBO::Alignment &another = apart();
    setRefitted(another, true);
    expectSuperposed(another);
}

// What Biopython finds of the same files.
class FamiliesRefitted : public Refitting
{
protected:
    static fs::path home(const std::string &family)
    {
        return fs::path(TEST_DATA_DIR) / "families" / family;
    }
    TAMBO::Alignment &open(const std::string &family)
    {
        const bool isGlobins = family == "globins";
        auto contents =
            TAMBO::readFile(home(family) / (isGlobins ? "globins_structural_alignment_a.fasta"
                                                      : "cytochrome_c.aln"));
        EXPECT_TRUE(contents);
        std::vector<std::pair<TAMBO::Peptide *, std::string>> rows;
        for (const TAMBO::RowRecord &row : contents.value().alignments.at(0).rows) {
            auto read = TAMBO::readFile(
                home(family) / (isGlobins ? "globin_" + row.name + ".pdb" : row.name + ".gz"));
            EXPECT_TRUE(read);
            names.push_back(row.name);
            structures.push_back(
                TAMBO::ObjectFactory::adopt(std::move(read.value().structures.at(0))));
            rows.emplace_back(structures.back()->chain(0), row.sequence.text());
        }
        return alignmentOf(rows);
    }

    std::vector<std::string> names;
};

struct PairsOfFiles
{
    std::string family;
    std::string column;
    unsigned long gaps = 0;
    std::string name;
    std::size_t pairs = 0, corePairs = 0;
    double rmsd = 0, coreRmsd = 0, rmsdByCore = 0;
};

TEST_F(FamiliesRefitted, LieAsNearAsBiopythonBringsThem)
{
    std::vector<PairsOfFiles> all;
    std::ifstream file(TEST_DATA_DIR "/superposed/pairs.tsv");
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        std::istringstream cells(line);
        PairsOfFiles &row = all.emplace_back();
        ASSERT_TRUE(cells >> row.family >> row.column >> row.gaps >> row.name >> row.pairs >>
                    row.rmsd >> row.corePairs >> row.coreRmsd >> row.rmsdByCore)
            << line;
    }
    EXPECT_EQ(all.size(), 51U);
    for (const double cutoff : {0.0, 2.0}) {
        std::string opened;
        std::string place;
        TAMBO::Alignment *alignment = nullptr;
        for (const PairsOfFiles &row : all) {
            SCOPED_TRACE(row.family + ' ' + row.column + ' ' + row.name);
            if (opened != row.family) {
                names.clear();
                structures.clear();
                alignment = &open(row.family);
                choose(*alignment, {0, FitChoice::kAllColumns, cutoff});
                setRefitted(*alignment, true);
                history.clear();
            } else if (place != row.column) {
                // As it was, and then other gaps.
                while (history.undo()) {
                }
                const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
                for (unsigned long i = 0; i < row.gaps; ++i)
                    alignment->insertGap(1, std::stoul(row.column));
            }
            opened = row.family;
            place = row.column;
            const auto of =
                static_cast<unsigned long>(std::ranges::find(names, row.name) - names.begin());
            const StructureFit fit =
                StructureFits::measure(*alignment, 0, of, StructureFits::lastChoice(*alignment));
            EXPECT_EQ(fit.pairs, row.pairs);
            EXPECT_NEAR(fit.rmsd, cutoff > 0 ? row.rmsdByCore : row.rmsd, 2e-4);
            EXPECT_EQ(fit.corePairs, cutoff > 0 ? row.corePairs : row.pairs);
            EXPECT_NEAR(fit.coreRmsdNow, cutoff > 0 ? row.coreRmsd : row.rmsd, 2e-4);
        }
    }
}

} // namespace RefitTest
