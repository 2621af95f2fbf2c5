// SPDX-License-Identifier: GPL-3.0-or-later
// Marks what the workbench exports to plug-ins; everything else of it stays hidden.
#pragma once

#define TAMBO_API __attribute__((visibility("default")))
