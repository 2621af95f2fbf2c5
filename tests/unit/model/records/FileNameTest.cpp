// SPDX-License-Identifier: GPL-3.0-or-later
// Names of objects that are offered for files.
#include "FileName.h"

#include "ObjectFactory.h"
#include "ObjectOperations.h"
#include "Records.h"
#include "unit/model/AlignmentFixture.h"

#include <gmock/gmock.h>

using TAMBO::fileNameOf;

namespace FileNameTest {

TEST(FileName, UsableNamesStay)
{
    for (const char *name : {"SeqAli", "a b", ".x", "1abc:A", "a~b", "M\xc3\xbcller", "a\\b", ""})
        EXPECT_EQ(fileNameOf(name), name);
}

TEST(FileName, CharactersThatFileNamesCannotHoldAreReplaced)
{
    EXPECT_EQ(fileNameOf("x/y"), "x_y");
    EXPECT_EQ(fileNameOf("/etc/x"), "_etc_x");
    EXPECT_EQ(fileNameOf("a\nb\x7f"), "a_b_");
    EXPECT_EQ(fileNameOf("an \"odd\" one"), "an _odd_ one");
    EXPECT_EQ(fileNameOf("~root"), "_root");
}

TEST(FileName, LongNamesAreCutBetweenCharacters)
{
    EXPECT_EQ(fileNameOf(std::string(300, 'x')), std::string(240, 'x'));
    EXPECT_EQ(fileNameOf(std::string(239, 'x') + "\xc3\xbc"), std::string(239, 'x'));
}

class AlignmentNameTest : public AlignmentFixture
{
};

// The editor puts the ending behind the name and offers that.
TEST_F(AlignmentNameTest, NamesOfAlignmentsCanBeThoseOfFiles)
{
    EXPECT_EQ(alignment({"AC"}, "x/y").Name(), "x_y");
    TAMBO::AlignmentRecord record;
    record.name = "zinc/finger";
    record.rows.emplace_back().sequence.append("AC-D");
    EXPECT_EQ(TAMBO::ObjectFactory::adopt(std::move(record))->Name(), "zinc_finger");
    EXPECT_TRUE(log.empty());
}

TEST_F(AlignmentNameTest, RenamingSaysWhatTheNameHasBecome)
{
    TAMBO::Alignment &renamed = alignment({"AC"});
    EXPECT_TRUE(TAMBO::renameObject(renamed, "x/y"));
    EXPECT_EQ(renamed.Name(), "x_y");
    EXPECT_THAT(log, testing::ElementsAre(
                         "\"x/y\" cannot be the name of a file, which an alignment's name is "
                         "offered as; it is called \"x_y\"."));
    history.undo();
    EXPECT_EQ(renamed.Name(), "test");
}

TEST_F(AlignmentNameTest, SequencesKeepTheirNames)
{
    TAMBO::Peptide &sequence = peptide("P12345/1-90", "AC");
    EXPECT_EQ(sequence.Name(), "P12345/1-90");
    EXPECT_TRUE(TAMBO::renameObject(sequence, "P12345/2-90"));
    EXPECT_EQ(sequence.Name(), "P12345/2-90");
}

} // namespace FileNameTest
