// SPDX-License-Identifier: GPL-3.0-or-later
// What steps have changed of which objects, seen from the states in which the objects were saved.
#pragma once

#include "EditParts.h"

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace TAMBO {

class Alignment;
class Compound;
class HistoryStep;

class ChangedParts
{
public:
    // index: how many steps were done before this one.
    void add(const HistoryStep &step, std::size_t index, bool isDone);
    // Before the objects are freed.
    void forget(const std::set<const Compound *> &freed);
    void clear() { m_Spans.clear(); }

    // Of the object, or of what it holds, between the state after saved steps and the present one.
    [[nodiscard]] EditParts of(const Compound &object, std::size_t saved) const;
    // The same of what an alignment shows and does not hold: its sequences and their chains.
    [[nodiscard]] EditParts ofRows(const Alignment &alignment, std::size_t saved) const;
    [[nodiscard]] bool has(const Compound &object, EditPart part, std::size_t saved) const;
    // The top-level objects that of() may say something of.
    [[nodiscard]] std::set<const Compound *> objects() const;

    // The one below Space that the object is or is a part of; null when it is out of the tree.
    [[nodiscard]] static const Compound *topOf(const Compound &object);

private:
    // The done step that changed it last, and the undone one that would change it next.
    struct Span
    {
        std::optional<std::size_t> lastDone;
        std::optional<std::size_t> nextUndone;

        [[nodiscard]] bool isChangeSince(std::size_t saved) const;
    };
    using Key = std::pair<const Compound *, EditPart>;

    std::map<Key, Span> m_Spans;
};

} // namespace TAMBO
