// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptFixture.h"

#include <algorithm>
#include <thread>

namespace OutputTest {

using Output = ScriptFixture;

TEST_F(Output, BothKindsComeInTheirOrder)
{
    runWell("import sys\n"
            "print('one')\n"
            "print('two', file=sys.stderr)\n"
            "print('three', end='')\n"
            "sys.stderr.write('four')\n"
            "sys.stdout.buffer.write(b'five')\n");
    EXPECT_EQ(shown(), "one\ntwo\nthreefourfive");
    EXPECT_EQ(shown(Kind::Error), "two\nfour");
}

TEST_F(Output, TextOfAllLanguagesComesAsUtf8)
{
    runWell("print('Größe αβγ 蛋白質 🧬 \\udc80')");
    EXPECT_EQ(shown(), "Größe αβγ 蛋白質 🧬 \\udc80\n");
}

TEST_F(Output, AMillionLinesComeInFewPieces)
{
    runWell("for i in range(1_000_000): print(i)");
    const std::string all = shown();
    EXPECT_EQ(std::ranges::count(all, '\n'), 1000000);
    EXPECT_TRUE(all.ends_with("\n999999\n"));
    EXPECT_LT(written.size(), 5000U);
    EXPECT_TRUE(
        std::ranges::all_of(written, [](const auto &part) { return part.second.size() < 100000; }));
}

TEST_F(Output, ComesWhileTheScriptRuns)
{
    std::string early;
    atBreath = [&] {
        early = shown();
        return early.empty();
    };
    EXPECT_EQ(run("print('early', end='')\nwhile True: pass").end, Outcome::End::Stopped);
    EXPECT_EQ(early, "early");
}

TEST_F(Output, OfAThreadComesInThisOne)
{
    const auto ours = std::this_thread::get_id();
    atBreath = [&] {
        EXPECT_TRUE(std::this_thread::get_id() == ours);
        return true;
    };
    runWell("import threading\n"
            "thread = threading.Thread(target=lambda: print('of a thread'))\n"
            "thread.start(); thread.join()\n");
    EXPECT_EQ(shown(), "of a thread\n");
}

TEST_F(Output, OfAScriptThatClosesItComesNoMore)
{
    runWell("import sys\nprint('before')\nsys.stdout.close()\n");
    runWell("print('after')");
    EXPECT_EQ(shown(), "before\nafter\n");
}

} // namespace OutputTest
