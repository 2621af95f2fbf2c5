// SPDX-License-Identifier: GPL-3.0-or-later
// The compiled half of the Python package tambo.
#include "Declarations.h"
#include "ProcessModel.h"
#include "WorkbenchRun.h"

PYBIND11_MODULE(_tambo, module)
{
    using namespace TAMBO::script;
    namespace py = pybind11;
    module.attr("__version__") = TAMBO_VERSION;
    // What is public, the package says.
    module.attr("__all__") = py::list();
    // Its thread is the one that may go on.
    ProcessModel::get();
    declareExceptions(module);
    declareSteps(module);
    declareChains(module);
    declareAlignments(module);
    declareTrees(module);
    declareStructures(module);
    declareFiles(module);
    declareRealigning(module);
    declareModelling(module);
    declareShowing(module);
    // The workbench's own objects stay when Python goes.
    if (RunSteps *const steps = ProcessModel::get().workbenchRun()) {
        module.attr(kRunSteps) = py::capsule(steps, kRunSteps);
        return;
    }
    // Before the interpreter takes apart what the model's hooks call.
    py::module_::import("atexit").attr("register")(
        py::cpp_function([] { ProcessModel::get().clear(); }));
}
