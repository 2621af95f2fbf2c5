// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a process that has told its number is still there.
#pragma once

#include <string>

namespace TAMBO::families {

// Of this computer.
[[nodiscard]] std::string hostName();
// started: when it said that it had begun, in seconds since 1970. One of that number that began
// at another time is another one.
[[nodiscard]] bool isAlive(long process, double started);

} // namespace TAMBO::families
