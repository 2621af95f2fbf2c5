// SPDX-License-Identifier: GPL-3.0-or-later
// What the program tells the shell that called it; 0 is success.
#pragma once

namespace TAMBO::app {

constexpr int kBadInput = 1;
constexpr int kWrongCall = 2;

} // namespace TAMBO::app
