// SPDX-License-Identifier: GPL-3.0-or-later
// Some rows of an alignment that are to be aligned to the others, or sequences that are to become
// rows behind them. The columns of the others stay together: what
// an aligner gets, and its answer as where residues come to stand. No answer is believed: each row
// has to hold the very residues that were sent, and the others the very columns.
#pragma once

#include "Alignment.h"
#include "OccupancyRow.h"
#include "Result.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TAMBO {
class Peptide;
}

namespace TAMBO::realign {

class AddedRows
{
public:
    // The rows of the alignment as they are now, those that are to be aligned ascending. Rows
    // without residues, be they of these or of the others, take no part. The newcomers count on
    // behind the rows.
    AddedRows(const Alignment &alignment, const std::vector<unsigned long> &rows,
              const std::vector<Peptide *> &newcomers = {});

    // How many take part.
    [[nodiscard]] std::size_t others() const noexcept { return m_Others.size(); }
    [[nodiscard]] std::size_t added() const noexcept { return m_Added.size(); }

    // FASTA, under names of our own; the others with the gaps between their columns. Letters that
    // an aligner may not know are X.
    [[nodiscard]] std::string othersAsFasta() const;
    [[nodiscard]] std::string addedAsFasta() const;

    struct Layout
    {
        // Columns of gaps to be put in, ascending, by the columns of now before which they come.
        std::vector<GapRun> inserted;
        // Of the rows that are added: where they then are, by their places in the alignment. The
        // others keep their cells.
        std::vector<std::pair<unsigned long, OccupancyRow>> rows;
        // Columns, as they then count, that have lost the residues that they had.
        std::vector<bool> isEmptied;
        // Residues that were left out, since no column was to be put in, by the same rows. Then
        // the rest of it is empty.
        std::vector<std::pair<unsigned long, std::size_t>> leftOut;
    };
    // What an aligner printed. The failure says what is wrong with it, as the end of a sentence.
    [[nodiscard]] Result<Layout> read(std::string_view answer) const;

private:
    struct Row
    {
        unsigned long row = 0;
        // Of the others with gaps, one for each sent column.
        std::string text;
    };
    using Answer = std::vector<std::string>;

    // What of it is not as it was sent.
    [[nodiscard]] Result<Layout> checked(const Answer &answer) const;
    // For each column of the answer the place among the sent ones; nothing for a new one.
    [[nodiscard]] Result<std::vector<std::size_t>> columnsOf(const Answer &answer) const;
    void markEmptied(Layout &layout, unsigned long inserted) const;

    unsigned long m_Width = 0;
    std::vector<Row> m_Others;
    std::vector<Row> m_Added;
    // Those of the alignment in which one of the others has a residue, ascending.
    std::vector<unsigned long> m_Sent;
    // In which one of the added has.
    std::vector<bool> m_HasAdded;
};

} // namespace TAMBO::realign
