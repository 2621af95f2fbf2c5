// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptFixture.h"

#include <clocale>
#include <csignal>
#include <pthread.h>
#include <stdexcept>
#include <sys/time.h>

namespace RunTest {

// The system begins no thread while it lives: none has as much memory as its stack would take.
class NoThreads
{
public:
    NoThreads()
    {
        ::pthread_getattr_default_np(&m_Before);
        pthread_attr_t huge;
        ::pthread_attr_init(&huge);
        ::pthread_attr_setstacksize(&huge, std::size_t(1) << 60);
        ::pthread_setattr_default_np(&huge);
        ::pthread_attr_destroy(&huge);
    }
    ~NoThreads()
    {
        ::pthread_setattr_default_np(&m_Before);
        ::pthread_attr_destroy(&m_Before);
    }
    NoThreads(const NoThreads &) = delete;
    NoThreads &operator=(const NoThreads &) = delete;

private:
    pthread_attr_t m_Before{};
};

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

TEST_F(ScriptRun, TheConsoleKeepsAFolderOfItsOwn)
{
    const auto before = std::filesystem::current_path();
    EXPECT_EQ(type("import os; os.chdir('" + folder.string() + "')").end, Outcome::End::Done);
    EXPECT_EQ(std::filesystem::current_path(), before);
    runWell("import os; print(os.getcwd())");
    EXPECT_EQ(type("print(os.getcwd())").end, Outcome::End::Done);
    EXPECT_EQ(shown(), before.string() + '\n' + folder.string() + '\n');
    EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(ScriptRun, ItsLocaleIsNotThatOfTheProgram)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(before, "C.UTF-8");
    runWell("import locale; print(locale.setlocale(locale.LC_ALL, 'C.UTF-8'))");
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
    EXPECT_EQ(type("import locale; print(locale.setlocale(locale.LC_NUMERIC, 'C.UTF-8'))").end,
              Outcome::End::Done);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
    EXPECT_EQ(shown(), "C.UTF-8\nC.UTF-8\n");
}

// Its signal would end the program.
TEST_F(ScriptRun, ATimerEndsWithTheScript)
{
    runWell("import signal\n"
            "signal.signal(signal.SIGALRM, lambda *a: None)\n"
            "signal.alarm(1000)\n"
            "signal.setitimer(signal.ITIMER_PROF, 1000)\n");
    for (const auto timer : {ITIMER_REAL, ITIMER_VIRTUAL, ITIMER_PROF}) {
        itimerval present{};
        ASSERT_EQ(::getitimer(timer, &present), 0);
        EXPECT_EQ(present.it_value.tv_sec, 0);
    }
}

TEST_F(ScriptRun, WithoutAThreadThatCouldStopItIsRefused)
{
    Outcome outcome;
    {
        const NoThreads none;
        outcome = run("import tambo; tambo.new_alignment('a', [('x', 'MK')])");
    }
    EXPECT_EQ(outcome.end, Outcome::End::Failed);
    EXPECT_TRUE(outcome.message.starts_with("Nothing was run, since it could not be stopped"))
        << outcome.message;
    EXPECT_TRUE(names().empty());
    EXPECT_EQ(m_History.size(), 0U);
    runWell("import tambo; tambo.new_alignment('a', [('x', 'MK')])");
    EXPECT_EQ(m_History.size(), 1U);
}

TEST_F(ScriptRun, OutputThatCannotBeConnectedFailsOneRun)
{
    runWell("import io\n"
            "real = io.TextIOWrapper\n"
            "def once(*arguments, **names):\n"
            "    io.TextIOWrapper = real\n"
            "    raise OSError('no output')\n"
            "io.TextIOWrapper = once\n");
    const Outcome outcome = run("print('not seen')");
    EXPECT_EQ(outcome.end, Outcome::End::Failed);
    EXPECT_EQ(outcome.message, "OSError: no output");
    runWell("print('seen')");
    EXPECT_EQ(shown(), "seen\n");
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
