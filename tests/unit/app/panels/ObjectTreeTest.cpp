// SPDX-License-Identifier: GPL-3.0-or-later
// What picking rows does to the objects, and how the tree behaves towards the user.
#include "ObjectTree.h"

#include "AppFixture.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "Hooks.h"
#include "ObjectCommands.h"
#include "ObjectOperations.h"
#include "ObjectTreeModel.h"

#include "support/WaitUntil.h"

#include <QContextMenuEvent>
#include <QPaintEvent>
#include <QSignalSpy>
#include <QTest>

#include <string>
#include <utility>
#include <vector>

namespace ObjectTreeTest {

using namespace TAMBO;
using TAMBO::app::ObjectTree;
using TAMBO::app::ObjectTreeModel;

class ObjectTreeTest : public RecordedFixture
{
protected:
    ObjectTreeTest()
    {
        m_Tree.resize(600, 400);
        m_Tree.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_Tree));
    }

    QPoint placeOf(int row) { return m_Tree.visualRect(m_Model.index(row, 0)).center(); }
    void click(int row, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(m_Tree.viewport(), Qt::LeftButton, modifiers, placeOf(row));
    }

    ObjectTreeModel m_Model{*Space::instance()};
    ObjectTree m_Tree{m_Model};
};

TEST_F(ObjectTreeTest, AClickSelectsTheObjectAndLeavesNoStep)
{
    Structure &first = structure("first", "A", "AC");
    Structure &second = structure("second", "A", "AC");
    const std::size_t steps = m_History.size();
    click(0);
    EXPECT_TRUE(first.IsSelected());
    EXPECT_TRUE(first.chain(0)->isSelected(1));
    EXPECT_FALSE(second.IsSelected());
    EXPECT_EQ(m_History.size(), steps);
}

TEST_F(ObjectTreeTest, ASequenceBelowTheOthersIsPaintedAnewWhenItIsRenamed)
{
    class Painted : public QObject
    {
    public:
        QRegion region;

    protected:
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::Paint)
                region += static_cast<QPaintEvent *>(event)->region();
            return false;
        }
    };
    structure("first", "A", "AC");
    structure("second", "A", "AC");
    Peptide &one = sequence("one", "AC");
    m_Tree.expandAll();
    QCoreApplication::processEvents();
    Painted painted;
    m_Tree.viewport()->installEventFilter(&painted);
    const QModelIndex sequences = m_Model.index(m_Model.rowCount() - 1, 0);
    const QRect place = m_Tree.visualRect(m_Model.index(0, 0, sequences));
    ASSERT_FALSE(place.isEmpty());
    waitUntil([&] { return m_Tree.isVisible(); });
    painted.region = {};
    app::ObjectCommands::rename(one, "other");
    waitUntil([&] { return painted.region.contains(place); });
}

TEST_F(ObjectTreeTest, AClickElsewhereMovesTheSelection)
{
    Structure &first = structure("first", "A", "AC");
    Structure &second = structure("second", "A", "AC");
    click(0);
    click(1);
    EXPECT_FALSE(first.IsSelected());
    EXPECT_TRUE(second.IsSelected());
    click(0, Qt::ControlModifier);
    EXPECT_TRUE(first.IsSelected());
    EXPECT_TRUE(second.IsSelected());
    EXPECT_EQ(m_Tree.pickedObjects(), (Compounds{&first, &second}));
}

TEST_F(ObjectTreeTest, WhatWasSelectedElsewhereStaysWhenAnotherRowIsPicked)
{
    Structure &first = structure("first", "A", "AC");
    structure("second", "A", "AC");
    first.chain(0)->setSelected(1, true);
    click(1);
    EXPECT_TRUE(first.chain(0)->isSelected(1));
}

TEST_F(ObjectTreeTest, AChangedSelectionIsPublishedOnce)
{
    structure("first", "A", "AC");
    structure("second", "A", "AC");
    click(0);
    struct Counter : Subscriber
    {
        void commUpdate() override { ++updates; }
        void commAdd() override { }
        void commDelete() override { }
        int updates = 0;
    } counter;
    click(1);
    EXPECT_EQ(counter.updates, 1);
}

TEST_F(ObjectTreeTest, ALockedObjectIsNotSelectedAndThatIsReported)
{
    Structure &first = structure("first", "A", "AC");
    setObjectLocked(first, true);
    click(0);
    EXPECT_FALSE(first.IsSelected());
    EXPECT_EQ(m_Refused, std::vector<std::string>{"first"});
}

TEST_F(ObjectTreeTest, DeletingAPickedObjectTouchesNothingElse)
{
    Structure &first = structure("first", "A", "AC");
    Structure &second = structure("second", "A", "AC");
    click(0);
    {
        const DataDelete<Space> guard(nullptr, Space::instance());
        DataMaker::Destroy(&first);
    }
    EXPECT_TRUE(m_Tree.pickedObjects().empty());
    EXPECT_FALSE(second.IsSelected());
}

TEST_F(ObjectTreeTest, WhatIsPickedComesInTheOrderOfTheRows)
{
    Structure &first = structure("first", "A", "AC");
    Structure &second = structure("second", "A", "AC");
    for (const Compound *object : std::vector<const Compound *>{&first, first.chain(0)}) {
        m_Model.fetchMore(m_Model.indexOf(object));
        m_Tree.expand(m_Model.indexOf(object));
    }
    Compound *const residue = first.chain(0)->Child(1);
    const std::vector<const Compound *> objects = {&second, residue, first.chain(0), &first};
    for (const Compound *object : objects) {
        const QModelIndex index = m_Model.indexOf(object);
        ASSERT_TRUE(index.isValid());
        m_Tree.selectionModel()->select(index,
                                        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    EXPECT_EQ(m_Tree.pickedObjects(), (Compounds{&first, first.chain(0), residue, &second}));
}

TEST_F(ObjectTreeTest, AllIsPickedWithTheRowsThatNobodyHasScrolledTo)
{
    constexpr std::size_t kSequences = 3000;
    Alignment &shown = alignment("family", std::vector<std::string>(kSequences, "AC"));
    m_Tree.expand(m_Model.sequencesIndex());
    ASSERT_LT(std::size_t(m_Model.rowCount(m_Model.sequencesIndex())), kSequences);
    m_Tree.setFocus();
    QTest::keySequence(&m_Tree, QKeySequence::SelectAll);
    Compounds all{&shown};
    for (unsigned long row = 0; row < kSequences; ++row)
        all.push_back(shown.GetSeq(row));
    EXPECT_EQ(m_Tree.pickedObjects(), all);
    EXPECT_TRUE(std::ranges::all_of(all, &Compound::IsSelected));
    app::ObjectCommands::destroy(m_Tree.pickedObjects());
    EXPECT_TRUE(m_Tree.pickedObjects().empty());
    EXPECT_EQ(Space::instance()->ChildCount(), 0U);
}

TEST_F(ObjectTreeTest, AllIsPickedInFewRangesInTheOrderOfTheRows)
{
    Structure &first = structure("first", "A", "AC");
    Structure &second = structure("second", "A", "AC");
    m_Tree.expand(m_Model.indexOf(&first));
    m_Tree.selectAll();
    EXPECT_EQ(m_Tree.pickedObjects(), (Compounds{&first, first.chain(0), &second}));
    EXPECT_EQ(m_Tree.selectionModel()->selection().size(), 3);
    EXPECT_TRUE(m_Tree.selectionModel()->isRowSelected(1));
    m_Tree.clearSelection();
    EXPECT_TRUE(m_Tree.pickedObjects().empty());
}

TEST_F(ObjectTreeTest, PickingAllOfManyRowsShowsHowFarItIs)
{
    alignment("family", std::vector<std::string>(1000, "AC"));
    m_Tree.expand(m_Model.sequencesIndex());
    std::vector<std::pair<std::string, double>> told;
    int ends = 0;
    modelHooks().working = [&](const char *what, double share, bool canBeGivenUp) {
        EXPECT_TRUE(canBeGivenUp);
        told.emplace_back(what, share);
        return true;
    };
    modelHooks().worked = [&] { ++ends; };
    m_Tree.selectAll();
    modelHooks().working = nullptr;
    modelHooks().worked = nullptr;
    EXPECT_EQ(told,
              (std::vector<std::pair<std::string, double>>{{"Selecting", 0}, {"Selecting", 0.5}}))
        << "listing them first is a part of it";
    EXPECT_EQ(ends, 1);
}

TEST_F(ObjectTreeTest, PickingAllCanBeGivenUpWhileTheRowsAreListed)
{
    const Alignment &shown = alignment("family", std::vector<std::string>(1000, "AC"));
    const QModelIndex sequences = m_Model.sequencesIndex();
    m_Tree.expand(sequences);
    const int listed = m_Model.rowCount(sequences);
    ASSERT_LT(listed, 1000);
    modelHooks().working = [](const char *, double, bool) { return false; };
    m_Tree.selectAll();
    modelHooks().working = nullptr;
    EXPECT_EQ(m_Model.rowCount(sequences), listed);
    EXPECT_TRUE(m_Tree.pickedObjects().empty());
    EXPECT_FALSE(shown.GetSeq(0)->IsSelected());
    m_Tree.selectAll();
    EXPECT_EQ(m_Tree.pickedObjects().size(), 1001U);
}

TEST_F(ObjectTreeTest, WhatIsFoldedIsNotPickedWithAll)
{
    Alignment &shown = alignment("family", std::vector<std::string>(30, "AC"));
    m_Tree.collapse(m_Model.sequencesIndex());
    m_Tree.selectAll();
    EXPECT_EQ(m_Tree.pickedObjects(), Compounds{&shown});
}

TEST_F(ObjectTreeTest, TheMenuIsAskedForThePickedRows)
{
    Structure &first = structure("first", "A", "AC");
    Structure &second = structure("second", "A", "AC");
    structure("third", "A", "AC");
    std::vector<Compounds> asked;
    QObject::connect(&m_Tree, &ObjectTree::menuAsked, &m_Tree,
                     [&](const Compounds &objects) { asked.push_back(objects); });
    const auto menuAt = [&](QPoint place) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                m_Tree.viewport()->mapToGlobal(place));
        QApplication::sendEvent(m_Tree.viewport(), &event);
    };
    click(0);
    click(1, Qt::ControlModifier);
    menuAt(placeOf(1));
    menuAt(placeOf(2));
    menuAt(QPoint(5, m_Tree.viewport()->height() - 5));
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0], (Compounds{&first, &second}));
    EXPECT_EQ(asked[1].front()->Name(), "third");
}

TEST_F(ObjectTreeTest, ADoubleClickOpensAnAlignment)
{
    Alignment &family = alignment("family", {"AC-D"});
    QSignalSpy opened(&m_Tree, &ObjectTree::opened);
    click(0);
    QTest::mouseDClick(m_Tree.viewport(), Qt::LeftButton, {}, placeOf(0));
    ASSERT_EQ(opened.count(), 1);
    EXPECT_EQ(opened[0][0].value<Compound *>(), &family);
}

TEST_F(ObjectTreeTest, ADoubleClickUnfoldsAStructure)
{
    structure("first", "A", "AC");
    const QSignalSpy opened(&m_Tree, &ObjectTree::opened);
    click(0);
    QTest::mouseDClick(m_Tree.viewport(), Qt::LeftButton, {}, placeOf(0));
    EXPECT_EQ(opened.count(), 0);
    EXPECT_TRUE(m_Tree.isExpanded(m_Model.index(0, 0)));
    EXPECT_EQ(m_Model.rowCount(m_Model.index(0, 0)), 1);
}

TEST_F(ObjectTreeTest, FewSequencesAreUnfoldedAtOnceAndManyAreNot)
{
    sequence("one", "ACD");
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_Tree.isExpanded(m_Model.sequencesIndex()));
    m_History.undo();
    alignment("family", std::vector<std::string>(30, "AC-D"));
    QCoreApplication::processEvents();
    EXPECT_FALSE(m_Tree.isExpanded(m_Model.sequencesIndex()));
}

TEST_F(ObjectTreeTest, UnfoldedRowsAndTheCurrentOneSurviveChanges)
{
    structure("first", "A", "AC");
    Structure &second = structure("second", "A", "AC");
    QCoreApplication::processEvents();
    m_Tree.expand(m_Model.index(1, 0));
    m_Tree.setCurrentIndex(m_Model.index(0, 0, m_Model.index(1, 0)));
    alignment("family", {"AC-D"});
    {
        const DataDelete<Space> guard(nullptr, Space::instance());
        DataMaker::Destroy(*space().begin());
    }
    EXPECT_TRUE(m_Tree.isExpanded(m_Model.index(0, 0)));
    EXPECT_EQ(m_Model.object(m_Tree.currentIndex()), second.chain(0));
}

TEST_F(ObjectTreeTest, AnEmptyTreeSaysWhatToDo)
{
    const auto inked = [&] {
        const QImage image = m_Tree.viewport()->grab().toImage();
        const QRgb paper = image.pixel(0, 0);
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, image.height() / 2) != paper)
                return true;
        }
        return false;
    };
    EXPECT_TRUE(inked());
    structure("first", "A", "AC");
    EXPECT_FALSE(inked());
}

} // namespace ObjectTreeTest
