// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment as a format can hold it: what its writer puts down, and what reading the file gives.
#pragma once

#include "FittedNames.h"
#include "InsertionColumns.h"
#include "Records.h"
#include "Result.h"
#include "WriteOptions.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO::formats {

class FittedAlignment
{
public:
    // The alignment, which outlives this, has a row and a column, and is aligned if the format
    // needs it to be.
    FittedAlignment(const AlignmentRecord &alignment, const WriteOptions &options);

    [[nodiscard]] const AlignmentRecord &record() const noexcept { return m_Record; }
    [[nodiscard]] const WriteOptions &options() const noexcept { return m_Options; }
    [[nodiscard]] std::size_t rowCount() const noexcept { return m_Record.rows.size(); }
    [[nodiscard]] std::uint64_t width() const noexcept
    {
        return m_Record.rows.front().sequence.width;
    }
    [[nodiscard]] const RowRecord &row(std::size_t index) const { return m_Record.rows[index]; }
    [[nodiscard]] const std::string &name(std::size_t row) const { return m_Names[row]; }
    // Letters only.
    [[nodiscard]] const GappedSequence &cells(std::size_t row) const;
    // A2M and A3M: the row's text in the file.
    [[nodiscard]] std::string insertionText(std::size_t row) const;
    // In the file, if the format has any.
    [[nodiscard]] std::string description(std::size_t row) const;
    // What else is said of the row, if the format holds that.
    [[nodiscard]] std::vector<Annotation> remarksOn(std::size_t row) const;

    // Whether a record read from the file is the same; the failure says where it differs.
    [[nodiscard]] Result<void> checkSame(const AlignmentRecord &readBack) const;
    // Changes of names and letters, one sentence each.
    [[nodiscard]] std::vector<std::string> changes() const;

private:
    void fitLetters();
    void fitInsertions();
    [[nodiscard]] bool hasCells(std::size_t row, const GappedSequence &readBack) const;
    [[nodiscard]] Result<void> checkAnnotation(const AlignmentRecord &readBack) const;

    const AlignmentRecord &m_Record;
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
