// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyOfAlignment.h"

#include "AppFixture.h"
#include "TemplateRecord.h"

#include <gmock/gmock.h>

namespace FamilyOfAlignmentTest {

using namespace TAMBO;
using testing::HasSubstr;

class FamilyOfAlignment : public AppFixture
{
protected:
    // N, CA and C of each letter but a blank, which has no atoms, and '.', which has a CA alone.
    static void addStructure(const std::string &name, const std::string &letters,
                             bool isModel = false)
    {
        StructureRecord record;
        record.name = name;
        record.isModel = isModel;
        ChainRecord &chain = record.chains.emplace_back();
        chain.name = "B";
        int number = 100;
        for (const char letter : letters) {
            ResidueRecord &residue = chain.residues.emplace_back();
            residue.typeName = "ALA";
            residue.letter = 'A';
            residue.number = SequenceNumber(++number);
            for (const char *atom : {"N", "CA", "C"}) {
                if (letter != '.' || std::string(atom) == "CA")
                    residue.atoms.push_back(
                        {atom, std::string(atom, 1), Vertex(float(number), 2, 3), 17});
            }
        }
        const DataAdder<Space> guard(nullptr, Space::instance());
        ObjectFactory::adopt(std::move(record));
    }
    static Alignment &family(const std::vector<std::pair<std::string, std::string>> &rows)
    {
        AlignmentRecord record;
        record.name = "family";
        for (const auto &[name, text] : rows) {
            RowRecord &made = record.rows.emplace_back();
            made.name = name;
            made.sequence.append(text);
            made.link.change().structure = name;
        }
        const DataAdder<Space> guard(nullptr, Space::instance());
        return *ObjectFactory::adopt(std::move(record));
    }
};

TEST_F(FamilyOfAlignment, RowsHaveNamesTextsAndStructures)
{
    addStructure("1aaa", "AAAAA");
    const auto found =
        app::familyOf(family({{"1aaa", "AA-AAA-"}, {"wanted", "-ACA-DK"}}), "there/family.ali");
    EXPECT_EQ(found.name, "family");
    EXPECT_EQ(found.source, "there/family.ali");
    ASSERT_EQ(found.rows.size(), 2U);
    EXPECT_EQ(found.rows[0].name, "1aaa");
    EXPECT_EQ(found.rows[0].text, "AA-AAA-");
    EXPECT_TRUE(found.rows[0].hasStructure);
    EXPECT_EQ(found.rows[1].text, "-ACA-DK");
    EXPECT_FALSE(found.rows[1].hasStructure);
}

TEST_F(FamilyOfAlignment, AModelAndAChainOfOneAtomAResidueAreNoStructures)
{
    addStructure("1aaa", "AAAAA", true);
    addStructure("2aaa", ".....");
    const auto found = app::familyOf(family({{"1aaa", "AAAAA"}, {"2aaa", "AAAAA"}}));
    EXPECT_FALSE(found.rows[0].hasStructure);
    EXPECT_FALSE(found.rows[1].hasStructure);
}

TEST_F(FamilyOfAlignment, ATemplateIsOneChainNumberedByTheLettersOfItsRow)
{
    addStructure("1aaa", "AAA.A");
    Alignment &alignment = family({{"1aaa", "--AA-AAA"}, {"wanted", "AAAAAAAA"}});
    const auto record = app::templatesOf(alignment)(0);
    ASSERT_TRUE(record) << record.error().message();
    ASSERT_EQ(record.value().chains.size(), 1U);
    const ChainRecord &chain = record.value().chains.front();
    EXPECT_EQ(chain.name, "A");
    ASSERT_EQ(chain.residues.size(), 4U);
    EXPECT_EQ(chain.residues[2].number.number(), 3);
    // The fourth has no backbone.
    EXPECT_EQ(chain.residues[3].number.number(), 5);
    EXPECT_EQ(chain.residues[3].typeName, "ALA");
    ASSERT_EQ(chain.residues[3].atoms.size(), 3U);
    EXPECT_EQ(chain.residues[3].atoms[1].name, "CA");
    EXPECT_FLOAT_EQ(chain.residues[3].atoms[1].position.x(), 105);
}

TEST_F(FamilyOfAlignment, ARowWithoutCoordinatesIsNoTemplate)
{
    Alignment &alignment = family({{"wanted", "AAAA"}});
    const auto record = TAMBO::templateRecord(alignment, 0);
    ASSERT_FALSE(record);
    EXPECT_THAT(record.error().message(),
                HasSubstr("wanted: no residue of it has a whole backbone"));
}

} // namespace FamilyOfAlignmentTest
