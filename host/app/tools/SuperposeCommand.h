// SPDX-License-Identifier: GPL-3.0-or-later
// Superposes structures along an alignment, and says what came of it.
#pragma once

#include "SuperposePlan.h"

#include <QCoreApplication>
#include <QString>

#include <cstddef>
#include <vector>

namespace TAMBO::app {

class SuperposeCommand
{
    Q_DECLARE_TR_FUNCTIONS(SuperposeCommand)

public:
    // The structures of the rows onto that of the first one, as one step of undo, with a line in
    // the log for each. The alignment keeps the choice, for whoever superposes along it next. The
    // failure has changed nothing and stands in the log, too.
    static Result<SuperposePlan> run(Alignment &alignment, const std::vector<unsigned long> &rows,
                                     const FitChoice &choice = {});

    // One structure of an alignment onto another.
    struct Pair
    {
        Alignment *alignment = nullptr;
        unsigned long fixed = 0;
        unsigned long moving = 0;
    };
    // Each onto its own, all as one step of undo. Those that cannot be are left out,
    // with a line in the log. How many have been.
    static std::size_t runEach(const std::vector<Pair> &pairs, const FitChoice &choice = {});

    // In one line: "Superposed 2 structures on 1abc_A: RMSD 0.81 to 1.20 Å over 169 pairs …".
    static QString summary(const SuperposePlan &plan);
    // "98 of 146 (67 %)"; what a move is made by.
    static QString shareText(const SuperposePlan &plan, const PlannedMove &move);

private:
    static QString lineOf(const SuperposePlan &plan, const PlannedMove &move);
};

} // namespace TAMBO::app
