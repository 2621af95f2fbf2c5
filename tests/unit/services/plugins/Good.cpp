// SPDX-License-Identifier: GPL-3.0-or-later
// A well-behaved plug-in; built several times under different names.
#include "RecordCall.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {
int s_OpenWindows = 0;
}

EXPORTED void Execute0()
{
    ++s_OpenWindows;
    recordCall(PLUGIN_NAME " Execute0");
}

EXPORTED bool IsDone()
{
    recordCall(PLUGIN_NAME " IsDone");
    return s_OpenWindows == 0;
}

EXPORTED void Cleanup()
{
    s_OpenWindows = 0;
    recordCall(PLUGIN_NAME " Cleanup");
}
