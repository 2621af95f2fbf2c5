// SPDX-License-Identifier: GPL-3.0-or-later
// The table of docs/afternoon.md: what a user does for each step, and how many actions it takes
// here and elsewhere.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

struct CountedStep
{
    QString name;
    // One key or shortcut, click, drag, or typed text each.
    QStringList actions;
    int count = 0;
    // Of each other program; nothing where it cannot do the step.
    std::vector<std::optional<int>> elsewhere;
};

std::vector<CountedStep> countedSteps();
