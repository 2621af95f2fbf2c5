// SPDX-License-Identifier: GPL-3.0-or-later
// Sequences that become rows when they are aligned to the others, with programs of the test's own
// and with MAFFT.
#include "AddRowsCommand.h"

#include "AppFixture.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "ObjectOperations.h"
#include "support/Answering.h"
#include "support/LogLines.h"
#include "support/ScopedSettings.h"

#include <QFile>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>

namespace AddSequencesTest {

using TAMBO::Alignment;
using TAMBO::app::AddRowsCommand;
using Texts = std::vector<std::string>;

class AddSequences : public RecordedFixture
{
protected:
    void use(const QByteArray &command)
    {
        m_Settings.reset();
        m_Settings = std::make_unique<ScopedSettings>("[Realign]\nAddRows = " + command + '\n');
    }
    void useScript(const QByteArray &script)
    {
        const QString path = write("aligner", "#!/bin/sh\n" + script);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        use(path.toUtf8() + " {input} {added}");
    }
    // Answers only when the test has done what it wants to do meanwhile.
    void useWaitingScript(const QByteArray &script)
    {
        const QByteArray file = path("go").toUtf8();
        useScript("while [ ! -e '" + file + "' ]; do sleep 0.01; done\n" + script);
    }
    void meanwhile(const std::function<void()> &act)
    {
        QTimer::singleShot(1, qApp, [this, act] {
            act();
            write("go", {});
        });
    }
    Alignment &sample()
    {
        Alignment &family = alignment("sample", kSample);
        m_History.clear();
        return family;
    }
    // Also what it has in the log.
    bool add(Alignment &family, const Compounds &sequences, bool hasUser = false)
    {
        m_Told.clear();
        const LogLines log;
        const bool isDone = AddRowsCommand(nullptr, hasUser).add(family, sequences, &m_Told);
        m_Log = log.texts();
        return isDone;
    }
    // The one message of a run that leaves all as it is.
    std::string refusal(const Compounds &sequences)
    {
        Alignment &family = sample();
        EXPECT_FALSE(add(family, sequences));
        expectAsBefore(family);
        EXPECT_EQ(m_Told, QString());
        EXPECT_EQ(m_Log.size(), 1) << m_Log.join('\n').toStdString();
        return m_Log.join('\n').toStdString();
    }
    void expectAsBefore(const Alignment &family)
    {
        EXPECT_EQ(rowsOf(family), kSample);
        EXPECT_FALSE(m_History.canUndo());
    }

    const Texts kSample = {"AC--DEF", "A-C-DEF"};
    QString m_Told;
    QStringList m_Log;

private:
    std::unique_ptr<ScopedSettings> m_Settings;
};

constexpr const char *kGoodAnswer = "printf '>r0\\nAC-DE-F\\n>r1\\nA-CDE-F\\n>r2\\n--CDEF-\\n'\n";

TEST_F(AddSequences, OneBecomesARowInOneStepAndTheOthersStayTogether)
{
    useScript(kGoodAnswer);
    Alignment &family = sample();
    TAMBO::Peptide &added = sequence("added", "CDEF");
    m_History.clear();
    EXPECT_TRUE(add(family, {&added}, true));
    EXPECT_EQ(rowsOf(family), (Texts{"AC--DE-F", "A-C-DE-F", "--C-DEF-"}));
    EXPECT_EQ(family.GetSeq(2), &added);
    EXPECT_EQ(m_Told, "Added and aligned added; one column has come");
    EXPECT_EQ(m_Log, QStringList()) << "who asks tells it";
    EXPECT_EQ(m_History.size(), 1U);
    EXPECT_EQ(m_History.undoLabel(), "Add and align sequences in sample");
    EXPECT_TRUE(m_History.undo());
    EXPECT_EQ(rowsOf(family), kSample);
    EXPECT_TRUE(m_History.redo());
    EXPECT_EQ(rowsOf(family), (Texts{"AC--DE-F", "A-C-DE-F", "--C-DEF-"}));
    EXPECT_EQ(family.GetSeq(2), &added);
}

TEST_F(AddSequences, RowsThatAreThereAlreadyAreLeftOutAndNamed)
{
    useScript(kGoodAnswer);
    Alignment &family = sample();
    TAMBO::Peptide &added = sequence("added", "CDEF");
    EXPECT_TRUE(add(family, {family.GetSeq(0), &added, &added}));
    EXPECT_EQ(rowsOf(family).size(), 3U);
    EXPECT_EQ(m_Told, "Added and aligned added; one column has come; sample1 was a row already");
    m_History.clear();
    use("no-such-aligner {input}");
    EXPECT_TRUE(add(family, {&added}));
    EXPECT_EQ(m_Told, "Nothing was added: added is a row of sample already");
    EXPECT_TRUE(add(family, {&added, family.GetSeq(0)}));
    EXPECT_EQ(m_Told, "Nothing was added: the 2 sequences are rows of sample already");
    EXPECT_EQ(rowsOf(family).size(), 3U);
    EXPECT_FALSE(m_History.canUndo());
}

TEST_F(AddSequences, WithoutResiduesNothingRuns)
{
    use("no-such-aligner {input}");
    Alignment &family = sample();
    for (const Compounds &none : {Compounds{}, Compounds{&family}, Compounds{nullptr}}) {
        EXPECT_TRUE(add(family, none));
        EXPECT_EQ(m_Told, "Nothing was added to sample: there is no sequence with residues");
    }
    expectAsBefore(family);
}

TEST_F(AddSequences, WithoutRowsToAlignThemToNothingRuns)
{
    use("no-such-aligner {input}");
    Alignment &empty = alignment("empty", {"---"});
    EXPECT_FALSE(add(empty, {&sequence("added", "CDEF")}));
    EXPECT_EQ(m_Log, QStringList{"Nothing was added to empty: there are no others with residues to "
                                 "align them to."});
    EXPECT_EQ(rowsOf(empty), Texts{"---"});
}

TEST_F(AddSequences, AMissingProgramIsNamedAndNothingIsAdded)
{
    use("no-such-aligner {input}");
    EXPECT_EQ(refusal({&sequence("added", "CDEF")}),
              "Nothing was added to sample: no-such-aligner was not found or cannot be started; it "
              "is the package mafft.");
}

TEST_F(AddSequences, OfAProgramThatFailsOrLiesNothingIsAdded)
{
    useScript("echo 'out of paper' >&2; exit 7\n");
    const Compounds added = {&sequence("added", "CDEF")};
    EXPECT_TRUE(refusal(added).ends_with("failed: out of paper."));
    useScript("printf '>r0\\nACDEF\\n>r1\\nACDEF\\n>r2\\nCDEF-\\n'\n");
    EXPECT_TRUE(refusal(added).ends_with("it tore the columns of the other rows apart."));
    useScript("printf '>r0\\nAC-DEF\\n>r1\\nA-CDEF\\n>r2\\n--CDWF\\n'\n");
    EXPECT_TRUE(refusal(added).ends_with("it changed the residues of a sequence."));
}

TEST_F(AddSequences, ResiduesThatAnAnswerLacksAreCountedAndNothingIsAdded)
{
    useScript("printf '>r0\\nAC-DEF\\n>r1\\nA-CDEF\\n>r2\\n---DEF\\n'\n");
    const std::string told = refusal({&sequence("added", "CDEF")});
    EXPECT_TRUE(told.starts_with("Nothing was added to sample: 1 residue, of added, has no column "
                                 "among those"))
        << told;
}

TEST_F(AddSequences, WhoStopsTheProgramAddsNothing)
{
    useScript("sleep 1000\n");
    Alignment &family = sample();
    TAMBO::Peptide &added = sequence("added", "CDEF");
    m_History.clear();
    answering<QProgressDialog>(
        [](QProgressDialog &dialog) { dialog.findChild<QPushButton *>()->click(); });
    EXPECT_FALSE(add(family, {&added}, true));
    expectAsBefore(family);
    EXPECT_EQ(m_Log, QStringList());
    EXPECT_EQ(m_Told, QString());
}

TEST_F(AddSequences, AnAlignmentThatIsEditedMeanwhileStaysAsItWasEdited)
{
    useWaitingScript(kGoodAnswer);
    Alignment &family = sample();
    TAMBO::Peptide &added = sequence("added", "CDEF");
    meanwhile([&family] {
        const DataPoint<Alignment> change(nullptr, &family);
        family.insertGap(0, 0);
    });
    EXPECT_FALSE(add(family, {&added}));
    EXPECT_EQ(m_Log, QStringList{"Nothing was added to sample: it was changed meanwhile."});
    EXPECT_EQ(rowsOf(family), (Texts{"-AC--DEF", "A-C-DEF-"}));
}

TEST_F(AddSequences, ASequenceThatIsClosedMeanwhileIsNotAdded)
{
    useWaitingScript(kGoodAnswer);
    Alignment &family = sample();
    TAMBO::Peptide &added = sequence("added", "CDEF");
    meanwhile([&added] {
        const DataDelete<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(&added);
    });
    EXPECT_FALSE(add(family, {&added}));
    EXPECT_EQ(m_Log, QStringList{"Nothing was added to sample: a sequence was changed meanwhile."});
    EXPECT_EQ(rowsOf(family), kSample);
}

TEST_F(AddSequences, ALockedAlignmentIsRefusedBeforeAnythingRuns)
{
    useScript("touch '" + path("ran").toUtf8() + "'\n" + kGoodAnswer);
    Alignment &family = sample();
    TAMBO::Peptide &added = sequence("added", "CDEF");
    TAMBO::setObjectLocked(family, true);
    EXPECT_FALSE(add(family, {&added}, true));
    EXPECT_FALSE(QFile::exists(path("ran")));
    EXPECT_EQ(m_Refused, std::vector<std::string>{"sample"});
}

// ---- MAFFT itself, as it is called without a setting

TEST_F(AddSequences, MafftAlignsSequencesThatAreLongerThanTheRowsAndChains)
{
    Alignment &family = alignment("sample", {"MKTAYIAKQRQISFVKSHFSRQ", "MKTAYIAKQRQISFVKSHFSRQ"});
    TAMBO::Peptide &longer = sequence("longer", "GGSGMKTAYIAKQRWWWQISFVkshFSRQLEERUJ");
    Compounds chains;
    TAMBO::GetPeptides(&structure("1abc", "A", "AYIAKQRQISFVK"), chains, true);
    m_History.clear();
    ASSERT_TRUE(add(family, {&longer, chains.front()}));
    EXPECT_EQ(
        rowsOf(family),
        (Texts{"----MKTAYIAKQR---QISFVKSHFSRQ------", "----MKTAYIAKQR---QISFVKSHFSRQ------",
               "GGSGMKTAYIAKQRWWWQISFVkshFSRQLEERUJ", "-------AYIAKQR---QISFVK------------"}));
    EXPECT_EQ(m_Told, "Added and aligned 2 sequences; 13 columns have come");
    EXPECT_EQ(family.GetSeq(3), chains.front());
    EXPECT_TRUE(m_History.undo());
    EXPECT_EQ(rowsOf(family), (Texts{"MKTAYIAKQRQISFVKSHFSRQ", "MKTAYIAKQRQISFVKSHFSRQ"}));
}

// Whatever rows there are, and whatever is added.
class AddSequencesProperty : public AddSequences, public testing::WithParamInterface<unsigned>
{
protected:
    std::size_t number(std::size_t least, std::size_t most)
    {
        return std::uniform_int_distribution<std::size_t>(least, most)(m_Random);
    }
    std::string randomText(std::size_t length, bool hasGaps)
    {
        constexpr std::string_view kLetters = "ACDEFGHIKLMNPQRSTVWYXBZUJOacdx";
        std::string text;
        for (std::size_t i = 0; i < length; ++i)
            text += hasGaps && number(0, 2) == 0 ? '-' : kLetters[number(0, kLetters.size() - 1)];
        text[number(0, length - 1)] = 'A';
        return text;
    }
    static std::string withoutGaps(std::string text)
    {
        std::erase(text, '-');
        return text;
    }
    // The columns in which one of the first rows has a residue.
    static Texts columnsOf(const Texts &rows, std::size_t count)
    {
        Texts kept(count);
        for (std::size_t col = 0; col < rows.front().size(); ++col)
            if (std::any_of(rows.begin(), rows.begin() + long(count),
                            [col](const std::string &row) { return row[col] != '-'; }))
                for (std::size_t row = 0; row < count; ++row)
                    kept[row] += rows[row][col];
        return kept;
    }
    std::mt19937 m_Random{GetParam()};
};

TEST_P(AddSequencesProperty, TheRowsColumnsStayTogetherAndNoResidueIsLost)
{
    const std::size_t width = number(2, 60);
    Texts before(number(1, 7));
    for (std::string &row : before)
        row = randomText(width, true);
    Alignment &family = alignment("random", before);
    Texts letters(number(1, 4));
    Compounds added;
    for (std::string &text : letters) {
        text = randomText(number(1, 90), false);
        added.push_back(&sequence("s", text));
    }
    m_History.clear();
    ASSERT_TRUE(add(family, added)) << m_Log.join('\n').toStdString();
    const Texts after = rowsOf(family);
    ASSERT_EQ(after.size(), before.size() + letters.size());
    EXPECT_EQ(columnsOf(after, before.size()), columnsOf(before, before.size()));
    for (std::size_t i = 0; i < letters.size(); ++i)
        EXPECT_EQ(withoutGaps(after[before.size() + i]), letters[i]) << i;
    EXPECT_EQ(m_History.size(), 1U);
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(rowsOf(family), before);
    ASSERT_TRUE(m_History.redo());
    EXPECT_EQ(rowsOf(family), after);
}

INSTANTIATE_TEST_SUITE_P(Seeds, AddSequencesProperty, testing::Range(1U, 25U));

} // namespace AddSequencesTest
