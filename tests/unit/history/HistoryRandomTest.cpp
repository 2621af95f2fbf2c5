// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever was done in whatever order: each state comes back exactly when undo and redo pass by it.
#include "unit/history/HistoryFixture.h"
#include "unit/history/UnsavedModel.h"

#include "DestroyedObjects.h"
#include "Element.h"
#include "ResidueTies.h"

#include <functional>
#include <map>
#include <random>

namespace HistoryRandomTest {

class HistoryRandomTest : public HistoryFixture, public testing::WithParamInterface<unsigned>
{
protected:
    unsigned below(std::size_t limit) { return unsigned(random() % limit); }

    template <typename Kind> std::vector<Kind *> all() const
    {
        std::vector<Kind *> found;
        for (TAMBO::Compound *object : space()) {
            if (auto *const kind = dynamic_cast<Kind *>(object))
                found.push_back(kind);
        }
        return found;
    }
    std::vector<TAMBO::Peptide *> sequences() const
    {
        std::vector<TAMBO::Compound *> found;
        TAMBO::GetPeptides(&space(), found, true);
        std::vector<TAMBO::Peptide *> result;
        for (TAMBO::Compound *object : found)
            result.push_back(TAMBO::Peptide::from(object));
        return result;
    }
    std::string letters()
    {
        std::string text;
        for (unsigned i = 3 + below(12); i > 0; --i)
            text += "ACDEFGHIKLMNPQRSTVWY"[below(20)];
        return text;
    }

    void changeSomething();
    void changeAlignment(TAMBO::Alignment &alignment);
    // What a file or a modelling job brings.
    void bringSomething();
    // Commands of some changes each, and now and then to any state, which is as it was.
    void walk(int rounds, const std::function<void()> &afterChange);
    void expectEveryState();

    std::mt19937 random{GetParam()};
    int made = 0;
    // By the position in the history.
    std::map<std::size_t, std::string> states;
};

void HistoryRandomTest::changeAlignment(TAMBO::Alignment &alignment)
{
    const unsigned long width = alignment.width();
    const unsigned long height = alignment.height();
    const std::vector<TAMBO::Peptide *> peptides = sequences();
    if (width == 0 || height == 0) {
        if (!peptides.empty())
            alignment.addRows({peptides[below(peptides.size())]});
        return;
    }
    switch (below(8)) {
    case 0:
        alignment.insertGap(below(height), below(width));
        break;
    case 1:
    case 2:
        alignment.moveGap(below(height), below(width), below(width), below(2) == 0);
        break;
    case 3:
        alignment.bubbleRow(below(height), below(height));
        break;
    case 4:
        alignment.remove({below(width), below(width)});
        break;
    case 5:
        alignment.insertGapCol(below(width + 1), 1 + below(3));
        break;
    case 6:
        alignment.removeRow(below(height));
        break;
    default:
        alignment.combine(*all<TAMBO::Alignment>()[below(all<TAMBO::Alignment>().size())]);
        break;
    }
}

void HistoryRandomTest::changeSomething()
{
    const std::vector<TAMBO::Peptide *> peptides = sequences();
    const std::vector<TAMBO::Alignment *> alignments = all<TAMBO::Alignment>();
    const unsigned kind = below(16);
    const std::string name = "object" + std::to_string(++made);
    if (kind == 0 || peptides.empty()) {
        peptide(name, letters());
    } else if (kind == 1) {
        structure(name, {{"A", letters()}, {"B", letters()}});
    } else if (kind == 2 || alignments.empty()) {
        std::vector<TAMBO::Compound *> rows;
        for (unsigned i = 1 + below(4); i > 0; --i)
            rows.push_back(peptides[below(peptides.size())]);
        TAMBO::DataMaker::makeAlignment(name, rows);
    } else if (kind == 3) {
        TAMBO::DataMaker::Destroy(*(space().begin() + below(space().objectCount())));
    } else if (kind == 4) {
        TAMBO::DataMaker::Destroy(peptides[below(peptides.size())]);
    } else if (kind == 5) {
        TAMBO::renameObject(**(space().begin() + below(space().objectCount())), name);
    } else if (kind == 6 || kind == 7) {
        TAMBO::Peptide &sequence = *peptides[below(peptides.size())];
        for (unsigned i = below(20); i > 0; --i)
            sequence.residue(below(sequence.residueCount()))->SetColor(Color(below(4)));
    } else if (kind == 8) {
        TAMBO::Peptide &sequence = *peptides[below(peptides.size())];
        for (unsigned i = below(5); i > 0; --i)
            sequence.setNumber(below(sequence.residueCount()),
                               TAMBO::SequenceNumber(int(below(30)), below(2) ? 'A' : ' '));
    } else if (kind == 9) {
        TAMBO::Peptide &sequence = *peptides[below(peptides.size())];
        std::vector<TAMBO::Compound *> residues;
        for (std::size_t i = below(sequence.residueCount()); i < sequence.residueCount(); ++i)
            residues.push_back(sequence.residue(i));
        TAMBO::DataMaker::makeSSE(&sequence, name, residues, "HET"[below(3)]);
    } else if (kind == 10) {
        // A row that shares residues with chains of several structures.
        auto tied = std::make_unique<TAMBO::Peptide>(name, letters());
        TAMBO::Peptide &chain = *peptides[below(peptides.size())];
        if (dynamic_cast<TAMBO::Structure *>(chain.Parent()) != nullptr)
            tied->tie(1, chain, 0, std::min(tied->residueCount() - 1, chain.residueCount()));
        space().add(std::move(tied));
    } else {
        changeAlignment(*alignments[below(alignments.size())]);
    }
}

void HistoryRandomTest::bringSomething()
{
    const std::string name = "arrived" + std::to_string(++made);
    const std::vector<TAMBO::Peptide *> peptides = sequences();
    if (below(3) == 0 || peptides.empty()) {
        peptide(name, letters());
        return;
    }
    TAMBO::Structure &built = structure(name, {{"A", letters()}});
    TAMBO::Peptide &target = *peptides[below(peptides.size())];
    if (target.Parent() != &space())
        return;
    TAMBO::ResidueTies ties;
    const std::size_t count = std::min(target.residueCount(), built.chain(0)->residueCount());
    ties.append({0, std::uint32_t(count), 0, built.chain(0)});
    target.retie(std::move(ties));
}

void HistoryRandomTest::walk(int rounds, const std::function<void()> &afterChange)
{
    states = {{0, portrait()}};
    for (int round = 0; round < rounds; ++round) {
        if (below(4) == 0) {
            const std::size_t position = below(history.size() + 1);
            ASSERT_TRUE(history.goTo(position));
            ASSERT_EQ(portrait(), states[position]) << "round " << round;
            continue;
        }
        {
            const Guard guard(Publisher::Update, space());
            for (unsigned i = 1 + below(4); i > 0; --i) {
                changeSomething();
                afterChange();
            }
        }
        states[history.position()] = portrait();
    }
}

void HistoryRandomTest::expectEveryState()
{
    ASSERT_TRUE(history.goTo(0));
    for (std::size_t i = 0; i <= history.size(); ++i) {
        ASSERT_TRUE(history.goTo(i));
        ASSERT_EQ(portrait(), states[i]) << "step " << i << ": " << history.undoLabel();
    }
}

TEST_P(HistoryRandomTest, WhatArrivesDuringCommandsIsAStepOfItsOwn)
{
    int arrivals = 0;
    ASSERT_NO_FATAL_FAILURE(walk(200, [&] {
        if (below(3) != 0)
            return;
        const std::size_t before = history.position();
        {
            const TAMBO::ArrivalScope arrival;
            states[history.position()] = portrait();
            bringSomething();
            states[history.position() + 1] = portrait();
        }
        ASSERT_GT(history.position(), before);
        ++arrivals;
    }));
    EXPECT_GT(arrivals, 20);
    expectEveryState();
}

TEST_P(HistoryRandomTest, EveryStateComesBackWhenUndoAndRedoPassByIt)
{
    ASSERT_NO_FATAL_FAILURE(walk(400, [] {}));
    expectEveryState();
}

TEST_P(HistoryRandomTest, SmallLimitDropsStepsAndNeverHarmsTheOthers)
{
    history.setLimit(20000);
    std::vector<std::string> undone;
    for (int round = 0; round < 300; ++round) {
        {
            const Guard guard(Publisher::Update, space());
            changeSomething();
        }
        if (below(10) == 0) {
            const std::string now = portrait();
            const std::size_t position = history.position();
            ASSERT_TRUE(history.goTo(below(position + 1)));
            // Memory may have been short on the way, but what is left is consistent.
            if (history.size() == position) {
                ASSERT_TRUE(history.goTo(position));
                ASSERT_EQ(portrait(), now) << "round " << round;
            }
        }
    }
    EXPECT_LE(history.size(), 300U);
}

// Whatever was saved and dropped on the way.
TEST_P(HistoryRandomTest, WhatIsUnsavedIsWhatTheSimplestWayFinds)
{
    UnsavedModel model(history);
    history.setLimit(below(2) == 0 ? 20000 : TAMBO::History::kDefaultLimit);
    std::size_t found = 0;
    for (int round = 0; round < 300; ++round) {
        const unsigned kind = below(8);
        TAMBO::Compound *const object = space().objectCount() == 0
                                            ? nullptr
                                            : *(space().begin() + below(space().objectCount()));
        if (kind == 0) {
            ASSERT_TRUE(model.goTo(below(history.size() + 1)));
        } else if (kind == 1 && object != nullptr) {
            model.markSaved(*object);
        } else if (kind == 2 && object != nullptr) {
            model.markWritten(*object);
        } else if (kind == 3 && object != nullptr) {
            model.acceptWritten(*object);
        } else {
            const Guard guard(Publisher::Update, space());
            for (unsigned i = 1 + below(3); i > 0; --i)
                changeSomething();
        }
        UnsavedModel::Unsaved unsaved;
        for (const TAMBO::UnsavedObject &one : history.unsavedObjects())
            unsaved.emplace_back(one.object, one.parts);
        ASSERT_EQ(unsaved, model.unsaved()) << "round " << round;
        for (const TAMBO::Compound *one : space())
            ASSERT_EQ(history.unsavedParts(*one), model.partsOf(*one)) << "round " << round;
        found += unsaved.size();
    }
    EXPECT_GT(found, 300U);
    history.clear();
}

// Sequences that rows show, structures that they are tied to, alignments, in one step.
TEST_P(HistoryRandomTest, SeveralObjectsGoAndComeBackTogether)
{
    for (int round = 0; round < 60; ++round) {
        for (int i = 0; i < 8; ++i)
            changeSomething();
        const std::string before = portrait();
        std::vector<TAMBO::Compound *> going;
        std::vector<TAMBO::Compound *> staying;
        for (TAMBO::Compound *object : space())
            (below(3) == 0 ? going : staying).push_back(object);
        const std::size_t position = history.position();
        TAMBO::destroyObjects(going);
        ASSERT_LE(history.position(), position + 1);
        ASSERT_EQ(std::vector<TAMBO::Compound *>(space().begin(), space().end()), staying);
        for (const TAMBO::Compound *object : going) {
            const TAMBO::Peptide *const gone =
                TAMBO::Peptide::from(const_cast<TAMBO::Compound *>(object));
            for (const TAMBO::Alignment *alignment : all<TAMBO::Alignment>())
                ASSERT_FALSE(gone != nullptr && alignment->table().holds(*gone));
        }
        const std::string after = portrait();
        ASSERT_TRUE(history.goTo(position));
        ASSERT_EQ(portrait(), before) << "round " << round;
        while (history.canRedo())
            ASSERT_TRUE(history.redo());
        ASSERT_EQ(portrait(), after) << "round " << round;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, HistoryRandomTest, testing::Range(1U, 13U));

} // namespace HistoryRandomTest
