// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment as plain values, row by row, for whoever writes it. How the rows are kept is the
// affair of those below.
#pragma once

#include "GappedView.h"
#include "Records.h"

#include <cstddef>
#include <string_view>

namespace TAMBO {

class AlignmentSource
{
public:
    AlignmentSource() = default;
    virtual ~AlignmentSource() = default;
    AlignmentSource(const AlignmentSource &) = default;
    AlignmentSource(AlignmentSource &&) = default;
    AlignmentSource &operator=(const AlignmentSource &) = default;
    AlignmentSource &operator=(AlignmentSource &&) = default;

    // What is known of the alignment as a whole; its rows are to be asked for below.
    [[nodiscard]] virtual const AlignmentRecord &whole() const = 0;
    [[nodiscard]] virtual std::size_t rowCount() const = 0;
    [[nodiscard]] virtual std::string_view name(std::size_t row) const = 0;
    [[nodiscard]] virtual GappedView cells(std::size_t row) const = 0;
    // What is known of the row besides name and cells, which it need not have.
    [[nodiscard]] virtual const RowRecord &row(std::size_t row) const = 0;
};

// The rows of a record.
class RecordSource final : public AlignmentSource
{
public:
    // The record outlives this.
    explicit RecordSource(const AlignmentRecord &record) noexcept : m_Record(&record) { }

    [[nodiscard]] const AlignmentRecord &whole() const override { return *m_Record; }
    [[nodiscard]] std::size_t rowCount() const override { return m_Record->rows.size(); }
    [[nodiscard]] std::string_view name(std::size_t row) const override
    {
        return m_Record->rows[row].name;
    }
    [[nodiscard]] GappedView cells(std::size_t row) const override
    {
        return m_Record->rows[row].sequence;
    }
    [[nodiscard]] const RowRecord &row(std::size_t row) const override
    {
        return m_Record->rows[row];
    }

private:
    const AlignmentRecord *m_Record;
};

} // namespace TAMBO
