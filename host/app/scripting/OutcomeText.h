// SPDX-License-Identifier: GPL-3.0-or-later
// What is said of a run that has ended.
#pragma once

#include "ScriptEngine.h"

#include <QString>

namespace TAMBO::app {

// "sites.py, line 12: ValueError: …". name: of the script; empty in the console.
[[nodiscard]] QString failureText(const scripting::ScriptOutcome &outcome, const QString &name);
// What the run has left behind, as a sentence; empty when nothing is to be said.
[[nodiscard]] QString consequenceText(const scripting::ScriptOutcome &outcome, const QString &name);

} // namespace TAMBO::app
