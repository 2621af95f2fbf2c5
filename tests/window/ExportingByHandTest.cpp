// SPDX-License-Identifier: GPL-3.0-or-later
// Exporting by real keys: what is shown in an editor window, and several structures together.
#include "CompanionByHand.h"
#include "FileReader.h"
#include "support/WaitUntil.h"

#include <QFile>

namespace ExportingByHandTest {

constexpr const char *kWorkbench = "Tambo";
constexpr const char *kExport = "Export";
constexpr const char *kExportTwo = "Export 2 Structures";
// From the workbench's corner to the first row of the tree.
constexpr QPoint kFirstInTree(80, 89);

class ExportingByHand : public CompanionByHand
{
protected:
    QByteArray bytesOf(const QString &name)
    {
        QFile file(m_Folder.filePath(name));
        waitFor([&] { return file.exists(); });
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }
    void exportShown(const QString &name)
    {
        keys("ctrl+shift+e");
        enterFile(kExport, m_Folder.filePath(name));
    }
    void exportPicked(const QString &keysBefore, const QString &name)
    {
        m_Screen.pressKey(window(kWorkbench), "ctrl+shift+e");
        const QString dialog = window(kExportTwo);
        if (!keysBefore.isEmpty())
            m_Screen.pressKey(dialog, keysBefore + " alt+n");
        enterFile(kExportTwo, m_Folder.filePath(name));
    }
};

TEST_F(ExportingByHand, TheEndingOfTheNameChoosesTheFormatOfWhatTheWindowShows)
{
    open();
    exportShown("out.aln");
    EXPECT_TRUE(bytesOf("out.aln").startsWith("CLUSTAL"));
    exportShown("out.fasta");
    EXPECT_EQ(bytesOf("out.fasta").count('>'), kRowCount);
    EXPECT_FALSE(bytesOf("out.fasta").contains(">P1;")) << "whatever stands in the list";
    // Without one it is the format in the list, whose ending is added.
    exportShown("plain");
    EXPECT_TRUE(bytesOf("plain.ali").startsWith(">P1;"));
    EXPECT_FALSE(QFile::exists(m_Folder.filePath("plain")));
}

TEST_F(ExportingByHand, SeveralStructuresGoIntoOneFile)
{
    start({SOURCE_DIR "/examples/1A0J_A_superposed.pdb",
           SOURCE_DIR "/examples/1ABI_H_superposed.pdb"});
    const QString workbench = window(kWorkbench);
    m_Screen.activate(workbench);
    const QPoint first = m_Screen.geometryOf(workbench).topLeft() + kFirstInTree;
    waitFor([this] { return isSettled(); });
    m_Screen.click(first);
    m_Screen.pressKey(workbench, "shift+Down");
    exportPicked({}, "models.pdb");
    const QByteArray models = bytesOf("models.pdb");
    EXPECT_EQ(models.count("\nMODEL ") + models.startsWith("MODEL "), 2);
    // The next line of the list of ways: the chains of all.
    exportPicked("alt+a Down", "chains.cif");
    EXPECT_TRUE(bytesOf("chains.cif").startsWith("data_"));
    TAMBO::Result<TAMBO::FileContents> chains =
        TAMBO::readFile(m_Folder.filePath("chains.cif").toStdString());
    ASSERT_TRUE(chains.has_value());
    ASSERT_EQ(chains->structures.size(), 1U);
    EXPECT_EQ(chains->structures.front().chains.size(), 2U);
}

} // namespace ExportingByHandTest
