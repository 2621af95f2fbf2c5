// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment that is being made again of the parts it was written in.
#pragma once

#include "Alignment.h"
#include "AlignmentTable.h"
#include "StoredHead.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace TAMBO {

class ObjectReader;

class AlignmentParts
{
public:
    // The first part.
    explicit AlignmentParts(ObjectReader &in);

    [[nodiscard]] std::uint32_t identity() const noexcept { return m_Head.identity; }
    // Some of its rows, which come in order.
    void readRows(ObjectReader &in);
    // All of them are there.
    [[nodiscard]] bool isComplete() const noexcept { return m_Rows.size() == m_RowCount; }
    // When all of them are there; fails when another object has its number.
    [[nodiscard]] std::unique_ptr<Alignment> make(ObjectReader &in);

private:
    StoredHead m_Head;
    std::string m_Name;
    AlignmentTable::Column m_Width = 0;
    AlignmentTable::Range m_Range;
    std::unique_ptr<AlignmentAnnotation> m_Annotation;
    std::uint64_t m_RowCount = 0;
    AlignmentTable::Rows m_Rows;
    // Of the row that is being read.
    std::vector<OccupancyRow::Word> m_Words;
};

} // namespace TAMBO
