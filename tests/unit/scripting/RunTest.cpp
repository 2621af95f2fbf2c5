// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptFixture.h"

#include <csignal>

namespace RunTest {

using ScriptRun = ScriptFixture;

TEST_F(ScriptRun, AScriptHasNamesAndArgumentsOfItsOwn)
{
    const auto file = write("args.py", "import sys, os\n"
                                       "print(__name__, sys.argv == [__file__, 'a', 'ü b'])\n"
                                       "print(sys.path[0] == os.path.dirname(__file__))\n"
                                       "kept = 1\n");
    const Outcome outcome = engine().run(file, {"a", "ü b"});
    EXPECT_EQ(outcome.end, Outcome::End::Done) << outcome.trace;
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(shown(), "__main__ True\nTrue\n");
    written.clear();
    runWell("import sys\nprint('kept' in globals(), sys.argv[1:])");
    EXPECT_EQ(shown(), "False []\n");
    written.clear();
    static_cast<void>(type("import sys; print(sys.path[0] == '" + folder.string() + "')"));
    EXPECT_EQ(shown(), "False\n");
}

TEST_F(ScriptRun, AnExceptionTellsLineAndTextOfTheScript)
{
    const Outcome outcome = run("def deep():\n"
                                "    import json\n"
                                "    json.loads('{')\n"
                                "\n"
                                "deep()\n");
    EXPECT_EQ(outcome.end, Outcome::End::Failed);
    EXPECT_TRUE(outcome.message.starts_with("json.decoder.JSONDecodeError: Expecting"))
        << outcome.message;
    EXPECT_EQ(outcome.file, folder / "script.py");
    EXPECT_EQ(outcome.line, 3);
    EXPECT_EQ(outcome.text, "json.loads('{')");
    EXPECT_TRUE(outcome.trace.starts_with("Traceback (most recent call last):\n  File \"" +
                                          (folder / "script.py").string() + "\", line 5"))
        << outcome.trace;
    EXPECT_EQ(outcome.trace.find("_workbench"), std::string::npos);
    EXPECT_EQ(outcome.exitStatus, 1);
}

TEST_F(ScriptRun, ASyntaxErrorTellsItsLine)
{
    const Outcome outcome = run("import tambo\ntambo.new_alignment('a', [('x', 'MK')])\nif True\n");
    EXPECT_EQ(outcome.end, Outcome::End::Failed);
    EXPECT_EQ(outcome.message, "SyntaxError: expected ':'");
    EXPECT_EQ(outcome.file, folder / "script.py");
    EXPECT_EQ(outcome.line, 3);
    EXPECT_EQ(outcome.text, "if True");
    EXPECT_TRUE(names().empty());
}

TEST_F(ScriptRun, AFileThatIsNotThereIsNamed)
{
    const Outcome outcome = engine().run(folder / "none.py", {});
    EXPECT_EQ(outcome.end, Outcome::End::Failed);
    EXPECT_TRUE(outcome.message.starts_with("FileNotFoundError:")) << outcome.message;
    EXPECT_NE(outcome.message.find("none.py"), std::string::npos);
}

TEST_F(ScriptRun, ExitEndsAScriptByItsStatus)
{
    EXPECT_EQ(run("import sys; sys.exit()").end, Outcome::End::Done);
    EXPECT_EQ(run("raise SystemExit(0)").end, Outcome::End::Done);
    const Outcome bad = run("import sys; sys.exit(3)");
    EXPECT_EQ(bad.end, Outcome::End::Failed);
    EXPECT_EQ(bad.exitStatus, 3);
    EXPECT_EQ(bad.message, "The script has ended with status 3.");
    const Outcome told = run("import sys; sys.exit('no file given')");
    EXPECT_EQ(told.exitStatus, 1);
    EXPECT_EQ(told.message, "no file given");
}

TEST_F(ScriptRun, AHelperModuleIsReadAnewEachTime)
{
    write("helper.py", "value = 'first'");
    write("helpers/__init__.py", "");
    std::filesystem::create_directory(folder / "helpers");
    write("helpers/__init__.py", "from .part import part");
    write("helpers/part.py", "part = 1");
    const std::string text = "import helper, helpers, numpy\nprint(helper.value, helpers.part)\n";
    runWell(text);
    // Of the same length, within the same second.
    write("helper.py", "value = 'other'");
    write("helpers/part.py", "part = 2");
    runWell(text);
    EXPECT_EQ(shown(), "first 1\nother 2\n");
    EXPECT_FALSE(std::filesystem::exists(folder / "__pycache__"));
}

TEST_F(ScriptRun, AModuleOfAScriptIsNotThatOfAnother)
{
    std::filesystem::create_directory(folder / "elsewhere");
    write("helper.py", "value = 'here'");
    write("elsewhere/helper.py", "value = 'there'");
    runWell("import helper; print(helper.value)");
    const auto other = write("elsewhere/script.py", "import helper; print(helper.value)");
    EXPECT_EQ(engine().run(other, {}).end, Outcome::End::Done);
    EXPECT_EQ(shown(), "here\nthere\n");
}

TEST_F(ScriptRun, ReadingFromTheKeyboardRaises)
{
    for (const char *text : {"input('name? ')", "import sys; sys.stdin.read()",
                             "import sys\nfor line in sys.stdin: pass"}) {
        const Outcome outcome = run(text);
        EXPECT_EQ(outcome.end, Outcome::End::Failed) << text;
        EXPECT_NE(outcome.message.find("cannot ask at the keyboard"), std::string::npos)
            << outcome.message;
    }
}

TEST_F(ScriptRun, TheFolderInUseIsAsBefore)
{
    const auto before = std::filesystem::current_path();
    runWell("import os; os.chdir('/')");
    EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(ScriptRun, FilesThatAreLeftOpenAreComplete)
{
    runWell("kept = open(__file__ + '.txt', 'w')\nkept.write('all')\ndef f(): pass\n");
    EXPECT_EQ(std::filesystem::file_size(folder / "script.py.txt"), 3U);
}

TEST_F(ScriptRun, AChildThatIsForkedEndsWithTheScript)
{
    runWell("import os, sys\n"
            "child = os.fork()\n"
            "if child == 0:\n"
            "    sys.exit(7)\n"
            "print(os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]))\n");
    EXPECT_EQ(shown(), "7\n");
}

TEST_F(ScriptRun, HandlersOfSignalsAreAsBefore)
{
    struct sigaction before
    {
    };
    ::sigaction(SIGTERM, nullptr, &before);
    runWell("import signal; signal.signal(signal.SIGTERM, lambda *a: None)");
    struct sigaction after
    {
    };
    ::sigaction(SIGTERM, nullptr, &after);
    EXPECT_EQ(before.sa_handler, after.sa_handler);
}

TEST_F(ScriptRun, ASecondScriptInsideOfOneIsRefused)
{
    const auto inner = write("inner.py", "print('inner')");
    Outcome second;
    atBreath = [&] {
        second = engine().run(inner, {});
        return false;
    };
    EXPECT_EQ(run("while True: pass").end, Outcome::End::Stopped);
    EXPECT_EQ(second.end, Outcome::End::Failed);
    EXPECT_EQ(second.message, "Another script is running.");
    EXPECT_EQ(shown(), "");
}

TEST_F(ScriptRun, AThreadOfAScriptMayNotUseObjects)
{
    runWell("import threading, tambo\n"
            "def use():\n"
            "    try:\n"
            "        tambo.alignments()\n"
            "    except tambo.ThreadError as error:\n"
            "        print(error)\n"
            "thread = threading.Thread(target=use)\n"
            "thread.start(); thread.join()\n");
    EXPECT_EQ(shown(), "tambo may be used by the thread that has imported it alone\n");
}

TEST_F(ScriptRun, TheSystemsProgramIsTheOneOfPython)
{
    runWell("import subprocess, sys\n"
            "print(subprocess.run([sys.executable, '-c', 'print(5)'], capture_output=True, "
            "text=True).stdout)");
    EXPECT_EQ(shown(), "5\n\n");
}

} // namespace RunTest
