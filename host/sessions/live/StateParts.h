// SPDX-License-Identifier: GPL-3.0-or-later
// Space and the history as the parts of a store, one after the other, so that the window's thread
// can go on in between.
#pragma once

#include "ObjectStore.h"
#include "StoreRecord.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {
class History;
}

namespace TAMBO::sessions {

class StateParts
{
public:
    // Neither may change until all parts are there, but for what goBack() and pin() are about.
    StateParts(const ObjectSpace &space, const History &history);

    // A part of about so many bytes; nothing after the last one.
    [[nodiscard]] std::optional<StatePart> next(std::size_t bytes);
    // Alignments, Space or steps have changed: they come once more, as they are now. How many parts
    // are as good as they were; all behind them do not count any more.
    [[nodiscard]] std::size_t goBack();
    // Steps that change rows of alignments are about to come, and to be undone, behind those that
    // there are: they are left out, and so is what they change of rows that are kept. False, with
    // nothing done, when steps that are undone would go with the next one.
    [[nodiscard]] bool pin();
    [[nodiscard]] bool isPinned() const noexcept { return m_Pinned.has_value(); }
    // Of the steps that are not left out.
    [[nodiscard]] std::size_t pinnedSteps() const noexcept { return m_Pinned->steps; }
    void keepRow(const StoredObject &alignment, std::size_t row)
    {
        m_Objects.keepRow(alignment, row);
    }
    [[nodiscard]] bool keepMove(const StoredObject &alignment, std::size_t from, std::size_t to)
    {
        return m_Objects.keepMove(alignment, from, to);
    }
    // Whether what is left takes no longer than writing so many bytes.
    [[nodiscard]] bool isBelow(std::size_t bytes) const { return m_Objects.isBelow(bytes); }
    [[nodiscard]] bool hasBegunAlignments() const noexcept
    {
        return m_Objects.hasBegunAlignments();
    }
    // Objects that only steps own have parts.
    [[nodiscard]] bool hasOwned() const noexcept { return m_HasOwned; }
    // Of how many objects and steps, and how many of them are in the parts so far.
    [[nodiscard]] std::size_t size() const noexcept;
    [[nodiscard]] std::size_t done() const noexcept { return m_Objects.written() + m_NextStep; }

private:
    StateParts(const ObjectSpace &space, const History &history,
               std::vector<const StoredObject *> owned);
    [[nodiscard]] StatePart steps(std::size_t bytes);
    [[nodiscard]] std::size_t stepCount() const noexcept;
    [[nodiscard]] std::string historyState() const;

    const History &m_History;
    bool m_HasOwned;
    ObjectStore m_Objects;
    bool m_HasObjects = true;
    std::size_t m_NextStep = 0;
    bool m_IsComplete = false;
    // As they were when they began to be left out.
    struct Pinned
    {
        std::size_t steps = 0;
        std::string history;
    };
    std::optional<Pinned> m_Pinned;
    // Before the first one with an alignment in it.
    std::size_t m_LastingParts = 0;
};

} // namespace TAMBO::sessions
