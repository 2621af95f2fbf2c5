// SPDX-License-Identifier: GPL-3.0-or-later
// Column Statistics: how many rows of an alignment have a residue in each column, and how much
// these agree. The workbench's way in: the three functions, and the commands that are answered.
#include "ColumnStatistics.h"
#include "ProgramTable.h"
#include "StatisticsWindow.h"

#include <Export.h>
#include <PluginAnswer.h>
#include <ProgramCommand.h>

namespace {

bool answerRequest(const PluginCall &call)
{
    auto *request = static_cast<ColumnStatisticsRequest *>(call.data);
    if (!request || !request->alignment)
        return false;
    request->columns = statisticsOf(*request->alignment);
    return true;
}

bool answerProgram(const PluginCall &call)
{
    printTable(*static_cast<ProgramCommand *>(call.data));
    return true;
}

const PluginAnswer s_Request("Calculate", "Alignment", "ColumnStatistics", answerRequest);
const PluginAnswer s_Program(ProgramCommand::kGroup, ProgramCommand::kService, "column-statistics",
                             answerProgram);

} // namespace

extern "C" {

TAMBO_API void Execute0()
{
    StatisticsWindow::open();
}

TAMBO_API bool IsDone()
{
    return StatisticsWindow::opened() == nullptr;
}

TAMBO_API void Cleanup()
{
    if (StatisticsWindow::opened())
        StatisticsWindow::opened()->close(false);
}

} // extern "C"
