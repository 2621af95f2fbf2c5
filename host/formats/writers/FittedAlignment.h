// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment as a format can hold it: what its writer puts down, and what reading the file gives.
#pragma once

#include "AlignmentSource.h"
#include "FittedNames.h"
#include "InsertionColumns.h"
#include "Result.h"
#include "WriteOptions.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TAMBO::formats {

class FittedAlignment
{
public:
    // The alignment, which outlives this, has a row and a column, and is aligned if the format
    // needs it to be.
    FittedAlignment(const AlignmentSource &alignment, const WriteOptions &options);
    FittedAlignment(const AlignmentRecord &alignment, const WriteOptions &options);
    FittedAlignment(const FittedAlignment &) = delete;
    FittedAlignment &operator=(const FittedAlignment &) = delete;

    [[nodiscard]] const AlignmentRecord &whole() const { return m_Source.whole(); }
    [[nodiscard]] const WriteOptions &options() const noexcept { return m_Options; }
    [[nodiscard]] std::size_t rowCount() const { return m_Source.rowCount(); }
    [[nodiscard]] std::uint64_t width() const { return m_Source.cells(0).width; }
    // Besides name and cells.
    [[nodiscard]] const RowRecord &row(std::size_t index) const { return m_Source.row(index); }
    [[nodiscard]] std::string_view name(std::size_t row) const { return m_Names[row]; }
    // Letters only.
    [[nodiscard]] GappedView cells(std::size_t row) const;
    // A2M and A3M: whether a row's text in the file is another than that of its cells.
    [[nodiscard]] bool hasInsertions() const noexcept
    {
        return m_Insertions && !m_Insertions->areNone();
    }
    // A2M and A3M: the row's text in the file.
    [[nodiscard]] std::string insertionText(std::size_t row) const;
    // In the file, if the format has any.
    [[nodiscard]] std::string description(std::size_t row) const;
    // What is said of all of it, with the number of the rows brought up to date: some may have come
    // or gone since the file was read.
    [[nodiscard]] std::vector<Annotation> remarks() const;
    // Whether anything may be said of the row.
    [[nodiscard]] bool hasRemarks(std::size_t row) const;
    // What else is said of the row, if the format holds that.
    [[nodiscard]] std::vector<Annotation> remarksOn(std::size_t row) const;

    // Whether a record read from the file is the same; the failure says where it differs. step is
    // called for every row, and false from it is a failure of its own kind.
    using Step = std::function<bool(std::size_t row)>;
    [[nodiscard]] Result<void> checkSame(const AlignmentRecord &readBack,
                                         const Step &step = {}) const;
    // Changes of names and letters, one sentence each.
    [[nodiscard]] std::vector<std::string> changes() const;

private:
    void fit();
    void fitLetters();
    void fitInsertions();
    [[nodiscard]] Result<void> checkRow(std::size_t row, const RowRecord &readBack) const;
    [[nodiscard]] bool hasCells(std::size_t row, const GappedSequence &readBack) const;
    [[nodiscard]] Result<void> checkAnnotation(const AlignmentRecord &readBack) const;

    // Of one that was given as a record.
    std::optional<RecordSource> m_Record;
    const AlignmentSource &m_Source;
    WriteOptions m_Options;
    FittedNames m_Names;
    // The rows of which letters had to be changed.
    std::map<std::size_t, GappedSequence> m_Changed;
    // A2M and A3M.
    std::optional<InsertionColumns> m_Insertions;
    // A3M: gaps in insertions are left out.
    bool m_IsPacked = false;
    // Which moves letters of insertions to the left.
    bool m_MovesInsertions = false;
    // Characters that are no letters, and one of them.
    std::uint64_t m_Foreign = 0;
    char m_FirstForeign = '\0';
    std::uint64_t m_Capitalised = 0;
};

} // namespace TAMBO::formats
