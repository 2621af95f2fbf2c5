// SPDX-License-Identifier: GPL-3.0-or-later
// What the steps that the history has dropped from its beginning have changed of which objects.
#pragma once

#include "EditParts.h"
#include "HistoryStep.h"

#include <cstddef>
#include <map>
#include <utility>

namespace TAMBO {

class Compound;
class FreedObjects;

class ForgottenChanges
{
public:
    // index: how many steps were done before this one.
    void add(const HistoryStep &step, std::size_t index);
    // The same of one part of an object, which was told by another one of these.
    void restore(const Compound &holder, EditPart part, std::size_t index)
    {
        m_LastSteps[{&holder, part}] = index;
    }
    [[nodiscard]] std::size_t size() const noexcept { return m_LastSteps.size(); }
    // Before the objects are freed.
    void forget(const FreedObjects &freed);
    void clear() { m_LastSteps.clear(); }

    // Calls visit(holder, part, index) for each part, with the last step that changed it.
    template <typename Visit> void forEach(const Visit &visit) const
    {
        for (const auto &[key, index] : m_LastSteps)
            visit(*key.first, key.second, index);
    }

private:
    using Key = std::pair<const Compound *, EditPart>;

    std::map<Key, std::size_t> m_LastSteps;
};

} // namespace TAMBO
