// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellToolTip.h"

#include "CanvasFixture.h"
#include "DataMaker.h"
#include "Peptide.h"
#include "Structure.h"

namespace CellToolTipTest {

class CellToolTip : public CanvasFixture
{
protected:
    // Structure 1abc with the chain B of GLY 60 and LYS 60A.
    static TAMBO::Structure *loadStructure()
    {
        TAMBO::StructureRecord record;
        record.name = "1abc";
        record.chains.resize(1);
        record.chains[0].name = "B";
        for (const char letter : {'G', 'K'}) {
            TAMBO::ResidueRecord residue;
            residue.typeName = letter == 'G' ? "GLY" : "LYS";
            residue.letter = letter;
            residue.number = TAMBO::SequenceNumber(letter == 'G' ? "60" : "60A");
            residue.atoms.push_back({"CA", "C", TAMBO::Vertex(1, 2, 3)});
            record.chains[0].residues.push_back(residue);
        }
        const DataPointBase guard(nullptr, Publisher::Add);
        return TAMBO::ObjectFactory::adopt(std::move(record));
    }
};

TEST_F(CellToolTip, NamesSequenceColumnAndResidue)
{
    const TAMBO::Alignment &alignment = makeAlignment({"-KW"}, {"target"});
    EXPECT_EQ(cellToolTip(alignment, 0, 2), QStringLiteral("target\ncolumn 3\nTRP (W) 2"));
}

TEST_F(CellToolTip, SaysWhereThereIsAGap)
{
    const TAMBO::Alignment &alignment = makeAlignment({"-KW"}, {"target"});
    EXPECT_EQ(cellToolTip(alignment, 0, 0), QStringLiteral("target\ncolumn 1\ngap"));
}

TEST_F(CellToolTip, NamesTheChainOfAResidueOfAStructure)
{
    TAMBO::Structure *structure = loadStructure();
    const DataPointBase guard(nullptr, Publisher::Add);
    const TAMBO::Alignment *alignment =
        TAMBO::DataMaker::makeAlignment("ali", {structure->Child(0)});
    EXPECT_EQ(cellToolTip(*alignment, 0, 1),
              QStringLiteral("1abc_B\ncolumn 2\nLYS (K) 60A, chain B"));
}

TEST_F(CellToolTip, NamesTheChainThatARowOfAFileIsTiedTo)
{
    (void)loadStructure();
    TAMBO::AlignmentRecord record;
    record.name = "ali";
    record.rows.resize(1);
    record.rows[0].name = "template";
    // One residue more than the structure has.
    record.rows[0].sequence.append("G-KW");
    record.rows[0].link.change().structure = "1abc";
    record.rows[0].link.change().chain = "B";
    const DataPointBase guard(nullptr, Publisher::Add);
    const TAMBO::Alignment *alignment = TAMBO::ObjectFactory::adopt(std::move(record));
    EXPECT_EQ(cellToolTip(*alignment, 0, 2),
              QStringLiteral("template\ncolumn 3\nLYS (K) 60A, chain B"));
    EXPECT_EQ(cellToolTip(*alignment, 0, 3).section(QLatin1Char('\n'), 2).left(7),
              QStringLiteral("TRP (W)"));
}

} // namespace CellToolTipTest
