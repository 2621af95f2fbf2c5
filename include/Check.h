// SPDX-License-Identifier: GPL-3.0-or-later
// The two run-time checks of the workbench and its plug-ins. Both print and go on: a failed check
// is a defect worth a line in the log, never a reason to take the user's work down.
#pragma once

#include <QtGlobal>

namespace TAMBO {

// Unit and line name the site of a check. They are stable names that people search logs for,
// not places in a file, so moving code does not change them.
inline void checkPointer(const void *pointer, const char *unit, int line) noexcept
{
    if (pointer == nullptr)
        qWarning("In file %s, line %d: Out of memory", unit, line);
}

inline bool checkCondition(bool holds, const char *condition, const char *unit, int line) noexcept
{
    if (!holds)
        qWarning("ASSERT: \"%s\" in %s (%d)", condition, unit, line);
    return holds;
}

} // namespace TAMBO

#define TAMBO_CHECK_PTR(pointer, unit, line) ::TAMBO::checkPointer((pointer), (unit), (line))
#define TAMBO_ASSERT(condition, unit, line)                                                        \
    ::TAMBO::checkCondition(static_cast<bool>(condition), #condition, (unit), (line))
