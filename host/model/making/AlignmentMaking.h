// SPDX-License-Identifier: GPL-3.0-or-later
// The objects of an alignment record, made a few rows at a time.
#pragma once

#include "AlignmentTable.h"
#include "Records.h"
#include "StructureLookup.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace TAMBO {

struct PackedRow;
class RowTie;
class StoredObject;

// Nothing of it is in the tree before finish(), and without that all of it goes. Rows are tied to
// the structures that are loaded when it begins; while there are such, it must come to its end
// before anybody can take one of them out.
class AlignmentMaking
{
public:
    explicit AlignmentMaking(AlignmentRecord &&record);
    ~AlignmentMaking();
    AlignmentMaking(const AlignmentMaking &) = delete;
    AlignmentMaking &operator=(const AlignmentMaking &) = delete;

    [[nodiscard]] std::size_t rowCount() const noexcept { return m_RowCount; }
    [[nodiscard]] std::size_t rowsMade() const noexcept { return m_Made; }
    // Makes up to so many more. False when there are no more.
    bool makeRows(std::size_t most);
    // Inside a guard. Null when the record is not aligned: then only the sequences are made.
    Alignment *finish();

private:
    void take(PackedRow &&row);

    AlignmentRecord m_Record;
    StructureLookup m_Structures;
    std::size_t m_RowCount;
    std::size_t m_Made = 0;
    AlignmentTable::Rows m_Rows;
    std::vector<std::unique_ptr<StoredObject>> m_Sequences;
    std::uint64_t m_Width = 0;
};

} // namespace TAMBO
