// SPDX-License-Identifier: GPL-3.0-or-later
#define EXPORTED extern "C" __attribute__((visibility("default")))

extern "C" void nobodyHasThisFunction();

EXPORTED void Execute0()
{
    nobodyHasThisFunction();
}

EXPORTED bool IsDone()
{
    return true;
}

EXPORTED void Cleanup() { }
