// SPDX-License-Identifier: GPL-3.0-or-later
// The workbench's export, asked for in an editor window.
#include "window/CompanionFixture.h"

#include "PluginRoutes.h"
#include "WindowCommands.h"

#include <QAction>
#include <QLabel>
#include <QToolBar>

namespace ExportingTest {

using TAMBO::services::PluginRoutes;

class Exporting : public AlignmentCompanion
{
protected:
    Exporting()
    {
        PluginRoutes::instance().registerExecute("Data", "Alignment", "export",
                                                 [this](const PluginCall &call) {
                                                     m_Exported.push_back(call.data);
                                                     return true;
                                                 });
    }
    ~Exporting() override { PluginRoutes::instance().removeExecute("Data", "Alignment", "export"); }

    void press()
    {
        const companion::WindowCommands keys(*m_Served, *m_Companion);
        for (QAction *const action : m_Window->actions())
            if (action->shortcut() == QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E))
                action->trigger();
    }

    std::vector<void *> m_Exported;
};

TEST_F(Exporting, TheKeyExportsTheAlignmentThatIsShown)
{
    press();
    EXPECT_EQ(m_Exported, std::vector<void *>{static_cast<TAMBO::Alignment *>(&m_Shown)});
}

TEST_F(Exporting, WithoutAnAlignmentTheLineSaysSo)
{
    m_Companion.reset();
    m_Window = &open();
    m_Served = &served(*m_Window);
    m_Companion = std::make_unique<Companion>(*m_Served);
    press();
    const QString line =
        m_Window->findChild<QToolBar *>("UnderThePointer")->findChild<QLabel *>()->text();
    EXPECT_TRUE(line.startsWith("Export: no alignment is shown.")) << line.toStdString();
    EXPECT_EQ(m_Exported.size(), 0U);
}

} // namespace ExportingTest
