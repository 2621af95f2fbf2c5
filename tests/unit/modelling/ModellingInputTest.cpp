// SPDX-License-Identifier: GPL-3.0-or-later
// Template row and coordinates must be one sequence; where they part, the message says so.
#include "ModellingInput.h"

#include "ModellingFolder.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdio>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace ModellingInputTest {

class ModellingInputTest : public ModellingFolder
{
protected:
    TAMBO::Result<kestram::ModellingInput> input(const std::string &templateRow,
                                                 const std::string &targetRow,
                                                 const std::string &residues) const
    {
        return kestram::readInput(write("seq.ali", pir(templateRow, targetRow)),
                                  write("str.pdb", pdb(residues)));
    }
    std::string failure(const std::string &templateRow, const std::string &targetRow,
                        const std::string &residues) const
    {
        const auto result = input(templateRow, targetRow, residues);
        EXPECT_FALSE(result.has_value());
        return result ? std::string() : result.error().message();
    }
};

TEST_F(ModellingInputTest, RowsAndResiduesThatAgreeAreTaken)
{
    auto result = input("--ACDEF-", "MKAC-EFG", "ACDEF");
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->templateName, "known");
    EXPECT_EQ(result->targetName, "wanted");
    EXPECT_EQ(result->templateRow, "--ACDEF-");
    EXPECT_EQ(result->targetRow, "MKAC-EFG");
    EXPECT_EQ(result->residues.size(), 5U);
    EXPECT_THAT(result->remarks, IsEmpty());
}

TEST_F(ModellingInputTest, AnotherLetterIsNamedWithRowColumnLetterAndResidue)
{
    const std::string message = failure("--ACDEFGHKL", "MKACDEFGHKL", "ACWEFGHKL");
    EXPECT_THAT(message, HasSubstr("row \"known\""));
    EXPECT_THAT(message, HasSubstr("column 5"));
    EXPECT_THAT(message, HasSubstr("'D'"));
    EXPECT_THAT(message, HasSubstr("TRP 3"));
    EXPECT_THAT(message, HasSubstr("str.pdb"));
}

TEST_F(ModellingInputTest, AResidueThatTheRowLacksIsNamed)
{
    const std::string message = failure("ACEFGHKL", "ACEFGHKL", "ACDEFGHKL");
    EXPECT_THAT(message, HasSubstr("row \"known\", column 3: 'E'"));
    EXPECT_THAT(message, HasSubstr("ASP 3"));
}

TEST_F(ModellingInputTest, AResidueBehindTheEndOfTheRowIsNamed)
{
    const std::string message = failure("ACDEFGH-", "ACDEFGHK", "ACDEFGHK");
    EXPECT_THAT(message, HasSubstr("row \"known\""));
    EXPECT_THAT(message, HasSubstr("LYS 8"));
}

TEST_F(ModellingInputTest, ResiduesWithoutCoordinatesAreNamedAndTreatedAsMissing)
{
    auto result = input("ACDEFGHKLM", "ACDEFGHKLM", "ACD  GH LM");
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->templateRow, "ACD--GH-LM");
    EXPECT_EQ(result->targetRow, "ACDEFGHKLM");
    EXPECT_EQ(result->residues.size(), 7U);
    EXPECT_THAT(
        result->remarks,
        ElementsAre(
            "row \"known\", column 4 to 5: no backbone coordinates for EF; treated as missing",
            "row \"known\", column 8: no backbone coordinates for K; treated as missing"));
}

TEST_F(ModellingInputTest, AResidueWithHalfABackboneIsMissingToo)
{
    std::string text = pdb("ACDEFGH");
    // The CA atom of the third residue.
    text.erase(text.find("ATOM      8"), text.find("ATOM      9") - text.find("ATOM      8"));
    auto result =
        kestram::readInput(write("seq.ali", pir("ACDEFGH", "ACDEFGH")), write("str.pdb", text));
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->templateRow, "AC-EFGH");
    EXPECT_EQ(result->remarks.size(), 1U);
}

TEST_F(ModellingInputTest, NumbersDoNotMatter)
{
    std::string text = pdb("ACDEFGH");
    for (std::size_t at = text.find(" A   "); at != std::string::npos; at = text.find(" A   ", at))
        text.replace(at, 5, " A  4");
    auto result =
        kestram::readInput(write("seq.ali", pir("ACDEFGH", "ACDEFGH")), write("str.pdb", text));
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->residues.size(), 7U);
}

TEST_F(ModellingInputTest, AnUnknownLetterFitsAnyResidue)
{
    auto row = input("ACXEFGH", "ACDEFGH", "ACDEFGH");
    ASSERT_TRUE(row.has_value());
    EXPECT_EQ(row->templateRow, "ACDEFGH");
    EXPECT_THAT(row->remarks, IsEmpty());
    auto residue = input("ACDEFGH", "ACDEFGH", "ACXEFGH");
    ASSERT_TRUE(residue.has_value());
    EXPECT_EQ(residue->templateRow, "ACDEFGH");
    EXPECT_EQ(residue->residues[2].typeName, "ASP");
    EXPECT_THAT(residue->remarks, ElementsAre("row \"known\", column 3: UNK 3 is used as ASP"));
}

TEST_F(ModellingInputTest, LettersThatTheEngineDoesNotKnowBecomeTheirNearest)
{
    auto result = input("--ACDEFGH", "XUBZJOACD", "ACDEFGH");
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->targetRow, "ACDELKACD");
    ASSERT_EQ(result->remarks.size(), 6U);
    EXPECT_EQ(result->remarks[0], "row \"wanted\", column 1: 'X' is modelled as 'A'");
}

TEST_F(ModellingInputTest, OfAModifiedResidueTheAtomsOfItsParentAreUsed)
{
    std::string text = pdb("ACDEFGH");
    const std::string phosphorus = "ATOM     99  P   ASP A   3       7.000   1.000  -2.500\n";
    text.insert(text.find("ATOM     10"), phosphorus);
    for (std::size_t at = text.find("ASP"); at != std::string::npos; at = text.find("ASP"))
        text.replace(at, 3, "SEP");
    auto result =
        kestram::readInput(write("seq.ali", pir("ACSEFGH", "ACDEFGH")), write("str.pdb", text));
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->residues[2].typeName, "SER");
    EXPECT_EQ(result->residues[2].atoms.size(), 3U);
    EXPECT_THAT(result->remarks, ElementsAre("row \"known\", column 3: SEP 3 is used as SER"));
}

TEST_F(ModellingInputTest, ColumnsOfGapsAreLeftOut)
{
    auto result = input("AC--DE", "AC--DE", "ACDE");
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->templateRow, "ACDE");
    EXPECT_EQ(result->targetRow, "ACDE");
}

TEST_F(ModellingInputTest, RowsWithoutACommonColumnAreRefused)
{
    EXPECT_EQ(failure("ACDE----", "----ACDE", "ACDE"),
              "row \"wanted\" shares no column with the template");
}

TEST_F(ModellingInputTest, BadFilesAreNamed)
{
    write("seq.ali", pir("ACDE", "ACDE"));
    write("str.pdb", pdb("ACDE"));
    const auto message = [this](const char *alignment, const char *structure) {
        const auto result = kestram::readInput(path() / alignment, path() / structure);
        return result ? std::string() : result.error().message();
    };
    EXPECT_THAT(message("none.ali", "str.pdb"), HasSubstr("none.ali"));
    EXPECT_THAT(message("seq.ali", "none.pdb"), HasSubstr("none.pdb"));
    write("one.ali", ">P1;one\nsequence:::::::::\nACDE*\n");
    EXPECT_EQ(message("one.ali", "str.pdb"),
              "one.ali: expected an alignment of a template and a target");
    write("empty.pdb", "");
    EXPECT_THAT(message("seq.ali", "empty.pdb"), HasSubstr("empty.pdb"));
    EXPECT_EQ(message("seq.ali", "str.pdb"), "");
}

TEST_F(ModellingInputTest, TheEngineGetsTargetAndTemplateInItsOwnWords)
{
    auto result = input("AC-E", "ACDE", "ACE");
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(kestram::fastaText(result.value()), ">target\nACDE\n>template.A\nAC-E\n");
    const std::string text = kestram::pdbText(result.value());
    EXPECT_TRUE(text.starts_with("ATOM      1  N   ALA A   1       0.000   1.000  -2.500  1.00  "
                                 "0.00           N\n"))
        << text;
    EXPECT_TRUE(text.ends_with("TER\nEND\n"));
    EXPECT_THAT(text, HasSubstr("ATOM      9  C   GLU A   3 "));
}

// Structures from neutrons have deuteriums, which the engine does not know. Names as the editor's
// writer puts them: elements are told by the name alone.
TEST_F(ModellingInputTest, HydrogensAndDeuteriumsAreLeftOut)
{
    std::string text = pdb("LHC");
    int serial = 9;
    for (const char *name : {"  H  ", "  D  ", "  DA ", " 1HB  ", " HD11 ", " DD21 ", " DE2  ",
                             " DG11 ", " 2DB  ", "  DXT", "  CB ", "  ND1", "  SG "}) {
        std::array<char, 80> line{};
        std::snprintf(line.data(), line.size(), "ATOM  %5d%-6sHIS A   2    %8.3f%8.3f%8.3f\n",
                      ++serial, name, 1.0, 2.0, 3.0);
        text += line.data();
    }
    const auto result =
        kestram::readInput(write("seq.ali", pir("LHC", "LHC")), write("str.pdb", text));
    ASSERT_TRUE(result.has_value()) << result.error().message();
    ASSERT_EQ(result.value().residues.size(), 3U);
    std::vector<std::string> names;
    for (const TAMBO::AtomRecord &atom : result.value().residues[1].atoms)
        names.push_back(atom.name);
    EXPECT_THAT(names, ElementsAre("N", "CA", "C", "CB", "ND1", "SG"));
    EXPECT_THAT(kestram::pdbText(result.value()), testing::Not(HasSubstr(" D ")));
}

} // namespace ModellingInputTest
