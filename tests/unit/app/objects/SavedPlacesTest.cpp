// SPDX-License-Identifier: GPL-3.0-or-later
// Saving of objects: where they go without a question, and what counts as saved.
#include "SavedPlaces.h"

#include "AppFixture.h"
#include "DataMaker.h"
#include "ExportDialog.h"
#include "FileReader.h"
#include "ObjectCommands.h"
#include "ObjectOperations.h"
#include "ObjectSources.h"
#include "SaveCommand.h"
#include "StructuresDialog.h"
#include "TestTexts.h"
#include "support/Answering.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QTimer>

namespace SavedPlacesTest {

using namespace TAMBO;
using app::ExportDialog;
using app::SavedPlaces;
using Texts = std::vector<std::string>;

bool saveObject(SavedPlaces &places, Compound &object, QWidget *parent)
{
    return app::SaveCommand(places, object, parent).saveSafely().isSaved;
}

class SavedPlacesTest : public RecordedFixture
{
protected:
    // The file that saving asks for; none is chosen.
    QString suggestedFor(Compound &object)
    {
        QString suggested;
        answering<ExportDialog>([&](ExportDialog &dialog) {
            suggested = dialog.directory().absoluteFilePath(
                control<QLineEdit>(dialog, "fileNameEdit").text());
            dialog.reject();
        });
        EXPECT_FALSE(saveObject(m_Places, object, nullptr));
        return suggested;
    }
    // As it comes out of the file.
    Alignment &opened(const QString &file, FileFormat format, bool isWhole = true)
    {
        Alignment &family = alignment("family", {"AC-D", "ACCD"});
        m_Places.noteOpened(family, {m_Folder.filePath(file), {format}, isWhole});
        return family;
    }
    static void moveGap(Alignment &family) { family.moveGap(0, 2, 1, true); }
    // "family: rows, columns or gaps -> family.ali".
    [[nodiscard]] QStringList unsaved() const
    {
        QStringList texts;
        for (const SavedPlaces::Unsaved &thing : m_Places.unsaved())
            texts << QString::fromStdString(thing.object->Name()) + ": " + thing.what + " -> " +
                         QString(thing.file).remove(m_Folder.path() + '/');
        return texts;
    }
    static Texts rowsIn(const QString &file)
    {
        Result<FileContents> read = readFile(file.toStdString());
        EXPECT_TRUE(read.has_value());
        Texts rows;
        for (const AlignmentRecord &alignment : read->alignments) {
            for (const RowRecord &row : alignment.rows)
                rows.push_back(row.name + ' ' + row.sequence.text());
        }
        return rows;
    }
    template <typename Widget> static Widget &control(const QWidget &dialog, const char *name)
    {
        auto *found = dialog.findChild<Widget *>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    static void writeTo(ExportDialog &dialog, const QString &file)
    {
        // The toolkit takes the folder of a file that it knows for told.
        dialog.setDirectory(QFileInfo(file).path());
        control<QLineEdit>(dialog, "fileNameEdit").setText(QFileInfo(file).fileName());
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
        dialog.accept();
    }

    app::ObjectSources m_Sources;
    SavedPlaces m_Places{m_History, m_Sources};
};

// ---- Where things go

TEST_F(SavedPlacesTest, AnAlignmentGoesBackToTheFileThatItCameFrom)
{
    Alignment &family = opened("family.fasta", FileFormat::Fasta);
    EXPECT_EQ(unsaved(), QStringList());
    moveGap(family);
    EXPECT_EQ(unsaved(), QStringList("family: rows, columns or gaps -> family.fasta"));
    EXPECT_TRUE(saveObject(m_Places, family, nullptr));
    EXPECT_EQ(unsaved(), QStringList());
    EXPECT_EQ(rowsIn(m_Folder.filePath("family.fasta")), (Texts{"family1 A-CD", "family2 ACCD"}));
}

TEST_F(SavedPlacesTest, AFileWithSeveralAlignmentsIsNotReplacedByOne)
{
    moveGap(opened("several.sto", FileFormat::Stockholm, false));
    EXPECT_EQ(unsaved(), QStringList("family: rows, columns or gaps -> "));
}

TEST_F(SavedPlacesTest, AFileThatAnotherAlignmentWasSavedToIsNotReplacedWithoutAQuestion)
{
    QFile file(m_Folder.filePath("family.ali"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    Alignment &first = opened("family.ali", FileFormat::Pir);
    Alignment &second = alignment("second", {"AC-D", "ACCD"});
    m_Places.noteSaved(second, {file.fileName(), {FileFormat::Pir}});
    moveGap(first);
    EXPECT_EQ(unsaved(), QStringList{"family: rows, columns or gaps -> "});
}

TEST_F(SavedPlacesTest, OfAFileThatWasOpenedTwiceOnlyTheSecondGoesBackToIt)
{
    QFile file(m_Folder.filePath("family.ali"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    moveGap(opened("family.ali", FileFormat::Pir));
    moveGap(opened("family.ali", FileFormat::Pir));
    EXPECT_EQ(unsaved(), (QStringList{"family: rows, columns or gaps -> ",
                                      "family: rows, columns or gaps -> family.ali"}));
}

TEST_F(SavedPlacesTest, AFileThatWouldLoseSomethingIsNotReplacedWithoutAQuestion)
{
    Alignment &family = opened("family.aln", FileFormat::Clustal);
    renameObject(*family.GetSeq(0), "two words");
    EXPECT_EQ(unsaved(), QStringList("family: names of rows -> "));
}

TEST_F(SavedPlacesTest, ARenamedAlignmentAsksForAFileOfTheNewName)
{
    Alignment &family = opened("family.ali", FileFormat::Pir);
    renameObject(family, "relatives");
    EXPECT_EQ(unsaved(), QStringList("relatives: name -> "));
    EXPECT_EQ(suggestedFor(family), m_Folder.filePath("relatives.ali"));
    EXPECT_EQ(unsaved(), QStringList("relatives: name -> ")) << "no file was chosen";
}

TEST_F(SavedPlacesTest, TheFileOfAStructureIsNotReplacedWithoutAQuestionForItHoldsMore)
{
    Structure &known = structure("1abc", "A", "ACD");
    m_Sources.set(known, m_Folder.filePath("1abc.pdb").toStdString());
    m_History.markSaved(known);
    known.chain(0)->setNumber(0, SequenceNumber(100));
    EXPECT_EQ(unsaved(), QStringList("1abc: residue numbers -> "));
    QString title;
    QString button;
    answering<ExportDialog>([&](ExportDialog &dialog) {
        title = dialog.windowTitle();
        button = dialog.labelText(QFileDialog::Accept);
        writeTo(dialog, m_Folder.filePath("new.pdb"));
    });
    EXPECT_TRUE(saveObject(m_Places, known, nullptr));
    EXPECT_EQ(title, "Save 1abc");
    EXPECT_EQ(button, "&Save") << "what was never loaded is not lost by saving";
    EXPECT_EQ(unsaved(), QStringList());
    EXPECT_TRUE(QFile::exists(m_Folder.filePath("new.pdb")));
    known.chain(0)->setNumber(0, SequenceNumber(200));
    EXPECT_EQ(unsaved(), QStringList("1abc: residue numbers -> new.pdb"));
}

TEST_F(SavedPlacesTest, AStructureIsSavedBesideItsFileInItsFormat)
{
    Structure &known = structure("1abc", "A", "ACD");
    m_Sources.set(known, m_Folder.filePath("1abc.cif.gz").toStdString());
    EXPECT_EQ(suggestedFor(known), m_Folder.filePath("1abc.cif"));
}

TEST_F(SavedPlacesTest, WhatIsNewAsksForAFile)
{
    alignment("new", {"AC"});
    structure("1abc", "A", "ACD");
    EXPECT_EQ(unsaved(), (QStringList{"new: all of it -> ", "1abc: all of it -> "}));
}

TEST_F(SavedPlacesTest, ASequenceWithoutAnAlignmentCanBeSaved)
{
    Peptide &single = sequence("single", "ACD");
    EXPECT_EQ(unsaved(), QStringList("single: all of it -> "));
    answering<ExportDialog>(
        [&](ExportDialog &dialog) { writeTo(dialog, m_Folder.filePath("single.fasta")); });
    EXPECT_TRUE(saveObject(m_Places, single, nullptr));
    EXPECT_EQ(unsaved(), QStringList());
    EXPECT_EQ(rowsIn(m_Folder.filePath("single.fasta")), Texts{"single ACD"});
}

TEST_F(SavedPlacesTest, AFailureIsToldAndTheObjectStaysUnsaved)
{
    ASSERT_TRUE(QFile::link("/dev/full", m_Folder.filePath("full.fasta")));
    Alignment &family = opened("full.fasta", FileFormat::Fasta);
    moveGap(family);
    QWidget window;
    EXPECT_FALSE(saveObject(m_Places, family, &window));
    const auto boxes = window.findChildren<QMessageBox *>("FailureBox");
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0]->text(), "family could not be saved.");
    EXPECT_EQ(unsaved(), QStringList("family: rows, columns or gaps -> full.fasta"));
}

TEST_F(SavedPlacesTest, AnObjectAtTheAddressOfAFreedOneHasNoFile)
{
    Alignment &family = opened("family.fasta", FileFormat::Fasta);
    DataMaker::Destroy(&family);
    m_History.setLimit(1);
    // The step that keeps it is dropped, and the memory is used again at some time.
    for (int i = 0; i < 20; ++i) {
        Alignment &next = alignment("next", {"AC"});
        DataMaker::Destroy(&next);
        alignment("stays", {"AC"});
    }
    for (const SavedPlaces::Unsaved &thing : m_Places.unsaved())
        EXPECT_EQ(thing.file, QString()) << thing.object->Name();
}

// ---- What counts as saved

TEST_F(SavedPlacesTest, HeadersWithNewNumbersMatterToFilesThatHaveThem)
{
    for (const auto &[format, expected] :
         {std::pair(FileFormat::Fasta, QStringList()),
          std::pair(FileFormat::Pir, QStringList("made: residue numbers in headers -> made"))}) {
        Structure &known = structure("1abc", "A", "ACD");
        Alignment &made = *DataMaker::makeAlignment("made", {known.chain(0)});
        m_Places.noteOpened(made, {m_Folder.filePath("made"), {format}, true});
        known.chain(0)->setNumber(0, SequenceNumber(100));
        m_History.markSaved(known);
        EXPECT_EQ(unsaved(), expected);
        DataMaker::Destroy(&made);
    }
}

TEST_F(SavedPlacesTest, NumbersThatNoStructureFileHasAreTold)
{
    Structure &known = structure("1abc", "A", "ACD");
    Alignment &made = *DataMaker::makeAlignment("made", {known.chain(0)});
    m_History.markSaved(known);
    EXPECT_EQ(m_Places.strangeNumbers(made, {}), QStringList());
    known.chain(0)->setNumber(0, SequenceNumber(100));
    EXPECT_EQ(m_Places.strangeNumbers(made, {}),
              QStringList("It names residue numbers of 1abc that are in no structure file until "
                          "1abc is saved, too."));
    EXPECT_EQ(m_Places.strangeNumbers(made, {FileFormat::Fasta}), QStringList());
    const SavedPlaces::Unsaved thing = m_Places.unsaved().back();
    EXPECT_EQ(thing.object, &made);
    EXPECT_EQ(thing.numbersFrom, std::vector<const Compound *>{&known});
    const ExportDialog plain({&made}, &made, nullptr);
    ExportDialog dialog({&made}, &made, nullptr);
    dialog.setPlaces(m_Places);
    EXPECT_EQ(control<QListWidget>(dialog, "Losses").count(),
              control<QListWidget>(plain, "Losses").count() + 1);
}

TEST_F(SavedPlacesTest, LossesThatWereAcceptedAreNotAskedAboutAgain)
{
    Alignment &family = opened("family.aln", FileFormat::Clustal);
    renameObject(*family.GetSeq(0), "two words");
    m_Places.noteWritten(family, {m_Folder.filePath("family.aln"), {FileFormat::Clustal}},
                         {"some loss"});
    EXPECT_EQ(unsaved().size(), 1);
    m_Places.acceptWritten(family);
    EXPECT_EQ(unsaved(), QStringList());
    moveGap(family);
    m_Places.noteWritten(family, {m_Folder.filePath("family.aln"), {FileFormat::Clustal}},
                         {"some loss"});
    EXPECT_EQ(unsaved(), QStringList());
    moveGap(family);
    family.moveGap(0, 1, 2, true);
    m_Places.noteWritten(family, {m_Folder.filePath("family.aln"), {FileFormat::Clustal}},
                         {"some loss", "another"});
    EXPECT_EQ(unsaved().size(), 1) << "this one has not been accepted";
}

// ---- Exports

class ExportSavesTest : public SavedPlacesTest
{
protected:
    void exportAs(Compound &object, const QString &file, bool counts)
    {
        app::ObjectCommands commands(m_Sources);
        commands.setPlaces(m_Places);
        answering<ExportDialog>([&](ExportDialog &dialog) {
            control<QLineEdit>(dialog, "fileNameEdit").setText(file);
            auto &box = control<QCheckBox>(dialog, "CountsAsSaved");
            m_WasOffered = box.isVisible();
            EXPECT_FALSE(box.isChecked());
            box.setChecked(counts);
            writeTo(dialog, m_Folder.filePath(file));
        });
        EXPECT_EQ(commands.askExport({&object}), m_Folder.filePath(file));
    }

    bool m_WasOffered = false;
};

TEST_F(ExportSavesTest, AnExportWithoutLossesCountsAsSaved)
{
    Alignment &family = opened("family.ali", FileFormat::Pir);
    moveGap(family);
    exportAs(family, "family.sto", false);
    EXPECT_FALSE(m_WasOffered);
    EXPECT_EQ(unsaved(), QStringList());
    family.moveGap(0, 1, 2, true);
    EXPECT_EQ(unsaved(), QStringList("family: rows, columns or gaps -> family.sto"));
}

TEST_F(ExportSavesTest, AnExportWithLossesCountsOnlyWhenTheUserSaysSo)
{
    Alignment &family = opened("family.ali", FileFormat::Pir);
    renameObject(*family.GetSeq(0), "two words");
    exportAs(family, "family.aln", false);
    EXPECT_TRUE(m_WasOffered);
    EXPECT_EQ(unsaved(), QStringList("family: names of rows -> family.ali"));
    exportAs(family, "family.aln", true);
    EXPECT_EQ(unsaved(), QStringList());
}

TEST_F(ExportSavesTest, WhatIsSavedIsNotAskedAboutAndStaysWithItsFile)
{
    Alignment &family = opened("family.ali", FileFormat::Pir);
    exportAs(family, "copy.phy", false);
    EXPECT_FALSE(m_WasOffered);
    moveGap(family);
    EXPECT_EQ(unsaved(), QStringList("family: rows, columns or gaps -> family.ali"));
}

// ---- Several structures together

class TogetherSavesTest : public SavedPlacesTest
{
protected:
    void exportAs(app::MergedFiles::Kind kind, const QString &name, bool counts)
    {
        app::ObjectCommands commands(m_Sources);
        commands.setPlaces(m_Places);
        answering<app::StructuresDialog>([&](app::StructuresDialog &dialog) {
            control<QComboBox>(dialog, "Kind").setCurrentIndex(int(kind));
            const bool isFolder = kind == app::MergedFiles::Kind::Files;
            dialog.setDirectory(m_Folder.path());
            control<QLineEdit>(dialog, "fileNameEdit")
                .setText(isFolder ? m_Folder.filePath(name) : name);
            auto &box = control<QCheckBox>(dialog, "CountsAsSaved");
            m_WasOffered = box.isVisible();
            EXPECT_FALSE(box.isChecked());
            box.setChecked(counts);
            dialog.accept();
        });
        EXPECT_NE(commands.askExport({&m_First, &m_Second}), QString());
    }

    Structure &m_First = structure("one", "A", "ACD");
    Structure &m_Second = structure("two", "B", "AC");
    bool m_WasOffered = false;
};

TEST_F(TogetherSavesTest, AFileForEachCountsAsSaved)
{
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("out"));
    exportAs(app::MergedFiles::Kind::Files, "out", false);
    EXPECT_FALSE(m_WasOffered);
    EXPECT_EQ(unsaved(), QStringList());
    m_Second.chain(0)->setNumber(0, SequenceNumber(100));
    EXPECT_EQ(unsaved(), QStringList("two: residue numbers -> out/two.pdb"));
}

TEST_F(TogetherSavesTest, OneFileOfAllCountsWhenTheUserSaysSoAndIsNobodysOwn)
{
    for (const auto kind : {app::MergedFiles::Kind::Models, app::MergedFiles::Kind::Chains}) {
        const QString name = QStringLiteral("all%1.pdb").arg(int(kind));
        m_First.chain(0)->setNumber(0, SequenceNumber(100 + int(kind)));
        exportAs(kind, name, false);
        EXPECT_TRUE(m_WasOffered);
        EXPECT_FALSE(unsaved().isEmpty());
        QFile::remove(m_Folder.filePath(name));
        exportAs(kind, name, true);
        EXPECT_EQ(unsaved(), QStringList());
    }
    m_First.chain(0)->setNumber(0, SequenceNumber(200));
    EXPECT_EQ(unsaved(), QStringList("one: residue numbers -> ")) << "the other one is in it, too";
}

} // namespace SavedPlacesTest
