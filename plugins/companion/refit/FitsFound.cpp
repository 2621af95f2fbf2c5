// SPDX-License-Identifier: GPL-3.0-or-later
#include "FitsFound.h"

#include "Texts.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace companion {

using TAMBO::StructureFit;
using TAMBO::StructureFits;
using TAMBO::StructureRow;

namespace {

constexpr unsigned long kRowsBetweenLooks = 4096;
constexpr qsizetype kMostFitLines = 40;

QString rowNameOf(const TAMBO::Alignment &alignment, unsigned long row)
{
    return QString::fromStdString(alignment.GetSeqName(row));
}

QString fitNumber(double value)
{
    return QString::number(value, 'f', 2);
}

QString fitNumber(std::size_t value)
{
    return QString::number(value);
}

// "0.80", or "0.80 to 1.14".
template <typename Value> QString fitRange(Value least, Value most)
{
    return fitNumber(least) == fitNumber(most)
               ? fitNumber(least)
               : tr("%1 to %2").arg(fitNumber(least), fitNumber(most));
}

} // namespace

void FitsFound::begin()
{
    *this = FitsFound();
}

bool FitsFound::goOn(const TAMBO::Alignment &alignment, std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    const unsigned long height = alignment.height();
    const auto isDone = [&] { return m_NextRow >= height && m_Fits.size() + 1 >= m_Rows.size(); };
    while (!isDone()) {
        look(alignment);
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return !isDone();
}

void FitsFound::look(const TAMBO::Alignment &alignment)
{
    const unsigned long height = alignment.height();
    if (m_NextRow >= height) {
        m_Fits.push_back(
            StructureFits::measure(alignment, m_Rows.front().row, m_Rows[m_Fits.size() + 1].row));
        return;
    }
    const unsigned long last = std::min(height, m_NextRow + kRowsBetweenLooks);
    while (m_NextRow < last) {
        const unsigned long row = m_NextRow++;
        if (!alignment.hasPositions(row))
            continue;
        TAMBO::Compound *const structure = StructureFits::structureOf(alignment, row);
        if (structure != nullptr &&
            std::ranges::find(m_Rows, structure, &StructureRow::structure) == m_Rows.end())
            m_Rows.push_back({row, structure});
        return;
    }
}

QString fitsText(const TAMBO::Alignment &alignment, const FitsFound &found)
{
    if (found.rows().size() < 2)
        return tr("Nothing to superpose: the rows have fewer than two structures");
    std::vector<StructureFit> good;
    const StructureFit *bad = nullptr;
    for (const StructureFit &fit : found.fits()) {
        if (fit.problem.empty())
            good.push_back(fit);
        else if (bad == nullptr)
            bad = &fit;
    }
    const std::size_t badOnes = found.fits().size() - good.size();
    QStringList parts;
    if (!good.empty()) {
        const auto [least, most] = std::ranges::minmax(good, {}, &StructureFit::rmsd);
        const auto [fewest, all] = std::ranges::minmax(good, {}, &StructureFit::pairs);
        const QString onto = rowNameOf(alignment, found.rows().front().row);
        const QString what = good.size() == 1
                                 ? tr("%1 lies on %2").arg(rowNameOf(alignment, good[0].row), onto)
                                 : tr("%1 structures lie on %2").arg(good.size()).arg(onto);
        parts << tr("%1: RMSD %2 Å over %3 pairs of CA atoms")
                     .arg(what, fitRange(least.rmsd, most.rmsd), fitRange(fewest.pairs, all.pairs));
    }
    if (bad != nullptr) {
        const QString name = rowNameOf(alignment, bad->row);
        const QString reason = QString::fromStdString(bad->problem);
        parts << (badOnes == 1 ? tr("%1 stays where it is: %2").arg(name, reason)
                               : tr("%1 and %2 more stay where they are: %3")
                                     .arg(name, fitNumber(badOnes - 1), reason));
    }
    return parts.join(QStringLiteral("; "));
}

QString fitLines(const TAMBO::Alignment &alignment, const FitsFound &found)
{
    QStringList lines;
    for (const StructureFit &fit : found.fits()) {
        if (lines.size() == kMostFitLines) {
            lines << tr("and %1 more").arg(found.fits().size() - kMostFitLines);
            break;
        }
        const QString name = rowNameOf(alignment, fit.row);
        lines << (fit.problem.empty()
                      ? tr("%1: %2 Å over %3 pairs")
                            .arg(name, fitNumber(fit.rmsd), fitNumber(fit.pairs))
                      : tr("%1: %2").arg(name, QString::fromStdString(fit.problem)));
    }
    return lines.join(u'\n');
}

} // namespace companion
