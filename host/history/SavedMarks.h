// SPDX-License-Identifier: GPL-3.0-or-later
// After which step each object was last saved. Steps are counted from the beginning, those that
// the history has forgotten included.
#pragma once

#include "EditParts.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>

namespace TAMBO {

class Compound;

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
    // An object that was never saved counts as saved at the beginning.
    [[nodiscard]] Mark of(const Compound &object) const;
    [[nodiscard]] std::optional<Mark> find(const Compound &object) const;
    [[nodiscard]] const std::map<const Compound *, Mark> &all() const noexcept { return m_Marks; }

    // Before the undone steps behind the first steps are dropped; lostOf tells what they change of
    // an object that was saved after so many.
    using LostParts = std::function<EditParts(const Compound &object, std::size_t saved)>;
    void dropBehind(std::size_t steps, const LostParts &lostOf);
    // Before the objects are freed.
    void forget(const std::set<const Compound *> &freed);
    void clear() { m_Marks.clear(); }

private:
    std::map<const Compound *, Mark> m_Marks;
};

} // namespace TAMBO
