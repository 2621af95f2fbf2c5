// SPDX-License-Identifier: GPL-3.0-or-later
// After which step each object was last saved. Steps are counted from the beginning, those that
// the history has forgotten included.
#pragma once

#include "EditParts.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <unordered_map>

namespace TAMBO {

class Compound;
class FreedObjects;

class SavedMarks
{
public:
    struct Mark
    {
        std::size_t steps = 0;
        // In these the object differs from the saved one, and no step leads back.
        EditParts lost;
    };

    void mark(const Compound &object, const Mark &mark) { m_Marks[&object] = mark; }
    // After so many steps; an object that was never saved counts as saved at the beginning.
    [[nodiscard]] std::size_t stepsOf(const Compound &object) const;
    [[nodiscard]] std::optional<Mark> find(const Compound &object) const;
    [[nodiscard]] const std::unordered_map<const Compound *, Mark> &all() const noexcept
    {
        return m_Marks;
    }
    // The most steps that stand in a mark.
    [[nodiscard]] std::size_t latest() const noexcept;

    // No step leads back to what the object was in this part.
    void addLost(const Compound &object, EditPart part);
    // Before the undone steps behind the first steps are dropped; lostOf tells what else they
    // change of an object that was saved after so many.
    using LostParts = std::function<EditParts(const Compound &object, std::size_t saved)>;
    void dropBehind(std::size_t steps, const LostParts &lostOf);
    // Before the objects are freed.
    void forget(const FreedObjects &freed);
    void clear() { m_Marks.clear(); }

private:
    std::unordered_map<const Compound *, Mark> m_Marks;
};

} // namespace TAMBO
