// SPDX-License-Identifier: GPL-3.0-or-later
// A new alignment of loaded sequences, from the workbench's window.
#include "Alignment.h"
#include "AppFixture.h"
#include "MainWindow.h"
#include "SelectObject.h"
#include "TestTexts.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "support/Answering.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QStatusBar>

#include <memory>

namespace NewAlignmentTest {

using namespace TAMBO;
using app::Workbench;

class NewAlignment : public AppFixture
{
protected:
    NewAlignment()
        : m_Workbench(std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins()))
    { }
    ~NewAlignment() override
    {
        m_Workbench->undo().history().clear();
        m_Workbench.reset();
    }

    void open(const QStringList &files)
    {
        m_Workbench->open(files);
        waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    }
    void press()
    {
        for (QAction *const action : m_Workbench->window().findChildren<QAction *>())
            if (action->shortcut() == QKeySequence(Qt::CTRL | Qt::Key_N))
                action->trigger();
    }
    static std::vector<std::string> rowsOfTheOnlyAlignment()
    {
        const std::vector<Alignment *> all = Workbench::loadedAlignments();
        std::vector<std::string> rows;
        for (unsigned long row = 0; all.size() == 1 && row < all.front()->height(); ++row)
            rows.push_back(all.front()->GetSeqName(row));
        return rows;
    }
    QString sequences() { return write("s.fasta", ">a\nACD\n>b\nACDE\n"); }

    std::unique_ptr<Workbench> m_Workbench;
};

TEST_F(NewAlignment, EnterMakesOneOfWhatWasJustOpened)
{
    open({write("m.pdb", pdbText("ACD"))});
    open({sequences()});
    answering<SelectObject>([](SelectObject &dialog) { dialog.accept(); });
    press();
    EXPECT_EQ(rowsOfTheOnlyAlignment(), (std::vector<std::string>{"a", "b"}));
}

TEST_F(NewAlignment, ItIsOneStepOfUndo)
{
    open({sequences()});
    History &history = m_Workbench->undo().history();
    const std::uint64_t before = history.state();
    answering<SelectObject>([](SelectObject &dialog) { dialog.accept(); });
    press();
    ASSERT_EQ(Workbench::loadedAlignments().size(), 1U);
    history.undo();
    EXPECT_TRUE(Workbench::loadedAlignments().empty());
    EXPECT_EQ(history.state(), before);
    history.redo();
    EXPECT_EQ(rowsOfTheOnlyAlignment(), (std::vector<std::string>{"a", "b"}));
}

TEST_F(NewAlignment, WhoGivesUpTheDialogMakesNone)
{
    open({sequences()});
    const std::uint64_t before = m_Workbench->undo().history().state();
    answering<SelectObject>([](SelectObject &dialog) { dialog.reject(); });
    press();
    EXPECT_TRUE(Workbench::loadedAlignments().empty());
    EXPECT_EQ(m_Workbench->undo().history().state(), before);
}

TEST_F(NewAlignment, WithoutSequencesTheStatusLineSaysSo)
{
    press();
    EXPECT_TRUE(
        m_Workbench->window().statusBar()->currentMessage().contains("no sequences are loaded"))
        << m_Workbench->window().statusBar()->currentMessage().toStdString();
    EXPECT_TRUE(Workbench::loadedAlignments().empty());
}

} // namespace NewAlignmentTest
