// SPDX-License-Identifier: GPL-3.0-or-later
// What happens to the steps of undo, told to whoever keeps a record from which all of it can be
// done again after the program has ended.
#pragma once

#include "EditParts.h"

#include <cstddef>
#include <string>
#include <vector>

namespace TAMBO {

class Compound;
class Edit;

// A step as what it did: edits that do the same when they are applied one after the other.
struct StoredStep
{
    std::vector<std::string> edits;
    // Empty for most.
    std::string name;
    // How many of the edits, from the first on, are its maker's own. The others were added by
    // followers.
    std::size_t own = 0;
};

// After so many steps an object was saved, or written to a file that lacks something.
struct StateMark
{
    bool isSaved = true;
    std::size_t steps = 0;
    EditParts lost;
};

// Called in the order of what happens. The model is not changed meanwhile.
class StepJournal
{
public:
    virtual ~StepJournal() = default;
    StepJournal(const StepJournal &) = delete;
    StepJournal &operator=(const StepJournal &) = delete;

    // Something is about to change, by an edit or, as selection and locks, without one. What is
    // kept of the present state has to be kept now.
    virtual void changeBegins() { }
    // The same of a step that something arrived in the middle of. It may wait for the user.
    virtual void changeGoesOn() { changeBegins(); }
    // One row of an alignment is about to change, and the width maybe with it, or goes to another
    // place. Undo is told, too. Of what is kept of the present state that row has to be kept now.
    virtual void rowChanges(const Compound &, std::size_t) { }
    virtual void rowMoves(const Compound &, std::size_t, std::size_t) { }
    // The edit that was just made, of which this is the inverse, as bytes: Edit::storeInverse().
    // The step that it belongs to may still be taken back, and is then never told.
    [[nodiscard]] virtual std::string store(const Edit &inverse) = 0;
    // A step is there, behind the present one. Those that were undone are gone.
    virtual void stepEnds(StoredStep &&step) = 0;
    // Undo and redo led to the state after so many steps, those that the history has forgotten
    // counted, too.
    virtual void travelled(std::size_t steps) = 0;
    // The history has dropped its first or its last step, for want of room.
    virtual void forgotten(bool isFirst) = 0;
    // All steps, and with them what is saved.
    virtual void cleared() = 0;
    virtual void marked(const Compound &object, const StateMark &mark) = 0;

protected:
    StepJournal() = default;
};

// The journal in use; null (the start) for none. Not owned. Set between steps. Without a recorder
// nothing is told.
void setStepJournal(StepJournal *journal) noexcept;
[[nodiscard]] StepJournal *stepJournal() noexcept;

} // namespace TAMBO
