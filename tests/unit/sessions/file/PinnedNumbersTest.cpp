// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers and names that stand in files: none is ever given to something else. Whoever adds one
// adds it here.
#include "EditParts.h"
#include "SessionContent.h"
#include "SessionKinds.h"
#include "StepRecords.h"
#include "StoreTables.h"
#include "StoredHead.h"
#include "StoredKind.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string_view>
#include <utility>

namespace PinnedNumbersTest {

using namespace TAMBO;

template <typename Kind> using Numbers = std::initializer_list<std::pair<Kind, unsigned>>;

template <typename Kind> void expectNumbers(const Numbers<Kind> &numbers)
{
    for (const auto &[kind, number] : numbers)
        EXPECT_EQ(unsigned(kind), number);
}

TEST(PinnedNumbers, OfKindsOfObjectsAndTheVersionsOfTheirForms)
{
    struct Pinned
    {
        StoredKind kind;
        unsigned number;
        unsigned version;
    };
    const std::initializer_list<Pinned> pinned = {
        {StoredKind::Space, 1, 1},    {StoredKind::SpaceOrder, 2, 1},
        {StoredKind::Sequence, 3, 2}, {StoredKind::Structure, 4, 2},
        {StoredKind::Chain, 5, 2},    {StoredKind::Group, 6, 2},
        {StoredKind::Element, 7, 1},  {StoredKind::Alignment, 8, 1},
        {StoredKind::Rows, 9, 1},     {StoredKind::StructureExtras, 10, 1},
    };
    EXPECT_EQ(pinned.size(), kStoredKinds.size());
    for (const Pinned &one : pinned) {
        EXPECT_EQ(unsigned(one.kind), one.number);
        ASSERT_NE(entryOf(one.kind), nullptr) << one.number;
        EXPECT_EQ(entryOf(one.kind)->version, one.version) << one.number;
    }
}

TEST(PinnedNumbers, OfKindsOfEdits)
{
    expectNumbers<EditTag>({
        {EditTag::Gap, 1},
        {EditTag::RowMove, 2},
        {EditTag::InsertRows, 3},
        {EditTag::RemoveRows, 4},
        {EditTag::OpenColumns, 5},
        {EditTag::CloseColumns, 6},
        {EditTag::RemoveColumns, 7},
        {EditTag::RestoreColumns, 8},
        {EditTag::ColumnText, 9},
        {EditTag::ReplaceColumns, 10},
        {EditTag::Objects, 11},
        {EditTag::Name, 12},
        {EditTag::ObjectColor, 13},
        {EditTag::Value, 14},
        {EditTag::ResidueColors, 15},
        {EditTag::ResidueNumbers, 16},
        {EditTag::Ties, 17},
        {EditTag::Places, 18},
        {EditTag::GroupNumber, 19},
        {EditTag::Motion, 20},
        {EditTag::RowOrder, 21},
        {EditTag::RemoveRuns, 22},
        {EditTag::RestoreRuns, 23},
        {EditTag::Annotation, 24},
    });
}

TEST(PinnedNumbers, OfPartsOfObjectsThatEditsChange)
{
    expectNumbers<EditPart>({
        {EditPart::Whole, 0},
        {EditPart::Arrival, 1},
        {EditPart::Members, 2},
        {EditPart::Cells, 3},
        {EditPart::Name, 4},
        {EditPart::Numbers, 5},
        {EditPart::Places, 6},
        {EditPart::Elements, 7},
        {EditPart::Display, 8},
        {EditPart::RowNames, 9},
        {EditPart::HeaderNumbers, 10},
    });
    EditParts two;
    two.add(EditPart::Whole);
    two.add(EditPart::HeaderNumbers);
    EXPECT_EQ(two.number(), 1U + 1024U);
}

TEST(PinnedNumbers, OfPartsAndRecordsOfAStore)
{
    using sessions::PartKind;
    using sessions::RecordKind;
    expectNumbers<PartKind>({{PartKind::Objects, 1}, {PartKind::Steps, 2}, {PartKind::History, 3}});
    expectNumbers<RecordKind>({{RecordKind::Objects, 1}, {RecordKind::Change, 2}});
    using Kind = StepRecords::Kind;
    expectNumbers<Kind>({{Kind::Step, 's'},
                         {Kind::Travel, 't'},
                         {Kind::Forgotten, 'f'},
                         {Kind::Cleared, 'c'},
                         {Kind::Mark, 'm'}});
}

TEST(PinnedNumbers, OfWhatObjectsBeginWith)
{
    EXPECT_EQ(StoredHead::kHasColor, 1U);
    EXPECT_EQ(StoredHead::kIsSelected, 2U);
    EXPECT_EQ(StoredHead::kIsLocked, 4U);
    EXPECT_EQ(StoredHead::kHasValues, 8U);
}

TEST(PinnedNumbers, OfTheFileAndNamesOfValues)
{
    EXPECT_EQ(sessions::kStoreMark, 0x544d424f);
    EXPECT_EQ(sessions::kStoreVersion, 5);
    EXPECT_EQ(sessions::kStateBegin, "state-begin");
    EXPECT_EQ(sessions::kStateEnd, "state-end");
    EXPECT_EQ(sessions::kRecordsBegin, "records-begin");
    EXPECT_EQ(std::string_view(sessions::kMadeBy), "made-by");
    EXPECT_EQ(std::string_view(sessions::kMadeAt), "made-at");
}

} // namespace PinnedNumbersTest
