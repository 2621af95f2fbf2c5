// SPDX-License-Identifier: GPL-3.0-or-later
// What the model asks of the program around it. Every hook may be left empty.
#pragma once

#include <functional>
#include <string>

namespace TAMBO {

class Compound;

enum class LogSeverity { Info, Warning, Error };

struct ModelHooks
{
    std::function<void(const std::string &message, LogSeverity severity)> log;
    // Compound::ShowMenu().
    std::function<void(Compound &object)> showMenu;
    // After a guard, or a change without one, was refused because of a lock.
    std::function<void(const Compound &locked)> refused;
    // After anything else was refused; why, as a sentence that is in the log already or says
    // enough. With the object whose lock is the reason, else null.
    std::function<void(const std::string &reason, const Compound *locked)> denied;
    // After every change, published or not, and after undo and redo: the workbench's own views.
    std::function<void()> changed;
    // Again and again during long work: what is done, and how much of it. False when it is to be
    // given up, which nobody may want of work that cannot.
    std::function<bool(const char *what, double share, bool canBeGivenUp)> working;
    // It has ended.
    std::function<void()> worked;
};

[[nodiscard]] ModelHooks &modelHooks() noexcept;

// To the log hook.
void writeLog(const std::string &message, LogSeverity severity = LogSeverity::Info);

} // namespace TAMBO
