// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompanionFixture.h"

#include "PairsDialog.h"

#include <QTemporaryDir>

namespace PairsTest {

class InTheTableOfPairs : public AlignmentCompanion
{
protected:
    InTheTableOfPairs()
    {
        m_Rows = &show(alignment({"ACDEF", "ACDWW", "WCD--"}, "rows", {"one", "t\"wo", "three"}),
                       {700, 400});
        m_Pairs = std::make_unique<companion::PairsDialog>(served(*m_Rows));
    }
    ~InTheTableOfPairs() override { m_Pairs.reset(); }
    QString text(int row, int column)
    {
        return m_Pairs->model().index(row, column).data().toString();
    }

    ZEP::KALMO2 *m_Rows = nullptr;
    std::unique_ptr<companion::PairsDialog> m_Pairs;
};

TEST_F(InTheTableOfPairs, TheMostAlikeComeFirst)
{
    ASSERT_EQ(m_Pairs->model().rowCount(), 3);
    // 2 of 3, 2 of 3, 3 of 5.
    EXPECT_EQ(text(0, 2), "66.7");
    EXPECT_EQ(text(2, 0), "one");
    EXPECT_EQ(text(2, 1), "t\"wo");
    EXPECT_EQ(text(2, 2), "60.0");
}

TEST_F(InTheTableOfPairs, AnotherDenominatorGivesOtherIdentities)
{
    m_Pairs->findChild<QComboBox *>()->setCurrentIndex(2);
    EXPECT_EQ(text(0, 2), "60.0");
    EXPECT_EQ(text(2, 2), "40.0");
}

TEST_F(InTheTableOfPairs, ItSortsByName)
{
    m_Pairs->model().sort(companion::PairModel::SecondName, Qt::AscendingOrder);
    EXPECT_EQ(text(0, 1), "t\"wo");
    EXPECT_EQ(text(1, 1), "three");
}

TEST_F(InTheTableOfPairs, ItIsExportedAsItIsSorted)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("pairs.csv");
    ASSERT_TRUE(m_Pairs->exportTo(file));
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), "first,second,identity %\n\"one\",\"three\",66.67\n"
                                 "\"t\"\"wo\",\"three\",66.67\n\"one\",\"t\"\"wo\",60.00\n");
    EXPECT_FALSE(m_Pairs->exportTo(folder.filePath("none/pairs.csv")));
}

} // namespace PairsTest
