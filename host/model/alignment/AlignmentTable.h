// SPDX-License-Identifier: GPL-3.0-or-later
// The rows behind an Alignment: what the workbench uses of it beyond the plug-ins' interface, and
// the plain changes that its edits are made of.
#pragma once

#include "Alignment.h"
#include "AlignmentAnnotation.h"
#include "AlignmentRow.h"
#include "ColumnLetters.h"
#include "ColumnProfiles.h"
#include "CompoundState.h"
#include "LayoutLog.h"
#include "RowEnds.h"
#include "SelectedColumns.h"
#include "SplitLoop.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {

class ObjectWriter;
class StoredObject;

class AlignmentTable
{
public:
    using Column = unsigned long;
    using Range = Alignment::Range;
    using Rows = std::vector<std::unique_ptr<AlignmentRow>>;

    // No alignment becomes wider; no count of columns runs over.
    static constexpr Column kMostColumns = 100'000'000;

    // A new alignment that is in no tree yet. It is as wide as its longest row, or wider when width
    // says so.
    [[nodiscard]] static std::unique_ptr<Alignment> make(const std::string &name, Rows rows,
                                                         Column width = 0);
    // One ungapped row per peptide. Anything else among the sequences is left out, with a line in
    // the log.
    [[nodiscard]] static Rows rowsOf(const std::vector<Compound *> &sequences);

    AlignmentTable(const AlignmentTable &) = delete;
    AlignmentTable &operator=(const AlignmentTable &) = delete;

    [[nodiscard]] CompoundState &state() noexcept { return m_State; }
    [[nodiscard]] const CompoundState &state() const noexcept { return m_State; }
    [[nodiscard]] const std::string &name() const noexcept { return m_Name; }
    void setName(const std::string &name) { m_Name = name; }
    [[nodiscard]] Alignment &alignment() noexcept { return *m_Alignment; }

    // ---- Reading

    [[nodiscard]] Column width() const noexcept { return m_Alignment->m_Width; }
    // Also of an alignment that has lost its columns.
    [[nodiscard]] std::size_t rowCount() const noexcept { return m_Rows.size(); }
    [[nodiscard]] const AlignmentRow &row(std::size_t index) const noexcept
    {
        return *m_Rows[index];
    }
    [[nodiscard]] bool holds(const Peptide &sequence) const noexcept;
    [[nodiscard]] unsigned long layoutRevision() const noexcept;
    [[nodiscard]] const LayoutLog &layoutLog() const noexcept { return m_LayoutLog; }
    void readColumn(Column column, std::vector<char> &out) const;
    [[nodiscard]] AlignmentMajority majority(Column column) const;
    // Of all columns; empty when the user has given that up.
    [[nodiscard]] std::vector<AlignmentMajority> majorities() const;
    [[nodiscard]] bool isColumnSelected(Column column) const;
    // Whether the alignment may become wider by so many columns; the log says if it may not.
    [[nodiscard]] bool hasRoomFor(Column columns) const;
    // Behind which column the last residue of all rows but this one stands.
    [[nodiscard]] Column endOfOthers(std::size_t row) const
    {
        return m_RowEnds.lastOfOthers(m_Rows, m_Rows[row]->cells().end());
    }
    // Whether single rows may have so many columns more than before. Each time it is asked, that is
    // done; it is asked by changes that were made of bytes, which may be anybody's.
    [[nodiscard]] bool takesColumns(long more) const;
    // Null for an alignment without one.
    [[nodiscard]] const AlignmentAnnotation *annotation() const noexcept
    {
        return m_Annotation.get();
    }
    // As bytes: the first part is what is said of all of it, the others some rows each. The object
    // that it belongs to has number and state.
    [[nodiscard]] std::size_t partCount() const noexcept;
    void writePart(std::size_t part, const StoredObject &self, ObjectWriter &out) const;
    // All but the first part are so many rows, but for the last one, which may be less.
    [[nodiscard]] std::size_t rowsOfPart() const noexcept;
    // What such a part begins with.
    static void beginRows(const StoredObject &self, std::size_t begin, std::size_t end,
                          ObjectWriter &out);
    // No edit: for an alignment that is being made.
    void presetAnnotation(std::unique_ptr<AlignmentAnnotation> annotation) noexcept
    {
        m_Annotation = std::move(annotation);
    }
    // What it occupies with its alignment, the sequences not counted.
    [[nodiscard]] std::size_t bytes() const noexcept;

    // ---- The edits' plain changes, without recording. Indices are in bounds.

    // The gaps [from, from + count) of a row are put in at to, after the alignment has been widened
    // or before it is narrowed by growth columns at its end.
    void moveGaps(std::size_t row, Column from, Column count, Column to, long growth);
    void setBreakColumns(std::size_t row, const BreakColumns &columns)
    {
        m_Rows[row]->setBreakColumns(columns);
    }
    void openColumns(const std::vector<GapRun> &runs);
    void closeColumns(const std::vector<GapRun> &runs);
    void moveRow(std::size_t from, std::size_t to);
    // At each place comes to stand the row that was at the one said; each is said once.
    void reorderRows(std::span<const std::uint32_t> order);
    // The rows come to stand at the indices, which ascend.
    void insertRows(const std::vector<std::size_t> &indices, Rows rows, Column width);
    [[nodiscard]] Rows takeRows(const std::vector<std::size_t> &indices, Column width);
    // Some rows that stand side by side, from the first one's index on.
    using SomeRows = std::span<const std::unique_ptr<AlignmentRow>>;
    using ChangeRows = std::function<void(std::size_t part, std::size_t first, SomeRows rows)>;
    // Calls change for each part of the loop, which is one over all rows, several at the same time.
    // All cells in or behind the columns may change.
    void changeColumns(Column begin, Column oldCount, Column newCount, const SplitLoop &loop,
                       const ChangeRows &change);
    // The same of many runs of columns that go or come back, when the rows have been made anew.
    void removeRuns(const std::vector<GapRun> &runs, Rows rows);
    void restoreRuns(const std::vector<GapRun> &runs, Rows rows);
    // Counting the letters of columns that come back would take a look at every row. None are kept
    // of few rows.
    [[nodiscard]] ColumnProfiles::Counts keptCounts(Column begin, Column count) const;
    void setCounts(Column begin, const ColumnProfiles::Counts &counts)
    {
        m_Profiles.setCounts(begin, counts);
    }
    void setRange(const Range &range);
    // As far as the columns are there. Without recording, and nobody is told.
    void restoreRange(const Range &range) noexcept;
    // Of an alignment with annotation.
    void setColumnTexts(Column begin, const std::vector<std::string> &texts)
    {
        m_Annotation->setTexts(begin, texts);
    }

private:
    friend class Alignment;

    AlignmentTable(const std::string &name, Rows rows);

    // Of one that is no more being made.
    void noteRange();

    // In one part of the bytes.
    void changeRows(const SplitLoop &loop, const ChangeRows &change);
    // What is known beside the rows, when so many columns have come in them, or gone.
    void followOpened(const std::vector<GapRun> &runs, Column added);
    void followClosed(const std::vector<GapRun> &runs, Column removed);
    void setWidth(Column width) noexcept;
    // A cell or a row is not where it was.
    void noteLayout() noexcept;
    void logColumns(Column begin, Column oldCount, Column newCount);
    // The alignment gets another width at its end, where there are only gaps.
    void logWidth(Column width);

    CompoundState m_State;
    std::string m_Name;
    Alignment *m_Alignment = nullptr;
    Rows m_Rows;
    std::unique_ptr<AlignmentAnnotation> m_Annotation;
    unsigned long m_LayoutRevision = 0;
    LayoutLog m_LayoutLog;
    // What passes over many rows found; no part of the alignment's value.
    mutable ColumnLetters m_Letters;
    mutable ColumnProfiles m_Profiles;
    mutable SelectedColumns m_SelectedColumns;
    mutable RowEnds m_RowEnds;
    // By which rows have grown, one by one, by changes that were made of bytes.
    mutable std::uint64_t m_TakenColumns = 0;
};

} // namespace TAMBO
