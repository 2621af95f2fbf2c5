// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptFixture.h"

namespace StopTest {

class Stop : public ScriptFixture
{
protected:
    // One press of Stop at the first look that comes after so many others.
    void stopOnce(int after = 0)
    {
        atBreath = [this, after] { return breaths != after + 1; };
    }
    void stopFrom(int first)
    {
        atBreath = [this, first] { return breaths < first; };
    }
};

TEST_F(Stop, EndsALoopThatDoesNothing)
{
    stopOnce();
    const Outcome outcome = run("while True:\n    pass\n");
    EXPECT_EQ(outcome.end, Outcome::End::Stopped);
    EXPECT_EQ(outcome.message, "KeyboardInterrupt");
    EXPECT_EQ(outcome.file, folder / "script.py");
}

TEST_F(Stop, LetsAScriptTidyUp)
{
    stopOnce();
    EXPECT_EQ(run("import time\n"
                  "try:\n"
                  "    i = 0\n"
                  "    while True: i += 1\n"
                  "finally:\n"
                  "    for i in range(10): time.sleep(0.02)\n"
                  "    print('tidy')\n")
                  .end,
              Outcome::End::Stopped);
    EXPECT_EQ(shown(), "tidy\n");
}

TEST_F(Stop, OfALoopThatSwallowsItEndsItTheSecondTime)
{
    stopFrom(1);
    for (const char *text :
         {"while True:\n    try:\n        pass\n    except KeyboardInterrupt:\n        pass\n",
          "while True:\n    try:\n        sum(range(100))\n    except:\n        print('no')\n",
          "def work():\n    while True:\n        try:\n            len([1])\n"
          "        except BaseException:\n            continue\n"
          "while True:\n    try:\n        work()\n    except BaseException:\n        pass\n"}) {
        breaths = 0;
        EXPECT_EQ(run(text).end, Outcome::End::Stopped) << text;
    }
}

TEST_F(Stop, OfAScriptThatEndsWellAllTheSameIsNone)
{
    stopOnce();
    const Outcome outcome = run("import tambo\n"
                                "tambo.new_alignment('a', [('x', 'MK')])\n"
                                "try:\n"
                                "    i = 0\n"
                                "    while True: i += 1\n"
                                "except KeyboardInterrupt:\n"
                                "    print('enough')\n");
    EXPECT_EQ(outcome.end, Outcome::End::Done) << outcome.trace;
    EXPECT_EQ(outcome.steps, 1U);
}

TEST_F(Stop, EndsWaitingForTheSystem)
{
    for (const char *text :
         {"import time; time.sleep(3600)", "import subprocess; subprocess.run(['sleep', '3600'])",
          "import threading; threading.Event().wait(3600)",
          "import os; r, w = os.pipe(); os.read(r, 1)"}) {
        breaths = 0;
        stopOnce();
        EXPECT_EQ(run(text).end, Outcome::End::Stopped) << text;
    }
}

TEST_F(Stop, EndsLongWorkOfTheModel)
{
    runWell("import tambo\n"
            "tambo.new_alignment('big', [(f'r{i}', 'ACDEFGHIKL' * 200) for i in range(3000)])\n");
    breaths = 0;
    stopOnce();
    const Outcome outcome = run("import tambo\n"
                                "while True: tambo.alignments()[0].identity_matrix()\n");
    EXPECT_EQ(outcome.end, Outcome::End::Stopped) << outcome.trace;
}

TEST_F(Stop, EndsAScriptThatHasSetTheHandlersOfAllSignals)
{
    const std::string takesAll = "import signal\n"
                                 "for number in set(signal.Signals) - {9, 19}:\n"
                                 "    signal.signal(number, signal.SIG_DFL)\n";
    stopFrom(1);
    EXPECT_EQ(run(takesAll + "while True: pass\n").end, Outcome::End::Stopped);
    atBreath = nullptr;
    EXPECT_EQ(run(takesAll).end, Outcome::End::Done);
    stopFrom(1);
    EXPECT_EQ(run("import time; time.sleep(3600)").end, Outcome::End::Stopped);
}

TEST_F(Stop, TakesTheStepBack)
{
    runWell("import tambo; tambo.new_alignment('a', [('x', 'MK')])");
    stopOnce();
    const Outcome outcome = run("import tambo\n"
                                "tambo.alignments()[0].insert_gaps(0, 0, 5)\n"
                                "tambo.new_alignment('b', [('x', 'MK')])\n"
                                "while True: pass\n");
    EXPECT_EQ(outcome.end, Outcome::End::Stopped);
    EXPECT_EQ(outcome.steps, 0U);
    EXPECT_EQ(names(), std::vector<std::string>{"a"});
    EXPECT_EQ(m_History.size(), 1U);
}

TEST_F(Stop, OfTheConsoleKeepsItsNames)
{
    EXPECT_EQ(type("kept = 5").end, Outcome::End::Done);
    stopOnce();
    EXPECT_EQ(type("while True: pass\n").end, Outcome::End::Stopped);
    atBreath = nullptr;
    EXPECT_EQ(type("kept").end, Outcome::End::Done);
    EXPECT_EQ(shown(), "5\n");
}

} // namespace StopTest
