// SPDX-License-Identifier: GPL-3.0-or-later
// What edits have changed of the cells of an alignment since somebody looked last, so that who
// keeps something of columns or rows can keep the rest.
#pragma once

#include "Export.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace TAMBO {

class Alignment;

// One change. Rows and columns are those of that moment: changes before and behind it count, too.
struct LayoutChange
{
    enum class Kind {
        // The gaps [from, from + count) of a row stand at [to, to + count) now, and what was
        // between has closed up.
        GapsMoved,
        // Columns of gaps alone have come to the end, or have gone from it: newCount, oldCount.
        EndMoved,
        // The columns [from, from + oldCount) have given way to [from, from + newCount), whatever
        // stands in them; what was behind has moved along.
        ColumnsReplaced,
        // A row stands there that the alignment did not have.
        RowAdded,
        RowRemoved,
        // A row stands at the place to; those between have closed up.
        RowMoved,
        // The rows stand in another order.
        RowsSorted
    };

    Kind kind = Kind::GapsMoved;
    unsigned long row = 0;
    unsigned long from = 0;
    unsigned long count = 0;
    unsigned long to = 0;
    unsigned long oldCount = 0;
    unsigned long newCount = 0;

    friend bool operator==(const LayoutChange &, const LayoutChange &) = default;
};

// Undo and redo are changes as any others. All calls are made in the GUI thread.
class TAMBO_API LayoutChanges
{
public:
    // So many are kept of an alignment at most.
    static constexpr std::size_t kMostKept = 64;

    // Grows with every change of where cells and rows are, and with nothing else; never goes back
    // as long as there is the alignment. Alignment::layoutRevision() also grows with the numbering
    // of residues.
    [[nodiscard]] static std::uint64_t revision(const Alignment &alignment) noexcept;
    // Those since the revision, in their order. Nothing when that is not known any more: then
    // everything may be another.
    [[nodiscard]] static std::optional<std::vector<LayoutChange>> since(const Alignment &alignment,
                                                                        std::uint64_t revision);
};

} // namespace TAMBO
