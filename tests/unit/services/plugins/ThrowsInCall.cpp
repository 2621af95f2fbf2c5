// SPDX-License-Identifier: GPL-3.0-or-later
#include <stdexcept>

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED void Execute0()
{
    throw std::runtime_error("no window today");
}

EXPORTED bool IsDone()
{
    throw 42;
}

EXPORTED void Cleanup() { }
