// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that sequences are chosen in, by real keys.
#include "WindowFixture.h"

namespace ChoosingByHandTest {

class ChoosingByHand : public WindowFixture
{
protected:
    // With an alignment that is shown, and sequences of another file.
    void open()
    {
        start({write("family.fasta", ">one\nACDEFGHIKL\n>two\nACDEFGHIKM\n"),
               write("more.fasta", ">extra\nACDEFGHIKN\n>extraordinary\nACDEFGHIKP\n")});
        m_Editor = window("Alignment Editor");
        grid(m_Editor, "ACDEFGHI");
    }
    // "Add Seqs".
    QString ask()
    {
        choose(m_Editor, 0, 1);
        return window("sequences to add");
    }
    QStringList rows() { return save(m_Editor, m_Folder.filePath("saved.ali")); }

    QString m_Editor;
};

TEST_F(ChoosingByHand, EnterTakesTheOnlyMatchAndWithSeveralTakesNothing)
{
    open();
    const QString dialog = ask();
    m_Screen.typeText(dialog, "extra");
    m_Screen.pressKey(dialog, "Return");
    // It is still there.
    m_Screen.typeText(dialog, "ord");
    m_Screen.pressKey(dialog, "Return");
    waitForWindows("sequences to add", 0);
    EXPECT_EQ(rows(), QStringList({"ACDEFGHIKL", "ACDEFGHIKM", "ACDEFGHIKP"}));
}

TEST_F(ChoosingByHand, SpaceTicksAndEnterTakesWhatIsTicked)
{
    open();
    const QString dialog = ask();
    m_Screen.typeText(dialog, "extra");
    m_Screen.pressKey(dialog, "space");
    m_Screen.pressKey(dialog, "Return");
    waitForWindows("sequences to add", 0);
    EXPECT_EQ(rows(), QStringList({"ACDEFGHIKL", "ACDEFGHIKM", "ACDEFGHIKN"}));
}

TEST_F(ChoosingByHand, WhatWasOpenedMakesAnAlignmentByEnterAlone)
{
    start({});
    const QString workbench = window("Tambo");
    m_Screen.activate(workbench);
    write("some.fasta", ">one\nACDEFGHIKL\n>two\nACDEFGHIK\n");
    m_Screen.pressKey(workbench, "ctrl+o");
    enterFile("Open", '"' + m_Folder.filePath("some.fasta") + "\" \"" +
                          write("lone.fasta", ">lone\nACDEFGHI\n") + '"');
    static_cast<void>(settled([this] { return m_Screen.picture(); }));
    m_Screen.pressKey(workbench, "ctrl+e");
    m_Editor = window("Alignment Editor");
    m_Screen.pressKey(m_Editor, "ctrl+s");
    m_Screen.pressKey(window("sequences"), "Return");
    waitForWindows("sequences", 0);
    EXPECT_EQ(rows(), QStringList({"ACDEFGHIKL", "ACDEFGHIK-", "ACDEFGHI--"}));
}

} // namespace ChoosingByHandTest
