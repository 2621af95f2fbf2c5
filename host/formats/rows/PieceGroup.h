// SPDX-License-Identifier: GPL-3.0-or-later
// The pieces of some rows of an alignment as their file gives them, block after block, in little
// more room than the rows will take; and the rows, when all pieces are there.
#pragma once

#include "CellBlock.h"
#include "PackedRow.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

class PieceGroup
{
public:
    // Pieces of one width that follow each other in the file: of one row after the other (step 1),
    // or of one row (step 0). Rows count within the group.
    struct Batch
    {
        std::uint64_t width = 0;
        std::uint32_t first = 0;
        std::uint32_t count = 0;
        std::uint32_t step = 1;
        // The words of all pieces, then their letters.
        CellBlock cells;
    };

    // Behind those that are there.
    void add(Batch &&batch) { m_Batches.push_back(std::move(batch)); }
    // A row for each name; one without a piece has no cells.
    [[nodiscard]] std::vector<PackedRow> rows(std::span<const std::string_view> names) const;

private:
    // Calls visit(row, words, letters) for each piece in the order of the file.
    template <typename Visit> void forEachPiece(Visit visit) const;

    std::vector<Batch> m_Batches;
};

} // namespace TAMBO::formats
