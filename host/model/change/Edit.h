// SPDX-License-Identifier: GPL-3.0-or-later
// Reversible changes of the model, and who keeps them.
#pragma once

#include "EditParts.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace TAMBO {

class Compound;
class EditWriter;

// One change that can be carried out. Carrying it out gives its inverse, so undo and redo are the
// same act. An edit keeps what is needed for its change and never a copy of an object. Its
// destructor touches no object but those it owns.
class Edit
{
public:
    virtual ~Edit() = default;
    Edit(const Edit &) = delete;
    Edit &operator=(const Edit &) = delete;

    [[nodiscard]] virtual std::unique_ptr<Edit> apply() = 0;
    // Carries the same change out once more, though objects may have arrived since it was taken
    // back.
    [[nodiscard]] virtual std::unique_ptr<Edit> repeat() { return apply(); }
    // Takes over the change recorded next, if one edit can stand for both; false when not.
    [[nodiscard]] virtual bool absorb(const Edit &) { return false; }
    // What it occupies, itself included.
    [[nodiscard]] virtual std::size_t bytes() const = 0;
    // The kind of the edit as the user reads it: "move gap".
    [[nodiscard]] virtual const char *kind() const = 0;
    // The object changed; it exists as long as the edit does.
    [[nodiscard]] virtual Compound *subject() const = 0;
    // What of the objects is changed.
    [[nodiscard]] virtual EditPart part() const = 0;
    // The change is one of the object as a whole: "delete SeqAli", not "move gap in SeqAli".
    [[nodiscard]] virtual bool actsOnWhole() const { return false; }
    // Appends every object changed.
    virtual void appendSubjects(std::vector<const Compound *> &out) const
    {
        out.push_back(subject());
    }
    // Appends the objects of which a file would hold the change, themselves or with what they are a
    // part of: of objects that come to or leave another one, that one.
    virtual void appendHolders(std::vector<const Compound *> &out) const { appendSubjects(out); }
    // Appends the objects that go with the edit when it is dropped.
    virtual void appendOwned(std::vector<const Compound *> &) const { }
    // Appends every object that it needs and that is not its own, those included that what it owns
    // refers to: they stand in the tree when it is applied.
    virtual void appendNeeded(std::vector<const Compound *> &out) const { appendSubjects(out); }
    // The object whose lock forbids the change.
    [[nodiscard]] virtual const Compound *guarded() const { return subject(); }

    // Writes itself, so that what is made of it again does the same.
    virtual void store(EditWriter &out) const = 0;
    // Writes the edit of which this one is the inverse, right after that was made; of one that
    // grows, when the step ends.
    virtual void storeInverse(EditWriter &out) const = 0;
    // Whether it can be applied to the model as it is now. Asked of edits that were made of bytes,
    // which may be damaged.
    [[nodiscard]] virtual bool fits() const = 0;

protected:
    Edit() = default;
};

// Receives the inverses of a step's changes, in the order of the changes, when the step ends. A
// change outside of a guard is a step of its own; a step without changes is not announced.
class EditRecorder
{
public:
    virtual ~EditRecorder() = default;
    virtual void begin() = 0;
    virtual void record(std::unique_ptr<Edit> inverse) = 0;
    // Before the end of a step that has a name, or that followers have added to: the name, maybe
    // empty, and how many of the changes are its maker's own; those behind them were added.
    virtual void describe(const std::string &, std::size_t) { }
    virtual void end() = 0;
    // The changes take back or repeat former steps. Nobody adds to those.
    [[nodiscard]] virtual bool isTravelling() const noexcept { return false; }
};

// The recorder in use; null (the start) drops the inverses. Not owned.
void setEditRecorder(EditRecorder *recorder) noexcept;
[[nodiscard]] EditRecorder *editRecorder() noexcept;

} // namespace TAMBO
