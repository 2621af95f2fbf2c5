// SPDX-License-Identifier: GPL-3.0-or-later
// Its functions are those of C++: extern "C" was forgotten.
#define EXPORTED __attribute__((visibility("default")))

EXPORTED void Execute0();
EXPORTED bool IsDone();
EXPORTED void Cleanup();

void Execute0() { }

bool IsDone()
{
    return true;
}

void Cleanup() { }
