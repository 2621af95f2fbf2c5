// SPDX-License-Identifier: GPL-3.0-or-later
// The scripts run last, and the dialog that offers them again.
#include "RecentScripts.h"
#include "RunScriptDialog.h"

#include "AppFixture.h"
#include "ConfigStore.h"
#include "support/WaitUntil.h"

#include <QLineEdit>
#include <QTest>

namespace RecentScriptsTest {

using TAMBO::app::RecentScripts;
using TAMBO::app::RunScriptDialog;
using TAMBO::services::ConfigStore;
using Script = RecentScripts::Script;
using Scripts = std::vector<Script>;

class RecentScriptsTest : public AppFixture
{
protected:
    ConfigStore m_Store{QString(), path("tambo.ini")};
    RecentScripts m_Recent{m_Store};
};

TEST_F(RecentScriptsTest, TheLatestComesFirstWithItsArguments)
{
    m_Recent.add({"/a/one.py", "1 2"});
    m_Recent.add({"/a/two.py", ""});
    EXPECT_EQ(m_Recent.scripts(), (Scripts{{"/a/two.py", ""}, {"/a/one.py", "1 2"}}));
    m_Recent.add({"/a/one.py", "3"});
    EXPECT_EQ(m_Recent.scripts(), (Scripts{{"/a/one.py", "3"}, {"/a/two.py", ""}}));
}

TEST_F(RecentScriptsTest, TenAreKeptInTheSettings)
{
    for (int i = 0; i < 12; ++i)
        m_Recent.add({QStringLiteral("/a/%1.py").arg(i), "x 'y z'"});
    m_Recent.setFolder("/a");
    ASSERT_TRUE(m_Store.save().has_value());
    ConfigStore again(QString(), path("tambo.ini"));
    const RecentScripts recent(again);
    ASSERT_EQ(recent.scripts().size(), 10U);
    EXPECT_EQ(recent.scripts().front(), (Script{"/a/11.py", "x 'y z'"}));
    EXPECT_EQ(recent.scripts().back().file, "/a/2.py");
    EXPECT_EQ(recent.folder(), "/a");
}

TEST_F(RecentScriptsTest, OneIsRemovedAndAllAreCleared)
{
    m_Recent.add({"/a/one.py", ""});
    m_Recent.add({"/a/two.py", "2"});
    m_Recent.remove("/a/two.py");
    EXPECT_EQ(m_Recent.scripts(), (Scripts{{"/a/one.py", ""}}));
    m_Recent.clear();
    EXPECT_TRUE(m_Recent.scripts().empty());
}

TEST_F(RecentScriptsTest, TheDialogBeginsWithTheLastScriptAndItsArguments)
{
    const QString one = write("one.py", "");
    const QString two = write("two.py", "");
    m_Recent.setFolder(m_Folder.path());
    m_Recent.add({one, "--fast"});
    m_Recent.add({two, "a b"});
    RunScriptDialog dialog(m_Recent);
    dialog.show();
    auto *const arguments = dialog.findChild<QLineEdit *>("ScriptArguments");
    ASSERT_NE(arguments, nullptr);
    EXPECT_EQ(dialog.script(), (Script{two, "a b"}));
    auto *const name = dialog.findChild<QLineEdit *>("fileNameEdit");
    ASSERT_NE(name, nullptr);
    name->setText(path("other.py"));
    EXPECT_EQ(arguments->text(), "");
    emit dialog.currentChanged(one);
    EXPECT_EQ(arguments->text(), "--fast");
    // What the user has typed stays.
    arguments->clear();
    QTest::keyClicks(arguments, "mine");
    emit dialog.currentChanged(two);
    EXPECT_EQ(arguments->text(), "mine");
    dialog.selectFile(one);
    EXPECT_EQ(dialog.script(), (Script{one, "mine"}));
}

} // namespace RecentScriptsTest
