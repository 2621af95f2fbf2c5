// SPDX-License-Identifier: GPL-3.0-or-later
// What the program tells the shell that called it; 0 is success.
#pragma once

#include "Failure.h"

#include <ostream>

namespace TAMBO::app {

constexpr int kBadInput = 1;
constexpr int kWrongCall = 2;

// One line to err. The exit status is the one given.
[[nodiscard]] inline int complain(std::ostream &err, const Failure &failure, int status)
{
    err << "tambo: " << failure.message() << '\n';
    return status;
}

// Results that cannot be written, to a full disk or to a reader that has gone.
[[nodiscard]] inline Failure unwrittenOutput()
{
    return {FailureKind::System, "cannot write to the standard output"};
}

} // namespace TAMBO::app
