// SPDX-License-Identifier: GPL-3.0-or-later
#include "EmbeddedEngine.h"

#include "ChangeScope.h"
#include "Publisher.h"
#include "Surroundings.h"

#include <pybind11/stl.h>

#include <exception>
#include <unistd.h>

namespace TAMBO::scripting {

namespace py = pybind11;

namespace {

ScriptOutcome refused(const std::string &why)
{
    ScriptOutcome outcome;
    outcome.end = ScriptOutcome::End::Failed;
    outcome.message = why;
    outcome.exitStatus = 1;
    return outcome;
}

// What was raised is taken; none when nothing was.
py::object takeError()
{
    PyObject *type = nullptr;
    PyObject *value = nullptr;
    PyObject *trace = nullptr;
    PyErr_Fetch(&type, &value, &trace);
    if (type == nullptr)
        return py::none();
    PyErr_NormalizeException(&type, &value, &trace);
    if (trace != nullptr)
        PyException_SetTraceback(value, trace);
    Py_XDECREF(type);
    Py_XDECREF(trace);
    return py::reinterpret_steal<py::object>(value);
}

// A name of a file need not be UTF-8.
py::str pathText(const std::filesystem::path &file)
{
    return py::reinterpret_steal<py::str>(PyUnicode_DecodeFSDefault(file.c_str()));
}

// True as long as it lives.
class Mark
{
public:
    explicit Mark(bool &mark) noexcept : m_Mark(mark) { m_Mark = true; }
    ~Mark() { m_Mark = false; }
    Mark(const Mark &) = delete;
    Mark &operator=(const Mark &) = delete;

private:
    bool &m_Mark;
};

class Breaths
{
public:
    Breaths(Breathing &breathing, ScriptHost &host) : m_Breathing(breathing)
    {
        m_Breathing.begin(host);
    }
    ~Breaths() { m_Breathing.end(); }
    Breaths(const Breaths &) = delete;
    Breaths &operator=(const Breaths &) = delete;

private:
    Breathing &m_Breathing;
};

} // namespace

EmbeddedEngine::EmbeddedEngine() : m_Breathing([this] { flush(); }) { }

void EmbeddedEngine::start()
{
    if (m_Steps != nullptr)
        return;
    const py::capsule embedding(static_cast<script::Embedding *>(this), script::kEmbedding);
    PySys_SetObject(script::kEmbedding, embedding.ptr());
    m_Workbench = py::module_::import("tambo._workbench");
    const py::module_ bindings = py::module_::import("tambo._tambo");
    if (!py::hasattr(bindings, script::kRunSteps))
        throw py::import_error("the package " +
                               py::str(bindings.attr("__file__")).cast<std::string>() +
                               " is of another version");
    m_Console = m_Workbench.attr("Console")();
    m_Steps = py::capsule(bindings.attr(script::kRunSteps)).get_pointer<script::RunSteps>();
}

void EmbeddedEngine::setHost(ScriptHost &host)
{
    m_Host = &host;
    m_Output.setHost(&host);
}

std::string EmbeddedEngine::hindrance() const
{
    if (m_IsRunning)
        return "Another script is running.";
    if (isChanging() || Publisher::isPublishing())
        return "Scripts wait until the change under way has ended.";
    return {};
}

void EmbeddedEngine::connectOutput()
{
    const auto writer = [this](OutputKind kind) {
        return py::cpp_function(
            [this, kind](const py::bytes &text) { m_Output.write(std::string_view(text), kind); });
    };
    m_FlushText =
        m_Workbench.attr("connect")(writer(OutputKind::Output), writer(OutputKind::Error));
}

void EmbeddedEngine::flush()
{
    try {
        if (m_FlushText)
            m_FlushText();
    } catch (py::error_already_set &error) {
        error.discard_as_unraisable("the output of a script");
    }
    try {
        m_Output.flush();
    } catch (const std::exception &) {
        // What cannot be shown is lost; the run comes to its end all the same.
    }
}

template <typename Work>
ScriptOutcome EmbeddedEngine::outcomeOfWork(const py::object &runner, const Work &work)
{
    try {
        return work();
    } catch (py::error_already_set &error) {
        return outcomeOf(error, runner);
    } catch (const std::exception &error) {
        return refused(error.what());
    }
}

ScriptOutcome EmbeddedEngine::run(const std::filesystem::path &file,
                                  const std::vector<std::string> &arguments)
{
    if (const std::string why = hindrance(); !why.empty())
        return refused(why);
    const py::gil_scoped_acquire lock;
    const Surroundings kept;
    py::object script = py::none();
    ScriptOutcome outcome = outcomeOfWork(script, [&] {
        connectOutput();
        script = m_Workbench.attr("Script")(pathText(file));
        const py::object code = script.attr("begin")(arguments);
        return runCodes("script " + file.filename().string(), script, {code});
    });
    try {
        if (!script.is_none())
            script.attr("close")();
    } catch (py::error_already_set &error) {
        error.discard_as_unraisable("the end of a script");
    }
    flush();
    return outcome;
}

ScriptOutcome EmbeddedEngine::execute(const std::string &source)
{
    if (const std::string why = hindrance(); !why.empty())
        return refused(why);
    const py::gil_scoped_acquire lock;
    const Surroundings kept;
    return outcomeOfWork(m_Console, [&] {
        connectOutput();
        const auto codes =
            m_Console.attr("compiled")(py::str(source)).cast<std::vector<py::object>>();
        m_Console.attr("enter_folder")();
        const ScriptOutcome outcome = runCodes("console", m_Console, codes);
        m_Console.attr("keep_folder")();
        return outcome;
    });
}

ScriptOutcome EmbeddedEngine::runCodes(const std::string &name, const py::object &runner,
                                       const std::vector<py::object> &codes)
{
    const Mark running(m_IsRunning);
    m_Steps->begin(name);
    ScriptOutcome outcome = outcomeOfWork(runner, [&] {
        const py::object error = evaluate(runner, codes);
        return outcomeOf(error, runner, m_Breathing.isStopAsked());
    });
    flush();
    const auto [steps, hasTakenBack] = m_Steps->end(outcome.end != ScriptOutcome::End::Done);
    outcome.steps = steps;
    outcome.hasTakenBack = hasTakenBack;
    return outcome;
}

py::object EmbeddedEngine::evaluate(const py::object &runner, const std::vector<py::object> &codes)
{
    const py::object names = runner.attr("names");
    const pid_t process = ::getpid();
    const Breaths breaths(m_Breathing, *m_Host);
    py::object error = py::none();
    for (const py::object &code : codes) {
        if (code.is_none() || !error.is_none())
            continue;
        const auto value = py::reinterpret_steal<py::object>(
            PyEval_EvalCode(code.ptr(), names.ptr(), names.ptr()));
        error = takeError();
    }
    // A child that the script has forked, and that has not ended itself, must not go on as a second
    // workbench.
    if (::getpid() != process)
        ::_exit(outcomeOf(error, runner, false).exitStatus);
    return error;
}

ScriptOutcome EmbeddedEngine::outcomeOf(py::error_already_set &error, const py::object &runner)
{
    error.restore();
    return outcomeOf(takeError(), runner, false);
}

ScriptOutcome EmbeddedEngine::outcomeOf(const py::object &error, const py::object &runner,
                                        bool isStopped)
{
    ScriptOutcome outcome;
    try {
        const py::tuple told = m_Workbench.attr("outcome")(error, runner, isStopped);
        outcome.end = ScriptOutcome::End(told[0].cast<int>());
        outcome.message = told[1].cast<std::string>();
        outcome.file = told[2].cast<std::string>();
        outcome.line = told[3].cast<int>();
        outcome.text = told[4].cast<std::string>();
        outcome.trace = told[5].cast<std::string>();
        outcome.exitStatus = told[6].cast<int>();
    } catch (const std::exception &untold) {
        outcome = refused(untold.what());
    }
    return outcome;
}

bool EmbeddedEngine::isComplete(const std::string &source)
{
    const py::gil_scoped_acquire lock;
    try {
        return m_Console.attr("is_complete")(py::str(source)).cast<bool>();
    } catch (const std::exception &) {
        return true;
    }
}

ScriptEngine::Completion EmbeddedEngine::complete(const std::string &source, std::size_t cursor)
{
    Completion completion{cursor, {}};
    if (m_IsRunning)
        return completion;
    const py::gil_scoped_acquire lock;
    try {
        const std::string text = source.substr(0, cursor);
        const py::tuple found = m_Console.attr("complete")(py::str(text));
        const py::object before = py::str(text)[py::slice(0, found[0].cast<py::ssize_t>(), 1)];
        completion.start = before.cast<std::string>().size();
        completion.words = found[1].cast<std::vector<std::string>>();
    } catch (const std::exception &) {
        return {cursor, {}};
    }
    return completion;
}

void EmbeddedEngine::forget()
{
    if (m_IsRunning)
        return;
    const py::gil_scoped_acquire lock;
    try {
        m_Console.attr("forget")();
    } catch (py::error_already_set &error) {
        error.discard_as_unraisable("the console's names");
    }
}

void EmbeddedEngine::end()
{
    const py::gil_scoped_acquire lock;
    m_Output.setHost(nullptr);
    if (m_Steps != nullptr)
        forget();
    try {
        py::module_::import("atexit").attr("_run_exitfuncs")();
    } catch (py::error_already_set &error) {
        error.discard_as_unraisable("the end of Python");
    }
}

} // namespace TAMBO::scripting
