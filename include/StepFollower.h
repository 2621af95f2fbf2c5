// SPDX-License-Identifier: GPL-3.0-or-later
// How a plug-in adds changes of its own to every step, such as values that follow an alignment.
#pragma once

#include "Export.h"

#include <vector>

namespace TAMBO {
class Compound;
}

// A top-level object (a structure, a sequence, an alignment) of which a step has changed something,
// be it of the object itself or of a part of it. An alignment is not listed for what happens to the
// sequences it shows.
struct StepChange
{
    TAMBO::Compound *object = nullptr;
    // It came in this step.
    bool isNew = false;
    // Nothing but what no file holds: colors and ties to chains.
    bool isDisplayOnly = false;
};

struct StepChanges
{
    // Each once, in the order in which they were changed first. All of them are in the tree.
    std::vector<StepChange> objects;
    // Top-level objects that are not in the tree any more.
    bool hasDeletions = false;
};

// Registered while it exists. It is called at the end of the outermost guard, when everything has
// been changed and nobody has been told. What it changes then, inside guards as ever, is a part of
// the step: one undo takes back both. It is called once a step, whatever it and others change, and
// not for undo and redo or for a step that changed nothing (selecting is no change). Followers are
// called in the order in which they came, and each sees what those before it did. What arrives
// meanwhile waits. An exception is logged, and the step ends well. All calls are made in the GUI
// thread.
class TAMBO_API StepFollower
{
public:
    virtual ~StepFollower();

    // Guards are refused when the step is made while another one is being published.
    virtual void stepEnds(const StepChanges &changes) = 0;

    StepFollower(const StepFollower &) = delete;
    StepFollower &operator=(const StepFollower &) = delete;

protected:
    StepFollower();
};
