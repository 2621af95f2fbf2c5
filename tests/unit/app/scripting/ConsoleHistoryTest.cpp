// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleHistory.h"

#include "AppFixture.h"

#include <QFile>
#include <QFileInfo>

namespace ConsoleHistoryTest {

using TAMBO::app::ConsoleHistory;

class ConsoleHistoryTest : public AppFixture
{
protected:
    [[nodiscard]] QString file() const { return path("sub/console-history"); }
};

QString textOf(const QString *entry)
{
    return entry == nullptr ? QStringLiteral("(none)") : *entry;
}

TEST_F(ConsoleHistoryTest, WhatWasTypedIsThereInTheNextRun)
{
    {
        ConsoleHistory history(file());
        history.add("a = 1");
        history.add("for x in y:\n    print('\\n')");
    }
    ConsoleHistory history(file());
    EXPECT_EQ(textOf(history.earlier("")), "for x in y:\n    print('\\n')");
    EXPECT_EQ(textOf(history.earlier("")), "a = 1");
    EXPECT_EQ(history.earlier(""), nullptr);
}

TEST_F(ConsoleHistoryTest, WhatWasBeingTypedComesAfterTheLastEntry)
{
    ConsoleHistory history(file());
    history.add("a = 1");
    history.add("b = 2");
    EXPECT_EQ(history.later(), nullptr);
    EXPECT_EQ(textOf(history.earlier("")), "b = 2");
    EXPECT_EQ(textOf(history.earlier("")), "a = 1");
    EXPECT_EQ(textOf(history.later()), "b = 2");
    EXPECT_EQ(textOf(history.later()), "");
    EXPECT_EQ(history.later(), nullptr);
}

TEST_F(ConsoleHistoryTest, WhatIsTypedChoosesTheEntriesThatBeginWithIt)
{
    ConsoleHistory history(file());
    for (const char *entry : {"tambo.undo()", "x = 1", "tambo.redo()", "y = 2"})
        history.add(entry);
    EXPECT_EQ(textOf(history.earlier("tam")), "tambo.redo()");
    EXPECT_EQ(textOf(history.earlier("tambo.redo()")), "tambo.undo()");
    EXPECT_EQ(textOf(history.later()), "tambo.redo()");
    EXPECT_EQ(textOf(history.later()), "tam");
}

TEST_F(ConsoleHistoryTest, TheSameTwiceIsOneEntry)
{
    ConsoleHistory history(file());
    history.add("a = 1");
    history.add("a = 1");
    EXPECT_EQ(textOf(history.earlier("")), "a = 1");
    EXPECT_EQ(history.earlier(""), nullptr);
}

TEST_F(ConsoleHistoryTest, TheFileStaysShortAndItsOwners)
{
    {
        ConsoleHistory history(file());
        for (int i = 0; i < 2 * ConsoleHistory::kMost; ++i)
            history.add(QString::number(i));
    }
    ConsoleHistory history(file());
    EXPECT_EQ(textOf(history.earlier("")), QString::number(2 * ConsoleHistory::kMost - 1));
    EXPECT_EQ(bytesOf(file()).count('\n'), ConsoleHistory::kMost);
    EXPECT_EQ(QFile::permissions(file()) & (QFile::ReadGroup | QFile::ReadOther), 0);
}

} // namespace ConsoleHistoryTest
