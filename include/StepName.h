// SPDX-License-Identifier: GPL-3.0-or-later
// What the user reads of a step of undo, in the Edit menu and the list of the history.
#pragma once

#include "Export.h"

#include <string>

// Made on the stack inside a guard; the step keeps the name when this has gone. The name takes the
// place of the kind of edit: "Remove empty columns" is shown as "Remove empty columns in SeqAli".
// Of several names the one given on the outermost level of guards wins, of two on one level the
// first. Outside of a guard, and in a StepFollower, it names nothing.
class TAMBO_API StepName
{
public:
    // A few words of UTF-8. Characters that cannot be shown become blanks, beyond 100 bytes it is
    // cut, and an empty one is none.
    explicit StepName(const std::string &name);

    StepName(const StepName &) = delete;
    StepName &operator=(const StepName &) = delete;
    static void *operator new(decltype(sizeof(0))) = delete;
    static void *operator new[](decltype(sizeof(0))) = delete;
};
