// SPDX-License-Identifier: GPL-3.0-or-later
// The tree of objects: lazy, correct towards views, and in step with every change.
#include "ObjectTreeModel.h"

#include "AppFixture.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "ObjectOperations.h"
#include "support/ShownText.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <QSignalSpy>
#include <QTest>

namespace ObjectTreeModelTest {

using namespace TAMBO;
using TAMBO::app::ObjectTreeModel;

class ObjectTreeModelTest : public RecordedFixture
{
protected:
    QStringList topTexts() const { return texts({}); }
    QStringList texts(const QModelIndex &parent) const
    {
        QStringList result;
        for (int row = 0; row < m_Model.rowCount(parent); ++row)
            result << m_Model.index(row, 0, parent).data().toString();
        return result;
    }
    void fetchAll(const QModelIndex &parent)
    {
        while (m_Model.canFetchMore(parent))
            m_Model.fetchMore(parent);
    }
    static void destroy(Compound &object)
    {
        const DataDelete<Space> guard(nullptr, Space::instance());
        DataMaker::Destroy(&object);
    }

    ObjectTreeModel m_Model{*Space::instance()};
    QAbstractItemModelTester m_Tester{&m_Model,
                                      QAbstractItemModelTester::FailureReportingMode::Warning};
};

TEST_F(ObjectTreeModelTest, AnEmptySpaceHasNoRows)
{
    EXPECT_EQ(m_Model.rowCount(), 0);
    EXPECT_FALSE(m_Model.hasChildren());
    EXPECT_EQ(m_Model.columnCount(), 3);
}

TEST_F(ObjectTreeModelTest, AddedObjectsShowAtOnce)
{
    structure("1abc", "A", "ACDE");
    alignment("family", {"AC-D"});
    EXPECT_EQ(topTexts(), QStringList({"1abc", "family", "Sequences"}));
}

TEST_F(ObjectTreeModelTest, TopLevelObjectsOfOneNameAreToldApartAsLongAsThereAreSeveral)
{
    Alignment &first = alignment("obp", {"AC-D"});
    alignment("obp", {"ACDDD", "ACDDD"});
    EXPECT_EQ(topTexts(), QStringList({"obp (1 × 4)", "obp (2 × 5)", "Sequences"}));
    EXPECT_EQ(m_Model.index(0, 0).data(Qt::EditRole).toString(), "obp");
    destroy(first);
    EXPECT_EQ(topTexts(), QStringList({"obp", "Sequences"}));
}

TEST_F(ObjectTreeModelTest, ColumnsSayNameKindAndSize)
{
    structure("1abc", "A", "ACDE");
    alignment("family", {"AC-D", "ACCD"});
    const auto row = [&](int place, const QModelIndex &parent = {}) {
        QStringList columns;
        for (int column = 0; column < 3; ++column)
            columns << m_Model.index(place, column, parent).data().toString();
        return columns;
    };
    EXPECT_EQ(row(0), QStringList({"1abc", "structure", "1 chain"}));
    EXPECT_EQ(row(1), QStringList({"family", "alignment", "2 × 4"}));
    EXPECT_EQ(row(2), QStringList({"Sequences", "", "2"}));
    fetchAll(m_Model.index(0, 0));
    EXPECT_EQ(row(0, m_Model.index(0, 0)), QStringList({"A", "chain", "4 residues"}));
}

TEST_F(ObjectTreeModelTest, SequencesStandBelowARowOfTheirOwn)
{
    sequence("one", "ACD");
    sequence("two", "ACD");
    const QModelIndex sequences = m_Model.sequencesIndex();
    ASSERT_TRUE(sequences.isValid());
    EXPECT_EQ(m_Model.object(sequences), nullptr);
    EXPECT_EQ(m_Model.flags(sequences), Qt::ItemIsEnabled);
    fetchAll(sequences);
    EXPECT_EQ(texts(sequences), QStringList({"one", "two"}));
}

TEST_F(ObjectTreeModelTest, TheRowOfTheSequencesGoesWithTheLastOne)
{
    Peptide &one = sequence("one", "ACD");
    destroy(one);
    EXPECT_FALSE(m_Model.sequencesIndex().isValid());
    EXPECT_EQ(m_Model.rowCount(), 0);
}

TEST_F(ObjectTreeModelTest, NoRowIsMadeBeforeSomebodyAsks)
{
    structure("1abc", "A", std::string(20000, 'A'));
    const QModelIndex top = m_Model.index(0, 0);
    EXPECT_TRUE(m_Model.hasChildren(top));
    EXPECT_EQ(m_Model.rowCount(top), 0);
    m_Model.fetchMore(top);
    const QModelIndex chain = m_Model.index(0, 0, top);
    EXPECT_TRUE(m_Model.hasChildren(chain));
    EXPECT_EQ(m_Model.rowCount(chain), 0);
    m_Model.fetchMore(chain);
    EXPECT_GT(m_Model.rowCount(chain), 0);
    EXPECT_LT(m_Model.rowCount(chain), 1000);
    EXPECT_TRUE(m_Model.canFetchMore(chain));
}

TEST_F(ObjectTreeModelTest, ManySequencesComeInPortions)
{
    AlignmentRecord record;
    record.isAligned = false;
    for (int i = 0; i < 3000; ++i) {
        RowRecord &row = record.rows.emplace_back();
        row.name = "s" + std::to_string(i);
        row.sequence.append("ACD");
    }
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        ObjectFactory::adopt(std::move(record));
    }
    const QModelIndex sequences = m_Model.sequencesIndex();
    m_Model.fetchMore(sequences);
    EXPECT_LT(m_Model.rowCount(sequences), 1000);
    int portions = 1;
    for (; m_Model.canFetchMore(sequences); ++portions)
        m_Model.fetchMore(sequences);
    EXPECT_EQ(portions, 5) << "each as large as all before it";
    EXPECT_EQ(m_Model.rowCount(sequences), 3000);
    EXPECT_EQ(m_Model.index(2999, 0, sequences).data().toString(), "s2999");
}

TEST_F(ObjectTreeModelTest, ResiduesAndAtomsAreReachedThroughTheirChain)
{
    structure("1abc", "A", "AC");
    const QModelIndex top = m_Model.index(0, 0);
    fetchAll(top);
    const QModelIndex chain = m_Model.index(0, 0, top);
    fetchAll(chain);
    ASSERT_EQ(m_Model.rowCount(chain), 2);
    const QModelIndex residue = m_Model.index(1, 0, chain);
    EXPECT_EQ(residue.siblingAtColumn(1).data().toString(), "residue");
    fetchAll(residue);
    ASSERT_EQ(m_Model.rowCount(residue), 1);
    const QModelIndex atom = m_Model.index(0, 0, residue);
    EXPECT_EQ(atom.data().toString(), "CA");
    EXPECT_EQ(m_Model.indexOf(m_Model.object(atom)), atom);
    EXPECT_FALSE(m_Model.hasChildren(atom));
}

TEST_F(ObjectTreeModelTest, DeletedObjectsLeaveWithTheNotification)
{
    Structure &first = structure("first", "A", "AC");
    structure("second", "A", "AC");
    fetchAll(m_Model.index(0, 0));
    const QPersistentModelIndex kept = m_Model.index(1, 0);
    destroy(first);
    EXPECT_EQ(topTexts(), QStringList{"second"});
    EXPECT_EQ(kept.row(), 0);
}

TEST_F(ObjectTreeModelTest, ADeletedChainLeavesItsStructure)
{
    Structure &structure = this->structure("1abc", "A", "AC");
    const QModelIndex top = m_Model.index(0, 0);
    fetchAll(top);
    destroy(*structure.chain(0));
    EXPECT_EQ(m_Model.rowCount(top), 0);
    EXPECT_FALSE(m_Model.hasChildren(top));
    m_History.undo();
    EXPECT_EQ(texts(top), QStringList{"A"});
}

TEST_F(ObjectTreeModelTest, UndoBringsAnObjectBackToItsPlace)
{
    structure("first", "A", "AC");
    Structure &second = structure("second", "A", "AC");
    structure("third", "A", "AC");
    destroy(second);
    ASSERT_EQ(topTexts(), QStringList({"first", "third"}));
    m_History.undo();
    EXPECT_EQ(topTexts(), QStringList({"first", "second", "third"}));
    m_History.redo();
    EXPECT_EQ(topTexts(), QStringList({"first", "third"}));
}

TEST_F(ObjectTreeModelTest, UndoOfOpeningTakesTheRowsAway)
{
    alignment("family", {"AC-D", "ACCD"});
    EXPECT_EQ(m_Model.rowCount(), 2);
    m_History.undo();
    EXPECT_EQ(m_Model.rowCount(), 0);
    m_History.redo();
    EXPECT_EQ(topTexts(), QStringList({"family", "Sequences"}));
}

TEST_F(ObjectTreeModelTest, OpenedRowsStayOpenWhenOthersChange)
{
    structure("first", "A", "ACD");
    const QPersistentModelIndex top = m_Model.index(0, 0);
    fetchAll(top);
    const QPersistentModelIndex chain = m_Model.index(0, 0, top);
    fetchAll(chain);
    alignment("family", {"AC-D"});
    EXPECT_TRUE(chain.isValid());
    EXPECT_EQ(m_Model.rowCount(chain), 3);
}

TEST_F(ObjectTreeModelTest, ManyUpdatesAreOneRepaint)
{
    Alignment &family = alignment("family", {"AC-D-"});
    QCoreApplication::processEvents();
    const QSignalSpy repaints(&m_Model, &QAbstractItemModel::dataChanged);
    for (int i = 0; i < 50; ++i) {
        const DataPoint<Alignment> guard(nullptr, &family);
        guard->moveGap(0, 2 + i % 2, 3 - i % 2, true);
    }
    EXPECT_EQ(repaints.count(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(repaints.count(), 1);
}

TEST_F(ObjectTreeModelTest, SelectedObjectsAreTinted)
{
    Structure &structure = this->structure("1abc", "A", "AC");
    const QModelIndex top = m_Model.index(0, 0);
    EXPECT_FALSE(top.data(Qt::BackgroundRole).isValid());
    m_Model.setSelectionColor(Qt::cyan);
    {
        const DataPoint<Compound> guard(nullptr, &structure);
        structure.SetSelected(true);
    }
    EXPECT_EQ(top.data(Qt::BackgroundRole).value<QColor>(), QColor(Qt::cyan));
}

TEST_F(ObjectTreeModelTest, ALockedObjectHasAnotherIconAndSaysSo)
{
    Structure &structure = this->structure("1abc", "A", "AC");
    const QModelIndex top = m_Model.index(0, 0);
    const auto image = [&] {
        return top.data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
    };
    const QImage open = image();
    setObjectLocked(structure, true);
    EXPECT_NE(image(), open);
    EXPECT_EQ(top.data(Qt::ToolTipRole).toString(), "1abc (locked)");
}

TEST_F(ObjectTreeModelTest, TheToolTipOfANameWithMarkupIsTheNameAsItIs)
{
    structure("a<b>x</b>", "A", "AC");
    EXPECT_EQ(shownText(m_Model.index(0, 0).data(Qt::ToolTipRole).toString()), "a<b>x</b>");
}

TEST_F(ObjectTreeModelTest, ATypedNameIsAskedForAndNotTaken)
{
    Structure &structure = this->structure("1abc", "A", "AC");
    QSignalSpy asked(&m_Model, &ObjectTreeModel::renameAsked);
    const QModelIndex top = m_Model.index(0, 0);
    EXPECT_TRUE(m_Model.setData(top, " new ", Qt::EditRole));
    EXPECT_FALSE(m_Model.setData(top, "  ", Qt::EditRole));
    EXPECT_FALSE(m_Model.setData(top, "1abc", Qt::EditRole));
    ASSERT_EQ(asked.count(), 1);
    EXPECT_EQ(asked[0][0].value<Compound *>(), &structure);
    EXPECT_EQ(asked[0][1].toString(), "new");
    EXPECT_EQ(structure.Name(), "1abc");
}

TEST_F(ObjectTreeModelTest, NamesOfResiduesCannotBeTyped)
{
    structure("1abc", "A", "AC");
    const QModelIndex top = m_Model.index(0, 0);
    EXPECT_TRUE(m_Model.flags(top) & Qt::ItemIsEditable);
    fetchAll(top);
    const QModelIndex chain = m_Model.index(0, 0, top);
    fetchAll(chain);
    EXPECT_FALSE(m_Model.flags(m_Model.index(0, 0, chain)) & Qt::ItemIsEditable);
}

} // namespace ObjectTreeModelTest
