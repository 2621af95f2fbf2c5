// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "Atom.h"
#include "DataMaker.h"
#include "Element.h"
#include "ObjectOperations.h"
#include "ResidueGroup.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::ElementsAre;
using testing::IsEmpty;

namespace DestroyTest {

class DestroyTest : public ModelFixture
{
protected:
    TAMBO::Peptide &first = peptide("first", "ACDEF");
    TAMBO::Peptide &second = peptide("second", "ACDF");
    TAMBO::Alignment &alignment =
        *TAMBO::DataMaker::makeAlignment("SeqAli", {&first, &second, &first});

    static bool isTopLevel(const TAMBO::Compound *object)
    {
        return std::find(space().begin(), space().end(), object) != space().end();
    }
};

TEST_F(DestroyTest, NullIsIgnored)
{
    TAMBO::DataMaker::Destroy(nullptr);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(DestroyTest, AlignmentLeavesSpaceAtOnce)
{
    TAMBO::DataMaker::Destroy(&alignment);
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second"));
}

TEST_F(DestroyTest, ObjectIsOutOfSpaceButStillThereWhileSubscribersAreTold)
{
    RecordingSubscriber window;
    std::string name;
    bool wasListed = true;
    window.reaction = [&] {
        wasListed = isTopLevel(&alignment);
        name = alignment.Name();
    };
    {
        const Guard guard(Publisher::Delete, space());
        TAMBO::DataMaker::Destroy(&alignment);
        EXPECT_FALSE(isTopLevel(&alignment));
        EXPECT_EQ(alignment.Name(), "SeqAli");
    }
    EXPECT_THAT(window.calls, ElementsAre("delete"));
    EXPECT_FALSE(wasListed);
    EXPECT_EQ(name, "SeqAli");
}

TEST_F(DestroyTest, DeletionIsPublishedWhateverTheGuard)
{
    // A window must never go on showing an object that is freed.
    RecordingSubscriber window;
    {
        const Guard guard(Publisher::Update, space(), &window);
        TAMBO::DataMaker::Destroy(&alignment);
    }
    EXPECT_THAT(window.calls, ElementsAre("delete"));
    TAMBO::DataMaker::Destroy(&second);
    EXPECT_THAT(window.calls, ElementsAre("delete", "delete"));
}

TEST_F(DestroyTest, RowsOfADestroyedSequenceLeaveEveryAlignment)
{
    TAMBO::Alignment *const other = TAMBO::DataMaker::makeAlignment("other", {&first});
    RecordingSubscriber window;
    {
        const Guard guard(Publisher::Delete, space());
        TAMBO::DataMaker::Destroy(&first);
    }
    ASSERT_EQ(alignment.height(), 1U);
    EXPECT_EQ(alignment.GetSeq(0), &second);
    EXPECT_EQ(other->GetSeq(0), nullptr);
    EXPECT_THAT(window.calls, ElementsAre("delete", "update"));
    EXPECT_FALSE(isTopLevel(&first));
}

TEST_F(DestroyTest, SequencesStayWhenTheirAlignmentGoes)
{
    TAMBO::DataMaker::Destroy(&alignment);
    EXPECT_EQ(first.letters(), "ACDEF");
    EXPECT_TRUE(isTopLevel(&first));
}

TEST_F(DestroyTest, DestroyedStructureTakesTheRowsOfItsChains)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", "AG"}, {"B", "GGG"}});
    TAMBO::Alignment *const other =
        TAMBO::DataMaker::makeAlignment("other", {loaded.chain(0), &first, loaded.chain(1)});
    TAMBO::DataMaker::Destroy(&loaded);
    ASSERT_EQ(other->height(), 1U);
    EXPECT_EQ(other->GetSeq(0), &first);
}

TEST_F(DestroyTest, ChainLeavesItsStructure)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", "AG"}, {"B", "GGG"}});
    const TAMBO::Peptide *const last = loaded.chain(1);
    TAMBO::DataMaker::Destroy(loaded.chain(0));
    ASSERT_EQ(loaded.ChildCount(), 1U);
    EXPECT_EQ(loaded.chain(0), last);
}

TEST_F(DestroyTest, GroupsAndElementsLeaveTheirChain)
{
    TAMBO::StructureRecord record;
    record.name = "1abc";
    record.chains.push_back(chainRecord("A", "AAAA"));
    record.chains.back().residues.push_back(residueRecord("HEM", 'X', "200"));
    record.chains.back().residues.back().isAminoAcid = false;
    record.elements.push_back({"H1", 'H', "A", TAMBO::SequenceNumber(1), TAMBO::SequenceNumber(3)});
    TAMBO::Peptide &chain = *TAMBO::ObjectFactory::adopt(std::move(record))->chain(0);
    ASSERT_EQ(chain.objectCount(), 2U);
    TAMBO::DataMaker::Destroy(chain.object(0));
    TAMBO::DataMaker::Destroy(chain.elementAt(0));
    EXPECT_EQ(chain.objectCount(), 0U);
    EXPECT_EQ(chain.elementAt(0), nullptr);
}

TEST_F(DestroyTest, ResiduesAtomsAndSpaceCannotBeDestroyed)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", "AG"}});
    TAMBO::DataMaker::Destroy(loaded.chain(0)->residue(0));
    TAMBO::DataMaker::Destroy(loaded.chain(0)->atom(0, 0));
    TAMBO::DataMaker::Destroy(&space());
    EXPECT_EQ(loaded.chain(0)->residueCount(), 2U);
    EXPECT_THAT(log, ElementsAre("\"1abc/A/ALA 1\" cannot be deleted by itself.",
                                 "\"1abc/A/ALA 1/N\" cannot be deleted by itself.",
                                 "\"Space\" cannot be deleted by itself."));
}

TEST_F(DestroyTest, LockedObjectStaysAndTheLogSaysSo)
{
    TAMBO::setObjectLocked(alignment, true);
    TAMBO::DataMaker::Destroy(&alignment);
    EXPECT_TRUE(isTopLevel(&alignment));
    EXPECT_THAT(log, ElementsAre("\"SeqAli\" is locked and was not changed."));
}

TEST_F(DestroyTest, SequenceOfALockedAlignmentStaysWithAllItsRows)
{
    TAMBO::Alignment *const other = TAMBO::DataMaker::makeAlignment("other", {&first});
    TAMBO::setObjectLocked(alignment, true);
    TAMBO::DataMaker::Destroy(&first);
    EXPECT_TRUE(isTopLevel(&first));
    EXPECT_EQ(alignment.height(), 3U);
    EXPECT_EQ(other->height(), 1U);
    EXPECT_THAT(log, ElementsAre("\"first\" was not deleted: the locked alignment \"SeqAli\" "
                                 "holds its sequence."));
}

TEST_F(DestroyTest, NothingIsDestroyedDuringANotification)
{
    RecordingSubscriber window;
    window.reaction = [&] { TAMBO::DataMaker::Destroy(&alignment); };
    {
        const Guard guard(Publisher::Update, space());
    }
    EXPECT_TRUE(isTopLevel(&alignment));
    EXPECT_EQ(log.size(), 1U);
}

TEST_F(DestroyTest, ObjectDestroyedTwiceInOneStepIsRefusedTheSecondTime)
{
    const Guard guard(Publisher::Delete, space());
    TAMBO::DataMaker::Destroy(&alignment);
    TAMBO::DataMaker::Destroy(&alignment);
    EXPECT_THAT(log, ElementsAre("\"SeqAli\" cannot be deleted by itself."));
}

TEST_F(DestroyTest, NamesOfAlignmentsNeedNotBeUnique)
{
    TAMBO::DataMaker::makeAlignment("SeqAli", {&first});
    EXPECT_THAT(topLevelNames(), ElementsAre("first", "second", "SeqAli", "SeqAli"));
}

TEST_F(DestroyTest, AlignmentIsMadeOfThePeptidesInTheirOrder)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", "AG"}});
    TAMBO::Alignment *const made = TAMBO::DataMaker::makeAlignment(
        "mixed", {&second, loaded.chain(0), nullptr, &loaded, &first});
    ASSERT_NE(made, nullptr);
    ASSERT_EQ(made->height(), 3U);
    EXPECT_EQ(made->GetSeq(0), &second);
    EXPECT_EQ(made->GetSeq(1), loaded.chain(0));
    EXPECT_EQ(made->GetSeq(2), &first);
    EXPECT_EQ(made->Name(), "mixed");
    EXPECT_TRUE(isTopLevel(made));
}

} // namespace DestroyTest
