// SPDX-License-Identifier: GPL-3.0-or-later
// The library with the engine in it, and its one function.
#pragma once

#include "Result.h"

namespace TAMBO::scripting {

class ScriptEngine;
class ScriptHost;

// Beside the folder of plug-ins, where the program looks for its libraries.
constexpr const char *kScriptLibrary = "libtambo-scripting.so";
constexpr const char *kGetScriptEngine = "tamboScriptEngine";

using GetScriptEngine = void (*)(ScriptHost &host, Result<ScriptEngine *> &engine);

} // namespace TAMBO::scripting
