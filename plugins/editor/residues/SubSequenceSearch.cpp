// SPDX-License-Identifier: GPL-3.0-or-later
#include "SubSequenceSearch.h"

#include "Check.h"
#include "Logger.h"

#include <QString>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ZEP {

namespace {

// All at once, since pattern and name may hold what looks like a place marker.
Logger::Line countLine(const QString &pattern, const QString &name, const RowSearch::Row &row)
{
    return {QStringLiteral("Pattern '%1' found %2 time(s) from %3")
                .arg(pattern, QStringLiteral("%1").arg(row.count, 2), name)};
}

Logger::Line problemLine(const QString &pattern, const QString &name, const RowSearch::Row &row)
{
    return {QStringLiteral("Pattern '%1': the search of %2 was given up in column %3: %4")
                .arg(pattern, name, QString::number(row.problemColumn + 1), row.problem),
            Logger::Severity::Warning};
}

// A line for each row, and a second one for those that were given up.
void logRows(const TAMBO::Alignment &alignment, const QString &pattern,
             const std::vector<RowSearch::Row> &rows)
{
    std::vector<std::size_t> rowOf;
    rowOf.reserve(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row)
        rowOf.insert(rowOf.end(), rows[row].problem.isEmpty() ? 1 : 2, row);
    Logger::WriteLines(rowOf.size(), [&](std::size_t line) {
        const std::size_t row = rowOf[line];
        const QString name = QString::fromStdString(alignment.GetSeqName(row));
        const bool isSecond = line > 0 && rowOf[line - 1] == row;
        return isSecond ? problemLine(pattern, name, rows[row])
                        : countLine(pattern, name, rows[row]);
    });
}

} // namespace

void selectCells(TAMBO::Alignment &alignment, const RowSearch::Found &found)
{
    for (unsigned long row = 0; row < found.rows.size(); ++row)
        for (const RowSearch::Columns &columns : found.rows[row].columns)
            alignment.selectInRow(row, {columns.begin, columns.end});
}

void selectMatches(TAMBO::Alignment &alignment, const QString &pattern,
                   const RowSearch::Found &found)
{
    if (!found.mistake.isEmpty())
        Logger::Write(
            QStringLiteral("Pattern '%1' is no regular expression: %2").arg(pattern, found.mistake),
            Logger::Severity::Warning);
    for (unsigned long row = 0; row < found.rows.size(); ++row) {
        for (const RowSearch::Columns &columns : found.rows[row].columns)
            selectMatch(alignment, row, columns.begin, columns.end - columns.begin);
    }
    logRows(alignment, pattern, found.rows);
    if (std::ranges::any_of(found.rows, &RowSearch::Row::hasEmptyMatch))
        Logger::Write(QStringLiteral("Pattern '%1' can match an empty text").arg(pattern));
}

void selectMatch(TAMBO::Alignment &alignment, unsigned long row, unsigned long begin,
                 unsigned long length)
{
    const unsigned long end = begin + length;
    TAMBO::checkCondition(end <= alignment.width(),
                          "static_cast<unsigned long>( end ) <= m_Data->width()", "KALMO2", 742);
    alignment.selectInRow(row, {begin, end});
}

} // namespace ZEP
