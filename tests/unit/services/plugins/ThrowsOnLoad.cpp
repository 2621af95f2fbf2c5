// SPDX-License-Identifier: GPL-3.0-or-later
#include <stdexcept>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

struct Thrower
{
    Thrower() { throw std::runtime_error("no licence file"); }
};

const Thrower s_Thrower;

} // namespace

EXPORTED void Execute0() { }

EXPORTED bool IsDone()
{
    return true;
}

EXPORTED void Cleanup() { }
