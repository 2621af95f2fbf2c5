// SPDX-License-Identifier: GPL-3.0-or-later
#include "ShownCandidates.h"

#include "support/FakeCompound.h"
#include "support/WaitUntil.h"

#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QTreeView>

#include <gmock/gmock.h>

#include <memory>
#include <random>

using namespace TAMBO::services;
using ::testing::ElementsAre;

namespace ShownCandidatesTest {

constexpr int kNone = ShownCandidates::kNone;

// Counts how often it is asked for its name.
class NamedCompound final : public FakeCompound
{
public:
    NamedCompound(const std::string &name, const std::string &kind, std::size_t &asked)
        : FakeCompound(name, kind), m_Asked(asked)
    { }
    std::string Name() const override
    {
        ++m_Asked;
        return FakeCompound::Name();
    }

private:
    std::size_t &m_Asked;
};

class ShownCandidatesTest : public ::testing::Test
{
protected:
    void offer(const std::vector<std::string> &names)
    {
        for (const std::string &name : names) {
            objects.push_back(std::make_unique<NamedCompound>(name, "chain", asked));
            candidates.push_back(objects.back().get());
        }
        model = std::make_unique<CandidateModel>(candidates, CandidateModel::Ticks::With);
        list = std::make_unique<ShownCandidates>(*model);
    }
    void offerMany(std::size_t count)
    {
        std::vector<std::string> names;
        for (std::size_t i = 0; i < count; ++i)
            names.push_back("row" + std::to_string(i));
        offer(names);
    }
    [[nodiscard]] static QStringList texts(const QAbstractItemModel &shown, int column)
    {
        QStringList texts;
        for (int row = 0; row < shown.rowCount(); ++row)
            texts << shown.index(row, column).data().toString();
        return texts;
    }

    std::size_t asked = 0;
    std::vector<std::unique_ptr<NamedCompound>> objects;
    std::vector<TAMBO::Compound *> candidates;
    std::unique_ptr<CandidateModel> model;
    std::unique_ptr<ShownCandidates> list;
};

// ---- What is shown

TEST_F(ShownCandidatesTest, TheCurrentOneStaysWhileItIsShown)
{
    offer({"ab", "b", "abc", "bc"});
    list->setFilter("B", 2);
    EXPECT_EQ(list->wanted(), 2);
    list->setFilter("c", 2);
    EXPECT_THAT(list->rows(), ElementsAre(2, 3));
    EXPECT_EQ(list->wanted(), 2);
}

TEST_F(ShownCandidatesTest, BehindTheCurrentOneComesTheNextOneAndThenTheOneBefore)
{
    offer({"a1", "b1", "c", "a2", "b2"});
    list->setFilter("a", 1);
    EXPECT_EQ(list->wanted(), 3);
    list->setFilter("", 3);
    list->setFilter("b1", 3);
    EXPECT_EQ(list->wanted(), 1);
    list->setFilter("a", 1);
    EXPECT_EQ(list->wanted(), 0) << "none of those was shown before";
    list->setFilter("x", 0);
    EXPECT_EQ(list->wanted(), kNone);
    EXPECT_EQ(list->rowCount(), 0);
}

TEST_F(ShownCandidatesTest, NamesInOtherAlphabetsAreFoundWithoutCaseToo)
{
    offer({"Örtlich", "örtlich", "ortlich"});
    list->setFilter("ÖRT", 0);
    EXPECT_THAT(list->rows(), ElementsAre(0, 1));
    list->setFilter("RT", 0);
    EXPECT_THAT(list->rows(), ElementsAre(0, 1, 2));
}

TEST_F(ShownCandidatesTest, SizesAreSortedAsNumbers)
{
    offer({"a", "b", "c"});
    std::vector<std::unique_ptr<FakeCompound>> parts;
    for (int i = 0; i < 12; ++i)
        parts.push_back(std::make_unique<FakeCompound>("r", "residue", objects[0].get()));
    for (int i = 0; i < 9; ++i)
        parts.push_back(std::make_unique<FakeCompound>("r", "residue", objects[2].get()));
    list->sort(CandidateModel::SizeColumn, Qt::DescendingOrder);
    EXPECT_THAT(list->rows(), ElementsAre(0, 2, 1));
    list->sort(-1, Qt::AscendingOrder);
    EXPECT_THAT(list->rows(), ElementsAre(0, 1, 2));
    parts.clear();
}

TEST_F(ShownCandidatesTest, TheCurrentRowOfAViewGoesAlongWhenItIsSorted)
{
    offer({"c", "a", "b"});
    QTreeView view;
    view.setModel(list.get());
    view.setCurrentIndex(list->index(0, 0));
    list->sort(CandidateModel::NameColumn, Qt::AscendingOrder);
    EXPECT_EQ(view.currentIndex(), list->index(2, 0));
    EXPECT_EQ(view.selectionModel()->selectedRows(), QModelIndexList{list->index(2, 0)});
}

TEST_F(ShownCandidatesTest, ATickedRowIsToldToTheView)
{
    offer({"c", "a", "b"});
    list->sort(CandidateModel::NameColumn, Qt::AscendingOrder);
    const QSignalSpy changes(list.get(), &QAbstractItemModel::dataChanged);
    EXPECT_TRUE(list->setData(list->index(2, 0), Qt::Checked, Qt::CheckStateRole));
    EXPECT_TRUE(model->isTicked(0));
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes.front().front().toModelIndex(), list->index(2, 0));
}

// Whatever is typed and clicked, it is what the toolkit's own filter would show.
TEST_F(ShownCandidatesTest, ShowsWhatTheToolkitShows)
{
    std::mt19937 random(7);
    std::vector<std::string> names;
    for (int i = 0; i < 500; ++i) {
        std::string name;
        for (unsigned k = random() % 6; k > 0; --k)
            name += std::vector<std::string>{
                "a", "B", "b", "A", "_", "ä", "Ä", "1", "é", "z"}[random() % 10];
        names.push_back(name);
    }
    offer(names);
    QSortFilterProxyModel other;
    other.setSourceModel(model.get());
    other.setFilterKeyColumn(CandidateModel::NameColumn);
    other.setFilterCaseSensitivity(Qt::CaseInsensitive);
    other.setSortCaseSensitivity(Qt::CaseInsensitive);
    int column = -1;
    Qt::SortOrder order = Qt::AscendingOrder;
    for (int round = 0; round < 200; ++round) {
        if (random() % 3 == 0) {
            column = int(random() % 3) - 1;
            order = random() % 2 == 0 ? Qt::AscendingOrder : Qt::DescendingOrder;
            list->sort(column, order);
        } else {
            QString text;
            for (unsigned k = random() % 3; k > 0; --k)
                text += QStringList{"a", "B", "Ä", "_", "1", "b"}[int(random() % 6)];
            list->setFilter(text, kNone);
            other.setFilterFixedString(text);
        }
        // It adds to equal rows at their end.
        other.sort(-1, Qt::AscendingOrder);
        other.sort(column, order);
        ASSERT_FALSE(list->isWorking());
        ASSERT_EQ(texts(*list, 0), texts(other, 0)) << "round " << round;
    }
}

// ---- Many

TEST_F(ShownCandidatesTest, NoNameIsMadeBeforeItIsShown)
{
    offerMany(100);
    EXPECT_EQ(asked, 0U);
    EXPECT_EQ(list->rowCount(), 100);
    EXPECT_EQ(list->index(99, 0).data().toString(), "row99");
    EXPECT_EQ(asked, 1U);
    list->setFilter("", kNone);
    EXPECT_EQ(asked, 1U);
}

TEST_F(ShownCandidatesTest, TheFilterOfManyGoesOnFromTheEventLoopAndShowsWhatItHas)
{
    constexpr std::size_t kMany = 5 * ShownCandidates::kAtOnce;
    offerMany(kMany);
    list->setFilter("7", 0);
    EXPECT_EQ(asked, ShownCandidates::kAtOnce);
    EXPECT_TRUE(list->isWorking());
    const int first = list->rowCount();
    EXPECT_GT(first, 0);
    ASSERT_TRUE(waitUntil([&] { return !list->isWorking(); }));
    EXPECT_EQ(asked, kMany);
    EXPECT_GT(list->rowCount(), 2 * first);
    EXPECT_EQ(list->wanted(), 7);
    for (const int row : list->rows())
        ASSERT_NE(std::to_string(row).find('7'), std::string::npos);
}

TEST_F(ShownCandidatesTest, AFurtherLetterLooksOnlyAtWhatIsShown)
{
    constexpr std::size_t kMany = 3 * ShownCandidates::kAtOnce;
    offerMany(kMany);
    list->setFilter("7", 0);
    list->finish();
    const auto shown = std::size_t(list->rowCount());
    asked = 0;
    list->setFilter("77", 7);
    list->finish();
    EXPECT_EQ(asked, shown);
    EXPECT_EQ(list->wanted(), 77);
}

TEST_F(ShownCandidatesTest, AnotherTextBeginsAnew)
{
    constexpr std::size_t kMany = 5 * ShownCandidates::kAtOnce;
    offerMany(kMany);
    list->setFilter("7", 0);
    asked = 0;
    list->setFilter("777", 0);
    EXPECT_EQ(asked, ShownCandidates::kAtOnce) << "the first search had not seen all";
    list->finish();
    EXPECT_EQ(asked, kMany);
    EXPECT_EQ(list->rows().front(), 777);
    EXPECT_EQ(list->rows().back(), 81777);
}

TEST_F(ShownCandidatesTest, ManyAreSortedFromTheEventLoopAndThenFiltered)
{
    constexpr std::size_t kMany = 5 * ShownCandidates::kAtOnce;
    offerMany(kMany);
    list->sort(CandidateModel::NameColumn, Qt::DescendingOrder);
    EXPECT_TRUE(list->isSorting());
    EXPECT_LE(asked, ShownCandidates::kAtOnce);
    EXPECT_EQ(list->rows().front(), 0) << "the order before, as long as there is no other";
    list->setFilter("row9", 0);
    EXPECT_EQ(list->rowCount(), int(kMany));
    ASSERT_TRUE(waitUntil([&] { return !list->isWorking(); }));
    ASSERT_EQ(list->rowCount(), 1 + 10 + 100 + 1000);
    EXPECT_EQ(list->rows().front(), 9999);
    EXPECT_EQ(list->rows().back(), 9);
    EXPECT_EQ(asked, 2 * kMany) << "once for the order and once for the filter";
}

TEST_F(ShownCandidatesTest, EqualOnesStayInTheirOrder)
{
    offer(std::vector<std::string>(3 * ShownCandidates::kAtOnce, "same"));
    for (const auto order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        list->sort(CandidateModel::NameColumn, order);
        list->finish();
        EXPECT_TRUE(std::ranges::is_sorted(list->rows()));
    }
}

} // namespace ShownCandidatesTest
