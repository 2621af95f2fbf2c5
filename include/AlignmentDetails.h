// SPDX-License-Identifier: GPL-3.0-or-later
// What files and structures say of the cells of an alignment beside their letters: the lines over
// columns and residues that came with a Stockholm file, secondary structure, and how rows fit the
// chains that they are tied to.
#pragma once

#include "Export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TAMBO {

class Alignment;

// How a cell fits the chain that its row is tied to, or is.
struct CellTie
{
    enum class Kind : char {
        // A gap, or a row that has nothing to do with a structure.
        None,
        // The residue has a position, and the letter of the chain's.
        Same,
        // It has a position, and another letter than the chain's residue. Large and small letters
        // are the same.
        OtherLetter,
        // The chain lacks the residue, or has no CA atom of it.
        NoPosition
    };

    Kind kind = Kind::None;
    // The chain's letter; '\0' where the row's residue is tied to none.
    char letter = '\0';

    friend bool operator==(const CellTie &, const CellTie &) = default;
};

// Without making objects of residues, for the cells in sight. Rows and columns that the alignment
// does not have are left out: texts get shorter, or are empty. All calls are made in the GUI
// thread.
class TAMBO_API AlignmentDetails
{
public:
    // Where nothing is said of a column or residue, and at gaps of a row.
    static constexpr char kNothing = '.';

    // What the lines over the columns are called ("SS_cons", of "#=GC"), in the order of the file.
    // Edits carry the lines along with their columns.
    [[nodiscard]] static std::vector<std::string> columnLines(const Alignment &alignment);
    // What one of them says of the columns [begin, end), a character for each. Bytes, as the file
    // has them.
    [[nodiscard]] static std::string columnText(const Alignment &alignment, std::size_t line,
                                                unsigned long begin, unsigned long end);

    // The same of the residues of a row ("SS", of "#=GR"). They stay with their residues.
    [[nodiscard]] static std::vector<std::string> residueLines(const Alignment &alignment,
                                                               unsigned long row);
    [[nodiscard]] static std::string residueText(const Alignment &alignment, unsigned long row,
                                                 std::size_t line, unsigned long begin,
                                                 unsigned long end);

    // Of each cell the type of the secondary-structure element that its residue is in: 'H', 'E' or
    // 'T' in either case; '\0' without.
    [[nodiscard]] static std::string elements(const Alignment &alignment, unsigned long row,
                                              unsigned long begin, unsigned long end);

    // Appends to out how the cells [begin, end) of a row fit their chain.
    static void readTies(const Alignment &alignment, unsigned long row, unsigned long begin,
                         unsigned long end, std::vector<CellTie> &out);

    // Which residues of its sequence a row shows, in its order: those in columns that were removed
    // are not among them. What Alignment::residueCount() counts are places in this.
    [[nodiscard]] static std::vector<std::uint32_t> shownResidues(const Alignment &alignment,
                                                                  unsigned long row);

    // Whether a residue of the row is selected.
    [[nodiscard]] static bool hasSelected(const Alignment &alignment, unsigned long row);
};

} // namespace TAMBO
