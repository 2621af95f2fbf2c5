// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measures.h"

#include "Alignment.h"
#include "ColumnScores.h"

#include <utility>

namespace companion {

Measure::Measure(const TAMBO::Alignment &alignment, bool isOfRows, unsigned long parts)
    : m_Alignment(alignment), m_IsOfRows(isOfRows), m_Parts(parts)
{ }

Measure::~Measure() = default;

bool Measure::goOn(std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    while (!isDone()) {
        lookAt(m_Done++);
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return !isDone();
}

RowIdentities::RowIdentities(const TAMBO::Alignment &alignment, unsigned long row,
                             IdentityOf compared)
    : Measure(alignment, true, alignment.height()),
      m_Identity(alignment.GetSequence(row, false), alignment.width(), compared)
{ }

void RowIdentities::lookAt(unsigned long part)
{
    add(m_Identity.of(alignment().GetSequence(part, false)));
}

NameMatches::NameMatches(const TAMBO::Alignment &alignment, NamePattern pattern)
    : Measure(alignment, true, alignment.height()), m_Pattern(std::move(pattern))
{ }

void NameMatches::lookAt(unsigned long part)
{
    add(m_Pattern.isIn(QString::fromStdString(alignment().GetSeqName(part))) ? 1 : 0);
}

ColumnValues::ColumnValues(const TAMBO::Alignment &alignment, ColumnValue value)
    : Measure(alignment, false, alignment.height() + alignment.width()),
      m_Value(value),
      m_Rows(alignment.height()),
      m_Counts(alignment.width())
{ }

void ColumnValues::lookAt(unsigned long part)
{
    if (part < m_Rows) {
        addRow(m_Counts, alignment().GetSequence(part, false));
        return;
    }
    const ColumnCounts &counts = m_Counts[part - m_Rows];
    add(m_Value == ColumnValue::Conservation ? conservation(counts)
                                             : double(counts.gaps()) / double(m_Rows));
}

} // namespace companion
