// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptFixture.h"

#include "ObjectSpace.h"

#include <algorithm>

namespace ConsoleTest {

class Console : public ScriptFixture
{
protected:
    std::vector<std::string> completed(const std::string &source)
    {
        return engine().complete(source, source.size()).words;
    }
};

TEST_F(Console, ShowsTheValueOfAnExpression)
{
    static_cast<void>(type("1 + 1"));
    static_cast<void>(type("a = 5"));
    static_cast<void>(type("a"));
    static_cast<void>(type("'ü'"));
    static_cast<void>(type("None"));
    static_cast<void>(type("b = 3\nfor i in range(2): print(i)\nb + a"));
    EXPECT_EQ(shown(), "2\n5\n'ü'\n0\n1\n8\n");
}

TEST_F(Console, HasThePackageAndTheObjects)
{
    EXPECT_EQ(type("f = tambo.new_alignment('family', [('one', 'MK')])").steps, 1U);
    EXPECT_EQ(labels(), std::vector<std::string>{"console family"});
    static_cast<void>(type("f"));
    EXPECT_EQ(shown(), "<tambo.Alignment 'family', 1 rows, 2 columns>\n");
}

TEST_F(Console, KeepsNamesUntilTheyAreForgotten)
{
    static_cast<void>(type("a = 5"));
    runWell("a = 6");
    static_cast<void>(type("a"));
    EXPECT_EQ(shown(), "5\n");
    engine().forget();
    const Outcome outcome = type("a");
    EXPECT_EQ(outcome.message, "NameError: name 'a' is not defined");
    EXPECT_EQ(outcome.file, "<console>");
    EXPECT_EQ(outcome.line, 1);
    EXPECT_EQ(outcome.text, "a");
}

TEST_F(Console, TellsTheLinesOfFormerInputs)
{
    static_cast<void>(type("def fail():\n    return 1 / 0\n"));
    const Outcome outcome = type("x = 3\nfail()");
    EXPECT_EQ(outcome.file, "<console>");
    EXPECT_EQ(outcome.line, 2);
    EXPECT_EQ(outcome.text, "return 1 / 0");
    EXPECT_NE(outcome.trace.find("    fail()\n"), std::string::npos) << outcome.trace;
    const Outcome wrong = type("a = = 3");
    EXPECT_EQ(wrong.message, "SyntaxError: invalid syntax");
    EXPECT_EQ(wrong.line, 1);
    EXPECT_EQ(wrong.text, "a = = 3");
}

TEST_F(Console, KnowsWhenAnotherLineIsToCome)
{
    for (const char *source : {"1 + 1", "", "# x", "a = (1,\n2)", "a = = 3", "if x: pass\n",
                               "for i in x:\n    print(i)\n", "a = 1\nb = 2"})
        EXPECT_TRUE(engine().isComplete(source)) << source;
    for (const char *source : {"(1 +", "for i in x:", "for i in x:\n    print(i)", "'''text",
                               "a = 1\nif x:", "match a:\n    case 1: pass", "a = \\"})
        EXPECT_FALSE(engine().isComplete(source)) << source;
}

TEST_F(Console, CompletesNamesAndAttributes)
{
    static_cast<void>(type("family = tambo.new_alignment('f', [('one', 'MK')]); größe = 1"));
    EXPECT_EQ(completed("fam"), std::vector<std::string>{"family"});
    EXPECT_EQ(completed("print(family.insert_c"),
              std::vector<std::string>{"family.insert_columns("});
    const auto all = completed("family.");
    EXPECT_NE(std::ranges::find(all, "family.names"), all.end());
    EXPECT_TRUE(std::ranges::none_of(
        all, [](const std::string &word) { return word.find("._") != std::string::npos; }));
    const auto found = engine().complete("größe + gr", std::string("größe + gr").size());
    EXPECT_EQ(found.start, std::string("größe + ").size());
    EXPECT_EQ(found.words, std::vector<std::string>{"größe"});
    EXPECT_EQ(engine().complete("family", 3).words, std::vector<std::string>{"family"});
    EXPECT_TRUE(completed("nothing.").empty());
    EXPECT_TRUE(completed("").empty());
    EXPECT_TRUE(completed("\xff\xfe").empty());
}

TEST_F(Console, CompletionRunsNoProperty)
{
    static_cast<void>(type("class C:\n"
                           "    @property\n"
                           "    def loud(self): print('run'); raise SystemExit(1)\n"
                           "c = C()\n"));
    EXPECT_EQ(completed("c.lo"), std::vector<std::string>{"c.loud"});
    EXPECT_EQ(shown(), "");
}

TEST_F(Console, AnObjectThatUndoHasTakenAwayIsGone)
{
    static_cast<void>(type("f = tambo.new_alignment('family', [('one', 'MK')])"));
    EXPECT_TRUE(m_History.undo());
    EXPECT_EQ(type("f.width").message, "tambo.GoneError: the alignment is gone");
    EXPECT_TRUE(m_History.redo());
    EXPECT_EQ(type("f.width").end, Outcome::End::Done);
    m_History.clear();
    TAMBO::ObjectSpace::get().reset();
    EXPECT_EQ(type("f.width").message, "tambo.GoneError: the alignment is gone");
    EXPECT_EQ(type("f.insert_gaps(0, 0)").message, "tambo.GoneError: the alignment is gone");
}

TEST_F(Console, LeavingItIsNoError)
{
    EXPECT_EQ(type("exit()").end, Outcome::End::Done);
    EXPECT_EQ(type("1").end, Outcome::End::Done);
    EXPECT_EQ(shown(), "1\n");
}

} // namespace ConsoleTest
