// SPDX-License-Identifier: GPL-3.0-or-later
// The changes of an alignment. Each keeps what its change needs: places and counts, the bits of
// removed cells, the rows that are out of the table.
#pragma once

#include "AlignmentTable.h"
#include "BitBuffer.h"
#include "ChainBreakPlaces.h"
#include "EditBytes.h"
#include "Rare.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {

class LongWork;

class AlignmentEdit : public Edit
{
public:
    // What one of these has stored behind its tag.
    [[nodiscard]] static LoadedEdit load(EditTag tag, EditReader &in);

    const char *kind() const override { return m_Kind; }
    EditPart part() const override { return EditPart::Cells; }
    Compound *subject() const override { return &m_Table.alignment(); }
    // The same change of the cells of another alignment, which is in the same state and in no tree;
    // null for one that changes no cells. The current range and breaks between chains are left out.
    [[nodiscard]] virtual std::unique_ptr<Edit> copyFor(AlignmentTable &table) const = 0;

protected:
    AlignmentEdit(AlignmentTable &table, const char *kind) : m_Table(table), m_Kind(kind) { }

    void storeHead(EditTag tag, EditWriter &out) const;

    AlignmentTable &m_Table;
    // A literal.
    const char *m_Kind;
};

// Gaps of one row move. Gaps typed in come from behind the row's end, which may widen the
// alignment.
class GapEdit final : public AlignmentEdit
{
public:
    struct Move
    {
        std::size_t row = 0;
        AlignmentTable::Column from = 0;
        AlignmentTable::Column count = 0;
        AlignmentTable::Column to = 0;
        // Columns that come to the alignment's end before, or leave it after the move.
        long growth = 0;
    };

    // Breaks between chains, of a row that has any, are set to where they were before.
    GapEdit(AlignmentTable &table, const char *kind, const Move &move,
            Rare<BreakColumns> breaks = {})
        : AlignmentEdit(table, kind), m_Move(move), m_Breaks(std::move(breaks))
    { }

    [[nodiscard]] static std::unique_ptr<Edit> load(AlignmentTable &table, const char *kind,
                                                    EditReader &in);

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    Move m_Move;
    Rare<BreakColumns> m_Breaks;
};

class RowMoveEdit final : public AlignmentEdit
{
public:
    RowMoveEdit(AlignmentTable &table, std::size_t from, std::size_t to)
        : AlignmentEdit(table, "move row"), m_From(from), m_To(to)
    { }

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override { return sizeof(*this); }
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    std::size_t m_From;
    std::size_t m_To;
};

// All rows change places.
class RowOrderEdit final : public AlignmentEdit
{
public:
    // At each place the one that its row stood at before.
    using Order = std::vector<std::uint32_t>;

    RowOrderEdit(AlignmentTable &table, Order order)
        : AlignmentEdit(table, "reorder rows"), m_Order(std::move(order))
    { }

    [[nodiscard]] static std::unique_ptr<Edit> load(AlignmentTable &table, EditReader &in);

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    [[nodiscard]] Order inverse() const;

    Order m_Order;
};

class InsertRowsEdit final : public AlignmentEdit
{
public:
    InsertRowsEdit(AlignmentTable &table, const char *kind, std::vector<std::size_t> indices,
                   AlignmentTable::Rows rows, AlignmentTable::Column width);

    [[nodiscard]] static std::unique_ptr<Edit> load(AlignmentTable &table, const char *kind,
                                                    EditReader &in);

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    // With the sequences of the rows.
    void appendNeeded(std::vector<const Compound *> &out) const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;
    // As fits(), of an alignment in no tree, into which rows of deleted sequences may come.
    [[nodiscard]] bool fitsInCopy() const;

private:
    std::vector<std::size_t> m_Indices;
    AlignmentTable::Rows m_Rows;
    AlignmentTable::Column m_Width;
};

class RemoveRowsEdit final : public AlignmentEdit
{
public:
    RemoveRowsEdit(AlignmentTable &table, const char *kind, std::vector<std::size_t> indices,
                   AlignmentTable::Column width);

    [[nodiscard]] static std::unique_ptr<Edit> load(AlignmentTable &table, const char *kind,
                                                    EditReader &in);

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    std::vector<std::size_t> m_Indices;
    AlignmentTable::Column m_Width;
};

// Where the breaks between chains of a row stood.
struct RowBreaks
{
    std::size_t row = 0;
    BreakColumns columns;
};

// A change of columns moves the current range along. The way back leads to exactly the range there
// was, unless the user has set another one in between.
class ColumnEdit : public AlignmentEdit
{
public:
    [[nodiscard]] static std::unique_ptr<Edit> load(EditTag tag, AlignmentTable &table,
                                                    const char *kind, EditReader &in);

    struct RangeStep
    {
        bool isWayBack = false;
        // The range was the expected one when this was done before, whatever it is now.
        bool isRepeated = false;
        AlignmentTable::Range expected;
        AlignmentTable::Range restored;
    };

protected:
    ColumnEdit(AlignmentTable &table, const char *kind, const RangeStep &step)
        : AlignmentEdit(table, kind), m_RangeStep(step)
    { }

    // Sets the range after the change; before is the range there was. Gives the inverse's step.
    [[nodiscard]] RangeStep finishRange(const AlignmentTable::Range &before) const;

    void storeRange(EditWriter &out) const;
    // Of the edit that this is the inverse of.
    void storeFormerRange(EditWriter &out) const;
    [[nodiscard]] static RangeStep loadRange(EditReader &in);
    [[nodiscard]] bool fitsRange(AlignmentTable::Column widthAfter) const;
    // One that keeps cells.
    [[nodiscard]] static std::unique_ptr<Edit> loadCells(EditTag tag, AlignmentTable &table,
                                                         const char *kind, EditReader &in);

    RangeStep m_RangeStep;
};

// Columns of gaps open.
class OpenColumnsEdit final : public ColumnEdit
{
public:
    OpenColumnsEdit(AlignmentTable &table, const char *kind, std::vector<GapRun> runs,
                    const RangeStep &step = {});

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    std::vector<GapRun> m_Runs;
};

class CloseColumnsEdit final : public ColumnEdit
{
public:
    CloseColumnsEdit(AlignmentTable &table, const char *kind, std::vector<GapRun> runs,
                     const RangeStep &step);

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    std::vector<GapRun> m_Runs;
};

// Columns vanish with what stands in them.
class RemoveColumnsEdit final : public ColumnEdit
{
public:
    RemoveColumnsEdit(AlignmentTable &table, const char *kind, AlignmentTable::Column begin,
                      AlignmentTable::Column count, const RangeStep &step = {})
        : ColumnEdit(table, kind, step), m_Begin(begin), m_Count(count)
    { }

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override { return sizeof(*this); }
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    AlignmentTable::Column m_Begin;
    AlignmentTable::Column m_Count;
};

class RestoreColumnsEdit final : public ColumnEdit
{
public:
    // Which residues a row had in the columns, where its other residues do not tell.
    struct RowResidues
    {
        std::uint32_t row = 0;
        ResidueRun run;
    };
    struct Cells
    {
        // Of each row in turn.
        BitBuffer bits;
        std::vector<RowResidues> residues;
        std::vector<RowBreaks> breaks;
        ColumnProfiles::Counts counts;
    };

    RestoreColumnsEdit(AlignmentTable &table, const char *kind, AlignmentTable::Column begin,
                       AlignmentTable::Column count, Cells cells, const RangeStep &step);

    static void storeResidues(const std::vector<RowResidues> &residues, EditWriter &out);
    [[nodiscard]] static std::vector<RowResidues> loadResidues(EditReader &in);
    [[nodiscard]] static Cells joined(std::vector<Cells> parts);

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    AlignmentTable::Column m_Begin;
    AlignmentTable::Column m_Count;
    Cells m_Cells;
};

// What is said of a stretch of columns changes. Recorded beside the edits above, which only move
// what is said of other columns; so an alignment without annotation pays nothing.
class ColumnTextEdit final : public AlignmentEdit
{
public:
    ColumnTextEdit(AlignmentTable &table, const char *kind, AlignmentTable::Column begin,
                   AlignmentTable::Column count, std::vector<std::string> texts)
        : AlignmentEdit(table, kind), m_Begin(begin), m_Count(count), m_Texts(std::move(texts))
    { }

    [[nodiscard]] static std::unique_ptr<Edit> load(AlignmentTable &table, const char *kind,
                                                    EditReader &in);

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    void storeTexts(const std::vector<std::string> &texts, EditWriter &out) const;

    AlignmentTable::Column m_Begin;
    AlignmentTable::Column m_Count;
    // One for each line of the annotation.
    std::vector<std::string> m_Texts;
};

// All that is said of the alignment and of its columns gives way to something else, with the lines
// that there are.
class AnnotationEdit final : public AlignmentEdit
{
public:
    // annotation: null for none.
    AnnotationEdit(AlignmentTable &table, const char *kind,
                   std::unique_ptr<AlignmentAnnotation> annotation)
        : AlignmentEdit(table, kind), m_Annotation(std::move(annotation))
    { }

    [[nodiscard]] static std::unique_ptr<Edit> load(AlignmentTable &table, const char *kind,
                                                    EditReader &in);

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    void storeAnnotation(const AlignmentAnnotation *annotation, EditWriter &out) const;

    std::unique_ptr<AlignmentAnnotation> m_Annotation;
};

// The residues in a stretch of columns are placed anew.
class ReplaceColumnsEdit final : public ColumnEdit
{
public:
    struct Stretch
    {
        AlignmentTable::Column begin = 0;
        AlignmentTable::Column oldCount = 0;
        AlignmentTable::Column newCount = 0;
    };

    // Breaks between chains are found new places but in the rows given, in their order.
    ReplaceColumnsEdit(AlignmentTable &table, const char *kind, const Stretch &stretch,
                       BitBuffer bits, std::vector<RowBreaks> breaks = {},
                       const RangeStep &step = {});

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    static void storeStretch(const Stretch &stretch, EditWriter &out);

    Stretch m_Stretch;
    BitBuffer m_Bits;
    std::vector<RowBreaks> m_Breaks;
};

[[nodiscard]] AlignmentTable::Column columnsIn(const std::vector<GapRun> &runs) noexcept;

// Runs ascend and are apart, each at the column where it counts once all of them are gone. Rows are
// made anew beside those that there are, so that nothing has changed as long as they are not done.
class RemoveRunsEdit final : public ColumnEdit
{
public:
    RemoveRunsEdit(AlignmentTable &table, const char *kind, std::vector<GapRun> runs,
                   const RangeStep &step = {});

    // Makes the rows, which apply() does otherwise; false when the user has given that up.
    [[nodiscard]] bool prepare(LongWork &work);

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    using Cells = RestoreColumnsEdit::Cells;

    [[nodiscard]] AlignmentTable::Column count() const noexcept { return columnsIn(m_Runs); }
    // A copy of a row; what stood in the columns is put behind what is of the rows before.
    [[nodiscard]] std::unique_ptr<AlignmentRow> rowWithout(std::size_t index, Cells &cells) const;

    std::vector<GapRun> m_Runs;
    AlignmentTable::Rows m_Rows;
    Cells m_Cells;
    bool m_IsPrepared = false;
};

class RestoreRunsEdit final : public ColumnEdit
{
public:
    // Without counts.
    using Cells = RestoreColumnsEdit::Cells;

    RestoreRunsEdit(AlignmentTable &table, const char *kind, std::vector<GapRun> runs, Cells cells,
                    const RangeStep &step);

    static void storeCells(const Cells &cells, EditWriter &out);
    [[nodiscard]] static std::unique_ptr<Edit> load(AlignmentTable &table, const char *kind,
                                                    EditReader &in);

    std::unique_ptr<Edit> apply() override;
    std::unique_ptr<Edit> copyFor(AlignmentTable &table) const override;
    std::size_t bytes() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    std::vector<GapRun> m_Runs;
    Cells m_Cells;
};

} // namespace TAMBO
