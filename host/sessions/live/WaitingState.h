// SPDX-License-Identifier: GPL-3.0-or-later
// The state of everything as the entries of a store, which are handed over in slices.
#pragma once

#include "StateParts.h"
#include "StoreRecord.h"

#include <cstddef>
#include <optional>

namespace TAMBO::sessions {

class WaitingState
{
public:
    // Neither may change until all entries are there, but for what goBack() is about, and pin().
    WaitingState(const ObjectSpace &space, const History &history) : m_Parts(space, history) { }

    // The next entry, of about so many bytes.
    [[nodiscard]] StoreEntry next(std::size_t bytes);
    // That was the last one.
    [[nodiscard]] bool isDone() const noexcept { return m_IsDone; }
    // Alignments, Space or steps have changed: sequences and structures that were handed over stay.
    void goBack();
    [[nodiscard]] bool hasBegunAlignments() const noexcept { return m_Parts.hasBegunAlignments(); }
    [[nodiscard]] bool pin() { return m_Parts.pin(); }
    [[nodiscard]] bool isPinned() const noexcept { return m_Parts.isPinned(); }
    [[nodiscard]] std::size_t pinnedSteps() const noexcept { return m_Parts.pinnedSteps(); }
    void keepRow(const StoredObject &alignment, std::size_t row)
    {
        m_Parts.keepRow(alignment, row);
    }
    [[nodiscard]] bool keepMove(const StoredObject &alignment, std::size_t from, std::size_t to)
    {
        return m_Parts.keepMove(alignment, from, to);
    }
    [[nodiscard]] bool isBelow(std::size_t bytes) const { return m_Parts.isBelow(bytes); }
    [[nodiscard]] bool hasOwned() const noexcept { return m_Parts.hasOwned(); }

private:
    StateParts m_Parts;
    // What it is to begin with, at first or once more.
    std::optional<StateBegin> m_Begin{StateBegin()};
    bool m_IsDone = false;
};

} // namespace TAMBO::sessions
