// SPDX-License-Identifier: GPL-3.0-or-later
// What a step is said to occupy is held against what the heap gets back when the step is dropped.
#include "HistoryFixture.h"

#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "TableChanges.h"
#include "bench/HeapCount.h"
#include "bench/MadeAlignment.h"

#include <array>
#include <numeric>
#include <vector>

namespace HistoryBytesTest {

class HistoryBytes : public HistoryFixture
{
protected:
    // Forgets all steps. The heap hands out a little more than it is asked for.
    void expectRealBytes()
    {
        const auto said = double(history.bytes());
        const std::size_t before = heapBytes();
        history.clear();
        const auto real = double(before - heapBytes());
        EXPECT_GE(said, 0.9 * real);
        EXPECT_LE(said, 1.05 * real);
    }

    TAMBO::Alignment &alignment()
    {
        const TAMBO::ChangeScope scope;
        TAMBO::AlignmentRecord record = madeAlignment(200, 2000);
        for (TAMBO::RowRecord &row : record.rows)
            row.description = "a description that is too long to stand in the string itself";
        record.columnAnnotations.push_back({"SS_cons", std::string(2000, 'H')});
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }
};

TEST_F(HistoryBytes, OfAnAlignmentAreTheRealOnes)
{
    TAMBO::Alignment &object = alignment();
    history.clear();
    TAMBO::DataMaker::Destroy(&object);
    expectRealBytes();
}

TEST_F(HistoryBytes, OfAnAlignmentThatHasBeenLookedAtHoldWhatIsKeptOfThat)
{
    TAMBO::Alignment &object = alignment();
    std::vector<char> letters;
    for (unsigned long column = 0; column < object.width(); ++column) {
        static_cast<void>(object.majority(column));
        static_cast<void>(object.isColumnSelected(column));
        object.readColumn(column, letters);
    }
    history.clear();
    TAMBO::DataMaker::Destroy(&object);
    EXPECT_GT(history.bytes(), 2000 * 200U) << "counts, letters, selected columns";
    expectRealBytes();
}

TEST_F(HistoryBytes, OfRemovedRowsAreTheRealOnes)
{
    TAMBO::Alignment &object = alignment();
    history.clear();
    {
        const TAMBO::ChangeScope scope;
        for (int row = 0; row < 100; ++row)
            object.removeRow(50);
    }
    expectRealBytes();
}

TEST_F(HistoryBytes, OfAnotherOrderOfRowsAreTheRealOnesAndFourForEachRow)
{
    constexpr unsigned long kOrdered = 10'000;
    TAMBO::Alignment *object = nullptr;
    {
        const TAMBO::ChangeScope scope;
        object = TAMBO::ObjectFactory::adopt(madeAlignment(kOrdered, 10));
    }
    std::vector<unsigned long> order(kOrdered);
    std::iota(order.rbegin(), order.rend(), 0);
    history.clear();
    object->reorderRows(order);
    EXPECT_LE(history.bytes(), 4 * kOrdered + 1000);
    expectRealBytes();
}

TEST_F(HistoryBytes, OfOtherLinesOverTheColumnsAreThoseOfTheLinesBefore)
{
    TAMBO::Alignment &object = alignment();
    history.clear();
    TAMBO::annotate(object.table(), {{"CC", "a remark"}}, {{"SS", std::string(2000, 'E')}},
                    "annotate columns");
    EXPECT_GT(history.bytes(), 2000U);
    expectRealBytes();
}

TEST_F(HistoryBytes, OfASequenceHoldAllThatIsKeptOfItsResidues)
{
    constexpr std::size_t kLength = 5000;
    TAMBO::Peptide &sequence = peptide("seq", std::string(kLength, 'A'));
    {
        const TAMBO::ChangeScope scope;
        for (std::size_t i = 0; i < kLength; ++i) {
            sequence.setNumber(i, TAMBO::SequenceNumber(int(3 * i)));
            sequence.setColor(i, Color(unsigned(i)));
            static_cast<void>(sequence.residue(i));
        }
        sequence.setSelected(0, kLength / 2, true);
    }
    history.clear();
    TAMBO::DataMaker::Destroy(&sequence);
    // A handle has three words, a colour of many two, a number one and a half.
    EXPECT_GT(history.bytes(), kLength * 6 * sizeof(void *));
    expectRealBytes();
}

// What a row and its sequence take beside letters, name and bits, the undo of opening included.
class RowBytes : public HistoryFixture
{
protected:
    static constexpr std::size_t kRows = 20000;
    static constexpr std::size_t kColumns = 200;

    void load(const std::string &description = {})
    {
        TAMBO::AlignmentRecord record = madeAlignment(kRows, kColumns);
        for (TAMBO::RowRecord &row : record.rows) {
            row.description = description;
            m_Content += row.name.size() + row.description.size() + row.sequence.letters.size() +
                         row.sequence.occupancy.size() * sizeof(row.sequence.occupancy[0]);
        }
        m_Before = heapBytes();
        // Of the record, which goes while the objects are made.
        std::size_t ofRecord = m_Before;
        {
            const TAMBO::AlignmentRecord copy = record;
            ofRecord = heapBytes() - m_Before;
        }
        m_Before -= ofRecord;
        const TAMBO::ChangeScope scope;
        m_Alignment = TAMBO::ObjectFactory::adopt(std::move(record));
    }
    [[nodiscard]] double bytesARow() const
    {
        return (double(heapBytes()) - double(m_Before) - double(m_Content)) / double(kRows);
    }

    TAMBO::Alignment *m_Alignment = nullptr;

private:
    std::size_t m_Before = 0;
    std::size_t m_Content = 0;
};

TEST_F(RowBytes, AreFewAfterOpening)
{
    load();
    EXPECT_LE(bytesARow(), 170.0);
}

TEST_F(RowBytes, AreFewAfterEditsThatTouchEveryRow)
{
    load();
    m_Alignment->insertGapCol(100, 1);
    m_Alignment->insertGap(7, 3);
    m_Alignment->bubbleRow(0, kRows - 1);
    EXPECT_LE(bytesARow(), 180.0);
    m_Alignment->remove(100);
    EXPECT_LE(bytesARow(), 180.0);
}

TEST_F(HistoryBytes, OfAStructureHoldItsChainsAtomsGroupsAndElements)
{
    TAMBO::StructureRecord record;
    record.name = "a structure whose name is so long that it does not fit";
    for (const std::string name : {"A", "B", "C"}) {
        TAMBO::ChainRecord chain = chainRecord(name, std::string(300, 'G'));
        for (int i = 0; i < 50; ++i) {
            TAMBO::ResidueRecord group = residueRecord("LIG", 'X', std::to_string(1000 + i), 1);
            group.isAminoAcid = false;
            group.atoms.push_back({"an atom with quite a long name", "C", TAMBO::Vertex()});
            chain.residues.push_back(std::move(group));
        }
        record.chains.push_back(std::move(chain));
        for (int i = 0; i < 50; ++i)
            record.elements.push_back({"helix", 'H', name, TAMBO::SequenceNumber(1 + 6 * i),
                                       TAMBO::SequenceNumber(5 + 6 * i)});
    }
    TAMBO::Structure &structure = *TAMBO::ObjectFactory::adopt(std::move(record));
    history.clear();
    TAMBO::DataMaker::Destroy(&structure);
    expectRealBytes();
}

// One byte a residue, and the colors that occur once for all rows.
TEST_F(HistoryBytes, OfAColoringOfManyRowsAreLittleMoreThanTheResidues)
{
    constexpr unsigned long kRows = 1000;
    TAMBO::Alignment *object = nullptr;
    {
        const TAMBO::ChangeScope scope;
        object = TAMBO::ObjectFactory::adopt(madeAlignment(kRows, 100));
    }
    std::size_t residues = 0;
    for (unsigned long row = 0; row < kRows; ++row)
        residues += object->GetSequence(row, true).size();
    const auto color = [&](unsigned shade) {
        std::array<Color, 256> colors;
        for (unsigned code = 0; code < colors.size(); ++code)
            colors[code] = Color(shade + code % 21);
        object->colorByLetter(colors);
    };
    color(0x100000);
    history.clear();
    color(0x200000);
    EXPECT_LE(history.bytes(), residues + kRows * 200);
    expectRealBytes();
}

} // namespace HistoryBytesTest
