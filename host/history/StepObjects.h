// SPDX-License-Identifier: GPL-3.0-or-later
// Whether steps of undo that were made of bytes change objects only where these are: the steps are
// gone through as undo and redo do it, and nothing is applied. What a step takes out of the tree
// goes with it when it is dropped, so a step that needs an object must not outlive the step that
// owns it. None does when each object stands in the tree whenever a step that needs it is toggled.
#pragma once

#include "PointerMap.h"

#include <cstddef>
#include <vector>

namespace TAMBO {

class Compound;
class Edit;
class HistoryStep;
class ObjectsEdit;

class StepObjects
{
public:
    // They outlive this, and are not toggled meanwhile.
    explicit StepObjects(const std::vector<HistoryStep> &steps);

    // position: how many of the steps are done.
    [[nodiscard]] bool areInOrder(std::size_t position);
    // It stands in the tree, or goes with one of the steps.
    [[nodiscard]] bool holds(const Compound &object) const;

private:
    // Where an object stands that steps move, and which of these has moved it last; in nothing
    // while that step owns it.
    struct Place
    {
        const Compound *container = nullptr;
        std::size_t step = 0;
    };
    using Places = PointerMap<Compound, Place>;

    [[nodiscard]] bool pass(std::size_t step);
    [[nodiscard]] bool canMove(const ObjectsEdit &edit);
    void noteMove();
    [[nodiscard]] const Place *placeOf(const Compound &object) const;
    [[nodiscard]] const Compound *containerOf(const Compound &object) const;
    [[nodiscard]] const Compound &topOf(const Compound &object) const;
    // In the tree, or out of it and owned by the step, which then goes with it.
    [[nodiscard]] bool isThereFor(std::size_t step, const Compound &object) const;

    const std::vector<HistoryStep> &m_Steps;
    Places m_Owned;
    // On the way, but for what the last edit has moved: mostly a file's million of objects come
    // with the first step, and nobody asks where they are before that.
    Places m_Moved;
    const ObjectsEdit *m_LastMove = nullptr;
    std::size_t m_LastStep = 0;
    std::vector<const Compound *> m_Needed;
    std::vector<const Compound *> m_Members;
};

} // namespace TAMBO
