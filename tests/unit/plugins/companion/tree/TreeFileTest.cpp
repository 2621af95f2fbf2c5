// SPDX-License-Identifier: GPL-3.0-or-later
#include "TreeFile.h"

#include "Newick.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace TreeFileTest {

using namespace companion;
using Names = std::vector<std::string>;
using Rows = std::vector<std::size_t>;

Rows rowsIn(std::string_view newick, const Names &names)
{
    auto read = readNamedTree(newick, names);
    if (const auto *const cause = std::get_if<QString>(&read)) {
        ADD_FAILURE() << cause->toStdString();
        return {};
    }
    return std::get<NamedTree>(read).rows;
}

std::string complaintOf(std::string_view newick, const Names &names)
{
    const auto read = readNamedTree(newick, names);
    const auto *const cause = std::get_if<QString>(&read);
    return cause == nullptr ? std::string() : cause->toStdString();
}

TEST(TreesOfFiles, HaveTheirLeavesMatchedWithRowsByName)
{
    EXPECT_EQ(rowsIn("((c:1,a:2):1,b:1);", {"a", "b", "c"}), (Rows{2, 0, 1}));
    EXPECT_EQ(rowsIn("a;", {"a"}), Rows{0});
}

TEST(TreesOfFiles, HaveNamesInWhichOtherProgramsHaveReplacedBlanksAndSigns)
{
    EXPECT_EQ(rowsIn("(one_two,a_b_c_);", {"a:b(c)", "one two"}), (Rows{1, 0}));
    EXPECT_EQ(rowsIn("('one two',x_y);", {"x y", "one_two"}), (Rows{1, 0}));
    // The very name comes before a like one.
    EXPECT_EQ(rowsIn("(a_b,'a b');", {"a b", "a_b"}), (Rows{1, 0}));
}

TEST(TreesOfFiles, AreRefusedWithAllThatIsMissingTooManyOrThereTwice)
{
    EXPECT_EQ(complaintOf("((a,\nx),b,\na,y);", {"a", "b", "c"}),
              "The tree is not one of these rows. It has leaves that are no row: “x” (line 2), "
              "“y” (line 3); leaves that are there already: “a” (line 3); rows that are no "
              "leaf: “c”.");
    EXPECT_EQ(complaintOf("(a,b,c,d,e,f,g);", {"a"}),
              "The tree is not one of these rows. It has leaves that are no row: “b” (line 1), "
              "“c” (line 1), “d” (line 1) and 3 more.");
    EXPECT_EQ(complaintOf("(a,b);", {"a", "a", "b"}),
              "The tree is not one of these rows. It has names that several rows have: “a” "
              "(2 rows).");
    EXPECT_EQ(complaintOf("(a,b,);", {"a", "b"}),
              "The tree is not one of these rows. It has leaves that are no row: one without a "
              "name (line 1).");
}

TEST(TreesOfFiles, AreRefusedWithThePlaceWhereTheirFormIsBroken)
{
    EXPECT_EQ(complaintOf("(a,\n(b;", {"a", "b"}),
              "line 2, column 3: a ')' is missing: found ';', expected ',' or ')'");
}

class ATreeFile : public testing::Test
{
protected:
    QString file(const char *name) const { return m_Folder.filePath(QString::fromLatin1(name)); }
    void write(const QString &name, const QByteArray &text)
    {
        QFile out(name);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(text);
    }
    std::string complaint(const QString &name, const Names &names)
    {
        const auto read = readTreeFile(name, names);
        const auto *const cause = std::get_if<QString>(&read);
        return cause == nullptr ? std::string() : cause->toStdString();
    }

    QTemporaryDir m_Folder;
};

TEST_F(ATreeFile, IsReadAsItWasWritten)
{
    const Names names = {"a", "it's (b), c", "under_score", ""};
    Tree tree = std::get<Tree>(readNewick("((x:0.125,x:-1e-7)0.98:1,(x,x:3):2);"));
    const std::vector<std::size_t> leaves = leafOrder(tree);
    for (std::size_t i = 0; i < leaves.size(); ++i)
        tree.nodes[leaves[i]].name = names[i];
    const QString name = file("tree.nwk");
    EXPECT_EQ(writeTreeFile(name, tree), QString());
    auto read = readTreeFile(name, names);
    ASSERT_TRUE(std::holds_alternative<NamedTree>(read));
    EXPECT_EQ(std::get<NamedTree>(read).tree, tree);
    EXPECT_EQ(std::get<NamedTree>(read).rows, (Rows{0, 1, 2, 3}));
}

TEST_F(ATreeFile, SaysFileLineAndCause)
{
    const QString name = file("bad.nwk");
    write(name, "(a,\nb]);\n");
    EXPECT_EQ(complaint(name, {"a", "b"}),
              name.toStdString() + ": line 2, column 2: found ']', expected ',' or ')'");
    write(name, "(a,\nb);\n");
    EXPECT_EQ(complaint(name, {"a"}),
              name.toStdString() + ": The tree is not one of these rows. It has leaves that are "
                                   "no row: “b” (line 2).");
    EXPECT_EQ(complaint(file("none.nwk"), {"a"}),
              file("none.nwk").toStdString() + ": No such file or directory");
    EXPECT_NE(complaint(m_Folder.path(), {"a"}), "") << "a folder";
}

TEST_F(ATreeFile, ThatCannotBeWrittenSaysWhyAndStaysAsItWas)
{
    const QString name = m_Folder.filePath(QStringLiteral("none/tree.nwk"));
    EXPECT_EQ(writeTreeFile(name, Tree()), name + ": No such file or directory");
    EXPECT_FALSE(QFile::exists(name));
}

} // namespace TreeFileTest
