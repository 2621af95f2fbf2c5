// SPDX-License-Identifier: GPL-3.0-or-later
// Rows aligned to the rest, with programs of the test's own and with MAFFT.
#include "AddRowsCommand.h"

#include "AppFixture.h"
#include "DataPoint.h"
#include "ObjectOperations.h"
#include "support/LogLines.h"
#include "support/ScopedSettings.h"

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>

namespace AddRowsCommandTest {

using TAMBO::Alignment;
using TAMBO::app::AddRowsCommand;
using Columns = AddRowsCommand::Columns;
using Texts = std::vector<std::string>;

std::string withoutGaps(std::string text)
{
    std::erase(text, '-');
    return text;
}

// The columns in which a row but the added ones has a residue.
Texts othersOf(const Texts &rows, const std::vector<unsigned long> &added)
{
    Texts kept;
    std::vector<bool> hasResidue(rows.front().size(), false);
    for (std::size_t row = 0; row < rows.size(); ++row)
        if (std::ranges::find(added, row) == added.end())
            for (std::size_t col = 0; col < rows[row].size(); ++col)
                hasResidue[col] = hasResidue[col] || rows[row][col] != '-';
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (std::ranges::find(added, row) != added.end())
            continue;
        std::string text;
        for (std::size_t col = 0; col < rows[row].size(); ++col)
            if (hasResidue[col])
                text += rows[row][col];
        kept.push_back(text);
    }
    return kept;
}

class AddRowsCommandTest : public RecordedFixture
{
protected:
    void use(const QByteArray &command)
    {
        m_Settings.reset();
        m_Settings = std::make_unique<ScopedSettings>(
            "[Realign]\nAddRows = " + command + "\nAddRowsKeepingColumns = " + command + '\n');
    }
    void useScript(const QByteArray &script)
    {
        const QString path = write("aligner", "#!/bin/sh\n" + script);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        use(path.toUtf8() + " {input} {added}");
    }
    Alignment &sample()
    {
        Alignment &family = alignment("sample", {"AC--DEF", "A-C-DEF", "CDEF---"});
        m_History.clear();
        return family;
    }
    // The one message of a run that leaves all as it is.
    QString refusal(const std::vector<unsigned long> &rows = {2},
                    Columns columns = Columns::AsNeeded)
    {
        Alignment &family = sample();
        const Texts before = rowsOf(family);
        const LogLines log;
        QString told;
        EXPECT_FALSE(AddRowsCommand(nullptr, false).run(family, rows, columns, &told));
        EXPECT_EQ(rowsOf(family), before);
        EXPECT_FALSE(m_History.canUndo());
        EXPECT_EQ(told, QString());
        EXPECT_EQ(log.count(), 1);
        return log.texts().join('\n');
    }

private:
    std::unique_ptr<ScopedSettings> m_Settings;
};

constexpr const char *kGoodAdding = "printf '>r0\\nAC-DE-F\\n>r1\\nA-CDE-F\\n>r2\\n--CDEF-\\n'\n";

TEST_F(AddRowsCommandTest, TheRowsComeToStandInOneStepAndTheOthersStayTogether)
{
    useScript(kGoodAdding);
    Alignment &family = sample();
    const LogLines log;
    QString told;
    EXPECT_TRUE(AddRowsCommand(nullptr, true).run(family, {2}, Columns::AsNeeded, &told));
    // The fourth column was the row's alone.
    EXPECT_EQ(rowsOf(family), (Texts{"AC-DE-F", "A-CDE-F", "--CDEF-"}));
    EXPECT_EQ(told, "Aligned sample3 to the other rows; one column has come");
    EXPECT_EQ(log.count(), 0) << "who asks tells it";
    EXPECT_EQ(m_History.size(), 1U);
    EXPECT_EQ(m_History.undoLabel(), "Align rows to the rest in sample");
    EXPECT_TRUE(m_History.undo());
    EXPECT_EQ(rowsOf(family), (Texts{"AC--DEF", "A-C-DEF", "CDEF---"}));
    EXPECT_TRUE(m_History.redo());
    EXPECT_EQ(rowsOf(family), (Texts{"AC-DE-F", "A-CDE-F", "--CDEF-"}));
}

TEST_F(AddRowsCommandTest, ANameWithAPercentSignIsToldAsItIs)
{
    useScript("printf '>r0\\nAC-DE--F\\n>r1\\nA-CDE--F\\n>r2\\n--CD-EF-\\n'\n");
    Alignment &family = sample();
    {
        const DataPointBase guard(nullptr, Publisher::Update);
        renameObject(*family.GetSeq(2), "a%2Bb");
    }
    QString told;
    EXPECT_TRUE(AddRowsCommand(nullptr, false).run(family, {2}, Columns::AsNeeded, &told));
    EXPECT_EQ(told, "Aligned a%2Bb to the other rows; 2 columns have come");
}

TEST_F(AddRowsCommandTest, WithoutRowsOrOthersNothingRuns)
{
    use("no-such-aligner {input}");
    EXPECT_EQ(refusal({}), "No row of sample was aligned: none that has residues is chosen.");
    EXPECT_EQ(refusal({0, 1, 2}), "No row of sample was aligned: there are no others with residues "
                                  "to align them to.");
}

TEST_F(AddRowsCommandTest, AMissingProgramIsNamed)
{
    use("no-such-aligner {input}");
    EXPECT_EQ(refusal(), "No row of sample was aligned: no-such-aligner was not found or cannot be "
                         "started; it is the package mafft.");
}

TEST_F(AddRowsCommandTest, AProgramThatFailsOrLiesIsTold)
{
    useScript("echo 'out of paper' >&2; exit 7\n");
    EXPECT_TRUE(refusal().endsWith("failed: out of paper.")) << qPrintable(refusal());
    useScript("printf '>r0\\nACDEF\\n>r1\\nACDEF\\n>r2\\nCDEF-\\n'\n");
    EXPECT_TRUE(refusal().endsWith("is not to be trusted; it tore the columns of the other rows "
                                   "apart."))
        << qPrintable(refusal());
}

TEST_F(AddRowsCommandTest, ResiduesThatWouldBeLostAreCountedAndNothingChanges)
{
    useScript("printf '>r0\\nAC-DEF\\n>r1\\nA-CDEF\\n>r2\\n---DEF\\n'\n");
    EXPECT_EQ(refusal({2}, Columns::Kept),
              "No row of sample was aligned: 1 residue, of sample3, has no column among those of "
              "the other rows, and would be lost. Align to the Rest makes a column for it.");
    useScript(kGoodAdding);
    EXPECT_TRUE(refusal({2}, Columns::Kept).endsWith("has made columns."));
}

TEST_F(AddRowsCommandTest, ItCanBeCancelled)
{
    useScript("sleep 1000\n");
    Alignment &family = sample();
    const LogLines log;
    std::function<void()> cancel = [&cancel] {
        auto *dialog = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            QTimer::singleShot(1, qApp, cancel);
        else
            dialog->findChild<QPushButton *>()->click();
    };
    QTimer::singleShot(1, qApp, cancel);
    EXPECT_FALSE(AddRowsCommand(nullptr, true).run(family, {2}, Columns::AsNeeded));
    EXPECT_EQ(rowsOf(family), (Texts{"AC--DEF", "A-C-DEF", "CDEF---"}));
    EXPECT_EQ(log.texts(), QStringList());
    EXPECT_FALSE(m_History.canUndo());
}

TEST_F(AddRowsCommandTest, ALockedAlignmentIsRefusedBeforeAnythingRuns)
{
    useScript("touch '" + m_Folder.filePath("ran").toUtf8() + "'\n" + kGoodAdding);
    Alignment &family = sample();
    TAMBO::setObjectLocked(family, true);
    EXPECT_FALSE(AddRowsCommand(nullptr, true).run(family, {2}, Columns::AsNeeded));
    EXPECT_FALSE(QFile::exists(m_Folder.filePath("ran")));
    EXPECT_EQ(m_Refused, std::vector<std::string>{"sample"});
}

// ---- MAFFT itself, as it is called without a setting

TEST_F(AddRowsCommandTest, MafftPutsAnAddedRowWhereItBelongs)
{
    // Letters that it does not know, small ones, and a row of gaps.
    Alignment &family = alignment("sample", {"MKTAYIAKQRQISFVKSHFSRQ-", "MKTAYIAKQRQISFVKSHFSRQ-",
                                             "-----------------------", "AYUAKQRXISJvkshFSRQLEER",
                                             "MKTA-IAKQRQISFVKSHFSRQ-"});
    const Texts before = rowsOf(family);
    m_History.clear();
    EXPECT_TRUE(AddRowsCommand(nullptr, true).run(family, {3}, Columns::AsNeeded));
    EXPECT_EQ(rowsOf(family), (Texts{"MKTAYIAKQRQISFVKSHFSRQ----", "MKTAYIAKQRQISFVKSHFSRQ----",
                                     "--------------------------", "---AYUAKQRXISJvkshFSRQLEER",
                                     "MKTA-IAKQRQISFVKSHFSRQ----"}));
    EXPECT_EQ(m_History.size(), 1U);
    EXPECT_TRUE(m_History.undo());
    EXPECT_EQ(rowsOf(family), before);
}

TEST_F(AddRowsCommandTest, MafftKeepsTheColumnsOrNothingChanges)
{
    Alignment &family = alignment("sample", {"MKTAYIAKQRQISFVKSHFSRQ", "MKTAYIAKQRQISFVKSHFSRQ",
                                             "AYIAKQRQISFSHFSRQ-----", "AYIAKQRWWWQISFVKSHFSRQ"});
    m_History.clear();
    EXPECT_TRUE(AddRowsCommand(nullptr, false).run(family, {2}, Columns::Kept));
    EXPECT_EQ(rowsOf(family)[2], "---AYIAKQRQISF--SHFSRQ");
    const Texts before = rowsOf(family);
    const LogLines log;
    EXPECT_FALSE(AddRowsCommand(nullptr, false).run(family, {3}, Columns::Kept));
    EXPECT_EQ(rowsOf(family), before);
    EXPECT_TRUE(log.texts().join("").startsWith(
        "No row of sample was aligned: 3 residues, the first of them of sample4, have no column"))
        << qPrintable(log.texts().join('\n'));
    EXPECT_TRUE(AddRowsCommand(nullptr, false).run(family, {3}, Columns::AsNeeded));
    EXPECT_EQ(rowsOf(family)[0], "MKTAYIAKQR---QISFVKSHFSRQ");
    EXPECT_EQ(rowsOf(family)[3], "---AYIAKQRWWWQISFVKSHFSRQ");
}

// Whatever rows there are, and wherever those that are aligned stand among them.
class AddRowsProperty : public AddRowsCommandTest, public testing::WithParamInterface<unsigned>
{
protected:
    std::size_t number(std::size_t least, std::size_t most)
    {
        return std::uniform_int_distribution<std::size_t>(least, most)(m_Random);
    }
    Texts randomRows()
    {
        constexpr std::string_view kLetters = "ACDEFGHIKLMNPQRSTVWYXBZUJOacdx";
        const std::size_t width = number(2, 60);
        Texts rows(number(3, 9));
        for (std::string &row : rows) {
            for (std::size_t col = 0; col < width; ++col)
                row += number(0, 2) == 0 ? '-' : kLetters[number(0, kLetters.size() - 1)];
            row[number(0, width - 1)] = 'A';
        }
        return rows;
    }
    std::mt19937 m_Random{GetParam()};
};

TEST_P(AddRowsProperty, TheOthersColumnsStayTogetherAndNoResidueIsLost)
{
    const Texts before = randomRows();
    Alignment &family = alignment("random", before);
    std::vector<unsigned long> added;
    for (unsigned long row = 0; row < before.size(); ++row)
        if (number(0, 2) == 0)
            added.push_back(row);
    if (added.empty() || added.size() == before.size())
        added = {static_cast<unsigned long>(number(0, before.size() - 1))};
    m_History.clear();
    ASSERT_TRUE(AddRowsCommand(nullptr, false).run(family, added, Columns::AsNeeded));
    const Texts after = rowsOf(family);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t row = 0; row < before.size(); ++row)
        EXPECT_EQ(withoutGaps(after[row]), withoutGaps(before[row])) << row;
    EXPECT_EQ(othersOf(after, added), othersOf(before, added));
    // No column is left over, but for those that were empty before.
    const auto emptyOnes = [](const Texts &rows) {
        std::size_t count = 0;
        for (std::size_t col = 0; col < rows.front().size(); ++col)
            count += std::ranges::all_of(rows, [col](const auto &row) { return row[col] == '-'; });
        return count;
    };
    EXPECT_EQ(emptyOnes(after), emptyOnes(before));
    EXPECT_EQ(m_History.size(), 1U);
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(rowsOf(family), before);
}

INSTANTIATE_TEST_SUITE_P(Seeds, AddRowsProperty, testing::Range(1U, 25U));

} // namespace AddRowsCommandTest
