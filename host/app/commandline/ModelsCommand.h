// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo models`: models of a whole family in a folder, by Snakemake or by processes of its own.
#pragma once

#include "FamilyOrder.h"

#include <functional>
#include <iosfwd>

namespace TAMBO::app {

// Calls a function while there is an application object, and gives what that gives.
using WithApplication = std::function<int(const std::function<int()> &)>;

// A line to out for each target that has ended, and one at the end; what the user should know to
// err. The exit status: 0 when all models asked for are there; 1 when not; 2 when the call is
// wrong; 128 + the signal when one has ended it.
[[nodiscard]] int runModels(const FamilyOrder &order, const WithApplication &withApplication,
                            std::ostream &out, std::ostream &err);

} // namespace TAMBO::app
