// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on when they answer commands of others.
#include "PluginAnswer.h"

#include "PluginManager.h"
#include "WorkbenchCommands.h"
#include "support/LogLines.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

using Outcome = PluginManager::Outcome;
using Way = PluginAnswer::Way;

namespace PluginAnswerContractTest {

static_assert(!std::is_copy_constructible_v<PluginAnswer>);

int s_StaticCalls = 0;

// As a library holds it.
const PluginAnswer s_Static("Contract", "Static", "count", [](const PluginCall &) {
    ++s_StaticCalls;
    return true;
});

Outcome ask(const std::string &command)
{
    return PluginManager::Command("Contract", "Columns", "Test", "Ask", command,
                                  static_cast<void *>(nullptr));
}

Outcome execute(const std::string &command)
{
    return PluginManager::Execute("Contract", "Columns", "Test", command);
}

PluginAnswer::Handler gives(bool done)
{
    return [done](const PluginCall &) { return done; };
}

TEST(PluginAnswerContract, AnAnswerGetsCallerTextAndData)
{
    std::vector<PluginCall> calls;
    const PluginAnswer answer("Contract", "Columns", "Statistics",
                              [&calls](const PluginCall &call) {
                                  calls.push_back(call);
                                  return true;
                              });
    ASSERT_TRUE(answer.isGood());
    int writable = 0;
    const int readOnly = 0;
    EXPECT_EQ(PluginManager::Command("Contract", "Columns", "Test", "Count", "Statistics",
                                     static_cast<void *>(&writable)),
              Outcome::Done);
    EXPECT_EQ(PluginManager::Command("Contract", "Columns", "Test", "Count", "Statistics",
                                     static_cast<const void *>(&readOnly)),
              Outcome::Done);
    EXPECT_EQ(PluginManager::Execute("Contract", "Columns", "Test", "Statistics", &writable),
              Outcome::Done);
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[0].caller, "Test");
    EXPECT_EQ(calls[0].text, "Count");
    EXPECT_EQ(calls[0].data, &writable);
    EXPECT_EQ(calls[0].readOnlyData, nullptr);
    EXPECT_EQ(calls[1].data, nullptr);
    EXPECT_EQ(calls[1].readOnlyData, &readOnly);
    EXPECT_EQ(calls[2].text, "");
    EXPECT_EQ(calls[2].data, &writable);
}

TEST(PluginAnswerContract, AnAnswerLastsAsLongAsItsObject)
{
    EXPECT_EQ(ask("Statistics"), Outcome::NoService);
    {
        const PluginAnswer answer("Contract", "Columns", "Statistics", gives(true));
        EXPECT_EQ(ask("Statistics"), Outcome::Done);
        EXPECT_EQ(execute("Statistics"), Outcome::Done);
        EXPECT_EQ(ask("Other"), Outcome::NoCommand);
    }
    EXPECT_EQ(ask("Statistics"), Outcome::NoService);
    EXPECT_EQ(execute("Statistics"), Outcome::NoService);
}

TEST(PluginAnswerContract, CommandAndExecuteCanHaveAnswersOfTheirOwn)
{
    const PluginAnswer command("Contract", "Columns", "Statistics", gives(true), Way::Command);
    EXPECT_EQ(ask("Statistics"), Outcome::Done);
    EXPECT_EQ(execute("Statistics"), Outcome::NoCommand);
    const PluginAnswer executed("Contract", "Columns", "Statistics", gives(false), Way::Execute);
    EXPECT_TRUE(command.isGood());
    EXPECT_TRUE(executed.isGood());
    EXPECT_EQ(ask("Statistics"), Outcome::Done);
    EXPECT_EQ(execute("Statistics"), Outcome::Failed);
}

TEST(PluginAnswerContract, NobodyIsReplaced)
{
    auto first = std::make_unique<PluginAnswer>("Contract", "Columns", "Statistics", gives(true));
    {
        const LogLines log;
        const PluginAnswer second("Contract", "Columns", "Statistics", gives(false));
        EXPECT_FALSE(second.isGood());
        EXPECT_EQ(log.count(), 1);
        EXPECT_EQ(ask("Statistics"), Outcome::Done);
    }
    // The end of the one that was refused ends nothing.
    EXPECT_EQ(ask("Statistics"), Outcome::Done);
    first.reset();
    const PluginAnswer third("Contract", "Columns", "Statistics", gives(false));
    EXPECT_TRUE(third.isGood());
    EXPECT_EQ(ask("Statistics"), Outcome::Failed);
}

TEST(PluginAnswerContract, AnAnswerThatGetsOneWayOnlyGetsNone)
{
    const PluginAnswer executed("Contract", "Columns", "Statistics", gives(true), Way::Execute);
    const LogLines log;
    const PluginAnswer both("Contract", "Columns", "Statistics", gives(true));
    EXPECT_FALSE(both.isGood());
    EXPECT_EQ(log.count(), 1);
    EXPECT_EQ(ask("Statistics"), Outcome::NoCommand);
    EXPECT_EQ(execute("Statistics"), Outcome::Done);
}

TEST(PluginAnswerContract, TheCommandsOfTheWorkbenchCannotBeTaken)
{
    for (const TAMBO::CommandName &name : TAMBO::WorkbenchCommands::kAll) {
        for (const Way way : {Way::Command, Way::Execute, Way::Either}) {
            const LogLines log;
            const PluginAnswer answer(name.group, name.service, name.command, gives(true), way);
            EXPECT_FALSE(answer.isGood()) << name.command;
            EXPECT_EQ(log.count(), 1) << name.command;
        }
    }
    // Another command of a service of its is free.
    const PluginAnswer check("Parse", "PIR", "CheckALI", gives(true));
    EXPECT_TRUE(check.isGood());
}

TEST(PluginAnswerContract, AnAnswerWithoutNameOrHandlerIsRefused)
{
    const LogLines log;
    EXPECT_FALSE(PluginAnswer("", "Columns", "Statistics", gives(true)).isGood());
    EXPECT_FALSE(PluginAnswer("Contract", "", "Statistics", gives(true)).isGood());
    EXPECT_FALSE(PluginAnswer("Contract", "Columns", "", gives(true)).isGood());
    EXPECT_FALSE(PluginAnswer("Contract", "Columns", "Statistics", {}).isGood());
    EXPECT_EQ(log.count(), 4);
    EXPECT_EQ(ask("Statistics"), Outcome::NoService);
}

TEST(PluginAnswerContract, AnAnswerMayEndItselfAndMakeOthersWhileItIsCalled)
{
    std::unique_ptr<PluginAnswer> self;
    std::vector<std::unique_ptr<PluginAnswer>> others;
    const std::string text = "what the handler holds lasts until it returns";
    self = std::make_unique<PluginAnswer>(
        "Contract", "Columns", "Statistics", [&self, &others, text](const PluginCall &) {
            for (int i = 0; i < 100; ++i)
                others.push_back(std::make_unique<PluginAnswer>(
                    "Contract", "Columns", "Other " + std::to_string(i), gives(true)));
            self.reset();
            return text.size() == 45;
        });
    EXPECT_EQ(ask("Statistics"), Outcome::Done);
    EXPECT_EQ(self, nullptr);
    EXPECT_EQ(ask("Statistics"), Outcome::NoCommand);
    EXPECT_EQ(execute("Other 99"), Outcome::Done);
}

TEST(PluginAnswerContract, AnAnswerThatThrowsHasFailed)
{
    const PluginAnswer answer("Contract", "Columns", "Statistics",
                              [](const PluginCall &) -> bool { throw std::runtime_error("boom"); });
    const LogLines log;
    EXPECT_NO_THROW(EXPECT_EQ(ask("Statistics"), Outcome::Failed));
    EXPECT_EQ(log.texts(), QStringList("Contract/Columns/Statistics failed: boom (asked by Test)"));
}

TEST(PluginAnswerContract, AStaticAnswerIsThereFromTheStart)
{
    ASSERT_TRUE(s_Static.isGood());
    const int before = s_StaticCalls;
    EXPECT_EQ(PluginManager::Execute("Contract", "Static", "Test", "count"), Outcome::Done);
    EXPECT_EQ(s_StaticCalls, before + 1);
}

} // namespace PluginAnswerContractTest
