// SPDX-License-Identifier: GPL-3.0-or-later
#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED void Execute0() { }

EXPORTED bool IsDone()
{
    return false;
}

EXPORTED void Cleanup() { }
