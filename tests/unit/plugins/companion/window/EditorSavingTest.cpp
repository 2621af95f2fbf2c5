// SPDX-License-Identifier: GPL-3.0-or-later
// The workbench's Save As by a key of an editor window, and in its menu.
#include "window/CompanionFixture.h"

#include "PluginRoutes.h"
#include "WindowCommands.h"
#include "WorkbenchCommands.h"

namespace EditorSavingTest {

using TAMBO::services::PluginRoutes;

class EditorSaving : public AlignmentCompanion
{
protected:
    EditorSaving()
    {
        PluginRoutes::instance().registerExecute(
            "Data", "Alignment", "saveAs", [this](const PluginCall &call) {
                m_Saved = static_cast<const TAMBO::Alignment *>(call.data);
                return true;
            });
    }
    ~EditorSaving() override
    {
        PluginRoutes::instance().removeExecute("Data", "Alignment", "saveAs");
    }

    void press()
    {
        const companion::WindowCommands keys(*m_Served, *m_Companion);
        for (QAction *const action : m_Window->actions())
            if (action->shortcut() == QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S))
                action->trigger();
    }

    const TAMBO::Alignment *m_Saved = nullptr;
};

TEST_F(EditorSaving, TheKeySavesTheAlignmentThatIsShown)
{
    press();
    EXPECT_EQ(m_Saved, &m_Shown);
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
