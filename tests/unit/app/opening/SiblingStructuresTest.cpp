// SPDX-License-Identifier: GPL-3.0-or-later
// Which structure files beside an alignment file its rows name.
#include "SiblingStructures.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace SiblingStructuresTest {

namespace fs = std::filesystem;

class SiblingStructures : public testing::Test
{
protected:
    fs::path touch(const char *name)
    {
        QFile file(m_Folder.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return fs::path(file.fileName().toStdString());
    }

    // An alignment file whose rows name the structures.
    std::vector<fs::path> find(const std::vector<std::string> &structures)
    {
        TAMBO::AlignmentRecord record;
        for (const std::string &structure : structures) {
            TAMBO::RowRecord row;
            row.name = "row";
            row.link.change().structure = structure;
            record.rows.push_back(row);
        }
        return TAMBO::siblingStructures(touch("x.ali"), {record});
    }

    QTemporaryDir m_Folder;
};

TEST_F(SiblingStructures, AFileNameIsTakenAsWritten)
{
    const fs::path file = touch("fitted.coordinates");
    EXPECT_EQ(find({"fitted.coordinates"}), std::vector{file});
}

TEST_F(SiblingStructures, ACodeGetsTheUsualEndings)
{
    for (const char *name : {"a.pdb", "b.ent", "c.cif", "d.gz", "e.pdb.gz", "f.ent.gz", "g.cif.gz"})
        touch(name);
    const std::vector<fs::path> found = find({"a", "b", "c", "d", "e", "f", "g", "h"});
    std::vector<std::string> names;
    for (const fs::path &file : found)
        names.push_back(file.filename().string());
    EXPECT_EQ(names, (std::vector<std::string>{"a.pdb", "b.ent", "c.cif", "d.gz", "e.pdb.gz",
                                               "f.ent.gz", "g.cif.gz"}));
}

TEST_F(SiblingStructures, AFileNameMayBeCompressedMeanwhile)
{
    const fs::path file = touch("1abc.pdb.gz");
    EXPECT_EQ(find({"1abc.pdb"}), std::vector{file});
}

TEST_F(SiblingStructures, OnlyTheDirectoryOfTheAlignmentFileIsSearched)
{
    const fs::path file = touch("1abc.pdb");
    EXPECT_EQ(find({"/somewhere/else/1abc.pdb"}), std::vector{file});
    EXPECT_TRUE(find({"/etc/passwd"}).empty());
    EXPECT_TRUE(find({".."}).empty());
}

TEST_F(SiblingStructures, UpperAndLowerCaseMeanTheSameFile)
{
    const fs::path lower = touch("1abc.pdb");
    const fs::path upper = touch("2ABC_FIT.PDB.GZ");
    EXPECT_EQ(find({"1ABC"}), std::vector{lower});
    EXPECT_EQ(find({"1Abc.pdb"}), std::vector{lower});
    EXPECT_EQ(find({"2abc_fit"}), std::vector{upper});
    const fs::path same = touch("1ABC.pdb");
    EXPECT_EQ(find({"1ABC"}), std::vector{same}) << "what is there as written comes first";
}

TEST_F(SiblingStructures, FilesOfTheArchiveAreFoundByTheirCode)
{
    const fs::path plain = touch("pdb1abc.ent");
    const fs::path compressed = touch("pdb2abc.ent.gz");
    EXPECT_EQ(find({"1abc"}), std::vector{plain});
    EXPECT_EQ(find({"1ABC"}), std::vector{plain});
    EXPECT_EQ(find({"2abc"}), std::vector{compressed});
    const fs::path bare = touch("3abc.cif.gz");
    EXPECT_EQ(find({"pdb3abc.ent"}), std::vector{bare});
}

TEST_F(SiblingStructures, ANameWithAChainMeansTheStructure)
{
    const fs::path file = touch("1abc.pdb");
    const fs::path archived = touch("pdb2abc.ent.gz");
    EXPECT_EQ(find({"1abc_A"}), std::vector{file});
    EXPECT_EQ(find({"1ABC_B.pdb", "2abc_A"}), (std::vector{file, archived}));
    const fs::path chain = touch("1abc_A.pdb");
    EXPECT_EQ(find({"1abc_A"}), std::vector{chain}) << "a file of its own comes first";
    EXPECT_TRUE(find({"1abc_longer", "_A", "1abc_", "1abc_A_B_C"}).empty());
}

TEST_F(SiblingStructures, DirectoriesOfOtherSystemsDoNotMatterEither)
{
    const fs::path file = touch("1abc.pdb");
    EXPECT_EQ(find({"C:\\data\\1abc.pdb"}), std::vector{file});
}

TEST_F(SiblingStructures, ARowWithoutAStructureNamesNone)
{
    touch(".pdb");
    EXPECT_TRUE(find({"", "missing"}).empty());
}

TEST_F(SiblingStructures, TwoRowsOfOneStructureNameItOnce)
{
    const fs::path file = touch("1abc.pdb");
    EXPECT_EQ(find({"1abc", "1abc.pdb", "1abc"}), std::vector{file});
}

TEST_F(SiblingStructures, TheAlignmentFileIsNotItsOwnStructure)
{
    EXPECT_TRUE(find({"x.ali"}).empty());
}

TEST_F(SiblingStructures, ADirectoryIsNoStructure)
{
    fs::create_directory(m_Folder.filePath("1abc.pdb").toStdString());
    EXPECT_TRUE(find({"1abc"}).empty());
}

TEST(StructureName, IsTheFileNameWithoutEndings)
{
    EXPECT_EQ(TAMBO::structureName("/data/1abc.pdb"), "1abc");
    EXPECT_EQ(TAMBO::structureName("1abc_fit.cif.gz"), "1abc_fit");
    EXPECT_EQ(TAMBO::structureName("1abc"), "1abc");
}

} // namespace SiblingStructuresTest
