// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of the lines over columns and residues, of secondary structure, and of how
// rows fit their chains.
#include "AlignmentDetails.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "DataMaker.h"
#include "Element.h"
#include "unit/model/ModelFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace AlignmentDetailsContractTest {

using TAMBO::Alignment;
using TAMBO::AlignmentDetails;
using TAMBO::CellTie;
using TAMBO::Compound;
using Kind = CellTie::Kind;

class AlignmentDetailsContract : public ModelFixture
{
protected:
    static TAMBO::RowRecord row(const std::string &name, const std::string &text)
    {
        TAMBO::RowRecord made;
        made.name = name;
        made.sequence.append(text);
        return made;
    }
    static Alignment &adopt(TAMBO::AlignmentRecord record)
    {
        const TAMBO::ChangeScope scope;
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }
    static Alignment &annotated()
    {
        TAMBO::AlignmentRecord record;
        record.name = "annotated";
        record.rows = {row("first", "AC-DE"), row("second", "-CDE-")};
        record.rows[0].residueAnnotations = {{"SS", "HH.EE"}, {"pAS", "...*."}};
        record.columnAnnotations = {{"SS_cons", "HHCEE"}, {"RF", "x.xxx"}};
        return adopt(std::move(record));
    }
    // The row "mACX-EF" is tied from its second letter on to the chain "AcDE".
    Alignment &tied()
    {
        TAMBO::Structure &loaded = structure("1abc", {{"A", "AcDE"}});
        auto made = std::make_unique<TAMBO::Peptide>("row", "mACXEF");
        made->tie(1, *loaded.chain(0), 0, 4);
        auto &sequence = static_cast<TAMBO::Peptide &>(space().add(std::move(made)));
        TAMBO::GappedSequence cells;
        cells.append("xxxx-xx");
        TAMBO::AlignmentTable::Rows rows;
        rows.push_back(std::make_unique<TAMBO::AlignmentRow>(
            sequence, TAMBO::OccupancyRow(std::move(cells.occupancy))));
        auto table = TAMBO::AlignmentTable::make("tied", std::move(rows));
        return static_cast<Alignment &>(space().add(std::move(table)));
    }
    static std::vector<CellTie> ties(const Alignment &alignment, unsigned long row,
                                     unsigned long begin, unsigned long end)
    {
        std::vector<CellTie> found;
        AlignmentDetails::readTies(alignment, row, begin, end, found);
        return found;
    }
};

TEST_F(AlignmentDetailsContract, LinesOverColumnsAreThoseOfTheFileInItsOrder)
{
    const Alignment &shown = annotated();
    EXPECT_THAT(AlignmentDetails::columnLines(shown), ElementsAre("SS_cons", "RF"));
    EXPECT_EQ(AlignmentDetails::columnText(shown, 0, 0, 5), "HHCEE");
    EXPECT_EQ(AlignmentDetails::columnText(shown, 1, 1, 3), ".x");
}

TEST_F(AlignmentDetailsContract, LinesOverColumnsGoWithTheirColumns)
{
    Alignment &shown = annotated();
    shown.insertGapCol(1, 2);
    EXPECT_EQ(AlignmentDetails::columnText(shown, 0, 0, 7), "H..HCEE");
    shown.remove({3, 5});
    EXPECT_EQ(AlignmentDetails::columnText(shown, 0, 0, 5), "H..EE");
    shown.insertGapCol(5, 1);
    EXPECT_EQ(AlignmentDetails::columnText(shown, 0, 0, 6), "H..EE.");
}

TEST_F(AlignmentDetailsContract, LinesOverResiduesStandWhereTheirResiduesDo)
{
    Alignment &shown = annotated();
    EXPECT_THAT(AlignmentDetails::residueLines(shown, 0), ElementsAre("SS", "pAS"));
    EXPECT_THAT(AlignmentDetails::residueLines(shown, 1), IsEmpty());
    EXPECT_EQ(AlignmentDetails::residueText(shown, 0, 0, 0, 5), "HH.EE");
    shown.moveGap(0, 2, 0, true);
    EXPECT_EQ(AlignmentDetails::residueText(shown, 0, 0, 0, 5), ".HHEE");
    EXPECT_EQ(AlignmentDetails::residueText(shown, 0, 1, 2, 5), ".*.");
    shown.bubbleRow(0, 1);
    EXPECT_EQ(AlignmentDetails::residueText(shown, 1, 0, 0, 5), ".HHEE");
}

TEST_F(AlignmentDetailsContract, ARowShowsTheResiduesOfColumnsThatAreThere)
{
    Alignment &shown = annotated();
    EXPECT_THAT(AlignmentDetails::shownResidues(shown, 0), ElementsAre(0, 1, 2, 3));
    shown.removeColumns({false, true});
    EXPECT_THAT(AlignmentDetails::shownResidues(shown, 0), ElementsAre(0, 2, 3));
    EXPECT_EQ(shown.residueCount(0, shown.width()), 3U);
    EXPECT_THAT(AlignmentDetails::shownResidues(shown, 2), IsEmpty());
}

TEST_F(AlignmentDetailsContract, WhatIsNotThereIsEmptyAndWhatReachesBeyondIsCutOff)
{
    const Alignment &shown = annotated();
    EXPECT_EQ(AlignmentDetails::columnText(shown, 0, 3, 100), "EE");
    EXPECT_EQ(AlignmentDetails::columnText(shown, 0, 9, 100), "");
    EXPECT_EQ(AlignmentDetails::columnText(shown, 0, 3, 2), "");
    EXPECT_EQ(AlignmentDetails::columnText(shown, 2, 0, 5), "");
    EXPECT_EQ(AlignmentDetails::residueText(shown, 0, 0, 3, 100), "EE");
    EXPECT_EQ(AlignmentDetails::residueText(shown, 0, 2, 0, 5), "");
    EXPECT_EQ(AlignmentDetails::residueText(shown, 1, 0, 0, 5), "");
    EXPECT_EQ(AlignmentDetails::residueText(shown, 2, 0, 0, 5), "");
    EXPECT_EQ(AlignmentDetails::elements(shown, 2, 0, 5), "");
    EXPECT_EQ(AlignmentDetails::elements(shown, 0, 3, 100), std::string(2, '\0'));
    EXPECT_THAT(AlignmentDetails::residueLines(shown, 2), IsEmpty());
    EXPECT_THAT(ties(shown, 2, 0, 5), IsEmpty());
    EXPECT_THAT(ties(shown, 0, 4, 100), ElementsAre(CellTie()));
    EXPECT_FALSE(AlignmentDetails::hasSelected(shown, 2));
    TAMBO::AlignmentRecord plain;
    plain.rows = {row("plain", "AC")};
    EXPECT_THAT(AlignmentDetails::columnLines(adopt(std::move(plain))), IsEmpty());
}

TEST_F(AlignmentDetailsContract, ElementsAreThoseOfTheResiduesAndOfTheChainThatTheyAreTiedTo)
{
    const Alignment &shown = tied();
    auto &chain = *TAMBO::Peptide::from(shown.GetSeq(0))->resolve(1).peptide;
    const std::vector<Compound *> residues = {chain.residue(1), chain.residue(2), chain.residue(3)};
    ASSERT_NE(TAMBO::DataMaker::makeSSE(&chain, "strand", residues, 'E'), nullptr);
    EXPECT_EQ(AlignmentDetails::elements(shown, 0, 0, 7),
              std::string({'\0', '\0', 'E', 'E', '\0', 'E', '\0'}));
    EXPECT_EQ(AlignmentDetails::elements(shown, 0, 2, 3), "E");
}

TEST_F(AlignmentDetailsContract, TiesTellLettersThatDifferAndResiduesWithoutAPosition)
{
    const Alignment &shown = tied();
    EXPECT_THAT(ties(shown, 0, 0, 7),
                ElementsAre(CellTie{Kind::NoPosition, '\0'}, CellTie{Kind::Same, 'A'},
                            CellTie{Kind::Same, 'c'}, CellTie{Kind::OtherLetter, 'D'},
                            CellTie{Kind::None, '\0'}, CellTie{Kind::Same, 'E'},
                            CellTie{Kind::NoPosition, '\0'}));
    EXPECT_THAT(ties(shown, 0, 3, 4), ElementsAre(CellTie{Kind::OtherLetter, 'D'}));
}

TEST_F(AlignmentDetailsContract, ARowHasSelectedResiduesWhenOneIs)
{
    const Alignment &shown = annotated();
    EXPECT_FALSE(AlignmentDetails::hasSelected(shown, 0));
    shown.getItem(0, 3)->SetSelected(true);
    EXPECT_TRUE(AlignmentDetails::hasSelected(shown, 0));
    EXPECT_FALSE(AlignmentDetails::hasSelected(shown, 1));
}

} // namespace AlignmentDetailsContractTest
