// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptFixture.h"

#include "Alignment.h"
#include "ChangeScope.h"
#include "Hooks.h"
#include "ObjectOperations.h"
#include "ObjectSpace.h"
#include "SessionReading.h"
#include "StoreReader.h"

namespace StepsTest {

using Labels = std::vector<std::string>;

class Steps : public ScriptFixture
{
protected:
    static TAMBO::Alignment &alignment()
    {
        return *TAMBO::ObjectSpace::get().referrers<TAMBO::Alignment>().front();
    }
    void makeAlignment()
    {
        runWell("import tambo\n"
                "tambo.new_alignment('family', [('one', 'MK-V'), ('two', 'MRAV')])\n");
    }
};

TEST_F(Steps, ARunIsOne)
{
    const Outcome outcome = run("import tambo\n"
                                "family = tambo.new_alignment('family', [('one', 'MK-V')])\n"
                                "family.insert_gaps(0, 0, 2)\n"
                                "family.name = 'other'\n");
    EXPECT_EQ(outcome.end, Outcome::End::Done) << outcome.trace;
    EXPECT_EQ(outcome.steps, 1U);
    ASSERT_EQ(m_History.size(), 1U);
    EXPECT_TRUE(m_History.label(0).starts_with("script script.py")) << m_History.label(0);
    EXPECT_TRUE(m_History.undo());
    EXPECT_TRUE(names().empty());
    EXPECT_TRUE(m_History.redo());
    EXPECT_EQ(names(), Labels{"other"});
}

TEST_F(Steps, ARunThatChangesNothingIsNone)
{
    const Outcome outcome = run("import tambo; tambo.alignments(); print('looked')");
    EXPECT_EQ(outcome.steps, 0U);
    EXPECT_EQ(m_History.size(), 0U);
}

TEST_F(Steps, OfTheScriptsOwnStandBesideWhatIsChangedAroundThem)
{
    makeAlignment();
    const Outcome outcome = run("import tambo\n"
                                "family, = tambo.alignments()\n"
                                "family.insert_gaps(0, 0)\n"
                                "with tambo.step('First'):\n"
                                "    family.insert_gaps(0, 0)\n"
                                "    with tambo.step('Inner'):\n"
                                "        family.insert_gaps(0, 0)\n"
                                "with tambo.step('Second'):\n"
                                "    family.move_row(1, 0)\n"
                                "family.insert_gaps(0, 0)\n");
    EXPECT_EQ(outcome.end, Outcome::End::Done) << outcome.trace;
    EXPECT_EQ(outcome.steps, 4U);
    EXPECT_EQ(labels(),
              (Labels{"script script.py family", "script script.py in family", "First in family",
                      "Second in family", "script script.py in family"}));
}

TEST_F(Steps, AnExceptionTakesTheStepBack)
{
    makeAlignment();
    const Outcome outcome = run("import tambo\n"
                                "family, = tambo.alignments()\n"
                                "family.insert_gaps(0, 0)\n"
                                "tambo.new_alignment('second', [('one', 'MK-V')])\n"
                                "family.delete()\n"
                                "1 / 0\n");
    EXPECT_EQ(outcome.end, Outcome::End::Failed);
    EXPECT_EQ(outcome.message, "ZeroDivisionError: division by zero");
    EXPECT_EQ(outcome.steps, 0U);
    EXPECT_TRUE(outcome.hasTakenBack);
    EXPECT_EQ(names(), Labels{"family"});
    EXPECT_EQ(alignment().GetSequence(0, false), "MK-V");
    EXPECT_EQ(m_History.size(), 1U);
}

TEST_F(Steps, ThatHaveEndedStayWhenTheScriptFails)
{
    makeAlignment();
    const Outcome outcome = run("import tambo\n"
                                "family, = tambo.alignments()\n"
                                "with tambo.step('Kept'):\n"
                                "    family.insert_gaps(0, 0)\n"
                                "with tambo.step('Lost'):\n"
                                "    family.insert_gaps(0, 0)\n"
                                "    raise ValueError('no')\n");
    EXPECT_EQ(outcome.steps, 1U);
    EXPECT_TRUE(outcome.hasTakenBack);
    EXPECT_EQ(outcome.line, 7);
    EXPECT_EQ(alignment().GetSequence(0, false), "-MK-V");
    EXPECT_EQ(labels().back(), "Kept in family");
}

TEST_F(Steps, NothingIsTakenBackWhereNothingWasChangedBehindThem)
{
    makeAlignment();
    EXPECT_FALSE(run("1 / 0").hasTakenBack);
    const Outcome outcome = run("import tambo\n"
                                "family, = tambo.alignments()\n"
                                "try:\n"
                                "    with tambo.step('Lost'):\n"
                                "        family.insert_gaps(0, 0)\n"
                                "        1 / 0\n"
                                "except ZeroDivisionError:\n"
                                "    pass\n"
                                "with tambo.step('Kept'):\n"
                                "    family.insert_gaps(0, 0)\n"
                                "1 / 0\n");
    EXPECT_EQ(outcome.steps, 1U);
    EXPECT_FALSE(outcome.hasTakenBack);
}

TEST_F(Steps, ThatAScriptForgetsToEndEndWithIt)
{
    makeAlignment();
    EXPECT_EQ(run("import tambo\n"
                  "tambo.step('Left').__enter__()\n"
                  "tambo.alignments()[0].insert_gaps(0, 0)\n")
                  .steps,
              1U);
    EXPECT_EQ(labels().back(), "Left in family");
    EXPECT_EQ(run("import tambo\n"
                  "tambo.step('Left').__enter__()\n"
                  "tambo.alignments()[0].insert_gaps(0, 0)\n"
                  "1 / 0\n")
                  .steps,
              0U);
    EXPECT_EQ(m_History.size(), 2U);
    EXPECT_FALSE(TAMBO::isChanging());
}

TEST_F(Steps, UndoAndWhatTakesAllAwayRaise)
{
    makeAlignment();
    runWell("import tambo\n"
            "for act in (tambo.undo, tambo.redo, tambo.clear, lambda: tambo.open_session('x')):\n"
            "    try:\n"
            "        act()\n"
            "    except tambo.StepError as error:\n"
            "        print(error)\n");
    EXPECT_EQ(shown(), "undo is not possible for a script in the workbench\n"
                       "redo is not possible for a script in the workbench\n"
                       "clearing is not possible for a script in the workbench\n"
                       "opening a session is not possible for a script in the workbench\n");
    EXPECT_EQ(names(), Labels{"family"});
}

TEST_F(Steps, OfASessionThatIsSavedAreInIt)
{
    makeAlignment();
    const Outcome outcome = run("import os, tambo\n"
                                "tambo.alignments()[0].insert_gaps(0, 0)\n"
                                "tambo.save_session(os.path.dirname(__file__) + '/x.tambo')\n"
                                "tambo.alignments()[0].insert_gaps(0, 0)\n");
    EXPECT_EQ(outcome.end, Outcome::End::Done) << outcome.trace;
    EXPECT_EQ(outcome.steps, 2U);
    EXPECT_EQ(saved, std::vector{folder / "x.tambo"});
}

TEST_F(Steps, OfASessionThatIsSavedStandBesideTheWindows)
{
    makeAlignment();
    values = {{"windows", "one"}};
    runWell("import os, tambo\n"
            "tambo.save_session(os.path.dirname(__file__) + '/x.tambo')\n");
    const auto session = TAMBO::sessions::openSession(folder / "x.tambo");
    ASSERT_TRUE(session);
    std::string found;
    ASSERT_TRUE(session.value()->forEachValue([&](auto name, auto content) {
        found += name == "windows" ? content : "";
        return TAMBO::Result<void>();
    }));
    EXPECT_EQ(found, "one");
}

TEST_F(Steps, ThatEndWithinARunAreToldBeforeTheNextBegins)
{
    makeAlignment();
    stepsEnded.clear();
    runWell("import tambo\n"
            "family, = tambo.alignments()\n"
            "family.insert_gaps(0, 0)\n"
            "for i in range(2):\n"
            "    with tambo.step('One'):\n"
            "        family.insert_gaps(0, 0)\n");
    EXPECT_EQ(stepsEnded, (std::vector<std::size_t>{2, 3, 4}));
    EXPECT_FALSE(isStepOpen);
}

TEST_F(Steps, WhatIsRefusedIsRaisedAndShownNowhere)
{
    makeAlignment();
    int told = 0;
    TAMBO::modelHooks().refused = [&](const TAMBO::Compound &) { ++told; };
    TAMBO::modelHooks().denied = [&](const std::string &, const TAMBO::Compound *) { ++told; };
    TAMBO::setObjectLocked(alignment(), true);
    const Outcome outcome = run("import tambo\ntambo.alignments()[0].insert_gaps(0, 0)\n");
    EXPECT_EQ(outcome.message, "tambo.RefusedError: family is locked");
    EXPECT_EQ(told, 0);
    // The window's own again.
    TAMBO::renameObject(alignment(), "x");
    EXPECT_EQ(told, 1);
    TAMBO::modelHooks().refused = nullptr;
    TAMBO::modelHooks().denied = nullptr;
}

TEST_F(Steps, AScriptThatDeletesEverythingIsUndone)
{
    makeAlignment();
    runWell("import tambo; tambo.new_sequence('single', 'MKV')");
    runWell("import tambo\n"
            "for alignment in tambo.alignments(): alignment.delete()\n"
            "print(len(tambo.alignments()))\n");
    EXPECT_EQ(shown(), "0\n");
    EXPECT_TRUE(m_History.undo());
    EXPECT_EQ(alignment().GetSequence(1, false), "MRAV");
}

TEST_F(Steps, WhatWasOpenedAndNotChangedIsSaved)
{
    write("a.fasta", ">one\nMKV\n>two\nMRV\n");
    const std::string open = "import os, tambo\n"
                             "here = os.path.dirname(__file__)\n"
                             "family = tambo.open(here + '/a.fasta').alignment\n";
    runWell(open);
    EXPECT_FALSE(m_History.isModified(alignment()));
    EXPECT_TRUE(m_History.undo());
    runWell(open + "family.insert_gaps(0, 0)\n");
    EXPECT_TRUE(m_History.isModified(alignment()));
    runWell(
        "import os, tambo\ntambo.alignments()[0].save(os.path.dirname(__file__) + '/b.fasta')\n");
    EXPECT_FALSE(m_History.isModified(alignment()));
}

TEST_F(Steps, OfAFileThatIsOpenedTellTheWorkbenchItsName)
{
    write("a.fasta", ">one\nMKV\n>two\nMRV\n");
    runWell("import os, tambo\n"
            "os.chdir(os.path.dirname(__file__))\n"
            "tambo.open('a.fasta')\n");
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_EQ(sources[0].first, "a");
    EXPECT_EQ(sources[0].second, folder / "a.fasta");
}

TEST_F(Steps, WhatArrivesWaitsForTheEnd)
{
    makeAlignment();
    std::vector<std::string> order;
    bool isAsked = false;
    atBreath = [&] {
        if (!std::exchange(isAsked, true))
            TAMBO::whenNothingIsPublished([&] { order.push_back("arrived"); });
        order.push_back("breath");
        return order.size() < 3;
    };
    EXPECT_EQ(run("while True: pass").end, Outcome::End::Stopped);
    ASSERT_EQ(order.size(), 4U);
    EXPECT_EQ(order.back(), "arrived");
}

TEST_F(Steps, AScriptInTheMiddleOfAChangeIsRefused)
{
    makeAlignment();
    const TAMBO::ChangeScope scope;
    const Outcome outcome = run("print('never')");
    EXPECT_EQ(outcome.end, Outcome::End::Failed);
    EXPECT_EQ(outcome.message, "Scripts wait until the change under way has ended.");
    EXPECT_EQ(shown(), "");
}

} // namespace StepsTest
