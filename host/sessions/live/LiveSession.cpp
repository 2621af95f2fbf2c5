// SPDX-License-Identifier: GPL-3.0-or-later
#include "LiveSession.h"

#include "Compound.h"
#include "CompoundState.h"
#include "Edit.h"
#include "History.h"
#include "ObjectSpace.h"
#include "ObjectStore.h"
#include "ObjectWriter.h"
#include "StateParts.h"
#include "StoredObject.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace TAMBO::sessions {

namespace {

// Stands for a change that is in the content of an object. No number.
const std::string kInContents = "\xff";

std::int64_t millisecondsNow()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

Record recordOf(RecordKind kind, std::string content)
{
    return {static_cast<std::uint32_t>(kind), millisecondsNow(), {}, std::move(content)};
}

} // namespace

class LiveSession::Task
{
public:
    Task() = default;
    virtual ~Task() = default;
    Task(const Task &) = delete;
    Task &operator=(const Task &) = delete;

    // The next entry, of about so many bytes; nothing behind the last one.
    [[nodiscard]] virtual std::optional<StoreEntry> next(std::size_t bytes) = 0;
};

class LiveSession::StateTask final : public Task
{
public:
    StateTask(const ObjectSpace &space, const History &history) : m_Parts(space, history) { }

    std::optional<StoreEntry> next(std::size_t bytes) override
    {
        if (m_IsDone)
            return std::nullopt;
        if (std::optional<StatePart> part = m_Parts.next(bytes))
            return StoreEntry(std::move(*part));
        m_IsDone = true;
        return StoreEntry(StateSwitch());
    }

private:
    StateParts m_Parts;
    bool m_IsDone = false;
};

class LiveSession::RecordTask final : public Task
{
public:
    RecordTask(std::vector<const StoredObject *> large, std::string record)
        : m_Large(std::move(large)), m_Record(std::move(record))
    { }

    std::optional<StoreEntry> next(std::size_t bytes) override
    {
        ObjectWriter out;
        if (m_Large.writeNext(out, bytes))
            return StoreEntry(recordOf(RecordKind::Objects, out.take()));
        if (!m_Record)
            return std::nullopt;
        StoreEntry entry(recordOf(RecordKind::Change, std::move(*m_Record)));
        m_Record.reset();
        return entry;
    }

private:
    ObjectStore m_Large;
    std::optional<std::string> m_Record;
};

LiveSession::LiveSession(ObjectSpace &space, History &history, Sink sink, std::size_t small)
    : m_Space(space),
      m_History(history),
      m_Sink(std::move(sink)),
      m_Writer(small),
      m_Records(m_Writer, [this](std::string record) { take(std::move(record)); })
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
    m_Tasks.clear();
    m_Tasks.push_back(std::make_unique<StateTask>(m_Space, m_History));
}

bool LiveSession::writeMore(std::size_t bytes)
{
    while (!m_Tasks.empty()) {
        std::optional<StoreEntry> entry = m_Tasks.front()->next(bytes);
        if (!entry) {
            m_Tasks.pop_front();
            continue;
        }
        const std::size_t size = bytesOf(*entry);
        m_Sink(std::move(*entry));
        if (size >= bytes)
            return true;
        bytes -= size;
    }
    return false;
}

void LiveSession::finish()
{
    // Not all at once: an entry is a single value in the store.
    constexpr std::size_t kPiece = std::size_t(1) << 20;
    while (writeMore(kPiece))
        ;
}

// ---- What is told

void LiveSession::changeBegins()
{
    if (!m_Tasks.empty())
        finish();
}

std::string LiveSession::store(const Edit &inverse)
{
    if (isInContents(inverse))
        return kInContents;
    const std::string edit = m_Records.store(inverse);
    std::vector<const StoredObject *> large = m_Writer.takeElsewhere();
    ValueWriter out;
    out.number(large.empty() ? 0 : ++m_LastLarge);
    out.raw(edit);
    if (!large.empty()) {
        m_Large.emplace(m_LastLarge, std::move(large));
        m_LargeSet.reset();
    }
    return out.take();
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

bool LiveSession::isLarge(const Compound *object)
{
    const StoredObject *const stored = StoredObject::from(object);
    if (stored == nullptr)
        return false;
    // Those that are have got their numbers; what is just arriving has none.
    const CompoundState *const state = stored->ownState();
    if (state != nullptr && state->identity == 0)
        return false;
    if (!m_LargeSet) {
        m_LargeSet.emplace();
        for (const auto &[number, objects] : m_Large) {
            for (const StoredObject *large : objects)
                m_LargeSet->insert(large);
        }
    }
    return m_LargeSet->contains(stored);
}

void LiveSession::stepEnds(StoredStep &&step)
{
    StoredStep kept;
    kept.name = std::move(step.name);
    bool isWhole = true;
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
        kept.edits.emplace_back(in.raw(in.left()));
        kept.own += i < step.own ? 1 : 0;
    }
    m_Large.clear();
    m_LargeSet.reset();
    m_Writer.beginStep();
    if (isWhole)
        m_Records.stepEnds(std::move(kept));
    else
        // A change that could not be put into words: the state says what came of it.
        startAnew();
    m_LargeOfStep.clear();
}

void LiveSession::travelled(std::size_t steps)
{
    m_Records.travelled(steps);
}

void LiveSession::forgotten(bool isFirst)
{
    m_Records.forgotten(isFirst);
}

void LiveSession::cleared()
{
    m_Records.cleared();
}

void LiveSession::marked(const Compound &object, const StateMark &mark)
{
    m_Records.marked(object, mark);
}

void LiveSession::take(std::string record)
{
    if (m_Tasks.empty() && m_LargeOfStep.empty())
        m_Sink(recordOf(RecordKind::Change, std::move(record)));
    else
        m_Tasks.push_back(
            std::make_unique<RecordTask>(std::exchange(m_LargeOfStep, {}), std::move(record)));
}

} // namespace TAMBO::sessions
