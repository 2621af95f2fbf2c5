// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogFilter.h"

#include "LogModel.h"

namespace TAMBO::app {

void LogFilter::setLowestSeverity(Logger::Severity severity, bool withChecks)
{
    m_Lowest = severity;
    m_WithChecks = withChecks;
    invalidateFilter();
}

void LogFilter::setText(const QString &text)
{
    m_Text = text;
    invalidateFilter();
}

bool LogFilter::isNarrow() const
{
    return m_Lowest != Logger::Severity::Info || !m_Text.isEmpty();
}

bool LogFilter::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    const QModelIndex index = sourceModel()->index(row, 0, parent);
    const int lines = sourceModel()->rowCount(index);
    for (int line = 0; line < lines; ++line)
        if (filterAcceptsRow(line, index))
            return true;
    return lines == 0 && (m_WithChecks || !index.data(LogModel::DevelopersRole).toBool()) &&
           index.data(LogModel::SeverityRole).toInt() >= int(m_Lowest) &&
           index.data(LogModel::TextRole).toString().contains(m_Text, Qt::CaseInsensitive);
}

} // namespace TAMBO::app

#include "moc_LogFilter.cpp"
