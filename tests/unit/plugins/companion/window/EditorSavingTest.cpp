// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's own File, Save by a key and in the menu.
#include "window/CompanionFixture.h"

#include "PluginRoutes.h"
#include "WindowCommands.h"
#include "WorkbenchCommands.h"
#include "support/Answering.h"

#include <QFileDialog>
#include <QTemporaryDir>

namespace EditorSavingTest {

using TAMBO::services::PluginRoutes;

class EditorSaving : public AlignmentCompanion
{
protected:
    EditorSaving()
    {
        PluginRoutes::instance().registerCommand(
            "Parse", "PIR", "SaveALI", [this](const PluginCall &call) {
                const auto *request = static_cast<TAMBO::SaveRequest *>(call.data);
                m_SavedFile = request->path;
                m_Saved = request->alignment;
                return true;
            });
    }
    ~EditorSaving() override { PluginRoutes::instance().removeCommand("Parse", "PIR", "SaveALI"); }

    void press()
    {
        const companion::WindowCommands keys(*m_Served, *m_Companion);
        for (QAction *const action : m_Window->actions())
            if (action->shortcut() == QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S))
                action->trigger();
    }

    QString m_SavedFile;
    const TAMBO::Alignment *m_Saved = nullptr;
};

TEST_F(EditorSaving, TheKeyAsksForAFileAndSavesTheAlignmentThatIsShown)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("mine.ali");
    answering<QFileDialog>([&](QFileDialog &dialog) {
        dialog.selectFile(file);
        static_cast<QDialog &>(dialog).accept();
    });
    press();
    EXPECT_EQ(m_SavedFile, file);
    EXPECT_EQ(m_Saved, &m_Shown);
}

TEST_F(EditorSaving, WhoGivesUpTheDialogSavesNothing)
{
    answering<QFileDialog>([](QFileDialog &dialog) { dialog.reject(); });
    press();
    EXPECT_EQ(m_Saved, nullptr);
}

TEST_F(EditorSaving, WithoutAnAlignmentTheLineSaysSo)
{
    m_Companion.reset();
    m_Window = &open();
    m_Served = &served(*m_Window);
    m_Companion = std::make_unique<Companion>(*m_Served);
    press();
    const QString line =
        m_Window->findChild<QToolBar *>("UnderThePointer")->findChild<QLabel *>()->text();
    EXPECT_TRUE(line.startsWith("Save: no alignment is shown.")) << line.toStdString();
    EXPECT_EQ(m_Saved, nullptr);
}

} // namespace EditorSavingTest
