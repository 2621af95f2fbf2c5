// SPDX-License-Identifier: GPL-3.0-or-later
// The objects and the history of this process, as Python gets at them: from one thread alone, and
// by numbers, so that an object that is gone is told and not touched.
#pragma once

#include "History.h"
#include "ObjectIndex.h"
#include "Result.h"
#include "StoreRecord.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
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

class OpenStep;

struct ObjectNumber
{
    std::uint32_t identity = 0;
    // How often all was forgotten before: a session may bring numbers that others had in it.
    std::uint32_t generation = 0;

    friend bool operator==(const ObjectNumber &, const ObjectNumber &) = default;
};

class ProcessModel
{
public:
    // Refused to other threads than the one that has imported the module.
    static ProcessModel &get();

    [[nodiscard]] History &history() noexcept { return m_History; }

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

    // After each operation: what the model has refused meanwhile, and Ctrl+C, are thrown.
    void settle();
    // Before an operation that takes no guard.
    void clearRefusal() noexcept { m_Refusal.clear(); }

    // Forgets all objects and steps; those that Python still knows are gone.
    void clear();
    // Into an empty model: all of a session, or nothing.
    [[nodiscard]] Result<void> readSession(const std::filesystem::path &file);
    [[nodiscard]] Result<void> writeSession(const std::filesystem::path &file);

private:
    ProcessModel();
    void hook();

    const std::thread::id m_Owner = std::this_thread::get_id();
    History m_History;
    mutable ObjectIndex m_Index;
    std::uint32_t m_Generation = 0;
    // Of the session that was read, what is no object and no step: it stays with it.
    std::vector<sessions::NamedValue> m_Values;
    std::vector<std::unique_ptr<OpenStep>> m_Steps;
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
