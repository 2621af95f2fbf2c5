// SPDX-License-Identifier: GPL-3.0-or-later
// Several structures exported together, as a user does it.
#include "StructuresDialog.h"

#include "AppFixture.h"
#include "ObjectCommands.h"
#include "ObjectSources.h"
#include "support/Answering.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>

namespace StructuresDialogTest {

using namespace TAMBO;

class SeveralStructures : public AppFixture
{
protected:
    template <typename Widget> static Widget &control(const QWidget &dialog, const char *name)
    {
        auto *found = dialog.findChild<Widget *>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    static QStringList notes(const QWidget &dialog)
    {
        QStringList texts;
        const auto &list = control<QListWidget>(dialog, "Losses");
        for (int row = 0; row < list.count(); ++row)
            texts << list.item(row)->text();
        return texts;
    }
    void save(app::StructuresDialog &dialog, const QString &name) const
    {
        control<QLineEdit>(dialog, "fileNameEdit").setText(m_Folder.filePath(name));
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
        dialog.accept();
    }
    static QByteArray read(const QString &file)
    {
        QFile opened(file);
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << file.toStdString();
        return opened.readAll();
    }
    QString exported(app::MergedFiles::Kind kind, const QString &name)
    {
        answering<app::StructuresDialog>([&](app::StructuresDialog &dialog) {
            control<QComboBox>(dialog, "Kind").setCurrentIndex(int(kind));
            m_Notes = notes(dialog);
            m_Offered = control<QLineEdit>(dialog, "fileNameEdit").text();
            save(dialog, name);
            // When nothing was written.
            dialog.reject();
        });
        const app::ObjectSources sources;
        return app::ObjectCommands(sources).askExport({&m_First, &m_Second});
    }

    Structure &m_First = structure("one", "A", "ACD");
    Structure &m_Second = structure("two", "A", "AC");
    QStringList m_Notes;
    QString m_Offered;
};

TEST_F(SeveralStructures, AreAModelEachOfOneFile)
{
    const QByteArray text = read(exported(app::MergedFiles::Kind::Models, "all.pdb"));
    EXPECT_EQ(text.count("\nMODEL ") + text.startsWith("MODEL "), 2) << text.toStdString();
    EXPECT_EQ(text.count("\nATOM "), 5) << text.toStdString();
    EXPECT_EQ(m_Offered, "structures.pdb");
}

TEST_F(SeveralStructures, AreOfTheFormatThatTheNameEndsWith)
{
    EXPECT_TRUE(read(exported(app::MergedFiles::Kind::Models, "all.cif")).startsWith("data_"));
}

TEST_F(SeveralStructures, AreTheChainsOfOneFileAndNewNamesAreToldBefore)
{
    const QByteArray text = read(exported(app::MergedFiles::Kind::Chains, "all.pdb"));
    EXPECT_EQ(text.count("ALA A "), 4) << "with the end of the chain";
    EXPECT_EQ(text.count("ALA B "), 3);
    EXPECT_FALSE(text.contains("MODEL"));
    EXPECT_FALSE(m_Notes.filter("of two becomes").isEmpty()) << m_Notes.join('\n').toStdString();
}

TEST_F(SeveralStructures, AreAFileEach)
{
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("out"));
    EXPECT_EQ(exported(app::MergedFiles::Kind::Files, "out"), m_Folder.filePath("out/one.pdb"));
    EXPECT_EQ(QDir(m_Folder.filePath("out")).entryList(QDir::Files),
              QStringList({"one.pdb", "two.pdb"}));
    EXPECT_EQ(read(m_Folder.filePath("out/two.pdb")).count("ALA A "), 3);
}

TEST_F(SeveralStructures, DoNotReplaceFilesUnlessTheUserSaysSo)
{
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("out"));
    write("out/two.pdb", "mine");
    answering<QMessageBox>([](QMessageBox &box) {
        EXPECT_TRUE(box.text().endsWith("two.pdb"));
        box.reject();
    });
    EXPECT_EQ(exported(app::MergedFiles::Kind::Files, "out"), QString());
    EXPECT_EQ(read(m_Folder.filePath("out/two.pdb")), "mine");
    EXPECT_FALSE(QFile::exists(m_Folder.filePath("out/one.pdb")));
}

TEST_F(SeveralStructures, GoIntoAFolderThatIsThere)
{
    EXPECT_EQ(exported(app::MergedFiles::Kind::Files, "none"), QString());
    EXPECT_FALSE(QFile::exists(m_Folder.filePath("none")));
    EXPECT_TRUE(QDir::isAbsolutePath(m_Offered)) << m_Offered.toStdString();
}

TEST_F(SeveralStructures, OfOneNameGetFilesOfTheirOwn)
{
    const Structure &third = structure("ONE", "A", "A");
    const app::MergedFiles files({&m_First, &m_Second, &third});
    EXPECT_EQ(files.names(), QStringList({"one", "two", "ONE-2"}));
}

} // namespace StructuresDialogTest
