// SPDX-License-Identifier: GPL-3.0-or-later
// The export dialog: what it offers, that its losses follow every choice, and what it writes.
#include "ExportDialog.h"

#include "AppFixture.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "Element.h"
#include "Hooks.h"
#include "ObjectCommands.h"
#include "ObjectSources.h"
#include "support/Answering.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

namespace ExportDialogTest {

using namespace TAMBO;
using app::ExportDialog;

class ExportDialogTest : public AppFixture
{
protected:
    template <typename Widget> static Widget &control(const QWidget &dialog, const char *name)
    {
        auto *found = dialog.findChild<Widget *>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    // As a user does it in the list.
    static void choose(const QWidget &dialog, const char *name, const QString &text)
    {
        auto &box = control<QComboBox>(dialog, name);
        const int index = box.findText(text, Qt::MatchStartsWith);
        EXPECT_GE(index, 0) << text.toStdString();
        box.setCurrentIndex(index);
        emit box.activated(index);
    }
    static QLineEdit &name(const QWidget &dialog)
    {
        return control<QLineEdit>(dialog, "fileNameEdit");
    }
    static bool canWrite(const QWidget &dialog)
    {
        return control<QDialogButtonBox>(dialog, "buttonBox")
            .button(QDialogButtonBox::Save)
            ->isEnabled();
    }
    static QStringList losses(const QWidget &dialog)
    {
        QStringList texts;
        const auto &list = control<QListWidget>(dialog, "Losses");
        for (int row = 0; row < list.count(); ++row)
            texts << list.item(row)->text();
        return texts;
    }
    static QString label(const QWidget &dialog)
    {
        return control<QLabel>(dialog, "LossesLabel").text();
    }
    static QStringList texts(const QComboBox &box)
    {
        QStringList all;
        for (int index = 0; index < box.count(); ++index)
            all << box.itemText(index).section(" (*", 0, 0);
        return all;
    }
    // Types a name, whole or without its folder, and presses Save.
    static void save(QFileDialog &dialog, const QString &file)
    {
        // The toolkit takes the folder of a file that it knows for told.
        dialog.setDirectory(QFileInfo(file).path());
        name(dialog).setText(QFileInfo(file).fileName());
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
        QMetaObject::invokeMethod(&dialog, "accept");
    }
    static QByteArray read(const QString &file)
    {
        QFile opened(file);
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << file.toStdString();
        return opened.readAll();
    }
};

TEST_F(ExportDialogTest, ObjectsOfOneNameAreToldApart)
{
    Alignment &first = alignment("obp", {"AC-D"});
    Alignment &second = alignment("obp", {"ACDDD"});
    Alignment &other = alignment("other", {"AC"});
    const ExportDialog dialog({&first, &second, &other}, nullptr, nullptr);
    EXPECT_EQ(texts(control<QComboBox>(dialog, "Object")),
              QStringList({"obp (1 × 4)", "obp (1 × 5)", "other (1 × 2)"}));
}

TEST_F(ExportDialogTest, EveryObjectThatCanBeWrittenIsOffered)
{
    Alignment &family = alignment("family", {"AC", "A-"});
    Structure &structure = this->structure("1abc", "A", "ACD");
    const ExportDialog dialog({&family, &structure}, &structure, nullptr);
    EXPECT_EQ(texts(control<QComboBox>(dialog, "Object")).size(), 2);
    EXPECT_TRUE(control<QComboBox>(dialog, "Object").currentText().startsWith("1abc"));
    EXPECT_EQ(texts(control<QComboBox>(dialog, "fileTypeCombo")), (QStringList{"PDB", "mmCIF"}));
    choose(dialog, "Object", "family");
    EXPECT_EQ(texts(control<QComboBox>(dialog, "fileTypeCombo")),
              (QStringList{"PIR", "FASTA", "Clustal", "Stockholm", "MSF", "PHYLIP", "NEXUS", "A2M",
                           "A3M"}));
}

TEST_F(ExportDialogTest, LossesFollowTheFormatAndItsOptions)
{
    Alignment &family = alignment("a long name ", {"AC", "A-"});
    const ExportDialog dialog({&family}, nullptr, nullptr);
    EXPECT_EQ(losses(dialog), QStringList());
    EXPECT_EQ(label(dialog), "Nothing is lost in this format.");
    choose(dialog, "fileTypeCombo", "Clustal");
    EXPECT_EQ(losses(dialog),
              QStringList("2 of 2 names have characters that a Clustal file cannot hold there: \"a "
                          "long name 1\" becomes \"a_long_name_1\"."));
    EXPECT_EQ(label(dialog), "This is lost or changed in this format:");
    choose(dialog, "fileTypeCombo", "PHYLIP");
    EXPECT_EQ(losses(dialog).size(), 2);
    choose(dialog, "Names", "any length");
    EXPECT_EQ(losses(dialog).size(), 1);
    choose(dialog, "fileTypeCombo", "PIR");
    EXPECT_EQ(losses(dialog), QStringList());
}

TEST_F(ExportDialogTest, SecondaryStructureAndColorsOfSequencesAreToldOf)
{
    Alignment &family = alignment("family", {"ACDE", "A-DE"});
    Peptide &first = *Peptide::from(family.GetSeq(0));
    first.insertObject(0,
                       std::make_unique<Element>("H1", 'H', std::vector<std::uint32_t>{0, 1, 2}));
    first.setColor(0, Color(0xff0000));
    const ExportDialog dialog({&family}, nullptr, nullptr);
    for (const QString &format : texts(control<QComboBox>(dialog, "fileTypeCombo"))) {
        choose(dialog, "fileTypeCombo", format);
        EXPECT_EQ(label(dialog), "This is lost or changed in this format:");
        EXPECT_EQ(losses(dialog),
                  (QStringList{"The secondary structure of 1 row is left out: only a structure "
                               "file has helices, strands and turns.",
                               "The colors given to residues of 1 row are left out."}))
            << format.toStdString();
    }
}

TEST_F(ExportDialogTest, OnlyOptionsThatTheFormatHasAreShown)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    ExportDialog dialog({&family}, nullptr, nullptr);
    const auto shown = [&] {
        QStringList names;
        for (const char *name : {"LineLength", "Names", "Layout"})
            if (control<QWidget>(dialog, name).isVisibleTo(&dialog))
                names << name;
        return names;
    };
    EXPECT_EQ(shown(), QStringList("LineLength"));
    choose(dialog, "fileTypeCombo", "PHYLIP");
    EXPECT_EQ(shown(), (QStringList{"LineLength", "Names", "Layout"}));
    choose(dialog, "Layout", "one row");
    EXPECT_EQ(shown(), (QStringList{"Names", "Layout"}));
    choose(dialog, "fileTypeCombo", "Stockholm");
    EXPECT_EQ(shown(), QStringList());
    choose(dialog, "fileTypeCombo", "MSF");
    EXPECT_EQ(shown(), QStringList());
}

TEST_F(ExportDialogTest, OptionsAreThoseThatAreSeen)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    const ExportDialog dialog({&family}, nullptr, nullptr);
    EXPECT_EQ(dialog.options(), WriteOptions());
    control<QSpinBox>(dialog, "LineLength").setValue(80);
    EXPECT_EQ(dialog.options().lineLength, 80U);
    choose(dialog, "fileTypeCombo", "PHYLIP");
    choose(dialog, "Names", "any length");
    EXPECT_EQ(dialog.options(), (WriteOptions{FileFormat::Phylip, 80, true, false}));
    choose(dialog, "Layout", "one row");
    EXPECT_EQ(dialog.options(), (WriteOptions{FileFormat::Phylip, 0, true, true}));
    choose(dialog, "fileTypeCombo", "MSF");
    EXPECT_EQ(dialog.options(), WriteOptions{FileFormat::Msf});
}

TEST_F(ExportDialogTest, TheFormatStaysWhenAnotherObjectIsChosen)
{
    Alignment &one = alignment("one", {"AC"});
    Alignment &two = alignment("two", {"AC"});
    const ExportDialog dialog({&one, &two}, &one, nullptr);
    choose(dialog, "fileTypeCombo", "MSF");
    choose(dialog, "Object", "two");
    EXPECT_EQ(dialog.options().format, FileFormat::Msf);
}

TEST_F(ExportDialogTest, WhatCannotBeWrittenIsNotWritten)
{
    Structure &structure = this->structure("1abc", "LONG", "AC");
    const ExportDialog dialog({&structure}, nullptr, nullptr);
    EXPECT_EQ(label(dialog), "This cannot be written:");
    EXPECT_EQ(losses(dialog).size(), 1);
    EXPECT_FALSE(canWrite(dialog));
}

TEST_F(ExportDialogTest, AnObjectThatIsGoneCannotBeWritten)
{
    Alignment &one = alignment("one", {"AC"});
    Alignment &two = alignment("two", {"AC"});
    const ExportDialog dialog({&one, &two}, &one, nullptr);
    {
        const DataDelete<Space> guard(nullptr, Space::instance());
        DataMaker::Destroy(&two);
    }
    choose(dialog, "Object", "two");
    EXPECT_EQ(losses(dialog), QStringList("It is not loaded any more."));
    EXPECT_FALSE(canWrite(dialog));
    choose(dialog, "Object", "one");
    EXPECT_TRUE(canWrite(dialog));
}

TEST_F(ExportDialogTest, CopyingThatIsGivenUpLeavesNothingToWrite)
{
    Alignment &one = alignment("one", {"AC"});
    Alignment &two = alignment("two", {"AC"});
    const ExportDialog dialog({&one, &two}, &one, nullptr);
    EXPECT_FALSE(dialog.isGivenUp());
    modelHooks().working = [](const char *what, double, bool canBeGivenUp) {
        EXPECT_STREQ(what, "Copying rows");
        EXPECT_TRUE(canBeGivenUp);
        return false;
    };
    choose(dialog, "Object", "two");
    EXPECT_TRUE(ExportDialog({&one, &two}, &one, nullptr).isGivenUp());
    modelHooks().working = nullptr;
    EXPECT_EQ(losses(dialog), QStringList("It is not copied: that was cancelled."));
    EXPECT_FALSE(canWrite(dialog));
    choose(dialog, "Object", "one");
    EXPECT_FALSE(dialog.isGivenUp());
    EXPECT_TRUE(canWrite(dialog));
}

TEST_F(ExportDialogTest, ExportingWhoseCopyIsGivenUpAsksNothing)
{
    alignment("one", {"AC"});
    modelHooks().working = [](const char *, double, bool) { return false; };
    const app::ObjectSources sources;
    EXPECT_EQ(app::ObjectCommands(sources).askExport({}), QString());
    modelHooks().working = nullptr;
}

TEST_F(ExportDialogTest, ANameWithoutAnEndingGetsThatOfTheChosenFormat)
{
    Alignment &family = alignment("fam/ily", {"AC", "A-"});
    QString suggested;
    answering<ExportDialog>([&](ExportDialog &dialog) {
        choose(dialog, "fileTypeCombo", "FASTA");
        suggested = name(dialog).text();
        save(dialog, m_Folder.filePath("exported"));
    });
    const app::ObjectSources sources;
    const QString file = app::ObjectCommands(sources).askExport({&family});
    EXPECT_EQ(suggested, "fam_ily.fasta");
    EXPECT_EQ(file, m_Folder.filePath("exported.fasta"));
    EXPECT_EQ(read(file), ">fam/ily1\nAC\n>fam/ily2\nA-\n");
}

TEST_F(ExportDialogTest, AKnownEndingIsTheFormatWhateverIsChosen)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    QString shown;
    answering<ExportDialog>([&](ExportDialog &dialog) {
        choose(dialog, "fileTypeCombo", "PIR");
        name(dialog).setText(m_Folder.filePath("exported.FA"));
        shown = control<QComboBox>(dialog, "fileTypeCombo").currentText();
        save(dialog, name(dialog).text());
    });
    const app::ObjectSources sources;
    const QString file = app::ObjectCommands(sources).askExport({&family});
    EXPECT_TRUE(shown.startsWith("FASTA")) << shown.toStdString();
    EXPECT_EQ(file, m_Folder.filePath("exported.FA"));
    EXPECT_EQ(read(file), ">x1\nAC\n>x2\nA-\n");
}

TEST_F(ExportDialogTest, BehindAnUnknownEndingComesThatOfTheChosenFormat)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    answering<ExportDialog>([&](ExportDialog &dialog) {
        choose(dialog, "fileTypeCombo", "FASTA");
        name(dialog).setText("before.aln");
        save(dialog, m_Folder.filePath("exported.v2"));
    });
    const app::ObjectSources sources;
    EXPECT_EQ(app::ObjectCommands(sources).askExport({&family}),
              m_Folder.filePath("exported.v2.fasta"));
}

TEST_F(ExportDialogTest, AnotherFormatChangesTheEndingOfTheNameAlone)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    const ExportDialog dialog({&family}, nullptr, nullptr);
    name(dialog).setText("version 1.2.fasta.gz");
    choose(dialog, "fileTypeCombo", "PHYLIP");
    EXPECT_EQ(name(dialog).text(), "version 1.2.phy.gz");
    name(dialog).setText("version 1.2");
    choose(dialog, "fileTypeCombo", "PIR");
    EXPECT_EQ(name(dialog).text(), "version 1.2.ali");
}

TEST_F(ExportDialogTest, AnEndingOfTheOtherKindOfFilesIsToldAndNotWritten)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    ExportDialog dialog({&family}, nullptr, nullptr);
    dialog.show();
    save(dialog, m_Folder.filePath("x.pdb"));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(canWrite(dialog));
    EXPECT_EQ(label(dialog), "This cannot be written:");
    EXPECT_EQ(losses(dialog),
              QStringList("The name ends like that of a PDB file, which is for structures."));
    EXPECT_FALSE(QFile::exists(m_Folder.filePath("x.pdb")));
    name(dialog).setText("x.aln");
    EXPECT_TRUE(canWrite(dialog));
}

TEST_F(ExportDialogTest, LossesFollowTheEndingOfTheName)
{
    Alignment &family = alignment("a long name ", {"AC", "A-"});
    const ExportDialog dialog({&family}, nullptr, nullptr);
    EXPECT_EQ(losses(dialog).size(), 0);
    name(dialog).setText("x.aln");
    EXPECT_EQ(losses(dialog).size(), 1);
    EXPECT_EQ(label(dialog), "This is lost or changed in this format:");
    name(dialog).setText("x.al");
    EXPECT_EQ(losses(dialog).size(), 0) << "the chosen format, which is PIR";
}

TEST_F(ExportDialogTest, AFileThatIsThereIsReplacedWhenTheUserSaysSo)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    write("x.fasta", "mine");
    answering<ExportDialog>([&](ExportDialog &dialog) {
        dialog.setDirectory(m_Folder.path());
        name(dialog).setText("x.fasta");
        answering<QMessageBox>([](QMessageBox &box) { box.button(QMessageBox::No)->click(); });
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(read(m_Folder.filePath("x.fasta")), "mine");
        answering<QMessageBox>([](QMessageBox &box) { box.button(QMessageBox::Yes)->click(); });
        dialog.accept();
    });
    const app::ObjectSources sources;
    EXPECT_EQ(app::ObjectCommands(sources).askExport({&family}), m_Folder.filePath("x.fasta"));
    EXPECT_EQ(read(m_Folder.filePath("x.fasta")), ">x1\nAC\n>x2\nA-\n");
}

TEST_F(ExportDialogTest, AFileIsCompressedByItsNameOrTheBox)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    answering<ExportDialog>([&](ExportDialog &dialog) {
        auto &compressed = control<QCheckBox>(dialog, "Compressed");
        name(dialog).setText(m_Folder.filePath("exported.A2M.GZ"));
        EXPECT_TRUE(compressed.isChecked());
        compressed.click();
        EXPECT_EQ(name(dialog).text(), m_Folder.filePath("exported.A2M"));
        name(dialog).setText(m_Folder.filePath("exported"));
        choose(dialog, "fileTypeCombo", "A2M");
        compressed.click();
        EXPECT_EQ(name(dialog).text(), m_Folder.filePath("exported.a2m.gz"));
        save(dialog, name(dialog).text());
    });
    const app::ObjectSources sources;
    const QString file = app::ObjectCommands(sources).askExport({&family});
    EXPECT_EQ(file, m_Folder.filePath("exported.a2m.gz"));
    EXPECT_TRUE(read(file).startsWith("\x1f\x8b"));
}

TEST_F(ExportDialogTest, AFailureIsShownAndTheDialogStays)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    const QString full = m_Folder.filePath("full.ali");
    ASSERT_TRUE(QFile::link("/dev/full", full));
    QString message;
    bool stayed = false;
    answering<ExportDialog>([&](ExportDialog &dialog) {
        answering<QMessageBox>([&](QMessageBox &box) {
            message = box.text();
            box.accept();
        });
        save(dialog, full);
        stayed = dialog.isVisible();
        dialog.reject();
    });
    const app::ObjectSources sources;
    EXPECT_EQ(app::ObjectCommands(sources).askExport({&family}), QString());
    EXPECT_EQ(message, "full.ali: cannot be written: No space left on device");
    EXPECT_TRUE(stayed);
}

TEST_F(ExportDialogTest, NoNameWritesNothing)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    answering<ExportDialog>([&](ExportDialog &dialog) {
        save(dialog, {});
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(canWrite(dialog));
        dialog.reject();
    });
    const app::ObjectSources sources;
    EXPECT_EQ(app::ObjectCommands(sources).askExport({&family}), QString());
}

TEST_F(ExportDialogTest, TheNameOfAFolderLeadsThere)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("deep.fasta"));
    ExportDialog dialog({&family}, nullptr, nullptr);
    dialog.show();
    save(dialog, m_Folder.filePath("deep.fasta"));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.directory().absolutePath(), m_Folder.filePath("deep.fasta"));
}

TEST_F(ExportDialogTest, ReturnWritesAndTheFolderIsOfferedTheNextTime)
{
    Alignment &family = alignment("x", {"AC", "A-"});
    const app::ObjectSources sources;
    answering<ExportDialog>([&](ExportDialog &dialog) {
        dialog.setDirectory(m_Folder.path());
        EXPECT_EQ(name(dialog).selectedText(), "x.ali") << "typing replaces it";
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    EXPECT_EQ(app::ObjectCommands(sources).askExport({&family}), m_Folder.filePath("x.ali"));
    const ExportDialog next({&family}, nullptr, nullptr);
    EXPECT_EQ(next.directory().absolutePath(), m_Folder.path());
}

TEST_F(ExportDialogTest, TheNameFollowsTheObjectUntilOneIsTyped)
{
    Alignment &one = alignment("one", {"AC"});
    Alignment &two = alignment("two", {"AC"});
    const ExportDialog dialog({&one, &two}, &one, nullptr);
    choose(dialog, "Object", "two");
    EXPECT_EQ(name(dialog).text(), "two.ali");
    choose(dialog, "fileTypeCombo", "MSF");
    choose(dialog, "Object", "one");
    EXPECT_EQ(name(dialog).text(), "one.msf");
    name(dialog).setText("mine.ali");
    choose(dialog, "Object", "two");
    EXPECT_EQ(name(dialog).text(), "mine.ali");
}

TEST_F(ExportDialogTest, TheStructureOfAPickedResidueIsChosen)
{
    alignment("family", {"AC", "A-"});
    Structure &structure = this->structure("1abc", "A", "ACD");
    QString chosen;
    answering<ExportDialog>([&](ExportDialog &dialog) {
        chosen = control<QComboBox>(dialog, "Object").currentText();
        dialog.reject();
    });
    const app::ObjectSources sources;
    static_cast<void>(app::ObjectCommands(sources).askExport({structure.chain(0)->residue(1)}));
    EXPECT_TRUE(chosen.startsWith("1abc")) << chosen.toStdString();
}

TEST_F(ExportDialogTest, WithNothingToWriteNothingIsAsked)
{
    sequence("x", "AC");
    EXPECT_FALSE(app::ObjectCommands::canExport());
    const app::ObjectSources sources;
    EXPECT_EQ(app::ObjectCommands(sources).askExport({}), QString());
    alignment("y", {"AC"});
    EXPECT_TRUE(app::ObjectCommands::canExport());
}

} // namespace ExportDialogTest
