// SPDX-License-Identifier: GPL-3.0-or-later
// The residues of a column range for an aligner, and its answer as the cells of new columns. No
// answer is believed: each row has to hold the very residues that were sent, in their order.
#pragma once

#include "Alignment.h"
#include "OccupancyRow.h"
#include "Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::realign {

class RealignedRows
{
public:
    // The rows of the alignment as they are now. Those that are not chosen keep their cells; empty
    // for all.
    RealignedRows(const Alignment &alignment, const Alignment::Range &range,
                  const std::vector<bool> &chosen = {});

    // How many of the rows have residues in the range. An aligner has nothing to do with less than
    // two.
    [[nodiscard]] std::size_t count() const noexcept { return m_Sent.size(); }
    [[nodiscard]] std::size_t letters() const noexcept;

    // FASTA, under names of our own: no name of a sequence can confuse a program. Letters that an
    // aligner may not know are X; what the alignment holds stays as it is.
    [[nodiscard]] std::string fasta() const;

    struct Columns
    {
        // One for each row of the alignment.
        std::vector<OccupancyRow> rows;
        unsigned long count = 0;
    };
    // What an aligner printed; columns without a residue are left out. Where rows keep their cells,
    // the columns of the answer begin with theirs, and gaps are added to whichever are fewer. The
    // failure says what is wrong with it, as the end of a sentence.
    [[nodiscard]] Result<Columns> read(std::string_view answer) const;

private:
    struct Row
    {
        std::size_t index = 0;
        std::string letters;
    };

    [[nodiscard]] Result<std::vector<std::string>> answersIn(std::string_view answer) const;

    std::size_t m_RowCount = 0;
    std::vector<Row> m_Sent;
    // Those that keep their cells, with the gaps between them.
    std::vector<Row> m_Kept;
};

} // namespace TAMBO::realign
