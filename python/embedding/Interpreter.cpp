// SPDX-License-Identifier: GPL-3.0-or-later
#include "Interpreter.h"

#include <pybind11/pybind11.h>

#include <dlfcn.h>
#include <filesystem>
#include <string>

namespace TAMBO::scripting {

namespace py = pybind11;
namespace fs = std::filesystem;

namespace {

Failure notStarted(const PyStatus &status)
{
    const std::string cause = status.err_msg != nullptr ? status.err_msg : "unknown error";
    return {FailureKind::System, "Scripts cannot be run: Python does not start: " + cause};
}

// As text that is to be read and written in scripts, whatever the system's language, which is the
// workbench's affair.
PyStatus prepare()
{
    PyPreConfig config;
    PyPreConfig_InitPythonConfig(&config);
    config.parse_argv = 0;
    config.configure_locale = 0;
    config.coerce_c_locale = 0;
    config.coerce_c_locale_warn = 0;
    config.utf8_mode = 1;
    return Py_PreInitialize(&config);
}

PyStatus start(PyConfig &config)
{
    PyConfig_InitPythonConfig(&config);
    config.parse_argv = 0;
    // The program has handlers of its own.
    config.install_signal_handlers = 0;
    // What stands beside a user's script is the user's, and is read anew each time.
    config.write_bytecode = 0;
    if (const PyStatus status = PyConfig_SetString(&config, &config.program_name, TAMBO_PYTHON);
        PyStatus_Exception(status) != 0)
        return status;
    return Py_InitializeFromConfig(&config);
}

// The package of the same build, beside this library.
fs::path packageFolder()
{
    Dl_info library{};
    if (::dladdr(reinterpret_cast<const void *>(&startPython), &library) == 0)
        return {};
    std::error_code error;
    const fs::path parts = fs::canonical(library.dli_fname, error).parent_path();
    return parts.parent_path().parent_path() / "python3" / "dist-packages";
}

void addPackage()
{
    py::list places = py::module_::import("sys").attr("path");
    const py::str folder(packageFolder().string());
    if (!places.contains(folder))
        places.insert(0, folder);
}

} // namespace

Result<void> startPython()
{
    if (Py_IsInitialized() != 0)
        return {};
    PyConfig config;
    PyStatus status = prepare();
    if (PyStatus_Exception(status) == 0) {
        status = start(config);
        PyConfig_Clear(&config);
    }
    if (PyStatus_Exception(status) != 0)
        return notStarted(status);
    addPackage();
    // Threads of scripts go on while no script runs.
    PyEval_SaveThread();
    return {};
}

} // namespace TAMBO::scripting
