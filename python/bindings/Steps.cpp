// SPDX-License-Identifier: GPL-3.0-or-later
#include "Declarations.h"
#include "ObjectSpace.h"
#include "ProcessModel.h"
#include "WorkbenchRun.h"

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <filesystem>
#include <string>
#include <utility>

namespace TAMBO::script {

namespace {

// What "with" holds: one step of undo.
class Step
{
public:
    explicit Step(std::string name) : m_Name(std::move(name)) { }

    void enter()
    {
        if (m_Depth != 0)
            throw StepError("the step is open already");
        m_Depth = ProcessModel::get().openStep(m_Name);
    }
    void exit(const py::object &type, const py::object &, const py::object &)
    {
        ProcessModel::get().closeStep(std::exchange(m_Depth, 0), !type.is_none());
    }

private:
    std::string m_Name;
    std::size_t m_Depth = 0;
};

ProcessModel &outsideOfSteps(const char *what)
{
    ProcessModel &model = ProcessModel::get();
    if (model.isInStep())
        throw StepError(std::string(what) + " is not possible inside of a step");
    return model;
}

// What would take away the ground from a run in the workbench.
ProcessModel &outsideOfRuns(const char *what)
{
    ProcessModel &model = outsideOfSteps(what);
    if (model.workbenchRun() != nullptr)
        throw StepError(std::string(what) + " is not possible for a script in the workbench");
    return model;
}

bool undo()
{
    ProcessModel &model = outsideOfRuns("undo");
    const bool isDone = model.history().undo();
    model.settle();
    return isDone;
}

bool redo()
{
    ProcessModel &model = outsideOfRuns("redo");
    const bool isDone = model.history().redo();
    model.settle();
    return isDone;
}

void openSession(const std::filesystem::path &file)
{
    ProcessModel &model = outsideOfRuns("opening a session");
    if (ObjectSpace::get().objectCount() > 0 || model.history().size() > 0)
        throw RefusedError("a session is opened when nothing is loaded: clear() forgets what is");
    if (std::error_code error; !std::filesystem::exists(file, error))
        throw FileError{{FailureKind::NotFound, "No such file or directory", {file.string()}}};
    if (const Result<void> read = model.readSession(file); !read)
        throw FileError{read.error()};
    model.settle();
}

// The run's own step is ended meanwhile.
class BetweenSteps
{
public:
    explicit BetweenSteps(WorkbenchRun *run) : m_Run(run)
    {
        if (m_Run != nullptr)
            m_Run->leave();
    }
    ~BetweenSteps()
    {
        if (m_Run != nullptr)
            m_Run->enter();
    }
    BetweenSteps(const BetweenSteps &) = delete;
    BetweenSteps &operator=(const BetweenSteps &) = delete;

private:
    WorkbenchRun *m_Run;
};

void saveSession(const std::filesystem::path &file)
{
    ProcessModel &model = outsideOfSteps("saving a session");
    const Result<void> written = [&] {
        // The file holds steps that have ended.
        const BetweenSteps ended(model.workbenchRun());
        return model.writeSession(file);
    }();
    if (!written)
        throw FileError{written.error()};
    model.settle();
}

std::vector<std::string> history()
{
    const History &steps = ProcessModel::get().history();
    std::vector<std::string> labels;
    for (std::size_t i = 0; i < steps.position(); ++i)
        labels.push_back(steps.label(i));
    return labels;
}

} // namespace

void declareSteps(py::module_ &module)
{
    py::class_<Step>(module, "Step", "One step of undo, made by step().")
        .def("__enter__", &Step::enter, "Opens it.")
        .def("__exit__", &Step::exit, "Ends it; with an exception all changes are taken back.");
    module.def(
        "step", [](std::string name) { return Step(std::move(name)); }, py::arg("name"),
        "All changes of a with-block as one step of undo. An exception that leaves the outermost "
        "block "
        "takes all of them back.");
    module.def("undo", &undo,
               "Takes the last step back. False when there is none. A StepError inside of a step.");
    module.def("redo", &redo,
               "Does the step that was taken back last again. False when there is none. A "
               "StepError inside "
               "of a step.");
    module.def("history", &history, "What the steps that can be undone did, the oldest first.");
    module.def(
        "open_session", &openSession, py::arg("path"),
        "All objects and steps of a session's file. Raises RefusedError when something is loaded, "
        "FileNotFoundError, and FormatError when it is no session; nothing has changed then.");
    module.def(
        "save_session", &saveSession, py::arg("path"),
        "Writes all objects, with the steps of undo, into one file, which the workbench "
        "opens, too; nothing is unsaved then. Raises OSError when it cannot be written; what "
        "was there stays then.");
    module.def(
        "clear", [] { outsideOfRuns("clearing").clear(); },
        "Forgets all objects and all steps, saved or not. A StepError inside of a step.");
}

} // namespace TAMBO::script
