// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProcessModel.h"

#include "Alignment.h"
#include "ChangeSession.h"
#include "Edit.h"
#include "Embedding.h"
#include "FileWriter.h"
#include "Hooks.h"
#include "ObjectOperations.h"
#include "ObjectSpace.h"
#include "OpenStep.h"
#include "Peptide.h"
#include "SessionFile.h"
#include "SessionReading.h"
#include "Space.h"
#include "StoreReader.h"
#include "StoredObject.h"
#include "Structure.h"
#include "WorkbenchRun.h"

#include <pybind11/pybind11.h>

#include <utility>

namespace TAMBO::script {

namespace py = pybind11;

namespace {

const char *levelOf(LogSeverity severity) noexcept
{
    switch (severity) {
    case LogSeverity::Info:
        return "info";
    case LogSeverity::Warning:
        return "warning";
    case LogSeverity::Error:
        break;
    }
    return "error";
}

// To whoever has set up Python's logging.
void logToPython(const std::string &message, LogSeverity severity)
{
    const py::gil_scoped_acquire lock;
    const py::error_scope kept;
    try {
        py::module_::import("logging").attr("getLogger")("tambo").attr(levelOf(severity))("%s",
                                                                                          message);
    } catch (py::error_already_set &error) {
        error.discard_as_unraisable("tambo's log");
    }
}

Embedding *givenEmbedding()
{
    PyObject *const capsule = PySys_GetObject(kEmbedding);
    return capsule != nullptr ? static_cast<Embedding *>(PyCapsule_GetPointer(capsule, kEmbedding))
                              : nullptr;
}

// False when the user has pressed Ctrl+C or Stop; the exception waits for the end of the operation.
bool mayGoOn()
{
    const py::gil_scoped_acquire lock;
    return PyErr_Occurred() == nullptr && PyErr_CheckSignals() == 0;
}

} // namespace

ProcessModel &ProcessModel::get()
{
    // Never destroyed: the interpreter ends in an order of its own.
    static ProcessModel &model = *new ProcessModel;
    if (std::this_thread::get_id() != model.m_Owner)
        throw ThreadError("tambo may be used by the thread that has imported it alone");
    return model;
}

ProcessModel::ProcessModel() : m_Embedding(givenEmbedding())
{
    if (m_Embedding != nullptr) {
        m_Run = std::make_unique<WorkbenchRun>(
            *m_Embedding, WorkbenchRun::Actions{[this](ModelHooks &hooks) { hear(hooks); },
                                                [this] { leaveSteps(); },
                                                [this](bool hasFailed) { endStep(hasFailed); }});
        return;
    }
    setEditRecorder(&m_History);
    modelHooks().log = logToPython;
    hear(modelHooks());
}

ProcessModel::~ProcessModel() = default;

History &ProcessModel::history() noexcept
{
    return m_Embedding != nullptr ? m_Embedding->history() : m_History;
}

void ProcessModel::hear(ModelHooks &hooks)
{
    // Of a run before.
    m_Refusal.clear();
    hooks.refused = [this](const Compound &locked) { m_Refusal = locked.Name() + " is locked"; };
    hooks.denied = [this](const std::string &reason, const Compound *) { m_Refusal = reason; };
    hooks.working = [](const char *, double, bool) { return mayGoOn(); };
}

ObjectNumber ProcessModel::number(Compound &object)
{
    StoredObject *const stored = StoredObject::from(&object);
    m_Index.add(*stored);
    const auto [given, isNew] =
        m_Given.try_emplace(stored->identity(), Given{&object, m_Generation});
    if (!isNew && given->second.object != &object)
        given->second = {&object, ++m_Generation};
    return {stored->identity(), given->second.generation};
}

Compound *ProcessModel::find(const ObjectNumber &number) const
{
    const auto given = m_Given.find(number.identity);
    if (given == m_Given.end() || given->second.generation != number.generation)
        return nullptr;
    Compound *const object = m_Index.find(number.identity);
    return object != nullptr && isInTree(*object) ? object : nullptr;
}

std::size_t ProcessModel::openStep(const std::string &name)
{
    if (m_Run != nullptr && m_Steps.empty())
        m_Run->leave();
    m_Steps.push_back(std::make_unique<OpenStep>(name));
    return m_Steps.size();
}

void ProcessModel::closeStep(std::size_t depth, bool hasFailed)
{
    if (depth != m_Steps.size())
        throw StepError("steps end in the order in which they were begun, the last one first");
    if (hasFailed && depth == 1) {
        // It is not given up on the way.
        const auto working = std::exchange(modelHooks().working, nullptr);
        if (m_Run != nullptr)
            m_Run->noteTakenBack();
        ChangeSession::get().takeBackChanges();
        modelHooks().working = working;
    }
    m_Steps.pop_back();
    if (m_Steps.empty()) {
        endStep(hasFailed);
        if (m_Run != nullptr)
            m_Run->enter();
    }
    settle();
}

void ProcessModel::settle()
{
    if (PyErr_Occurred() != nullptr)
        throw py::error_already_set();
    if (!m_Refusal.empty())
        throw RefusedError(std::exchange(m_Refusal, {}));
}

void ProcessModel::clearRefusal() noexcept
{
    static_cast<void>(ChangeSession::get().takeRefusal());
    m_Refusal.clear();
    m_SavedInStep.clear();
}

void ProcessModel::hearPart() noexcept
{
    std::string refused = ChangeSession::get().takeRefusal();
    if (m_Refusal.empty())
        m_Refusal = std::move(refused);
}

void ProcessModel::leaveSteps()
{
    while (!m_Steps.empty())
        m_Steps.pop_back();
}

void ProcessModel::markSaved(const Compound &object, bool isComplete)
{
    m_SavedInStep.emplace_back(number(const_cast<Compound &>(object)), isComplete);
    if (!ChangeSession::get().isOpen())
        endStep(false);
}

void ProcessModel::noteFile(const Compound &object, const std::filesystem::path &file)
{
    if (m_Embedding != nullptr)
        m_Embedding->opened(object, std::filesystem::absolute(file));
}

void ProcessModel::endStep(bool hasFailed)
{
    for (const auto &[saved, isComplete] : std::exchange(m_SavedInStep, {})) {
        const Compound *const object = hasFailed ? nullptr : find(saved);
        if (object != nullptr && isComplete)
            history().markSaved(*object);
        else if (object != nullptr)
            history().markWritten(*object);
    }
}

void ProcessModel::clear()
{
    leaveSteps();
    m_History.clear();
    ObjectSpace::get().reset();
    m_Index.clear();
    m_Given.clear();
    ++m_Generation;
    m_Values.clear();
    m_SessionState.reset();
    clearRefusal();
}

Result<void> ProcessModel::readSession(const std::filesystem::path &file)
{
    auto reader = sessions::openSession(file);
    if (!reader)
        return reader.error();
    m_Index.clear();
    m_Given.clear();
    ++m_Generation;
    if (const Result<void> read =
            sessions::readSession(*reader.value(), ObjectSpace::get(), m_History, m_Index);
        !read)
        return read;
    m_SessionState = m_History.state();
    m_Values.clear();
    return reader.value()->forEachValue([&](std::string_view name, std::string_view content) {
        if (name != sessions::kMadeBy && name != sessions::kMadeAt)
            m_Values.push_back({std::string(name), std::string(content)});
        return Result<void>();
    });
}

namespace {

Result<void> write(Result<sessions::SessionContent> content, const std::filesystem::path &file)
{
    if (!content)
        return content.error();
    // These are bytes that share nothing with the objects.
    const py::gil_scoped_release others;
    WriteAids aids;
    aids.step = [](WriteStage, double) { return mayGoOn(); };
    return sessions::writeSession(std::move(content).value(), file, aids);
}

} // namespace

Result<void> ProcessModel::writeSession(const std::filesystem::path &file)
{
    const std::uint64_t state = history().state();
    std::vector<sessions::NamedValue> values = m_Values;
    if (m_Embedding != nullptr) {
        for (auto &[name, content] : m_Embedding->sessionValues())
            values.push_back({std::move(name), std::move(content)});
        // It may have been given up.
        settle();
    }
    const Result<void> written =
        write(sessions::takeSession(ObjectSpace::get(), history(), std::move(values),
                                    sessions::SessionOrigin::now(TAMBO_VERSION)),
              file);
    if (!written)
        return written;
    m_SessionState = state;
    if (m_Embedding != nullptr)
        m_Embedding->sessionSaved(std::filesystem::absolute(file));
    return written;
}

Result<void> ProcessModel::writeObjects(const std::filesystem::path &file)
{
    return write(sessions::takeSession(ObjectSpace::get(), History(), {},
                                       sessions::SessionOrigin::now(TAMBO_VERSION)),
                 file);
}

std::vector<Compound *> ProcessModel::unsavedObjects()
{
    std::vector<const Compound *> modified;
    for (const UnsavedObject &unsaved : history().unsavedObjects())
        modified.push_back(unsaved.object);
    std::vector<bool> isSaved(modified.size(), false);
    if (m_SessionState)
        isSaved = history().areAsInState(modified, *m_SessionState);
    std::vector<Compound *> unsaved;
    for (std::size_t i = 0; i < modified.size(); ++i) {
        if (!isSaved[i])
            unsaved.push_back(const_cast<Compound *>(modified[i]));
    }
    return unsaved;
}

bool ProcessModel::isUnsaved(const Compound &object)
{
    const Compound *top = &object;
    while (top->Parent() != nullptr && top->Parent() != Space::instance())
        top = top->Parent();
    return history().isModified(*top) &&
           !(m_SessionState && history().areAsInState({top}, *m_SessionState).front());
}

template <typename T>
Reference<T>::Reference(T &object) : m_Number(ProcessModel::get().number(object))
{ }

namespace {

const char *kindOf(const Alignment *)
{
    return "the alignment";
}

const char *kindOf(const Structure *)
{
    return "the structure";
}

const char *kindOf(const Peptide *)
{
    return "the chain";
}

template <typename T> T *cast(Compound *object)
{
    // The number was given to an object of the kind; another one that gets it has another
    // generation.
    return static_cast<T *>(object);
}

template <> Peptide *cast<Peptide>(Compound *object)
{
    return Peptide::from(object);
}

} // namespace

template <typename T> T &Reference<T>::operator*() const
{
    T *const object = cast<T>(ProcessModel::get().find(m_Number));
    if (object == nullptr)
        throw GoneError(std::string(kindOf(object)) + " is gone");
    return *object;
}

template <typename T> bool Reference<T>::isThere() const
{
    return ProcessModel::get().find(m_Number) != nullptr;
}

template class Reference<Alignment>;
template class Reference<Structure>;
template class Reference<Peptide>;

} // namespace TAMBO::script
