// SPDX-License-Identifier: GPL-3.0-or-later
#include "FitsText.h"

#include "Texts.h"

#include <QStringList>

#include <algorithm>
#include <functional>
#include <vector>

namespace companion {

using TAMBO::StructureFit;

namespace {

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

std::size_t corePercent(const StructureFit &fit)
{
    return 100 * fit.corePairs / std::max<std::size_t>(1, fit.pairs);
}

// "0.80", or "0.80 to 1.14".
template <typename Value> QString fitRange(Value least, Value most)
{
    return fitNumber(least) == fitNumber(most)
               ? fitNumber(least)
               : tr("%1 to %2").arg(fitNumber(least), fitNumber(most));
}

template <typename Number> QString rangeOver(const std::vector<StructureFit> &fits, Number number)
{
    const auto [least, most] = std::ranges::minmax_element(fits, {}, number);
    return fitRange(std::invoke(number, *least), std::invoke(number, *most));
}

// "RMSD 0.80 to 1.14 Å over 169 to 180 pairs of CA atoms".
QString distancesText(const std::vector<StructureFit> &fits, const TAMBO::FitChoice &choice)
{
    const QString pairs =
        choice.isOfAll() ? tr("%1 pairs of CA atoms") : tr("%1 pairs of CA atoms in the range");
    const QString counted = pairs.arg(rangeOver(fits, &StructureFit::pairs));
    if (choice.cutoff > 0)
        return tr("core %1 Å of %2 % of %3")
            .arg(rangeOver(fits, &StructureFit::coreRmsdNow), rangeOver(fits, &corePercent),
                 counted);
    return tr("RMSD %1 Å over %2").arg(rangeOver(fits, &StructureFit::rmsd), counted);
}

} // namespace

QString fitsText(const TAMBO::Alignment &alignment, const FitsFound &found,
                 const Disputes &disputes)
{
    if (found.rows().size() < 2)
        return tr("Nothing to superpose: the rows have fewer than two structures");
    std::vector<StructureFit> good;
    std::vector<StructureFit> bad;
    std::vector<StructureFit> taken;
    for (const StructureFit &fit : found.fits()) {
        if (!fit.problem.empty())
            bad.push_back(fit);
        else if (disputes.isDisputed(fit))
            taken.push_back(fit);
        else
            good.push_back(fit);
    }
    const QString onto = rowNameOf(alignment, found.rows().front().row);
    QStringList parts;
    if (!good.empty()) {
        const QString what = good.size() == 1
                                 ? tr("%1 lies on %2").arg(rowNameOf(alignment, good[0].row), onto)
                                 : tr("%1 structures lie on %2").arg(good.size()).arg(onto);
        parts << tr("%1: %2").arg(what, distancesText(good, found.choice()));
    }
    if (!taken.empty())
        parts << disputes.text(taken);
    if (!bad.empty()) {
        const QString name = rowNameOf(alignment, bad.front().row);
        const QString reason = QString::fromStdString(bad.front().problem);
        parts << (bad.size() == 1 ? tr("%1 stays where it is: %2").arg(name, reason)
                                  : tr("%1 and %2 more stay where they are: %3")
                                        .arg(name, fitNumber(bad.size() - 1), reason));
    }
    return parts.join(QStringLiteral("; "));
}

QString fitLines(const TAMBO::Alignment &alignment, const FitsFound &found,
                 const Disputes &disputes)
{
    QStringList lines;
    for (const StructureFit &fit : found.fits()) {
        if (lines.size() == kMostFitLines) {
            lines << tr("and %1 more").arg(found.fits().size() - kMostFitLines);
            break;
        }
        const QString name = rowNameOf(alignment, fit.row);
        if (!fit.problem.empty())
            lines << tr("%1: %2").arg(name, QString::fromStdString(fit.problem));
        else if (disputes.isDisputed(fit))
            lines << disputes.text({fit});
        else if (found.choice().cutoff > 0)
            lines << tr("%1: core %2 Å over %3 of %4 pairs, RMSD of all %5 Å")
                         .arg(name, fitNumber(fit.coreRmsdNow), fitNumber(fit.corePairs),
                              fitNumber(fit.pairs), fitNumber(fit.rmsd));
        else
            lines << tr("%1: %2 Å over %3 pairs")
                         .arg(name, fitNumber(fit.rmsd), fitNumber(fit.pairs));
    }
    return lines.join(u'\n');
}

} // namespace companion
