// SPDX-License-Identifier: GPL-3.0-or-later
// Whoever keeps what changes of objects without a step of undo.
#pragma once

namespace TAMBO {

class Compound;
class StoredObject;

// Told after the marks of an object may have changed, by a command or by steps of undo.
class MarkFollower
{
public:
    virtual ~MarkFollower() = default;
    virtual void marksChanged(StoredObject &object) = 0;
};

// The one there is; null: nobody follows. It outlives its being set.
void setMarkFollower(MarkFollower *follower) noexcept;
[[nodiscard]] MarkFollower *markFollower() noexcept;
// For the operations that change marks. Handles have none.
void noteMarks(Compound &object);
// The same of one that is known to be stored: a million rows may be marked at once.
void noteStoredMarks(StoredObject &object);

} // namespace TAMBO
