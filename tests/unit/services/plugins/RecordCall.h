// SPDX-License-Identifier: GPL-3.0-or-later
// Supplied by the test program, as the workbench supplies its own symbols to plug-ins.
#pragma once

extern "C" __attribute__((visibility("default"))) void recordCall(const char *call);
