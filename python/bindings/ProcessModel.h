// SPDX-License-Identifier: GPL-3.0-or-later
// The objects and the history of this process, as Python gets at them: from one thread alone, and
// by numbers, so that an object that is gone is told and not touched.
#pragma once

#include "History.h"
#include "Hooks.h"
#include "ObjectIndex.h"
#include "Result.h"
#include "StoreRecord.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace TAMBO {
class Alignment;
class Compound;
class Peptide;
class Structure;
} // namespace TAMBO

namespace TAMBO::script {

// The Python exceptions that Exceptions.cpp makes of these.
struct GoneError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};
struct RefusedError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};
struct StepError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};
struct ThreadError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};
// What readers and writers say.
struct FileError
{
    Failure failure;
};

class Embedding;
class OpenStep;
class WorkbenchRun;

struct ObjectNumber
{
    std::uint32_t identity = 0;
    // Which of those that had it: a session may bring numbers that others had before.
    std::uint32_t generation = 0;

    friend bool operator==(const ObjectNumber &, const ObjectNumber &) = default;
};

class ProcessModel
{
public:
    // Refused to other threads than the one that has imported the module.
    static ProcessModel &get();

    // The workbench's inside of it.
    [[nodiscard]] History &history() noexcept;
    // Null outside of the workbench.
    [[nodiscard]] WorkbenchRun *workbenchRun() noexcept { return m_Run.get(); }

    // The number of an object, by which it is found from now on.
    [[nodiscard]] ObjectNumber number(Compound &object);
    // Null when it is gone, or stands in no tree.
    [[nodiscard]] Compound *find(const ObjectNumber &number) const;

    // ---- Steps that with-blocks hold open

    // Returns how many there are then.
    std::size_t openStep(const std::string &name);
    // Ends the one that was opened as the depth-th; of the outermost one takes the changes back if
    // it has failed.
    void closeStep(std::size_t depth, bool hasFailed);
    [[nodiscard]] bool isInStep() const noexcept { return !m_Steps.empty(); }
    // Ends all of them.
    void leaveSteps();
    // The outermost one has ended.
    void endStep(bool hasFailed);

    // The object is as its file. Inside of a step that holds from its end on, unless more is
    // changed in it; isComplete: the file lacks nothing.
    void markSaved(const Compound &object, bool isComplete);
    // Tells the workbench.
    void noteFile(const Compound &object, const std::filesystem::path &file);
    // Keeps what has been saved so, since what is changed next is something new.
    [[nodiscard]] auto savedInStep() const { return m_SavedInStep; }
    void keepSavedInStep(std::vector<std::pair<ObjectNumber, bool>> saved)
    {
        m_SavedInStep = std::move(saved);
    }

    // After each operation: what the model has refused meanwhile, and Ctrl+C, are thrown.
    void settle();
    // Before an operation that takes no guard.
    void clearRefusal() noexcept;
    // What the model has refused inside of the change that was granted.
    void hearPart() noexcept;
    // What the model asks on the way goes to Python.
    void hear(ModelHooks &hooks);

    // Forgets all objects and steps; those that Python still knows are gone.
    void clear();
    // Into an empty model: all of a session, or nothing.
    [[nodiscard]] Result<void> readSession(const std::filesystem::path &file);
    [[nodiscard]] Result<void> writeSession(const std::filesystem::path &file);
    // All objects without the steps, for a program that only looks at them.
    [[nodiscard]] Result<void> writeObjects(const std::filesystem::path &file);
    // Of objects of Space: those that are in no file as they are now, neither in one of their own
    // nor in the session that was read or written last.
    [[nodiscard]] std::vector<Compound *> unsavedObjects();
    [[nodiscard]] bool isUnsaved(const Compound &object);

private:
    ProcessModel();
    ~ProcessModel();

    const std::thread::id m_Owner = std::this_thread::get_id();
    // Null outside of the workbench.
    Embedding *m_Embedding;
    History m_History;
    mutable ObjectIndex m_Index;
    struct Given
    {
        const Compound *object;
        std::uint32_t generation;
    };
    // Whom numbers were given for.
    std::unordered_map<std::uint32_t, Given> m_Given;
    std::uint32_t m_Generation = 0;
    // Of the session that was read, what is no object and no step: it stays with it.
    std::vector<sessions::NamedValue> m_Values;
    // What the history calls the state that it has.
    std::optional<std::uint64_t> m_SessionState;
    std::vector<std::unique_ptr<OpenStep>> m_Steps;
    std::unique_ptr<WorkbenchRun> m_Run;
    // Whether the file has all of it.
    std::vector<std::pair<ObjectNumber, bool>> m_SavedInStep;
    std::string m_Refusal;
};

// An object as Python holds it.
template <typename T> class Reference
{
public:
    explicit Reference(T &object);

    // The object, which is there for as long as nothing is changed.
    [[nodiscard]] T &operator*() const;
    [[nodiscard]] const ObjectNumber &number() const noexcept { return m_Number; }
    [[nodiscard]] bool isThere() const;

    friend bool operator==(const Reference &, const Reference &) = default;

private:
    ObjectNumber m_Number;
};

using AlignmentReference = Reference<Alignment>;
using StructureReference = Reference<Structure>;
// A chain of a structure, or a sequence that stands by itself.
using ChainReference = Reference<Peptide>;

} // namespace TAMBO::script
