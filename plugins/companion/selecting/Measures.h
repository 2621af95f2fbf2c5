// SPDX-License-Identifier: GPL-3.0-or-later
// A number for each row or column of an alignment, found in small parts, so that the window stays
// quick at any size.
#pragma once

#include "ColumnCounts.h"
#include "IdentityDistances.h"
#include "NamePattern.h"

#include <chrono>
#include <string>
#include <vector>

namespace TAMBO {
class Alignment;
}

namespace companion {

class Measure
{
public:
    virtual ~Measure();
    Measure(const Measure &) = delete;
    Measure &operator=(const Measure &) = delete;

    // Goes on for about that time, by one part at least; false when nothing is left.
    bool goOn(std::chrono::microseconds most);
    [[nodiscard]] bool isDone() const noexcept { return m_Done == m_Parts; }
    // From 0 to 100.
    [[nodiscard]] int percent() const noexcept
    {
        return m_Parts == 0 ? 100 : static_cast<int>(m_Done * 100 / m_Parts);
    }
    // Of rows, otherwise of columns.
    [[nodiscard]] bool isOfRows() const noexcept { return m_IsOfRows; }
    // Of the first rows or columns, as far as they are known.
    [[nodiscard]] const std::vector<double> &values() const noexcept { return m_Values; }

protected:
    // The alignment stays as it is until all is done or given up.
    Measure(const TAMBO::Alignment &alignment, bool isOfRows, unsigned long parts);

    virtual void lookAt(unsigned long part) = 0;
    void add(double value) { m_Values.push_back(value); }
    [[nodiscard]] const TAMBO::Alignment &alignment() const noexcept { return m_Alignment; }

private:
    const TAMBO::Alignment &m_Alignment;
    bool m_IsOfRows;
    unsigned long m_Parts;
    unsigned long m_Done = 0;
    std::vector<double> m_Values;
};

// How much of a row is identical with one of them, from 0 to 1.
class RowIdentities : public Measure
{
public:
    RowIdentities(const TAMBO::Alignment &alignment, unsigned long row, IdentityOf compared);

private:
    void lookAt(unsigned long part) override;

    IdentityTo m_Identity;
};

// 1 where the name has the pattern.
class NameMatches : public Measure
{
public:
    NameMatches(const TAMBO::Alignment &alignment, NamePattern pattern);

private:
    void lookAt(unsigned long part) override;

    NamePattern m_Pattern;
};

enum class ColumnValue {
    // See conservation() of ColumnScores.h.
    Conservation,
    // The share of rows that have a gap.
    Gaps
};

class ColumnValues : public Measure
{
public:
    ColumnValues(const TAMBO::Alignment &alignment, ColumnValue value);

private:
    // First all rows are counted, then each column gets its value.
    void lookAt(unsigned long part) override;

    ColumnValue m_Value;
    unsigned long m_Rows;
    std::vector<ColumnCounts> m_Counts;
};

} // namespace companion
