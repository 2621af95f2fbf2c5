// SPDX-License-Identifier: GPL-3.0-or-later
// What the model asks of every object that somebody owns: Space, what stands in it, the chains of a
// structure, the groups and elements of a chain. Each kind answers for itself, so that what treats
// all alike need know none of them.
#pragma once

#include "EditParts.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace TAMBO {

class Compound;
class ObjectWriter;
struct CompoundState;
struct ObjectMarks;

class StoredObject
{
public:
    // Null for a handle such as a residue, which is a part of another object, and for null.
    [[nodiscard]] static StoredObject *from(Compound *object) noexcept;
    [[nodiscard]] static const StoredObject *from(const Compound *object) noexcept;

    virtual ~StoredObject();
    StoredObject(const StoredObject &) = delete;
    StoredObject &operator=(const StoredObject &) = delete;

    [[nodiscard]] virtual Compound &asCompound() noexcept = 0;
    // Null for one that has no name of its own.
    [[nodiscard]] virtual CompoundState *ownState() noexcept = 0;
    [[nodiscard]] virtual const CompoundState *ownState() const noexcept = 0;
    // A number that no other object has or will have, also when one comes to stand at the address
    // of another that is gone. The same for as long as the object is there, deleted or not.
    [[nodiscard]] std::uint32_t identity() const noexcept;
    // Of an object that was kept in another run of the program, and has no number yet. Those that
    // are made from now on get higher ones. False for a number that no object can have had.
    [[nodiscard]] bool restoreIdentity(std::uint32_t identity) noexcept;

    // Of one that has a name; without recording, which is done by renameObject().
    virtual void storeName(const std::string &name);
    // Null when it leaves the tree.
    virtual void setParent(Compound *parent) noexcept;
    // What it occupies, everything that it owns included.
    [[nodiscard]] virtual std::size_t bytes() const noexcept = 0;

    // ---- As bytes, of which an ObjectLoader makes it again

    // What takes long is written in several parts, each of which takes little.
    [[nodiscard]] virtual std::size_t partCount() const noexcept { return 1; }
    virtual void writePart(std::size_t part, ObjectWriter &out) const = 0;

    // ---- What changes without a step of undo

    // Fills what is empty.
    virtual void collectMarks(ObjectMarks &out) const;
    // As they were in another run of the program, without recording, and nobody is told. What is
    // not there any more is left out.
    virtual void restoreMarks(const ObjectMarks &marks);
    // Whether steps change them as well, as those of columns the range.
    [[nodiscard]] virtual bool marksFollowSteps() const noexcept { return false; }

    // ---- What edits and views ask

    // What of the object above it changes when it comes or goes, unless that is Space.
    [[nodiscard]] virtual EditPart partOfParent() const noexcept { return EditPart::Members; }
    // The name that it gets when somebody wants this one.
    [[nodiscard]] virtual std::string allowedName(const std::string &wanted) const;
    // Whether its views show what is added to it, so that they have to be told.
    [[nodiscard]] virtual bool showsAdded() const noexcept { return false; }
    // Whether it refers, or undo may make it refer, to sequences that stand elsewhere.
    [[nodiscard]] virtual bool refersToOthers() const noexcept { return false; }
    // Calls visit for each object elsewhere that it refers to now; maybe several times for one.
    using OtherVisitor = std::function<void(const Compound &other)>;
    virtual void forEachOther(const OtherVisitor &) const { }

    // A sequence with residues.
    [[nodiscard]] virtual bool isProtein() const noexcept { return false; }
    // Whether there may be such among its children.
    [[nodiscard]] virtual bool holdsSequences() const noexcept { return false; }
    // Every atom below it. isAsked: it is what somebody asked about, and not just on the way.
    virtual void collectAtoms(std::vector<Compound *> &out, bool isAsked) const;

protected:
    StoredObject() = default;

    // Where its number is, which is 0 until somebody asks: a part of the state, if it has one.
    [[nodiscard]] virtual std::uint32_t &identitySlot() const noexcept;
};

// The state of a stored object; null for a handle, which has none of its own.
[[nodiscard]] CompoundState *stateOf(Compound &object) noexcept;

// That of a stored object; 0 for a handle.
[[nodiscard]] std::uint32_t identityOf(const Compound &object) noexcept;

} // namespace TAMBO
