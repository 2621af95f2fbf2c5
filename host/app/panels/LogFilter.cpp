// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogFilter.h"

#include "LogModel.h"

namespace TAMBO::app {

void LogFilter::setLowestSeverity(Logger::Severity severity)
{
    m_Lowest = severity;
    invalidateFilter();
}

void LogFilter::setText(const QString &text)
{
    m_Text = text;
    invalidateFilter();
}

bool LogFilter::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    const QModelIndex index = sourceModel()->index(row, 0, parent);
    return index.data(LogModel::SeverityRole).toInt() >= int(m_Lowest) &&
           index.data(LogModel::TextRole).toString().contains(m_Text, Qt::CaseInsensitive);
}

} // namespace TAMBO::app

#include "moc_LogFilter.cpp"
