// SPDX-License-Identifier: GPL-3.0-or-later
// A plug-in whose code runs as soon as it is opened.
#include "RecordCall.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

struct Trace
{
    Trace() { recordCall("opened"); }
};

const Trace s_Trace;

} // namespace

EXPORTED void Execute0() { }

EXPORTED bool IsDone()
{
    return true;
}

EXPORTED void Cleanup() { }
