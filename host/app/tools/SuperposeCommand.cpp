// SPDX-License-Identifier: GPL-3.0-or-later
#include "SuperposeCommand.h"

#include "Alignment.h"
#include "DataPoint.h"
#include "Logger.h"
#include "Space.h"

#include <QStringList>

#include <algorithm>

namespace TAMBO::app {

namespace {

QString angstrom(double distance)
{
    return QString::number(distance, 'f', 2);
}

// Below 100 unless it is all.
QString percentText(std::size_t part, std::size_t whole)
{
    return QString::number(100 * part / std::max<std::size_t>(1, whole));
}

// Those of an alignment that is null are not the user's choice.
bool moveAll(const std::vector<StructureMotion> &motions, Alignment *alignment,
             const FitChoice &choice)
{
    const DataPoint<Space> guard(nullptr, Space::instance());
    if (!guard.m_good || !moveStructures(motions))
        return false;
    if (alignment != nullptr)
        StructureFits::keepChoice(*alignment, choice);
    return true;
}

} // namespace

Result<SuperposePlan> SuperposeCommand::run(Alignment &alignment,
                                            const std::vector<unsigned long> &rows,
                                            const FitChoice &choice)
{
    Result<SuperposePlan> plan = planSuperposition(alignment, rows, choice);
    std::vector<StructureMotion> motions;
    if (plan) {
        for (const PlannedMove &planned : plan->moves)
            motions.push_back(planned.motion);
    }
    if (plan && !moveAll(motions, &alignment, choice))
        plan = Failure{FailureKind::Refused,
                       tr("the structures cannot be changed now.").toStdString()};
    if (!plan) {
        Logger::Write(
            tr("Nothing was superposed: %1").arg(QString::fromStdString(plan.error().message())),
            Logger::Severity::Warning);
        return plan;
    }
    for (const PlannedMove &move : plan->moves)
        Logger::Write(lineOf(plan.value(), move));
    return plan;
}

std::size_t SuperposeCommand::runEach(const std::vector<Pair> &pairs, const FitChoice &choice)
{
    std::vector<StructureMotion> motions;
    QStringList lines;
    for (const Pair &pair : pairs) {
        const Result<SuperposePlan> plan =
            planSuperposition(*pair.alignment, {pair.fixed, pair.moving}, choice);
        if (!plan) {
            Logger::Write(tr("Nothing was superposed: %1")
                              .arg(QString::fromStdString(plan.error().message())),
                          Logger::Severity::Warning);
            continue;
        }
        motions.push_back(plan.value().moves.front().motion);
        lines << lineOf(plan.value(), plan.value().moves.front());
    }
    if (motions.empty() || !moveAll(motions, nullptr, {}))
        return 0;
    for (const QString &line : lines)
        Logger::Write(line);
    return motions.size();
}

QString SuperposeCommand::shareText(const SuperposePlan &plan, const PlannedMove &move)
{
    return tr("%1 of %2 (%3 %)")
        .arg(QString::number(move.corePairs), QString::number(plan.columns),
             percentText(move.corePairs, plan.columns));
}

QString SuperposeCommand::lineOf(const SuperposePlan &plan, const PlannedMove &move)
{
    const QString what =
        tr("Superposed %1 on %2")
            .arg(QString::fromStdString(move.name), QString::fromStdString(plan.reference));
    if (move.corePairs < plan.columns)
        return tr("%1: core RMSD %2 Å over %3 pairs of CA atoms, RMSD of all %4 Å, %5 Å before")
            .arg(what, angstrom(move.rmsdCore), shareText(plan, move), angstrom(move.rmsdAfter),
                 angstrom(move.rmsdBefore));
    const QString line = tr("%1: RMSD %2 Å over %3 pairs of CA atoms, %4 Å before")
                             .arg(what, angstrom(move.rmsdAfter), QString::number(plan.columns),
                                  angstrom(move.rmsdBefore));
    return move.lacksCore ? tr("%1; no three of them fit, so none was left out").arg(line) : line;
}

QString SuperposeCommand::summary(const SuperposePlan &plan)
{
    if (plan.moves.size() == 1)
        return lineOf(plan, plan.moves.front());
    const auto [least, most] = std::ranges::minmax(plan.moves, {}, &PlannedMove::rmsdAfter);
    const QString what =
        tr("Superposed %1 structures on %2")
            .arg(QString::number(plan.moves.size()), QString::fromStdString(plan.reference));
    const auto [fewest, all] = std::ranges::minmax(plan.moves, {}, &PlannedMove::corePairs);
    if (fewest.corePairs == plan.columns)
        return tr("%1: RMSD %2 to %3 Å over %4 pairs of CA atoms each")
            .arg(what, angstrom(least.rmsdAfter), angstrom(most.rmsdAfter),
                 QString::number(plan.columns));
    const auto [leastCore, mostCore] = std::ranges::minmax(plan.moves, {}, &PlannedMove::rmsdCore);
    return tr("%1: core RMSD %2 to %3 Å over %4 to %5 of %6 pairs of CA atoms, RMSD of all %7 to "
              "%8 Å")
        .arg(what, angstrom(leastCore.rmsdCore), angstrom(mostCore.rmsdCore),
             QString::number(fewest.corePairs), QString::number(all.corePairs),
             QString::number(plan.columns), angstrom(least.rmsdAfter), angstrom(most.rmsdAfter));
}

} // namespace TAMBO::app
