// SPDX-License-Identifier: GPL-3.0-or-later
#include "LiveSession.h"

#include "Alignment.h"
#include "AlignmentEdits.h"
#include "ChangeScope.h"
#include "Compound.h"
#include "CompoundState.h"
#include "Edit.h"
#include "EditBytes.h"
#include "History.h"
#include "ObjectSpace.h"
#include "ObjectsEdit.h"
#include "StoredObject.h"
#include "TieEdit.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace TAMBO::sessions {

namespace {

// Stands for a change that is in the content of an object. No number.
const std::string kInContents = "\xff";

// An entry is a single value in the store.
constexpr std::size_t kPiece = std::size_t(1) << 20;
// Looking at a step takes as long as writing so many.
constexpr std::size_t kBytesOfALook = 128;

bool goesThroughRows(const std::string &edit)
{
    switch (static_cast<EditTag>(edit.empty() ? 0 : edit.front())) {
    case EditTag::OpenColumns:
    case EditTag::CloseColumns:
    case EditTag::RemoveColumns:
    case EditTag::RestoreColumns:
    case EditTag::ReplaceColumns:
    case EditTag::RemoveRuns:
    case EditTag::RestoreRuns:
        return true;
    default:
        return false;
    }
}

// It changes alignments and nothing beside them, and brings nothing along.
bool isOfAlignments(const Edit &inverse)
{
    std::vector<const Compound *> objects;
    inverse.appendOwned(objects);
    if (inverse.actsOnWhole() || !objects.empty())
        return false;
    inverse.appendSubjects(objects);
    inverse.appendHolders(objects);
    return std::ranges::all_of(objects, [](const Compound *object) {
        return dynamic_cast<const Alignment *>(object) != nullptr;
    });
}

// It was told of before, row by row.
bool isOfRows(const Edit &edit)
{
    return dynamic_cast<const GapEdit *>(&edit) != nullptr ||
           dynamic_cast<const RowMoveEdit *>(&edit) != nullptr;
}

bool bringsObjects(const Edit &inverse)
{
    const auto *const moving = dynamic_cast<const ObjectsEdit *>(&inverse);
    return moving != nullptr && moving->isRemoval();
}

// What it was made in may refer to other objects than before.
bool isOfReferences(const Edit &inverse)
{
    return dynamic_cast<const RemoveRowsEdit *>(&inverse) != nullptr ||
           dynamic_cast<const TieEdit *>(&inverse) != nullptr;
}

} // namespace

LiveSession::LiveSession(ObjectSpace &space, History &history, Sink sink, std::size_t small,
                         std::uint64_t mostReplay, std::size_t atOnce)
    : m_Space(space),
      m_History(history),
      m_Sink(std::move(sink)),
      m_Writer(small),
      m_Records(m_Writer, [this](std::string record) { take(std::move(record)); }),
      m_MostReplay(mostReplay),
      m_AtOnce(atOnce)
{
    startAnew();
    setStepJournal(this);
}

LiveSession::~LiveSession()
{
    if (stepJournal() == this)
        setStepJournal(nullptr);
}

void LiveSession::startAnew()
{
    m_State.reset();
    m_Waiting.clear();
    m_IsStateMissing = true;
}

void LiveSession::fold()
{
    if (!hasMore())
        m_State.emplace(m_Space, m_History);
}

bool LiveSession::writeMore(std::size_t bytes)
{
    // A guard may be open while somebody is asked, and long work lets the program look for events.
    return isChanging() ? hasMore() : writeSlice(bytes);
}

bool LiveSession::writeSlice(std::size_t bytes)
{
    while (std::optional<StoreEntry> entry = next(bytes)) {
        const std::size_t size = bytesOf(*entry);
        handOver(std::move(*entry));
        if (size >= bytes)
            return true;
        bytes -= size;
    }
    return false;
}

std::optional<StoreEntry> LiveSession::next(std::size_t bytes)
{
    if (m_IsStateMissing && !m_State)
        m_State.emplace(m_Space, m_History);
    if (m_State) {
        StoreEntry entry = m_State->next(bytes);
        if (m_State->isDone()) {
            m_State.reset();
            m_IsStateMissing = false;
            m_IsLacking = false;
        }
        return entry;
    }
    if (m_Waiting.empty())
        return std::nullopt;
    std::optional<StoreEntry> entry = m_Waiting.front().next(bytes);
    // Whoever gets the last one is to see that nothing is left.
    if (m_Waiting.front().isDone())
        m_Waiting.pop_front();
    return entry;
}

void LiveSession::writeAtOnce(std::size_t bytes)
{
    while (bytes > 0 && writeSlice(std::min(bytes, kPiece)))
        bytes -= std::min(bytes, kPiece);
}

void LiveSession::finish()
{
    writeAtOnce(std::numeric_limits<std::size_t>::max());
}

void LiveSession::handOver(StoreEntry entry)
{
    m_Cost.add(entry);
    m_Sink(std::move(entry));
}

void LiveSession::giveUp()
{
    const bool isFold = m_State && !m_IsStateMissing;
    m_HasGoneBack = false;
    m_Restarts += !isFold && (m_State || !m_Waiting.empty()) ? 1 : 0;
    m_State.reset();
    if (isFold) {
        // What waited for it goes on from the state before.
        finish();
    } else if (!isUpToDate()) {
        m_IsLacking = m_IsLacking || lacksChanges();
        m_Waiting.clear();
        m_IsStateMissing = true;
    }
}

void LiveSession::goBack()
{
    if (!canGoBack())
        return giveUp();
    m_HasGoneBack = true;
    m_Restarts += m_State->hasBegunAlignments() ? 1 : 0;
    m_IsLacking = m_IsLacking || lacksChanges();
    m_State->goBack();
    m_Waiting.clear();
}

bool LiveSession::isLittle()
{
    const std::size_t most = std::min(kLittle, m_AtOnce);
    if (m_History.size() * kBytesOfALook > most)
        return false;
    if (m_IsStateMissing && !m_State)
        m_State.emplace(m_Space, m_History);
    return (!m_State || m_State->isBelow(most)) &&
           std::ranges::all_of(
               m_Waiting, [most](const WaitingRecord &record) { return record.isBelow(most); });
}

// ---- What is told

void LiveSession::changeBegins()
{
    // Those of a step that was taken back are gone.
    forgetLarge();
    m_Position = m_History.position();
    if (isUpToDate()) {
        m_Restarts = 0;
    } else if (m_Restarts >= kMostRestarts) {
        if (isStillAtSequences())
            writeAtOnce(m_AtOnce);
        if (!isStillAtSequences())
            finish();
    } else if (isLittle()) {
        finish();
    }
}

bool LiveSession::isRowToBeKept()
{
    // Nothing is about to be written as it was, but for a state that replaces records, and that is
    // given up when the change is told.
    if (isUpToDate() || (m_State ? !m_IsStateMissing : m_IsStateMissing))
        return false;
    if (!m_State)
        return true;
    // What has not been begun will have the change in it.
    if (!m_State->isPinned() && canGoBack() && !m_State->hasBegunAlignments())
        return false;
    const bool isPinned = m_State->pin();
    if (!isPinned)
        goBack();
    return isPinned;
}

void LiveSession::rowChanges(const Compound &alignment, std::size_t row)
{
    if (!isRowToBeKept())
        return;
    const StoredObject &stored = *StoredObject::from(&alignment);
    if (m_State)
        return m_State->keepRow(stored, row);
    for (WaitingRecord &record : m_Waiting) {
        if (record.hasObjects())
            record.keepRow(stored, row);
    }
}

void LiveSession::rowMoves(const Compound &alignment, std::size_t from, std::size_t to)
{
    if (!isRowToBeKept())
        return;
    const StoredObject &stored = *StoredObject::from(&alignment);
    bool isKept = !m_State || m_State->keepMove(stored, from, to);
    for (WaitingRecord &record : m_Waiting)
        isKept = isKept && (!record.hasObjects() || record.keepMove(stored, from, to));
    if (!isKept)
        goBack();
}

std::string LiveSession::store(const Edit &inverse)
{
    if (!isOfRows(inverse) || !keepsRows()) {
        // It is no more as it was.
        if (canGoBack() && isOfAlignments(inverse))
            goBack();
        else
            giveUp();
    }
    m_HasLaterOnes = m_HasLaterOnes || (!m_Large.empty() && bringsObjects(inverse));
    if (isInContents(inverse)) {
        m_IsOutOfOrder = m_IsOutOfOrder || doesNotFitContents(inverse);
        return kInContents;
    }
    std::string edit = m_Records.store(inverse);
    if (goesThroughRows(edit)) {
        if (const auto *const rows = dynamic_cast<const Alignment *>(inverse.subject()))
            m_Cost.addRows(rows->height(), rows->width());
    }
    std::vector<const StoredObject *> large = m_Writer.takeElsewhere();
    ValueWriter out;
    out.number(large.empty() ? 0 : ++m_LastLarge);
    // Of a million objects it is some megabytes, which are not to be there twice.
    edit.insert(0, out.bytes());
    if (!large.empty()) {
        m_Large.emplace(m_LastLarge, std::move(large));
        m_LargeNumbers.reset();
    }
    return edit;
}

bool LiveSession::isInContents(const Edit &inverse)
{
    if (m_Large.empty())
        return false;
    // That it was renamed does no harm when it is there twice, and that it left must be there.
    if (inverse.actsOnWhole() && isLarge(inverse.subject()))
        return false;
    std::vector<const Compound *> touched;
    inverse.appendSubjects(touched);
    inverse.appendHolders(touched);
    return std::ranges::any_of(touched, [this](const Compound *object) {
        for (; object != nullptr; object = object->Parent()) {
            if (isLarge(object))
                return true;
        }
        return false;
    });
}

// Contents are read where their object comes, and are those of the end of the step: what was done
// with a part before it was taken out of them has nothing to refer to, nor have they themselves
// when an object that they refer to comes later.
bool LiveSession::doesNotFitContents(const Edit &inverse) const
{
    std::vector<const Compound *> taken;
    inverse.appendOwned(taken);
    return !taken.empty() || (m_HasLaterOnes && isOfReferences(inverse));
}

bool LiveSession::isLarge(const Compound *object)
{
    const StoredObject *const stored = StoredObject::from(object);
    // Space comes with nothing, and is what most come to.
    if (stored == nullptr || stored == &m_Space)
        return false;
    // Those that are have got their numbers; what is just arriving has none.
    const CompoundState *const state = stored->ownState();
    if (state != nullptr && state->identity == 0)
        return false;
    if (!m_LargeNumbers) {
        std::vector<std::uint32_t> numbers;
        for (const auto &[edit, objects] : m_Large) {
            numbers.reserve(numbers.size() + objects.size());
            for (const StoredObject *large : objects)
                numbers.push_back(large->identity());
        }
        m_LargeNumbers.emplace(std::move(numbers));
    }
    return m_LargeNumbers->contains(stored->identity());
}

void LiveSession::stepEnds(StoredStep &&step)
{
    noteLacking();
    StoredStep kept;
    kept.name = std::move(step.name);
    bool isWhole = !m_IsOutOfOrder;
    for (std::size_t i = 0; i < step.edits.size(); ++i) {
        if (step.edits[i] == kInContents)
            continue;
        ValueReader in(step.edits[i]);
        // A step that was interrupted is told twice, and of the first time nothing is left.
        if (const std::uint64_t number = in.number(); number != 0) {
            std::vector<const StoredObject *> &large = m_Large[number];
            if (m_LargeOfStep.empty())
                m_LargeOfStep = std::move(large);
            else
                m_LargeOfStep.insert(m_LargeOfStep.end(), large.begin(), large.end());
        }
        isWhole = isWhole && !in.failed();
        step.edits[i].erase(0, step.edits[i].size() - in.left());
        kept.edits.push_back(std::move(step.edits[i]));
        kept.own += i < step.own ? 1 : 0;
    }
    forgetLarge();
    if (isWhole) {
        m_Records.stepEnds(std::move(kept));
    } else {
        // A change that could not be put into words: the state says what came of it.
        startAnew();
        noteLacking();
    }
    m_LargeOfStep.clear();
}

void LiveSession::forgetLarge()
{
    m_Large.clear();
    m_LargeNumbers.reset();
    m_HasLaterOnes = false;
    m_IsOutOfOrder = false;
    m_Writer.beginStep();
}

void LiveSession::travelled(std::size_t steps)
{
    const auto [begin, end] = std::minmax({m_History.position(), m_Position});
    const bool isBehind = !m_State || !m_State->isPinned() || begin >= m_State->pinnedSteps();
    if (!keepsRows() || !isBehind || !m_History.consistsOf(begin, end, isOfRows)) {
        if (canGoBack() && m_History.consistsOf(begin, end, isOfAlignments))
            goBack();
        else
            giveUp();
    }
    noteLacking();
    m_Cost.addSteps(end - begin);
    m_Records.travelled(steps);
}

// Objects of steps that are dropped go with them.
void LiveSession::forgotten(bool isFirst)
{
    if (m_State)
        goBack();
    m_Records.forgotten(isFirst);
}

void LiveSession::cleared()
{
    giveUp();
    m_Records.cleared();
}

void LiveSession::marked(const Compound &object, const StateMark &mark)
{
    if (canGoBack() && !m_State->isPinned())
        goBack();
    m_Records.marked(object, mark);
}

void LiveSession::take(std::string record)
{
    ++m_Taken;
    if (willHaveAll())
        // The state will have it.
        m_LargeOfStep.clear();
    else if (m_LargeOfStep.empty() && !hasMore())
        handOver(recordOf(RecordKind::Change, std::move(record)));
    else
        m_Waiting.emplace_back(std::exchange(m_LargeOfStep, {}), std::move(record));
}

} // namespace TAMBO::sessions
