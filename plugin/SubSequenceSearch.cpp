// SPDX-License-Identifier: GPL-3.0-or-later
#include "SubSequenceSearch.h"

#include "CellPattern.h"
#include "Check.h"
#include "Logger.h"
#include "TextPattern.h"

#include <QString>

namespace ZEP {

void selectCells(TAMBO::Alignment &alignment, const QString &pattern)
{
    const CellPattern cells(pattern);
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        cells.forEachMatch(alignment.GetSequence(row, false),
                           [&](unsigned long begin, unsigned long end) {
                               alignment.selectInRow(row, {begin, end});
                           });
    }
}

void selectMatches(TAMBO::Alignment &alignment, const QString &pattern)
{
    const TextPattern expression(pattern);
    if (const QString error = expression.error(); !error.isEmpty())
        Logger::Write(
            QStringLiteral("Pattern '%1' is no regular expression: %2").arg(pattern, error),
            Logger::Severity::Warning);
    bool canBeEmpty = false;
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        int count = 0;
        const bool isWhole = expression.forEachMatch(
            alignment.GetSequence(row, false), [&](unsigned long begin, unsigned long length) {
                ++count;
                selectMatch(alignment, row, begin, length);
            });
        canBeEmpty = canBeEmpty || !isWhole;
        // All at once, since pattern and name may hold what looks like a place marker.
        Logger::Write(QStringLiteral("Pattern '%1' found %2 time(s) from %3")
                          .arg(pattern, QStringLiteral("%1").arg(count, 2),
                               QString::fromStdString(alignment.GetSeqName(row))));
    }
    if (canBeEmpty)
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
