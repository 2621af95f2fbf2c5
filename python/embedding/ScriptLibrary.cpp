// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptLibrary.h"

#include "EmbeddedEngine.h"
#include "Export.h"
#include "Interpreter.h"

#include <cstdlib>

namespace TAMBO::scripting {

namespace {

Result<EmbeddedEngine *> theEngine()
{
    // Never destroyed: it goes with the process.
    static EmbeddedEngine *engine = nullptr;
    if (const Result<void> started = startPython(); !started)
        return started.error();
    const pybind11::gil_scoped_acquire lock;
    try {
        if (engine == nullptr) {
            engine = new EmbeddedEngine;
            std::atexit([] { engine->end(); });
        }
        engine->start();
    } catch (pybind11::error_already_set &error) {
        return Failure(FailureKind::System, std::string("Scripts cannot be run: ") + error.what());
    } catch (const std::exception &error) {
        return Failure(FailureKind::System, std::string("Scripts cannot be run: ") + error.what());
    }
    return engine;
}

} // namespace

} // namespace TAMBO::scripting

extern "C" TAMBO_API void tamboScriptEngine(TAMBO::scripting::ScriptHost &host,
                                            TAMBO::Result<TAMBO::scripting::ScriptEngine *> &found)
{
    const auto engine = TAMBO::scripting::theEngine();
    if (!engine) {
        found = engine.error();
        return;
    }
    engine.value()->setHost(host);
    found = engine.value();
}
