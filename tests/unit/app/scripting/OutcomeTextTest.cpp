// SPDX-License-Identifier: GPL-3.0-or-later
#include "OutcomeText.h"

#include <gtest/gtest.h>

namespace OutcomeTextTest {

using TAMBO::app::consequenceText;
using TAMBO::app::failureText;
using Outcome = TAMBO::scripting::ScriptOutcome;

Outcome failed(const std::string &message, const std::string &file, int line)
{
    Outcome outcome;
    outcome.end = Outcome::End::Failed;
    outcome.message = message;
    outcome.file = file;
    outcome.line = line;
    return outcome;
}

TEST(OutcomeText, AFailureNamesFileLineAndException)
{
    EXPECT_EQ(failureText(failed("ValueError: no such row", "/a/sites.py", 12), "sites.py"),
              "sites.py, line 12: ValueError: no such row");
}

TEST(OutcomeText, AFailureOfAHelperNamesTheHelper)
{
    EXPECT_EQ(failureText(failed("KeyError: 'x'", "/a/common.py", 3), "sites.py"),
              "common.py, line 3: KeyError: 'x'");
}

TEST(OutcomeText, AMessageOfSeveralLinesIsOneLine)
{
    EXPECT_EQ(failureText(failed("ValueError: a\n  b", "/a/s.py", 1), "s.py"),
              "s.py, line 1: ValueError: a b");
}

TEST(OutcomeText, InTheConsoleTheLineIsEnough)
{
    EXPECT_EQ(failureText(failed("NameError: x", "<console>", 2), ""), "Line 2: NameError: x");
}

TEST(OutcomeText, AStatusIsToldAsOne)
{
    Outcome outcome = failed("SystemExit: 2", "", 0);
    outcome.exitStatus = 2;
    EXPECT_EQ(failureText(outcome, "sites.py"), "sites.py ended with status 2.");
}

TEST(OutcomeText, WhatStaysIsCounted)
{
    Outcome outcome;
    EXPECT_EQ(consequenceText(outcome, "s.py"), "s.py is done; it has changed nothing.");
    EXPECT_EQ(consequenceText(outcome, ""), "");
    outcome.steps = 1;
    EXPECT_EQ(consequenceText(outcome, "s.py"), "s.py is done: one step of undo.");
    outcome.steps = 3;
    EXPECT_EQ(consequenceText(outcome, "s.py"), "s.py is done: 3 steps of undo.");
    outcome.end = Outcome::End::Failed;
    EXPECT_EQ(consequenceText(outcome, "s.py"), "3 steps that it had completed stay.");
    outcome.steps = 1;
    EXPECT_EQ(consequenceText(outcome, ""), "One step that it had completed stays.");
}

TEST(OutcomeText, WhatIsTakenBackIsTold)
{
    Outcome outcome;
    outcome.end = Outcome::End::Stopped;
    outcome.hasTakenBack = true;
    EXPECT_EQ(consequenceText(outcome, "s.py"), "What it had changed is taken back.");
    EXPECT_EQ(consequenceText(outcome, ""), "What it had changed is taken back.");
    outcome.steps = 1;
    EXPECT_EQ(consequenceText(outcome, "s.py"),
              "One step that it had completed stays; what it did after that is taken back.");
    outcome.steps = 3;
    EXPECT_EQ(consequenceText(outcome, "s.py"),
              "3 steps that it had completed stay; what it did after these is taken back.");
}

TEST(OutcomeText, NothingIsTakenBackOfWhatHasChangedNothing)
{
    Outcome outcome;
    outcome.end = Outcome::End::Stopped;
    EXPECT_EQ(consequenceText(outcome, "s.py"), "It had changed nothing.");
    EXPECT_EQ(consequenceText(outcome, ""), "It had changed nothing.");
    outcome.end = Outcome::End::Failed;
    EXPECT_EQ(consequenceText(outcome, "s.py"), "It had changed nothing.");
    EXPECT_EQ(consequenceText(outcome, ""), "");
}

} // namespace OutcomeTextTest
