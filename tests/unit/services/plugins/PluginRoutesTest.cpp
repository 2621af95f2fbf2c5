// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRoutes.h"

#include "support/LogLines.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace TAMBO::services;
using Outcome = PluginManager::Outcome;

namespace PluginRoutesTest {

PluginRoutes::Handler answers(bool done)
{
    return [done](const PluginCall &) { return done; };
}

PluginCall callOf(const std::string &caller)
{
    PluginCall call;
    call.caller = caller;
    return call;
}

TEST(PluginRoutes, TheOutcomesAreToldApart)
{
    PluginRoutes routes;
    routes.registerCommand("Parse", "PIR", "Save", answers(true));
    routes.registerCommand("Parse", "PIR", "Fail", answers(false));
    const PluginCall call = callOf("Test");
    EXPECT_EQ(routes.command("Parse", "PIR", "Save", call), Outcome::Done);
    EXPECT_EQ(routes.command("Parse", "PIR", "Fail", call), Outcome::Failed);
    EXPECT_EQ(routes.command("Parse", "PIR", "Other", call), Outcome::NoCommand);
    EXPECT_EQ(routes.command("Parse", "Other", "Save", call), Outcome::NoService);
    EXPECT_EQ(routes.command("Other", "PIR", "Save", call), Outcome::NoService);
}

TEST(PluginRoutes, CommandAndExecuteHaveRoutesOfTheirOwn)
{
    PluginRoutes routes;
    routes.registerCommand("G", "S", "only command", answers(true));
    routes.registerExecute("G", "S", "only execute", answers(true));
    const PluginCall call = callOf("Test");
    EXPECT_EQ(routes.execute("G", "S", "only command", call), Outcome::NoCommand);
    EXPECT_EQ(routes.command("G", "S", "only execute", call), Outcome::NoCommand);
    EXPECT_EQ(routes.execute("G", "S", "only execute", call), Outcome::Done);
}

TEST(PluginRoutes, WhatIsMissingIsOneLogLine)
{
    PluginRoutes routes;
    routes.registerCommand("Parse", "PIR", "Save", answers(true));
    const LogLines log;
    EXPECT_EQ(routes.command("Parse", "PIR", "Other", callOf("KALMO")), Outcome::NoCommand);
    EXPECT_EQ(routes.execute("Calculate", "Alignment", "Malign", callOf("KALMO")),
              Outcome::NoService);
    EXPECT_EQ(log.texts(), QStringList({"Parse/PIR has no command \"Other\" (asked by KALMO)",
                                        "Nobody offers Calculate/Alignment (asked by KALMO)"}));
}

TEST(PluginRoutes, AnExceptionIsAFailureWithOneLogLineAndIsNotThrownOn)
{
    PluginRoutes routes;
    routes.registerCommand("G", "S", "known",
                           [](const PluginCall &) -> bool { throw std::runtime_error("no disk"); });
    routes.registerCommand("G", "S", "unknown", [](const PluginCall &) -> bool { throw 7; });
    const LogLines log;
    EXPECT_EQ(routes.command("G", "S", "known", callOf("Test")), Outcome::Failed);
    EXPECT_EQ(routes.command("G", "S", "unknown", callOf("Test")), Outcome::Failed);
    EXPECT_EQ(log.texts(), QStringList({"G/S/known failed: no disk (asked by Test)",
                                        "G/S/unknown failed (asked by Test)"}));
}

TEST(PluginRoutes, RegisteringAgainIsRefusedAndRemovingTakesAway)
{
    PluginRoutes routes;
    EXPECT_TRUE(routes.registerExecute("G", "S", "a", answers(true)));
    const LogLines log;
    EXPECT_FALSE(routes.registerExecute("G", "S", "a", answers(false)));
    EXPECT_EQ(log.texts(),
              QStringList("G/S/a is answered already; a second answer to it was refused."));
    const PluginCall call = callOf("Test");
    EXPECT_EQ(routes.execute("G", "S", "a", call), Outcome::Done);
    routes.registerExecute("G", "S", "b", answers(true));
    routes.removeExecute("G", "S", "a");
    EXPECT_EQ(routes.execute("G", "S", "a", call), Outcome::NoCommand);
    routes.removeExecute("G", "S", "b");
    routes.removeExecute("G", "S", "never registered");
    EXPECT_EQ(routes.execute("G", "S", "b", call), Outcome::NoService);
}

TEST(PluginRoutes, ACommandMayRemoveItself)
{
    PluginRoutes routes;
    routes.registerCommand("G", "S", "once", [&routes](const PluginCall &call) {
        routes.removeCommand("G", "S", "once");
        return call.caller == "Test";
    });
    EXPECT_EQ(routes.command("G", "S", "once", callOf("Test")), Outcome::Done);
    EXPECT_EQ(routes.command("G", "S", "once", callOf("Test")), Outcome::NoService);
}

} // namespace PluginRoutesTest
