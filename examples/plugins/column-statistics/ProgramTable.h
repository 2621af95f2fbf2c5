// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo column-statistics FILE`: the table as tab-separated text.
#pragma once

struct ProgramCommand;

void printTable(ProgramCommand &call);
