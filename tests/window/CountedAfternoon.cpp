// SPDX-License-Identifier: GPL-3.0-or-later
#include "CountedAfternoon.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

QString afternoonPage()
{
    QFile file(SOURCE_DIR "/docs/afternoon.md");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

std::optional<int> countIn(const QString &cell)
{
    bool isNumber = false;
    const int count = cell.toInt(&isNumber);
    EXPECT_TRUE(isNumber || cell == "no") << cell.toStdString();
    return isNumber ? std::optional(count) : std::nullopt;
}

} // namespace

std::vector<CountedStep> countedSteps()
{
    enum Cell { Name = 1, Actions, Here, Elsewhere };
    constexpr qsizetype kCells = 8;
    std::vector<CountedStep> steps;
    for (const QString &line : afternoonPage().split('\n')) {
        QStringList cells = line.split('|');
        for (QString &cell : cells)
            cell = cell.trimmed();
        if (cells.size() != kCells || cells[Name] == "step" || cells[Name].startsWith("---"))
            continue;
        CountedStep step{cells[Name], cells[Actions].split(" · "), cells[Here].toInt(), {}};
        for (qsizetype cell = Elsewhere; cell + 1 < kCells; ++cell)
            step.elsewhere.push_back(countIn(cells[cell]));
        steps.push_back(std::move(step));
    }
    return steps;
}
