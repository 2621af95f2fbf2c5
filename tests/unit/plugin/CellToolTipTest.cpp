// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellToolTip.h"

#include "CanvasFixture.h"
#include "DataMaker.h"
#include "Peptide.h"
#include "Structure.h"

namespace {

class CellToolTip : public CanvasFixture
{
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
    TAMBO::StructureRecord record;
    record.name = "1abc";
    record.chains.resize(1);
    record.chains[0].name = "B";
    for (const char letter : {'G', 'K'}) {
        TAMBO::ResidueRecord residue;
        residue.typeName = letter == 'G' ? "GLY" : "LYS";
        residue.letter = letter;
        residue.number = TAMBO::SequenceNumber(letter == 'G' ? "60" : "60A");
        record.chains[0].residues.push_back(residue);
    }
    const DataPointBase guard(nullptr, Publisher::Add);
    TAMBO::Structure *structure = TAMBO::ObjectFactory::adopt(std::move(record));
    const TAMBO::Alignment *alignment =
        TAMBO::DataMaker::makeAlignment("ali", {structure->Child(0)});
    EXPECT_EQ(cellToolTip(*alignment, 0, 1),
              QStringLiteral("1abc_B\ncolumn 2\nLYS (K) 60A, chain B"));
}

} // namespace
