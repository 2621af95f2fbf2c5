// SPDX-License-Identifier: GPL-3.0-or-later
// The search beside the window's thread: what it waits for, and what may happen meanwhile.
#include "RowSearch.h"

#include "DataPoint.h"
#include "ObjectFactory.h"
#include "ObjectOperations.h"
#include "ObjectSpace.h"

#include <QApplication>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace RowSearchTest {

using TAMBO::Alignment;
using Language = RowSearch::Language;
using Columns = std::vector<RowSearch::Columns>;
using Texts = std::vector<std::string>;

// Takes longer than anybody waits: a second or more for each of many places.
const QString kEndless = QStringLiteral("(?:A+)+[BW]");

class RowSearchTest : public testing::Test
{
protected:
    ~RowSearchTest() override { TAMBO::ObjectSpace::get().reset(); }

    static Alignment &alignment(const Texts &rows)
    {
        TAMBO::AlignmentRecord record;
        record.name = "family";
        for (const std::string &row : rows) {
            TAMBO::RowRecord &made = record.rows.emplace_back();
            made.name = "s" + std::to_string(record.rows.size());
            made.sequence.append(row);
        }
        const DataPointBase guard(nullptr, Publisher::Add);
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }
    std::optional<RowSearch::Found> find(const Alignment &rows, const QString &pattern,
                                         Language language = Language::Expression)
    {
        return RowSearch::Run(m_Window.get(), rows, pattern, language);
    }
    // Acts while the dialog is shown.
    static void meanwhile(const std::function<void(QProgressDialog &)> &act)
    {
        QTimer::singleShot(1, qApp, [act] {
            auto *dialog = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
            if (dialog != nullptr && dialog->isVisible())
                act(*dialog);
            else
                meanwhile(act);
        });
    }
    static void cancel(QProgressDialog &dialog) { dialog.findChild<QPushButton *>()->click(); }
    static std::size_t dialogs()
    {
        std::size_t count = 0;
        for (const QWidget *widget : QApplication::topLevelWidgets())
            count += qobject_cast<const QProgressDialog *>(widget) != nullptr ? 1 : 0;
        return count;
    }

    std::unique_ptr<QWidget> m_Window = std::make_unique<QWidget>();
};

TEST_F(RowSearchTest, EachRowHasItsMatches)
{
    const auto found = find(alignment({"AC-DAC", "------", "CACACA"}), "AC");
    ASSERT_TRUE(found);
    ASSERT_EQ(found->rows.size(), 3U);
    EXPECT_EQ(found->rows[0].columns, (Columns{{0, 2}, {4, 6}}));
    EXPECT_EQ(found->rows[0].count, 2U);
    EXPECT_EQ(found->rows[1].columns, Columns());
    EXPECT_EQ(found->rows[1].count, 0U);
    EXPECT_EQ(found->rows[2].columns, (Columns{{1, 5}})) << "what touches is one";
    EXPECT_EQ(found->rows[2].count, 2U) << "and counts as two";
}

TEST_F(RowSearchTest, TheSimpleLanguageFindsWhatOverlaps)
{
    const auto found = find(alignment({"AAA-A", "A-AAA"}), "A.A", Language::Cells);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->rows[0].columns, (Columns{{0, 5}}));
    EXPECT_EQ(found->rows[1].columns, (Columns{{0, 5}}));
}

TEST_F(RowSearchTest, AMistakeIsToldAndNothingIsFound)
{
    const auto found = find(alignment({"AC", "AC"}), "A[");
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->mistake.endsWith(" at position 2")) << found->mistake.toStdString();
    ASSERT_EQ(found->rows.size(), 2U);
    EXPECT_TRUE(found->rows[0].columns.empty());
}

TEST_F(RowSearchTest, MoreThanOneBatchIsSearchedInOrder)
{
    Texts rows(5, std::string(2'000'000, 'A'));
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i][i] = 'C';
    const auto found = find(alignment(rows), "[CD]");
    ASSERT_TRUE(found);
    for (std::uint32_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(found->rows[i].columns, (Columns{{i, i + 1}})) << i;
}

TEST_F(RowSearchTest, ARowThatIsGivenUpSaysWhereAndWhy)
{
    const auto found = find(alignment({"AC" + std::string(60, 'A'), "AC"}), "AC|(?:A+)+[BW]");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->rows[0].count, 1U);
    EXPECT_EQ(found->rows[0].problem, "match limit exceeded");
    EXPECT_EQ(found->rows[0].problemColumn, 2U);
    EXPECT_EQ(found->rows[1].problem, "");
    EXPECT_EQ(found->rows[1].count, 1U);
}

TEST_F(RowSearchTest, CancelEndsASearchThatDoesNotEnd)
{
    const Alignment &rows = alignment(Texts(1000, std::string(60, 'A')));
    QString label;
    meanwhile([&](QProgressDialog &dialog) {
        EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal);
        EXPECT_EQ(dialog.parentWidget(), m_Window.get());
        label = dialog.findChild<QLabel *>()->text();
        cancel(dialog);
    });
    EXPECT_FALSE(find(rows, kEndless));
    EXPECT_EQ(label, "Looking for " + kEndless + " in family…");
    EXPECT_EQ(dialogs(), 0U);
}

TEST_F(RowSearchTest, TheDialogTellsHowFarItIs)
{
    const Alignment &rows = alignment(Texts(1000, std::string(60, 'A')));
    QString text;
    std::function<void(QProgressDialog &)> look = [&](QProgressDialog &dialog) {
        text = dialog.findChild<QLabel *>()->text();
        if (text.contains("Row ") && !text.contains("Row 1 of"))
            cancel(dialog);
        else
            meanwhile(look);
    };
    meanwhile(look);
    EXPECT_FALSE(find(rows, kEndless));
    EXPECT_TRUE(text.contains(QRegularExpression("\nRow \\d+ of 1,?000$"))) << text.toStdString();
}

TEST_F(RowSearchTest, WindowsRepaintMeanwhile)
{
    int rounds = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++rounds; });
    timer.start(1);
    meanwhile(cancel);
    EXPECT_FALSE(find(alignment(Texts(1000, std::string(60, 'A'))), kEndless));
    EXPECT_GT(rounds, 1);
}

TEST_F(RowSearchTest, RowsThatChangedMeanwhileAreSearchedAgain)
{
    // The first is what takes the time.
    Alignment &rows = alignment({std::string(60, 'A'), "AC-D" + std::string(56, '-'),
                                 "-ACD" + std::string(56, '-'), std::string(60, '-')});
    bool isChanged = false;
    QTimer::singleShot(0, qApp, [&] {
        const DataPoint<Alignment> guard(nullptr, &rows);
        rows.moveGap(1, 2, 0, true);
        rows.bubbleRow(3, 2);
        isChanged = true;
    });
    const auto found = find(rows, "AC|(?:A+)+[BW]");
    ASSERT_TRUE(isChanged);
    ASSERT_TRUE(found);
    ASSERT_EQ(found->rows.size(), 4U);
    EXPECT_EQ(found->rows[0].problem, "match limit exceeded");
    EXPECT_EQ(found->rows[1].columns, (Columns{{1, 3}}));
    EXPECT_EQ(found->rows[2].columns, Columns());
    EXPECT_EQ(found->rows[3].columns, (Columns{{1, 3}}));
}

TEST_F(RowSearchTest, AWindowThatGoesEndsTheSearch)
{
    const Alignment &rows = alignment(Texts(1000, std::string(60, 'A')));
    meanwhile([&](QProgressDialog &) { m_Window.reset(); });
    EXPECT_FALSE(find(rows, kEndless));
    EXPECT_EQ(dialogs(), 0U);
    m_Window = std::make_unique<QWidget>();
    QTimer::singleShot(0, qApp, [&] { m_Window.reset(); });
    EXPECT_FALSE(find(rows, kEndless)) << "before the dialog has come";
    EXPECT_EQ(dialogs(), 0U);
}

TEST_F(RowSearchTest, AnAlignmentThatGoesIsNotTouched)
{
    Alignment &rows = alignment({std::string(60, 'A')});
    bool isGone = false;
    QTimer::singleShot(0, qApp, [&] {
        TAMBO::ObjectSpace::get().reset();
        isGone = true;
    });
    EXPECT_FALSE(find(rows, kEndless));
    EXPECT_TRUE(isGone);
}

TEST_F(RowSearchTest, ClosingTheDialogCancels)
{
    meanwhile([](QProgressDialog &dialog) { dialog.reject(); });
    EXPECT_FALSE(find(alignment(Texts(1000, std::string(60, 'A'))), kEndless));
    meanwhile([](QProgressDialog &dialog) { dialog.close(); });
    EXPECT_FALSE(find(alignment(Texts(1000, std::string(60, 'A'))), kEndless));
}

} // namespace RowSearchTest
