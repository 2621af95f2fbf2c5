// SPDX-License-Identifier: GPL-3.0-or-later
// File, Save and Save As: what was opened from a file goes back to it.
#include "AppFixture.h"
#include "ChangedFileBox.h"
#include "DataPoint.h"
#include "ExportDialog.h"
#include "FileReader.h"
#include "LossQuestion.h"
#include "MainWindow.h"
#include "ObjectCommands.h"
#include "ObjectOperations.h"
#include "ObjectTree.h"
#include "ObjectTreeModel.h"
#include "PropertiesDialog.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "support/Answering.h"
#include "support/LogLines.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>

#include <chrono>
#include <filesystem>
#include <utility>

namespace SavingTest {

using namespace TAMBO;
using app::ChangedFileBox;
using app::ExportDialog;
using app::LoadReport;
using app::LossQuestion;
using app::Workbench;

constexpr const char *kFasta = ">a\nAC-D\n>b\nACCD\n";
constexpr const char *kSavedFasta = ">a\nA-CD\n>b\nACCD\n";

class SavingTest : public AppFixture
{
protected:
    SavingTest()
    {
        m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins());
        QObject::connect(m_Workbench.get(), &Workbench::opened, m_Workbench.get(),
                         [this](const LoadReport &report) { m_Report = report; });
    }
    ~SavingTest() override
    {
        history().clear();
        m_Workbench.reset();
    }

    History &history() { return m_Workbench->undo().history(); }
    void open(const QString &file)
    {
        m_Workbench->open({file});
        waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    }
    Alignment &openFamily(const QString &name, const QByteArray &text = kFasta)
    {
        open(write(name, text));
        return *m_Report.alignments.back();
    }
    static void moveGap(Alignment &family)
    {
        const DataPoint<Alignment> guard(nullptr, &family);
        ASSERT_TRUE(guard.m_good);
        guard->moveGap(0, family.GetSequence(0, false).find('-'), 1, true);
    }
    void pick(const std::vector<Compound *> &objects)
    {
        app::ObjectTree &tree = m_Workbench->window().tree();
        tree.expandAll();
        tree.clearSelection();
        for (const Compound *object : objects)
            tree.selectionModel()->select(m_Workbench->window().objects().indexOf(object),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
        EXPECT_EQ(tree.pickedObjects().size(), objects.size());
    }
    QAction *action(const QString &text)
    {
        for (QAction *entry : m_Workbench->window().menuBar()->actions().front()->menu()->actions())
            if (entry->text().remove(u'&') == text)
                return entry;
        ADD_FAILURE() << text.toStdString();
        return nullptr;
    }
    // What the status line says of it.
    QString save(const QString &text = "Save")
    {
        m_Workbench->window().statusBar()->clearMessage();
        action(text)->trigger();
        return m_Workbench->window().statusBar()->currentMessage();
    }
    // Keeps what the box says, and clicks.
    template <typename Box> void answerBox(const char *button)
    {
        answering<Box>([this, button](Box &box) {
            m_Said = box.text() + '\n' + box.informativeText();
            m_Default =
                box.defaultButton() == nullptr ? QString() : box.defaultButton()->objectName();
            if (button == nullptr)
                box.reject();
            else
                box.template findChild<QPushButton *>(button)->click();
        });
    }
    void answerSaveAs(const QString &name)
    {
        answering<ExportDialog>([this, name](ExportDialog &dialog) {
            m_Said = dialog.windowTitle();
            if (name.isEmpty())
                return dialog.reject();
            // The toolkit takes the folder of a file that it knows for told.
            dialog.setDirectory(m_Folder.path());
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(name);
            dialog.setOption(QFileDialog::DontConfirmOverwrite);
            dialog.accept();
        });
    }

    std::unique_ptr<Workbench> m_Workbench;
    LoadReport m_Report;
    QString m_Said;
    QString m_Default;
};

// ---- Where it goes

TEST_F(SavingTest, AnAlignmentGoesBackToItsFileInItsFormat)
{
    Alignment &family = openFamily("x.fasta");
    moveGap(family);
    EXPECT_EQ(save(), "Saved x.fasta");
    EXPECT_EQ(bytesOf(path("x.fasta")), kSavedFasta);
    EXPECT_FALSE(history().isModified(family));
}

TEST_F(SavingTest, SavingWhoseCopyIsGivenUpLeavesTheFileAndAsksNothing)
{
    Alignment &family = openFamily("x.fasta");
    moveGap(family);
    const auto progress =
        std::exchange(modelHooks().working, [](const char *, double, bool) { return false; });
    save();
    save("Save As…");
    modelHooks().working = progress;
    EXPECT_EQ(bytesOf(path("x.fasta")), kFasta);
    EXPECT_TRUE(history().isModified(family));
    save();
    EXPECT_EQ(bytesOf(path("x.fasta")), kSavedFasta);
}

TEST_F(SavingTest, ACompressedFileStaysCompressed)
{
    Alignment &family = openFamily("x.fasta");
    answerSaveAs("y.fasta.gz");
    pick({&family});
    EXPECT_EQ(save("Save As…"), "Saved y.fasta.gz");
    moveGap(family);
    EXPECT_EQ(save(), "Saved y.fasta.gz");
    EXPECT_TRUE(bytesOf(path("y.fasta.gz")).startsWith("\x1f\x8b"));
    EXPECT_EQ(bytesOf(path("x.fasta")), kFasta);
    const Result<FileContents> contents = readFile(path("y.fasta.gz").toStdString());
    ASSERT_TRUE(contents.has_value());
    EXPECT_EQ(contents.value().format, "fasta");
}

// Neither names of ten characters nor blocks.
TEST_F(SavingTest, APhylipFileKeepsItsKind)
{
    moveGap(openFamily("x.phy", "2 4\nlong_name_of_a_row AC-D\nb ACCD\n"));
    EXPECT_EQ(save(), "Saved x.phy");
    const QByteArray text = bytesOf(path("x.phy"));
    EXPECT_TRUE(text.startsWith(" 2 4\nlong_name_of_a_row A-CD\nb ")) << text.toStdString();
}

TEST_F(SavingTest, WhatItsFileHoldsIsNotWrittenAgain)
{
    Alignment &family = openFamily("x.fasta");
    const auto before = QFileInfo(path("x.fasta")).lastModified();
    touch("x.fasta");
    pick({&family});
    EXPECT_EQ(save(), "x.fasta is up to date.");
    EXPECT_NE(QFileInfo(path("x.fasta")).lastModified(), before)
        << "it is as the touch has left it";
    EXPECT_EQ(bytesOf(path("x.fasta")), kFasta);
}

TEST_F(SavingTest, WhatHasNoFileOfItsOwnIsSavedWithADialog)
{
    const QByteArray one = "# STOCKHOLM 1.0\na AC-D\nb ACCD\n//\n";
    for (const auto &[name, text] :
         {std::pair(QString("several.sto"), one + one),
          std::pair(QString("bare.txt"), QByteArray("a AC-D\nb ACCD\n"))}) {
        Alignment &family = openFamily(name, text);
        pick({&family});
        answerSaveAs({});
        EXPECT_EQ(save(), QString());
        EXPECT_TRUE(m_Said.startsWith("Save ")) << name.toStdString();
        EXPECT_EQ(bytesOf(path(name)), text);
    }
}

TEST_F(SavingTest, ASequenceOfAFamilyIsSavedWithADialog)
{
    const QByteArray text = ">a\nACD\n>b\nACCD\n";
    open(write("family.fasta", text));
    Compound *const first = *Space::instance()->begin();
    pick({first});
    answerSaveAs("a.ali");
    EXPECT_EQ(save(), "Saved a.ali");
    EXPECT_EQ(bytesOf(path("family.fasta")), text);
    EXPECT_TRUE(QFile::exists(path("a.ali")));
}

TEST_F(SavingTest, WithNothingPickedTheOneUnsavedObjectIsSaved)
{
    Alignment &first = openFamily("x.fasta");
    Alignment &second = openFamily("y.fasta");
    EXPECT_EQ(save(), "Nothing is unsaved.");
    moveGap(second);
    EXPECT_EQ(save(), "Saved y.fasta");
    moveGap(first);
    const QByteArray before = bytesOf(path("y.fasta"));
    second.insertGap(0, 0);
    pick({});
    EXPECT_EQ(save(), "Several objects are unsaved: select those to save.");
    EXPECT_EQ(bytesOf(path("x.fasta")), kFasta);
    EXPECT_EQ(bytesOf(path("y.fasta")), before);
}

TEST_F(SavingTest, WhatWasPickedAsItWasOpenedIsSavedWhereItIsUnsavedAndElseTheOneThatIs)
{
    Alignment &first = openFamily("x.fasta");
    Alignment &second = openFamily("y.fasta");
    EXPECT_FALSE(m_Workbench->window().tree().isPickedByUser());
    moveGap(first);
    EXPECT_EQ(save(), "Saved x.fasta");
    moveGap(second);
    second.insertGap(0, 0);
    moveGap(first);
    first.insertGap(0, 0);
    EXPECT_EQ(save(), "Saved y.fasta");
    EXPECT_EQ(save(), "Saved x.fasta");
    EXPECT_EQ(save(), "Nothing is unsaved.");
    answerSaveAs("z.fasta");
    EXPECT_EQ(save("Save As…"), "Saved z.fasta");
}

TEST_F(SavingTest, OfSeveralPickedEachGoesToItsOwnFile)
{
    Alignment &first = openFamily("x.fasta");
    Alignment &second = openFamily("y.fasta");
    moveGap(first);
    moveGap(second);
    pick({&first, &second});
    EXPECT_FALSE(action("Save As…")->isEnabled()) << "that is for one";
    EXPECT_EQ(save(), "Saved 2 files");
    EXPECT_EQ(bytesOf(path("x.fasta")), kSavedFasta);
    EXPECT_EQ(bytesOf(path("y.fasta")), kSavedFasta);
}

TEST_F(SavingTest, TheEntriesWaitForAnObject)
{
    EXPECT_FALSE(action("Save")->isEnabled());
    EXPECT_FALSE(action("Save As…")->isEnabled());
    alignment("new", {"AC"});
    EXPECT_TRUE(action("Save")->isEnabled());
    EXPECT_TRUE(action("Save As…")->isEnabled());
    EXPECT_EQ(action("Save")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_S));
    EXPECT_EQ(action("Save As…")->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
}

// ---- Losses

TEST_F(SavingTest, LossesAreAskedAboutOnce)
{
    Alignment &family = openFamily("x.aln", "CLUSTAL\n\na AC-D\nb ACCD\n");
    renameObject(*family.GetSeq(0), "two words");
    const QByteArray before = bytesOf(path("x.aln"));
    answerBox<LossQuestion>(nullptr);
    EXPECT_EQ(save(), QString());
    EXPECT_EQ(bytesOf(path("x.aln")), before);
    EXPECT_TRUE(history().isModified(family));
    answerBox<LossQuestion>("Save");
    EXPECT_EQ(save(), "Saved x.aln");
    EXPECT_TRUE(m_Said.startsWith("Something is lost when x is saved to x.aln.\n"))
        << m_Said.toStdString();
    EXPECT_EQ(m_Default, "SaveAs");
    moveGap(family);
    EXPECT_EQ(save(), "Saved x.aln");
    EXPECT_TRUE(bytesOf(path("x.aln")).contains("two_words"));
    const LogLines lines;
    family.insertGap(0, 0);
    renameObject(*family.GetSeq(1), "three more words");
    EXPECT_EQ(save(), "Saved x.aln") << "names once more, and no other loss";
    EXPECT_TRUE(lines.texts().join(u'\n').contains("x.aln: 2 of 2 names have characters"))
        << lines.texts().join(u'\n').toStdString();
}

TEST_F(SavingTest, ALossOfANewKindIsAskedAboutAndThoseBeforeStayAccepted)
{
    Alignment &family = openFamily("x.aln", "CLUSTAL\n\na AC-D\nb ACCD\n");
    renameObject(*family.GetSeq(0), "two words");
    answerBox<LossQuestion>("Save");
    EXPECT_EQ(save(), "Saved x.aln");
    renameObject(family, "relatives");
    answerBox<LossQuestion>("SaveAs");
    answerSaveAs({});
    EXPECT_EQ(save(), QString());
    EXPECT_EQ(m_Said, "Save relatives");
    answerBox<LossQuestion>("Save");
    EXPECT_EQ(save(), "Saved x.aln");
    EXPECT_TRUE(m_Said.contains("It is called relatives now")) << m_Said.toStdString();
    renameObject(family, "kin");
    renameObject(*family.GetSeq(1), "three more words");
    EXPECT_EQ(save(), "Saved x.aln");
}

TEST_F(SavingTest, LossesInAnotherFileAreAskedAboutAgain)
{
    Alignment &family = openFamily("x.aln", "CLUSTAL\n\na AC-D\nb ACCD\n");
    renameObject(*family.GetSeq(0), "two words");
    answerBox<LossQuestion>("Save");
    EXPECT_EQ(save(), "Saved x.aln");
    m_Workbench->noteWritten(family, {path("y.aln"), {FileFormat::Clustal}}, {});
    moveGap(family);
    answerBox<LossQuestion>("Save");
    EXPECT_EQ(save(), "Saved y.aln");
    family.insertGap(0, 0);
    EXPECT_EQ(save(), "Saved y.aln");
}

TEST_F(SavingTest, TheFileOfAStructureIsReplacedWhenTheUserKnowsWhatGoesWithIt)
{
    const std::filesystem::path source =
        std::filesystem::path(SOURCE_DIR) / "examples/1PPF_E_superposed.pdb";
    std::filesystem::copy_file(source, path("1ppf.pdb").toStdString());
    open(path("1ppf.pdb"));
    Structure &structure = *m_Report.structures.front();
    structure.chain(0)->setNumber(0, SequenceNumber(500));
    answerBox<LossQuestion>("Save");
    EXPECT_EQ(save(), "Saved 1ppf.pdb");
    EXPECT_TRUE(m_Said.contains("waters")) << m_Said.toStdString();
    structure.chain(0)->setNumber(0, SequenceNumber(501));
    EXPECT_EQ(save(), "Saved 1ppf.pdb") << "it holds no more than is loaded now";
    const Result<FileContents> contents = readFile(path("1ppf.pdb").toStdString());
    ASSERT_TRUE(contents.has_value());
    EXPECT_EQ(contents.value().structures.front().chains.front().residues.front().number,
              SequenceNumber(501));
}

TEST_F(SavingTest, ThatARenamedAlignmentGoesToAFileOfItsOldNameIsAskedAbout)
{
    Alignment &family = openFamily("x.fasta");
    renameObject(family, "relatives");
    answerBox<LossQuestion>("Save");
    EXPECT_EQ(save(), "Saved x.fasta");
    EXPECT_TRUE(m_Said.contains("It is called relatives now, and the file would keep its name."))
        << m_Said.toStdString();
    moveGap(family);
    EXPECT_EQ(save(), "Saved x.fasta");
}

// ---- Changes behind the user's back

TEST_F(SavingTest, AFileThatWasChangedIsNotOverwrittenWithoutAQuestion)
{
    Alignment &family = openFamily("x.fasta");
    moveGap(family);
    const QByteArray others = ">a\nACD-\n>b\nACCD\n";
    changeBehind("x.fasta", others);
    answerBox<ChangedFileBox>(nullptr);
    EXPECT_EQ(save(), QString());
    EXPECT_TRUE(m_Said.startsWith("x.fasta was changed by another program.\nIt was changed at "))
        << m_Said.toStdString();
    EXPECT_EQ(m_Default, "SaveAs");
    EXPECT_EQ(bytesOf(path("x.fasta")), others);
    EXPECT_TRUE(history().isModified(family));
    answerBox<ChangedFileBox>("SaveAs");
    answerSaveAs("y.fasta");
    EXPECT_EQ(save(), "Saved y.fasta");
    EXPECT_EQ(bytesOf(path("x.fasta")), others);
}

TEST_F(SavingTest, AChangedFileIsOverwrittenWhenTheUserSaysSo)
{
    Alignment &family = openFamily("x.fasta");
    moveGap(family);
    changeBehind("x.fasta", ">a\nACD-\n>b\nACCD\n");
    answerBox<ChangedFileBox>("Overwrite");
    EXPECT_EQ(save(), "Saved x.fasta");
    EXPECT_EQ(bytesOf(path("x.fasta")), kSavedFasta);
    // What was written is what is known from now on.
    family.insertGap(0, 0);
    EXPECT_EQ(save(), "Saved x.fasta");
}

TEST_F(SavingTest, AFileThatWasTouchedIsWrittenWithoutAQuestion)
{
    Alignment &family = openFamily("x.fasta");
    moveGap(family);
    touch("x.fasta");
    EXPECT_EQ(save(), "Saved x.fasta");
    touch("x.fasta");
    family.insertGap(0, 0);
    EXPECT_EQ(save(), "Saved x.fasta") << "of what was saved no less is known";
}

TEST_F(SavingTest, AFileThatIsGoneIsWrittenAnew)
{
    Alignment &family = openFamily("x.fasta");
    QFile::remove(path("x.fasta"));
    answerBox<ChangedFileBox>(nullptr);
    pick({&family});
    EXPECT_EQ(save(), QString()) << "it is not up to date";
    EXPECT_FALSE(QFile::exists(path("x.fasta")));
    answerBox<ChangedFileBox>("Overwrite");
    EXPECT_EQ(save(), "Saved x.fasta");
    EXPECT_TRUE(m_Said.startsWith("x.fasta is not there any more.\n")) << m_Said.toStdString();
    EXPECT_EQ(bytesOf(path("x.fasta")), kFasta);
}

TEST_F(SavingTest, ADiskThatIsFullIsToldOnceAndNothingCountsAsSaved)
{
    Alignment &family = openFamily("x.fasta");
    moveGap(family);
    QFile::remove(path("x.fasta"));
    ASSERT_TRUE(QFile::link("/dev/full", path("x.fasta")));
    answerBox<ChangedFileBox>("Overwrite");
    EXPECT_EQ(save(), QString());
    EXPECT_TRUE(m_Said.contains("It is no plain file any more.")) << m_Said.toStdString();
    const auto boxes = m_Workbench->window().findChildren<QMessageBox *>("FailureBox");
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0]->text(), "x could not be saved.");
    EXPECT_TRUE(history().isModified(family));
}

TEST_F(SavingTest, PropertiesTellThatTheFileHasChanged)
{
    Alignment &family = openFamily("x.fasta");
    const auto facts = [&] {
        QStringList texts;
        answering<app::PropertiesDialog>([&](app::PropertiesDialog &dialog) {
            for (const QLabel *label : dialog.findChildren<QLabel *>())
                texts << label->text();
            dialog.reject();
        });
        m_Workbench->commands().showProperties(family);
        return texts.join('\n');
    };
    EXPECT_TRUE(facts().contains(path("x.fasta")));
    EXPECT_FALSE(facts().contains("File on the disk"));
    changeBehind("x.fasta", ">a\nACD-\n>b\nACCD\n");
    EXPECT_TRUE(facts().contains("File on the disk:\nIt was changed at "));
    QFile::remove(path("x.fasta"));
    EXPECT_TRUE(facts().contains("File on the disk:\nIt was deleted"));
}

TEST_F(SavingTest, PropertiesTellWhatIsNotedOfTheObjectBelowItsFacts)
{
    const Alignment &family = openFamily("x.fasta");
    m_Workbench->notes().set(family, {"Model of globins", {{"Identity (%)", "35.2"}}});
    QStringList texts;
    answering<app::PropertiesDialog>([&](app::PropertiesDialog &dialog) {
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            texts << label->text();
        dialog.reject();
    });
    m_Workbench->commands().showProperties(family);
    const qsizetype heading = texts.indexOf("Model of globins");
    ASSERT_GT(heading, texts.indexOf("Kind:"));
    EXPECT_GT(texts.indexOf("Identity (%):"), heading);
    EXPECT_TRUE(texts.contains("35.2"));
}

TEST_F(SavingTest, PropertiesWithALongTextAreNoWiderThanAScreen)
{
    const Alignment &family = openFamily("x.fasta");
    std::string words;
    for (int i = 0; i < 100; ++i)
        words += "words and ";
    m_Workbench->notes().set(family, {"Model", {{"Last line", words}}});
    int width = 0;
    answering<app::PropertiesDialog>([&](app::PropertiesDialog &dialog) {
        width = dialog.width();
        dialog.reject();
    });
    m_Workbench->commands().showProperties(family);
    EXPECT_GT(width, 0);
    EXPECT_LT(width, 1000);
}

} // namespace SavingTest
