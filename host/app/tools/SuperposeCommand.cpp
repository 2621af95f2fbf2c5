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

bool moveAll(const std::vector<StructureMotion> &motions)
{
    const DataPoint<Space> guard(nullptr, Space::instance());
    return guard.m_good && moveStructures(motions);
}

} // namespace

Result<SuperposePlan> SuperposeCommand::run(Alignment &alignment,
                                            const std::vector<unsigned long> &rows)
{
    Result<SuperposePlan> plan = planSuperposition(alignment, rows);
    std::vector<StructureMotion> motions;
    if (plan) {
        for (const PlannedMove &planned : plan->moves)
            motions.push_back(planned.motion);
    }
    if (plan && !moveAll(motions))
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

std::size_t SuperposeCommand::runEach(const std::vector<Pair> &pairs)
{
    std::vector<StructureMotion> motions;
    QStringList lines;
    for (const Pair &pair : pairs) {
        const Result<SuperposePlan> plan =
            planSuperposition(*pair.alignment, {pair.fixed, pair.moving});
        if (!plan) {
            Logger::Write(tr("Nothing was superposed: %1")
                              .arg(QString::fromStdString(plan.error().message())),
                          Logger::Severity::Warning);
            continue;
        }
        motions.push_back(plan.value().moves.front().motion);
        lines << lineOf(plan.value(), plan.value().moves.front());
    }
    if (motions.empty() || !moveAll(motions))
        return 0;
    for (const QString &line : lines)
        Logger::Write(line);
    return motions.size();
}

QString SuperposeCommand::lineOf(const SuperposePlan &plan, const PlannedMove &move)
{
    return tr("Superposed %1 on %2: RMSD %3 Å over %4 pairs of CA atoms, %5 Å before")
        .arg(QString::fromStdString(move.name), QString::fromStdString(plan.reference),
             angstrom(move.rmsdAfter), QString::number(plan.columns), angstrom(move.rmsdBefore));
}

QString SuperposeCommand::summary(const SuperposePlan &plan)
{
    if (plan.moves.size() == 1)
        return lineOf(plan, plan.moves.front());
    const auto [least, most] =
        std::ranges::minmax(plan.moves, {}, [](const PlannedMove &move) { return move.rmsdAfter; });
    return tr("Superposed %1 structures on %2: RMSD %3 to %4 Å over %5 pairs of CA atoms each")
        .arg(QString::number(plan.moves.size()), QString::fromStdString(plan.reference),
             angstrom(least.rmsdAfter), angstrom(most.rmsdAfter), QString::number(plan.columns));
}

} // namespace TAMBO::app
