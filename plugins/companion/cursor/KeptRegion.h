// SPDX-License-Identifier: GPL-3.0-or-later
// The columns of an alignment that stay where they are when gaps are edited: a value of the
// alignment, which follows its columns.
#pragma once

#include "FollowedColumns.h"
#include "StepFollower.h"
#include "Subscriber.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

namespace companion {

// Nothing when none are kept. Cut off at the alignment's end.
[[nodiscard]] std::optional<ColumnRange> keptColumns(const TAMBO::Alignment &alignment);
// One step of undo. False when that changes nothing: for an empty range, too.
bool keepColumns(TAMBO::Alignment &alignment, const ColumnRange &columns);
bool keepNoColumns(TAMBO::Alignment &alignment);

// Lets kept columns follow the edits of the alignments that windows show. What an edit has done to
// them is taken over in its own step, so that undo takes back both.
class KeptRegions : public StepFollower, public Subscriber
{
public:
    // One for all who have it at a time.
    [[nodiscard]] static std::shared_ptr<KeptRegions> shared();

    KeptRegions();
    ~KeptRegions() override;

    // Looks which alignments windows show, and at all that is kept in them.
    void look();

    void stepEnds(const StepChanges &changes) override;
    void commUpdate() override { look(); }
    void commAdd() override { }
    void commDelete() override { }

private:
    // As it was when it was looked at.
    struct State
    {
        std::uint64_t revision;
        ColumnRange columns;
        ColumnAnchors anchors;
        // Edits since then could not be taken over.
        bool isOwed = false;
    };

    // What a copy that leaves out columns takes over counts in what it is a copy of.
    static void followCopy(TAMBO::Alignment &copy);

    std::map<const TAMBO::Compound *, State> m_States;
};

} // namespace companion
