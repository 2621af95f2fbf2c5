// SPDX-License-Identifier: GPL-3.0-or-later
// How the model's operations carry out a change: inside a scope, each handing in its inverse.
#pragma once

#include "Edit.h"
#include "Hooks.h"
#include "Publisher.h"

#include <functional>
#include <memory>
#include <string>

namespace TAMBO {

class Compound;

// Every operation that changes something opens one around the change. The outermost scope (a guard
// holds one too) is one step of undo: at its end the inverses go to the recorder, what the guards
// inside asked for is published, and objects that nobody holds any more are freed.
class [[nodiscard]] ChangeScope
{
public:
    ChangeScope() noexcept;
    // Publishes to everybody at the end, as undo and redo do.
    explicit ChangeScope(Publisher::ActionType action) noexcept;
    ~ChangeScope();
    ChangeScope(const ChangeScope &) = delete;
    ChangeScope &operator=(const ChangeScope &) = delete;
};

// For what comes by itself and not by a command: files that have been read, models that were built.
// It may come while a command waits for a dialog inside its guard, and is no part of the command:
// it is a step of its own, the one before the command's, and is published when the scope ends. To
// that end what the command has done so far is taken back meanwhile, so that either step can be
// undone and repeated as any other.
class [[nodiscard]] ArrivalScope
{
public:
    ArrivalScope();
    ~ArrivalScope();
    ArrivalScope(const ArrivalScope &) = delete;
    ArrivalScope &operator=(const ArrivalScope &) = delete;
};

// Runs task at once, or, while guards are refused because changes are being published, as soon as
// they have been. What has arrived and cannot come again is added by such a task.
void whenNothingIsPublished(std::function<void()> task);

// Lets such tasks wait for its end, too.
class [[nodiscard]] ArrivalPause
{
public:
    ArrivalPause() noexcept;
    ~ArrivalPause();
    ArrivalPause(const ArrivalPause &) = delete;
    ArrivalPause &operator=(const ArrivalPause &) = delete;
};

// Hands in the inverse of a change just made. Only inside a ChangeScope.
void recordInverse(std::unique_ptr<Edit> inverse);

// Publishes action to everybody at the end of the outermost scope, unless a guard of that type is
// there already. Only inside a ChangeScope.
void publishAtEnd(Publisher::ActionType action) noexcept;

// Frees an edit, with the objects it may own, once the subscribers have been told.
void releaseLater(std::unique_ptr<Edit> edit);

// True between the begin of the outermost scope and its end, notifications not included.
[[nodiscard]] bool isChanging() noexcept;

// The object itself or the nearest one above it that is locked; null when the change is free.
[[nodiscard]] const Compound *lockOn(const Compound &object);

// For operations that may be called without a guard: false, with a line in the log, when the object
// or one above it is locked. The user is told unless the step does something else.
[[nodiscard]] bool mayChange(const Compound &object);

// What was asked for is not done: to the log, at most once until the outermost scope ends, and to
// the hook for the user.
void refuse(const std::string &reason);

// To the log, at most once until the outermost scope ends, for operations called once per residue.
void writeLogOnce(const std::string &message, LogSeverity severity = LogSeverity::Info);

} // namespace TAMBO
