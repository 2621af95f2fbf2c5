// SPDX-License-Identifier: GPL-3.0-or-later
// A multiple sequence alignment: rows are sequences, columns are positions, a cell is a residue or
// a gap. Rows and columns count from 0; a column range is half-open.
#pragma once

#include "Compound.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {

class AlignmentTable;

// What a view needs to draw a cell. A gap has the letter '\0'.
struct AlignmentCell
{
    char letter = '\0';
    // As Compound::GetColor() of the residue; unspecified for a gap.
    Color color;

    [[nodiscard]] constexpr bool isGap() const noexcept { return letter == '\0'; }
};

// The most frequent letter of a column, gaps not counted; of equally frequent ones the letter with
// the smallest character code, as a signed byte. A column without a residue has the letter '-' and
// the count 0.
struct AlignmentMajority
{
    char letter = '-';
    unsigned long count = 0;
    // No other letter is as frequent.
    bool isAlone = true;
};

// Reading out of bounds gives null or an empty value. An edit with an index out of bounds, or of a
// locked alignment, changes nothing. No edit but those that remove columns and rows drops a
// residue, and none changes the order of a row's residues.
class TAMBO_API Alignment : public Compound
{
public:
    using Range = std::pair<unsigned long, unsigned long>;

    ~Alignment() override;

    // ---- Reading

    [[nodiscard]] unsigned long width() const noexcept { return m_Width; }
    // The length of column 0: 0 when there are no columns, whatever rows there may be.
    [[nodiscard]] unsigned long height() const noexcept { return m_Width == 0 ? 0 : m_RowCount; }
    // The current column range; empty when first is not below second.
    [[nodiscard]] const Range &range() const noexcept { return m_Range; }

    // The residue in a cell, or null for a gap.
    [[nodiscard]] Compound *getItem(unsigned long row, unsigned long col) const;
    // A column as one entry per row, null for gaps.
    [[nodiscard]] std::vector<Compound *> getCol(unsigned long col) const;
    // All columns. A view of the table made for the call: its cost is rows x columns.
    [[nodiscard]] std::vector<std::vector<Compound *>> columns() const;
    // The peptide of a row.
    [[nodiscard]] Compound *GetSeq(unsigned long row) const;
    [[nodiscard]] std::string GetSeqName(unsigned long row) const;
    // The row as text with one character per column, '-' for a gap. The flag is kept for callers
    // that pass false; true leaves the gaps out.
    [[nodiscard]] std::string GetSequence(unsigned long row, bool withoutGaps) const;

    // ---- Reading without making residue objects, for passes over many cells

    // '\0' for a gap.
    [[nodiscard]] char letterAt(unsigned long row, unsigned long col) const;
    // How many residues of the row stand before the column.
    [[nodiscard]] unsigned long residueCount(unsigned long row, unsigned long end) const;
    // Where a residue of the row stands, which are counted from 0; width() when it has fewer.
    [[nodiscard]] unsigned long columnOfResidue(unsigned long row, unsigned long residue) const;
    // Appends to out the cells [begin, end) of a row; columns out of bounds are left out.
    void readRow(unsigned long row, unsigned long begin, unsigned long end,
                 std::vector<AlignmentCell> &out) const;
    // Appends to out one letter per row, '\0' for gaps.
    void readColumn(unsigned long col, std::vector<char> &out) const;
    [[nodiscard]] AlignmentMajority majority(unsigned long col) const;
    // Of all columns. Empty when that took long and the user has given it up.
    [[nodiscard]] std::vector<AlignmentMajority> majorities() const;
    // False when no residue of the row can have a position.
    [[nodiscard]] bool hasPositions(unsigned long row) const;
    // Appends to out the positions of the cells [begin, end) of a row, undefined for gaps and for
    // residues without one; columns out of bounds are left out.
    void readPositions(unsigned long row, unsigned long begin, unsigned long end,
                       std::vector<Vertex> &out) const;
    // True when every residue of the row is selected, and for a row that holds only gaps.
    [[nodiscard]] bool isRowSelected(unsigned long row) const;
    // True when the column holds a residue and every residue in it is selected.
    [[nodiscard]] bool isColumnSelected(unsigned long col) const;
    // Changes whenever the shape, the order of rows, the place of a cell, or what the numbering
    // shows (residue numbers, secondary structure) may have changed. Never goes back to an earlier
    // value.
    [[nodiscard]] unsigned long layoutRevision() const noexcept;

    // ---- Colouring and selecting without making residue objects, inside a guard. As SetColor()
    // and SetSelected() of one residue after the other, row by row: the alignment's own lock does
    // not matter, that of a sequence keeps its colours. Each shows how far it is when it takes
    // long; when the user gives it up, nothing has changed, and it says false.

    // Every residue, by the character code of its letter.
    bool colorByLetter(const std::array<Color, 256> &colors);
    bool colorSelected(const Color &color);
    // In each column the residues with the letter that stands there in letters, which has an entry
    // per column; '\0' leaves a column alone.
    bool colorLetters(const std::vector<char> &letters, const Color &color);
    // In each column the residues with a position, by the colour that stands there in colors, which
    // has an entry per column. Column by column: a residue in two of them gets that of the last.
    bool colorPositioned(const std::vector<Color> &colors);
    bool selectLetters(const std::vector<char> &letters);
    // The residues of one row. Columns out of bounds are left out.
    void selectInRow(unsigned long row, const Range &range);

    enum class Selecting {
        // Instead of all residues of the alignment that are selected.
        Replace,
        Add,
        Remove,
        // Those that are selected are not afterwards, and the other way round.
        Toggle
    };
    // The residues in the rows and columns for which rows and columns say true; those behind their
    // ends are left alone.
    bool selectCells(const std::vector<bool> &rows, const std::vector<bool> &columns,
                     Selecting how);

    // ---- Editing, inside a guard

    // A new alignment of the first n rows over all columns (all rows when n is larger), already
    // added to the workbench's objects. It has cells of its own over the same sequences.
    Alignment *duplicate(unsigned long n) const;
    // The same of the cells in the rows and columns for which rows and columns say true; those
    // behind their ends are left out. A name that is taken gets a number. Null when the user has
    // given it up; then nothing has changed.
    Alignment *duplicate(const std::vector<bool> &rows, const std::vector<bool> &columns,
                         const std::string &name) const;
    // A range that reaches beyond the last column ends there.
    void range(const Range &range);
    void rangeAll();
    // Sets the selection of every residue in the columns of the range.
    void select(const Range &range, bool selected);
    void remove(const Range &range);
    void remove(unsigned long col);
    void removeRow(unsigned long row);
    // Those for which the flags say true, at once. False when the user has given it up; then
    // nothing has changed.
    bool removeColumns(const std::vector<bool> &columns);
    void removeRows(const std::vector<bool> &rows);
    // Inserts count columns of gaps before col; col equal to width() appends.
    void insertGapCol(unsigned long col, unsigned long count);
    // The cells from col on move right by one; the alignment grows by a column only when the row's
    // last cell is a residue.
    void insertGap(unsigned long row, unsigned long col);
    // As count times insertGap().
    void insertGaps(unsigned long row, unsigned long col, unsigned long count);
    // point: the one gap at from is taken out and put in so that it stands at to. Otherwise the
    // whole run of gaps around from moves by to - from, stopping at the row's ends. From a residue:
    // the residue and what follows it slide, right by inserting gaps before it, left into the gaps
    // directly before it.
    void moveGap(unsigned long row, unsigned long from, unsigned long to, bool point);
    // The cells [from, from + count) of a row come to stand at [to, to + count), and what was
    // between closes up. Nothing changes unless all of them are gaps.
    void moveGaps(unsigned long row, unsigned long from, unsigned long count, unsigned long to);
    // Gaps of a row: those that stand at from, or else some from the row's end.
    struct GapMove
    {
        unsigned long row = 0;
        std::optional<unsigned long> from;
        unsigned long count = 0;
        unsigned long to = 0;
    };
    enum class GapsMoved { All, TooWide, GivenUp };
    // One after the other, as moveGaps() and insertGaps(). Nothing changes when the alignment would
    // become too wide, which is refused with a line in the log, or when the user gives it up.
    GapsMoved moveGaps(const std::vector<GapMove> &moves);
    // In each of the rows for which rows says true the residues in the columns come to stand side
    // by side at their left end, or else at their right one, and the gaps at the other.
    void pushResidues(const std::vector<bool> &rows, const Range &columns, bool toLeft);
    // Row from moves to place to, the rows between close up.
    void bubbleRow(unsigned long from, unsigned long to);
    // All rows at once: the row that stands at order[i] comes to stand at i. Nothing changes unless
    // order has the place of each row, once.
    void reorderRows(const std::vector<unsigned long> &order);
    // One ungapped row from column 0 per peptide; columns are appended as needed.
    void addRows(const std::vector<Compound *> &sequences);
    // Matches columns along the first sequence that both alignments hold and appends the rows that
    // this one lacks. Without a common sequence the rows are appended as they stand.
    void combine(const Alignment &other);

    // ---- Compound

    std::string Name() const override;
    char TypeCode() const override;
    std::string TypeName() const override;
    Compound *Parent() const override;
    std::size_t ChildCount() const override;
    Compound *Child(std::size_t index) const override;
    bool IsLocked() const override;
    Vertex Position() const override;
    Color OwnColor() const override;
    void AssignColor(const Color &color) override;
    void SetSelected(bool selected) override;
    bool IsSelected() const override;

    // The workbench's own door to the table behind this interface.
    [[nodiscard]] AlignmentTable &table() noexcept { return *m_Table; }
    [[nodiscard]] const AlignmentTable &table() const noexcept { return *m_Table; }

protected:
    // Made by the workbench only.
    explicit Alignment(std::unique_ptr<AlignmentTable> table);

private:
    friend class AlignmentTable;

    std::unique_ptr<AlignmentTable> m_Table;
    unsigned long m_Width = 0;
    unsigned long m_RowCount = 0;
    Range m_Range{0, 0};
};

} // namespace TAMBO
