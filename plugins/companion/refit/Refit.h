// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the structures of an alignment superposed on it: whoever edits the alignment moves them in
// the same step of undo.
#pragma once

#include "Alignment.h"
#include "StepFollower.h"
#include "StructureFits.h"
#include "Subscriber.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <vector>

namespace companion {

// Off at first. Kept with the alignment, so that it comes back with it, and is undone.
[[nodiscard]] bool isRefitted(const TAMBO::Alignment &alignment);
// A step of undo, which superposes them when it begins. False when the alignment may not be changed
// now.
bool setRefitted(TAMBO::Alignment &alignment, bool isOn);

// The first row with a structure stays; the others' structures are moved onto it, each by the
// columns in which both rows have a CA atom, as the user has superposed them last: without pairs
// that stay apart, or by the range alone. A step moves the structures of the alignments that it has
// changed, once each; another alignment that has the same ones says so, and moves nothing.
class Refit : public StepFollower, public Subscriber
{
public:
    Refit();
    ~Refit() override;

    // How many structures have been looked at after edits.
    [[nodiscard]] std::size_t fits() const noexcept { return m_Fits; }

    void stepEnds(const StepChanges &changes) override;
    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

private:
    struct Known
    {
        std::uint64_t layout = 0;
        std::uint64_t structures = 0;
        std::vector<TAMBO::StructureRow> rows;
        // By which they were superposed.
        TAMBO::FitChoice choice;
        // Edits since then could not be followed.
        bool isOwed = false;
    };

    // As it is.
    [[nodiscard]] static Known knownOf(const TAMBO::Alignment &alignment);
    // Takes over what undo and redo have done, of which no step is told.
    void look();
    void lookForOthers();
    void follow(TAMBO::Alignment &alignment);
    // Those to be looked at again; all rows with structures in known afterwards.
    [[nodiscard]] static std::vector<unsigned long> concerned(const TAMBO::Alignment &alignment,
                                                              Known &known);
    // Of those that have been looked at.
    std::map<TAMBO::Alignment *, Known> m_Known;
    // For which it has been on, and may be so again by undo or redo.
    std::set<TAMBO::Alignment *> m_Off;
    std::size_t m_Fits = 0;
};

} // namespace companion
