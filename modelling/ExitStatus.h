// SPDX-License-Identifier: GPL-3.0-or-later
// What kestram ends with, beside EXIT_SUCCESS.
#pragma once

namespace kestram {

constexpr int kBadInput = 1;
constexpr int kWrongCall = 2;
constexpr int kNoEngine = 3;
constexpr int kEngineFailed = 4;

} // namespace kestram
