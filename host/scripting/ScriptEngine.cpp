// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptEngine.h"

#include "ScriptLibrary.h"

#include <dlfcn.h>

namespace TAMBO::scripting {

namespace {

std::string lastLinkError()
{
    const char *const text = ::dlerror();
    return text != nullptr ? text : "unknown error";
}

Failure missingLibrary(const std::string &error)
{
    // The loader begins with what it could not find, which may be a library that ours needs.
    if (error.starts_with(std::string(kScriptLibrary) +
                          ": cannot open shared object file: No such"))
        return {FailureKind::NotFound, "Scripts need the package python3-tambo."};
    return {FailureKind::System, "Scripts cannot be run: " + error};
}

Result<GetScriptEngine> openLibrary()
{
    // Modules that scripts import, such as numpy, take the symbols of Python from the process.
    void *const library = ::dlopen(kScriptLibrary, RTLD_NOW | RTLD_GLOBAL);
    if (library == nullptr)
        return missingLibrary(lastLinkError());
    void *const function = ::dlsym(library, kGetScriptEngine);
    if (function == nullptr)
        return missingLibrary(lastLinkError());
    return reinterpret_cast<GetScriptEngine>(function);
}

} // namespace

Result<ScriptEngine *> scriptEngine(ScriptHost &host)
{
    // Never closed: Python cannot be started twice in a process. What failed is tried again, since
    // the package may have been installed meanwhile.
    static GetScriptEngine getEngine = nullptr;
    if (getEngine == nullptr) {
        const Result<GetScriptEngine> opened = openLibrary();
        if (!opened)
            return opened.error();
        getEngine = opened.value();
    }
    Result<ScriptEngine *> engine = nullptr;
    getEngine(host, engine);
    return engine;
}

} // namespace TAMBO::scripting
