// SPDX-License-Identifier: GPL-3.0-or-later
// Hands everything that happens to the objects to a store, as it happens. What takes its time,
// large objects that arrive and the state as a whole, is handed over in slices while the user does
// nothing. A change waits for two megabytes of that at most. Of more, rows of alignments that
// change are kept as they were, and the change waits behind them. Before any other change what has
// been begun is given up, and the state is written instead, with the change in it. One of an
// alignment leaves the sequences that were written. All that is done a few times in a row only.
#pragma once

#include "NumberSet.h"
#include "ReplayCost.h"
#include "SessionEditBytes.h"
#include "StepJournal.h"
#include "StepRecords.h"
#include "StoreRecord.h"
#include "WaitingRecord.h"
#include "WaitingState.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {
class History;
class ObjectSpace;
class StoredObject;
} // namespace TAMBO

namespace TAMBO::sessions {

class LiveSession final : public StepJournal
{
public:
    // Of objects that are written together with the change they came by, in bytes of memory.
    static constexpr std::size_t kSmall = std::size_t(64) << 10;
    // Of what is to be done again after a death, by ReplayCost.
    static constexpr std::uint64_t kMostReplay = 1'000'000'000;
    // What waits when a change comes is handed over before it, if it is no more: some milliseconds,
    // once.
    static constexpr std::size_t kLittle = std::size_t(2) << 20;
    // So often is what has been written given up for a change. Those that come then wait until all
    // is written, or, as long as that is of sequences and they change alignments, for some
    // megabytes of it.
    static constexpr std::size_t kMostRestarts = 8;
    static constexpr std::size_t kAtOnce = std::size_t(8) << 20;

    using Sink = std::function<void(StoreEntry entry)>;

    // The journal as long as it lives. Space and history are stored from the state that they have
    // now, the history being the recorder.
    LiveSession(ObjectSpace &space, History &history, Sink sink, std::size_t small = kSmall,
                std::uint64_t mostReplay = kMostReplay, std::size_t atOnce = kAtOnce);
    ~LiveSession() override;

    // Everything anew, because the store has begun anew.
    void startAnew();
    // Hands over about so many bytes of what waits, unless a change is under way. False when
    // nothing waits any more.
    bool writeMore(std::size_t bytes);
    // All that waits.
    void finish();
    // All that has been done so far has been handed over.
    [[nodiscard]] bool isUpToDate() const noexcept
    {
        return !m_IsStateMissing && m_Waiting.empty();
    }
    // Everything up to some step: how many records there were when it ended, and whether so many
    // have been handed over, or what came of them. Later ones may wait.
    [[nodiscard]] std::uint64_t recordCount() const noexcept { return m_Taken; }
    [[nodiscard]] bool hasHandedOver(std::uint64_t records) const noexcept
    {
        return !m_IsStateMissing && m_Taken - m_Waiting.size() >= records;
    }
    [[nodiscard]] bool hasMore() const noexcept { return m_State || !isUpToDate(); }
    // Changes have been made that wait for something else, or that only a state which is still to
    // be written will have.
    [[nodiscard]] bool lacksChanges() const noexcept
    {
        return m_IsLacking || m_Waiting.size() > (m_IsStateMissing ? 0 : 1);
    }

    // What has been recorded is to be replaced by the state that has come of it, at the next rest.
    [[nodiscard]] bool isFoldDue() const noexcept
    {
        return !hasMore() && m_Cost.isAbove(m_MostReplay);
    }
    // Makes that wait. Records go on while it does; with the next change it is given up.
    void fold();

    // ---- StepJournal

    void changeBegins() override;
    void changeGoesOn() override { finish(); }
    void rowChanges(const Compound &alignment, std::size_t row) override;
    void rowMoves(const Compound &alignment, std::size_t from, std::size_t to) override;
    std::string store(const Edit &inverse) override;
    void stepEnds(StoredStep &&step) override;
    void travelled(std::size_t steps) override;
    void forgotten(bool isFirst) override;
    void cleared() override;
    void marked(const Compound &object, const StateMark &mark) override;

private:
    [[nodiscard]] std::optional<StoreEntry> next(std::size_t bytes);
    bool writeSlice(std::size_t bytes);
    // So much of what waits, and all of it with the highest number.
    void writeAtOnce(std::size_t bytes);
    void handOver(StoreEntry entry);
    // What waits is no more as it was: the state is to be written, or goes on as it is.
    void giveUp();
    // The same after a change of an alignment that leaves all else of the state as it was.
    void goBack();
    // Before a row changes: whether it has to be kept as it is now.
    [[nodiscard]] bool isRowToBeKept();
    // Whether a change of rows was kept out of what waits.
    [[nodiscard]] bool keepsRows() const noexcept
    {
        return m_State ? m_State->isPinned() : !m_IsStateMissing;
    }
    // Whether the state that is still to be written has what is done now.
    [[nodiscard]] bool willHaveAll() const noexcept
    {
        return m_IsStateMissing && (!m_State || (canGoBack() && !m_State->isPinned()));
    }
    void noteLacking() noexcept { m_IsLacking = m_IsLacking || willHaveAll(); }
    // Whether a state that will have the next change in it is being written, and that of no objects
    // which steps may take with them.
    [[nodiscard]] bool canGoBack() const noexcept
    {
        return m_IsStateMissing && m_State && !m_State->hasOwned();
    }
    // Whether more of the state that is written will be there after the next change, too.
    [[nodiscard]] bool isStillAtSequences() const noexcept
    {
        return m_HasGoneBack && canGoBack() && !m_State->hasBegunAlignments();
    }
    // Whether all that waits is soon written.
    [[nodiscard]] bool isLittle();

    // A change of what is written elsewhere as it will be at the end of the step.
    [[nodiscard]] bool isInContents(const Edit &inverse);
    [[nodiscard]] bool doesNotFitContents(const Edit &inverse) const;
    [[nodiscard]] bool isLarge(const Compound *object);
    // Another step begins.
    void forgetLarge();
    void take(std::string record);

    ObjectSpace &m_Space;
    History &m_History;
    Sink m_Sink;
    SessionEditWriter m_Writer;
    StepRecords m_Records;
    // Those that changes of the step under way bring along and that are not in the changes' bytes,
    // by the number that these begin with. 0: none.
    std::map<std::uint64_t, std::vector<const StoredObject *>> m_Large;
    std::uint64_t m_LastLarge = 0;
    // The numbers of all of them, once somebody asks for one.
    std::optional<NumberSet> m_LargeNumbers;
    // Others have come after the first of them.
    bool m_HasLaterOnes = false;
    // The edits of the step cannot be done one after the other with contents as they are now.
    bool m_IsOutOfOrder = false;
    // Of the step that ends.
    std::vector<const StoredObject *> m_LargeOfStep;

    // Being handed over; before the records.
    std::optional<WaitingState> m_State;
    std::deque<WaitingRecord> m_Waiting;
    // All that there have been; those that wait are the last of them.
    std::uint64_t m_Taken = 0;
    // The store has no state to which the next records could be added.
    bool m_IsStateMissing = false;
    // Since then there were changes.
    bool m_IsLacking = false;
    // How often something that had been begun was given up since all was handed over.
    std::size_t m_Restarts = 0;
    // The last change left what was written of sequences.
    bool m_HasGoneBack = false;
    ReplayCost m_Cost;
    std::uint64_t m_MostReplay;
    std::size_t m_AtOnce;
    std::size_t m_Position = 0;
};

} // namespace TAMBO::sessions
