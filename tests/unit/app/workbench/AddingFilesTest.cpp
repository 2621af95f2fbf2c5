// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are opened for their sequences, which become rows aligned to the others, by MAFFT.
#include "Workbench.h"

#include "AppFixture.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "MainWindow.h"
#include "ObjectTree.h"
#include "Space.h"
#include "UndoCommands.h"
#include "WorkbenchCommands.h"
#include "support/Answering.h"
#include "support/LogLines.h"
#include "support/ScopedSettings.h"
#include "support/WaitUntil.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>

#include <optional>

namespace AddingFilesTest {

using namespace TAMBO;
using app::Workbench;
using Texts = std::vector<std::string>;
using Outcome = PluginManager::Outcome;

constexpr const char *kRow = "MKTAYIAKQRQISFVKSHFSRQ";

class AddingFiles : public AppFixture
{
protected:
    explicit AddingFiles(const QByteArray &settings = {})
        : m_Settings(settings),
          m_Workbench(std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins())),
          m_Family(alignment("family", {kRow, kRow}))
    {
        history().clear();
        m_Workbench->window().show();
    }
    ~AddingFiles() override
    {
        history().clear();
        m_Workbench.reset();
    }

    History &history() { return m_Workbench->undo().history(); }

    // As the user names them in the dialog, which is in the folder already.
    Outcome choose(const QString &names)
    {
        answering<QFileDialog>([&](QFileDialog &dialog) {
            m_Title = dialog.windowTitle();
            m_Filters = dialog.nameFilters().join(' ');
            dialog.setDirectory(m_Folder.path());
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(names);
            QMetaObject::invokeMethod(&dialog, "accept");
        });
        AddFilesRequest request{&m_Family,
                                [this](const QString &told) { m_Told = told.toStdString(); }};
        return WorkbenchCommands::addFiles("Mine", request);
    }
    void chooseAndWait(const QString &names)
    {
        m_Told.reset();
        ASSERT_EQ(choose(names), Outcome::Done);
        waitUntil([this] { return m_Told.has_value(); });
    }
    // When nothing is told: what is called for it comes before this.
    void finish()
    {
        waitUntil([this] { return !m_Workbench->loader().isBusy(); });
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
    QStringList boxes()
    {
        QStringList texts;
        for (const QMessageBox *box :
             m_Workbench->window().findChildren<QMessageBox *>("FailureBox"))
            texts << box->text() + '\n' + box->informativeText() + '\n' + box->detailedText();
        return texts;
    }
    void expectAsBefore() { EXPECT_EQ(rowsOf(m_Family), (Texts{kRow, kRow})); }

    ScopedSettings m_Settings;
    std::unique_ptr<Workbench> m_Workbench;
    Alignment &m_Family;
    std::optional<std::string> m_Told;
    QString m_Title;
    QString m_Filters;
};

TEST_F(AddingFiles, AFileIsOpenedAndItsSequenceAddedAndAlignedInTheNextStep)
{
    write("more.fasta", ">more\nAYIAKQRWWWQISFVKSHFSRQ\n");
    chooseAndWait("more.fasta");
    EXPECT_EQ(m_Told, "Added and aligned more; 3 columns have come");
    EXPECT_TRUE(m_Workbench->window().tree().pickedObjects().empty()) << "as before";
    const Texts aligned = {"MKTAYIAKQR---QISFVKSHFSRQ", "MKTAYIAKQR---QISFVKSHFSRQ",
                           "---AYIAKQRWWWQISFVKSHFSRQ"};
    EXPECT_EQ(rowsOf(m_Family), aligned);
    EXPECT_EQ(topLevelNames(), (Texts{"family1", "family2", "family", "more", "more"}));
    EXPECT_EQ(history().size(), 2U);
    EXPECT_TRUE(history().undo());
    expectAsBefore();
    EXPECT_EQ(topLevelNames(), (Texts{"family1", "family2", "family", "more", "more"}));
    EXPECT_TRUE(history().undo());
    EXPECT_EQ(topLevelNames(), (Texts{"family1", "family2", "family"}));
    EXPECT_TRUE(history().redo());
    EXPECT_TRUE(history().redo());
    EXPECT_EQ(rowsOf(m_Family), aligned);
    EXPECT_EQ(m_Title, "Add File and Align");
    EXPECT_TRUE(m_Filters.contains("*.fasta"));
    EXPECT_TRUE(m_Filters.contains("*.pdb"));
    EXPECT_FALSE(m_Filters.contains("*.tambo")) << "sessions have no rows to add";
}

TEST_F(AddingFiles, AllSequencesOfAllFilesAreAddedInOneStep)
{
    write("a.fasta", QByteArray(">a\n") + kRow + "\n>b\n" + kRow + '\n');
    write("c.fasta", QByteArray(">c\n") + kRow + '\n');
    chooseAndWait("\"a.fasta\" \"c.fasta\"");
    EXPECT_EQ(m_Told, "Added and aligned 3 sequences; no column has come");
    EXPECT_EQ(rowsOf(m_Family), Texts(5, kRow));
    EXPECT_EQ(m_Family.GetSeqName(4), "c");
    EXPECT_TRUE(history().undo());
    expectAsBefore();
}

TEST_F(AddingFiles, AStructureBringsItsChains)
{
    QFile::copy(TEST_DATA_DIR "/families/globins/globin_1mbn.pdb", path("globin_1mbn.pdb"));
    chooseAndWait("globin_1mbn.pdb");
    EXPECT_EQ(m_Family.height(), 3U);
    EXPECT_TRUE(m_Family.hasPositions(2));
    EXPECT_EQ(m_Told->substr(0, 29), "Added and aligned globin_1mbn") << *m_Told;
}

TEST_F(AddingFiles, ADamagedFileIsToldInItsBoxAndNothingIsAdded)
{
    write("bad.pdb", "ATOM      1  CA  ALA A   1      ab.000   0.000   0.000\n");
    const LogLines log;
    EXPECT_EQ(choose("bad.pdb"), Outcome::Done);
    finish();
    EXPECT_EQ(m_Told, std::nullopt);
    ASSERT_EQ(boxes().size(), 1);
    EXPECT_TRUE(boxes().front().contains("bad.pdb")) << boxes().front().toStdString();
    expectAsBefore();
    EXPECT_EQ(history().size(), 0U);
}

TEST_F(AddingFiles, WhatComesOfTheOtherFilesIsAddedWhenOneIsDamaged)
{
    write("bad.pdb", "ATOM      1  CA  ALA A   1      ab.000   0.000   0.000\n");
    write("good.fasta", QByteArray(">good\n") + kRow + '\n');
    chooseAndWait("\"bad.pdb\" \"good.fasta\"");
    EXPECT_EQ(m_Told, "Added and aligned good; no column has come");
    EXPECT_EQ(boxes().size(), 1);
}

TEST_F(AddingFiles, AFileWithoutSequencesAddsNothing)
{
    write("water.pdb", "HETATM    1  O   HOH W   1       0.000   0.000   0.000  1.00  0.00"
                       "           O  \nEND\n");
    choose("water.pdb");
    finish();
    EXPECT_EQ(m_Told, "Nothing was added to family: there is no sequence with residues");
    EXPECT_EQ(boxes(), QStringList());
    expectAsBefore();
}

TEST_F(AddingFiles, ASessionIsRefused)
{
    write("work.tambo", "");
    EXPECT_EQ(choose("work.tambo"), Outcome::Failed);
    ASSERT_EQ(boxes().size(), 1);
    EXPECT_TRUE(boxes().front().contains("work.tambo is a session, which only Open opens."))
        << boxes().front().toStdString();
    EXPECT_EQ(m_Told, std::nullopt);
    expectAsBefore();
}

TEST_F(AddingFiles, WhoGivesUpTheDialogOpensNothing)
{
    answering<QFileDialog>([](QFileDialog &dialog) { dialog.reject(); });
    AddFilesRequest request{&m_Family, [this](const QString &) { m_Told = "told"; }};
    EXPECT_EQ(WorkbenchCommands::addFiles("Mine", request), Outcome::Done);
    finish();
    EXPECT_EQ(m_Told, std::nullopt);
    EXPECT_EQ(topLevelNames(), (Texts{"family1", "family2", "family"}));
}

class AddingFilesWithoutAligner : public AddingFiles
{
protected:
    AddingFilesWithoutAligner()
        : AddingFiles("[Realign]\nAddRows = no-such-aligner {input} {added}\n")
    { }
};

TEST_F(AddingFilesWithoutAligner, TheFileIsOpenAndNothingIsAdded)
{
    write("more.fasta", QByteArray(">more\n") + kRow + '\n');
    EXPECT_EQ(choose("more.fasta"), Outcome::Done);
    waitUntil([this] { return !boxes().isEmpty(); });
    EXPECT_TRUE(boxes().front().contains("Nothing was added to family: no-such-aligner was not"))
        << boxes().front().toStdString();
    EXPECT_EQ(topLevelNames(), (Texts{"family1", "family2", "family", "more", "more"}));
    expectAsBefore();
}

TEST_F(AddingFiles, AnAlignmentThatGoesBeforeTheFilesComeIsToldToBeGone)
{
    write("more.fasta", QByteArray(">more\n") + kRow + '\n');
    EXPECT_EQ(choose("more.fasta"), Outcome::Done);
    {
        const DataDelete<Space> change(nullptr, Space::instance());
        DataMaker::Destroy(&m_Family);
    }
    waitUntil([this] { return m_Told.has_value(); });
    EXPECT_EQ(m_Told, "Nothing was added: the alignment is not there any more");
}

} // namespace AddingFilesTest
