// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowMatcher.h"

namespace TAMBO::services {

namespace {

void append(RowSearch::Row &row, unsigned long begin, unsigned long end)
{
    ++row.count;
    if (!row.columns.empty() && row.columns.back().end == begin)
        row.columns.back().end = std::uint32_t(end);
    else
        row.columns.push_back({std::uint32_t(begin), std::uint32_t(end)});
}

} // namespace

RowMatcher::RowMatcher(const QString &pattern, RowSearch::Language language)
{
    if (language == RowSearch::Language::Cells)
        m_Cells = std::make_unique<CellPattern>(pattern);
    else
        m_Expression = std::make_unique<TextPattern>(pattern);
}

Result<void> RowMatcher::validity() const
{
    return m_Expression ? m_Expression->validity() : Result<void>();
}

RowSearch::Row RowMatcher::find(const std::string &row, const std::atomic<bool> &isCancelled)
{
    RowSearch::Row found;
    if (m_Cells) {
        m_Cells->forEachMatch(
            row, [&found](unsigned long begin, unsigned long end) { append(found, begin, end); });
        return found;
    }
    const TextPattern::Outcome outcome = m_Expression->forEachMatch(
        row,
        [&found](unsigned long begin, unsigned long length) {
            append(found, begin, begin + length);
        },
        isCancelled);
    found.hasEmptyMatch = outcome.end == TextPattern::End::EmptyMatch;
    if (outcome.end == TextPattern::End::GaveUp) {
        found.problem = outcome.reason;
        found.problemColumn = outcome.place;
    }
    return found;
}

} // namespace TAMBO::services
