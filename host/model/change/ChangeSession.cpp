// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChangeSession.h"

#include "Revisions.h"
#include "StepFollowers.h"
#include "SubscriberList.h"

#include <exception>
#include <utility>

namespace TAMBO {

namespace {

// A guard ends in a destructor, so whatever fails there goes to the log.
template <typename Function> void runSafely(const Function &function) noexcept
{
    try {
        function();
    } catch (const std::exception &error) {
        writeLog(std::string("A change could not be concluded: ") + error.what(),
                 LogSeverity::Error);
    } catch (...) {
        writeLog("A change could not be concluded.", LogSeverity::Error);
    }
}

void countChange(const Edit &inverse) noexcept
{
    if (isOfStructures(inverse.part()))
        growStructureRevision();
}

} // namespace

ChangeSession &ChangeSession::get()
{
    static auto *const session = new ChangeSession;
    return *session;
}

void ChangeSession::noteGuard(Publisher::ActionType action, Subscriber *originator) noexcept
{
    Publication &publication = m_Step.publications[action];
    if (!publication.isDue)
        publication = {true, originator};
    else if (publication.originator != originator)
        publication.originator = nullptr;
}

void ChangeSession::publishAtEnd(Publisher::ActionType action) noexcept
{
    m_Step.publications[action].isDue = true;
}

void ChangeSession::forget(const Subscriber *originator) noexcept
{
    const auto forgetIn = [originator](Step &step) {
        for (Publication &publication : step.publications) {
            if (publication.originator == originator)
                publication.originator = nullptr;
        }
    };
    forgetIn(m_Step);
    for (Interrupted &interrupted : m_Interrupted)
        forgetIn(interrupted.step);
}

void ChangeSession::record(std::unique_ptr<Edit> inverse)
{
    if (inverse == nullptr)
        return;
    countChange(*inverse);
    note(*inverse);
    if (!m_Step.inverses.empty() && m_Step.inverses.back()->absorb(*inverse))
        return;
    m_Step.inverses.push_back(std::move(inverse));
}

void ChangeSession::recordGrowing(std::unique_ptr<GrowingEdit> inverse)
{
    countChange(*inverse);
    m_Step.growing.push_back({inverse.get(), m_Step.stored.size()});
    if (isJournaled())
        m_Step.stored.emplace_back();
    m_Step.inverses.push_back(std::move(inverse));
}

void ChangeSession::tellJournal() noexcept
{
    if (m_Journal != nullptr)
        runSafely([this] { m_Journal->changeBegins(); });
}

void ChangeSession::tellOfRow(const Compound &alignment, std::size_t row) noexcept
{
    if (m_Journal != nullptr)
        runSafely([&] { m_Journal->rowChanges(alignment, row); });
}

void ChangeSession::tellOfMove(const Compound &alignment, std::size_t from, std::size_t to) noexcept
{
    if (m_Journal != nullptr)
        runSafely([&] { m_Journal->rowMoves(alignment, from, to); });
}

void ChangeSession::closeGrowing() noexcept
{
    for (const Growing &growing : std::exchange(m_Step.growing, {})) {
        if (isJournaled() && growing.stored < m_Step.stored.size())
            runSafely([&] { m_Step.stored[growing.stored] = m_Journal->store(*growing.edit); });
        growing.edit->close();
    }
}

void ChangeSession::note(const Edit &inverse)
{
    if (!isJournaled())
        return;
    std::string &stored = m_Step.stored.emplace_back();
    // Without it the record ends here; the change has been made in any case.
    runSafely([&] { stored = m_Journal->store(inverse); });
}

void ChangeSession::keep(std::unique_ptr<Edit> inverse)
{
    countChange(*inverse);
    note(*inverse);
    m_Step.inverses.push_back(std::move(inverse));
}

void ChangeSession::handToJournal()
{
    StoredStep step;
    step.edits = std::exchange(m_Step.stored, {});
    if (!isJournaled() || step.edits.empty())
        return;
    step.own = m_Step.ownStored.value_or(step.edits.size());
    if (m_Step.name != nullptr)
        step.name = *m_Step.name;
    m_Journal->stepEnds(std::move(step));
}

void ChangeSession::handToRecorder()
{
    std::vector<std::unique_ptr<Edit>> inverses = std::exchange(m_Step.inverses, {});
    if (inverses.empty())
        return;
    m_Step.refusal.clear();
    if (m_Recorder == nullptr) {
        for (std::unique_ptr<Edit> &edit : inverses)
            m_Step.released.push_back(std::move(edit));
        return;
    }
    const std::size_t own = m_Step.own.value_or(inverses.size());
    const bool isPlain = m_Step.name == nullptr && own == inverses.size();
    // First, since the recorder may tell what it drops.
    runSafely([this] { handToJournal(); });
    m_Recorder->begin();
    for (std::unique_ptr<Edit> &edit : inverses)
        m_Recorder->record(std::move(edit));
    if (!isPlain)
        m_Recorder->describe(m_Step.name == nullptr ? std::string() : *m_Step.name, own);
    m_Recorder->end();
}

void ChangeSession::callFollowers() noexcept
{
    StepFollowers &followers = StepFollowers::get();
    if (followers.empty() || m_Step.inverses.empty() || m_IsFollowing || m_IsReplaying)
        return;
    if (m_Recorder != nullptr && m_Recorder->isTravelling())
        return;
    m_Step.own = m_Step.inverses.size();
    m_Step.ownStored = m_Step.stored.size();
    // A step of its own would come between the changes of this one.
    ++m_Pauses;
    m_IsFollowing = true;
    followers.call(m_Step.inverses);
    m_IsFollowing = false;
    --m_Pauses;
    closeGrowing();
}

void ChangeSession::close() noexcept
{
    if (m_Step.depth > 1) {
        --m_Step.depth;
        return;
    }
    closeGrowing();
    callFollowers();
    m_IsReplaying = false;
    // Still open: what the recorder drops must outlive the notification.
    runSafely([this] { handToRecorder(); });
    // Taken out first: a subscriber may make a step of its own (a selection, say).
    publish(std::exchange(m_Step, {}));
    runWaiting();
}

void ChangeSession::takeBackChanges()
{
    closeGrowing();
    growStructureRevision();
    const std::array<Publication, 3> publications = m_Step.publications;
    std::vector<std::unique_ptr<Edit>> inverses = std::exchange(m_Step.inverses, {});
    for (; !inverses.empty(); inverses.pop_back())
        m_Step.released.push_back(inverses.back()->apply());
    // A journal need not know that there was anything.
    m_Step.stored.clear();
    // Whoever asked for a guard expects to be told, whatever has come of it.
    m_Step.publications = publications;
}

// ---- Arrivals

void ChangeSession::interrupt()
{
    closeGrowing();
    m_Interrupted.emplace_back().step = std::exchange(m_Step, {});
    m_Step.depth = 1;
    // Without a history there is no order of steps to be kept.
    if (m_Recorder == nullptr)
        return;
    Interrupted &interrupted = m_Interrupted.back();
    // What comes must not refer to an object that goes when the step is carried on.
    if (interrupted.step.publications[Publisher::Delete].isDue)
        endFirstPart(interrupted.step);
    else
        takeBack(interrupted);
    tellJournal();
}

void ChangeSession::resume() noexcept
{
    closeGrowing();
    callFollowers();
    runSafely([this] { handToRecorder(); });
    Interrupted interrupted = std::move(m_Interrupted.back());
    m_Interrupted.pop_back();
    const Step arrived = std::exchange(m_Step, std::move(interrupted.step));
    if (isOpen() && m_Journal != nullptr)
        runSafely([this] { m_Journal->changeGoesOn(); });
    runSafely([&] { repeat(interrupted.undone); });
    publish(arrived);
    runWaiting();
}

void ChangeSession::endFirstPart(Step &step)
{
    std::swap(m_Step.inverses, step.inverses);
    // What the recorder drops is released with the step, and so after it has been published.
    std::swap(m_Step.released, step.released);
    std::swap(m_Step.name, step.name);
    std::swap(m_Step.stored, step.stored);
    runSafely([this] { handToRecorder(); });
    std::swap(m_Step.name, step.name);
    std::swap(m_Step.released, step.released);
}

void ChangeSession::takeBack(Interrupted &interrupted)
{
    growStructureRevision();
    std::vector<std::unique_ptr<Edit>> &inverses = interrupted.step.inverses;
    for (; !inverses.empty(); inverses.pop_back())
        interrupted.undone.push_back(inverses.back()->apply());
    // It is told as it is done again.
    interrupted.step.stored.clear();
    // Nobody sees the objects in between.
    m_Step.publications = {};
}

void ChangeSession::repeat(const std::vector<std::unique_ptr<Edit>> &undone)
{
    const std::array<Publication, 3> publications = m_Step.publications;
    for (auto edit = undone.rbegin(); edit != undone.rend(); ++edit)
        keep((*edit)->repeat());
    m_Step.publications = publications;
}

// ---- Steps that were made before

void ChangeSession::beginReplay(const std::string &name)
{
    m_IsReplaying = true;
    nameStep(name);
}

void ChangeSession::discard()
{
    growStructureRevision();
    for (; !m_Step.inverses.empty(); m_Step.inverses.pop_back())
        m_Step.released.push_back(m_Step.inverses.back()->apply());
    m_Step.stored.clear();
    m_Step.own.reset();
}

void ChangeSession::publish(const Step &ended) noexcept
{
    // Deletions first, so that nobody updates the display of an object that is gone.
    SubscriberList &subscribers = SubscriberList::get();
    const bool wasPublishing = subscribers.isPublishing();
    subscribers.beginPublishing();
    for (const auto action : {Publisher::Delete, Publisher::Add, Publisher::Update}) {
        if (ended.publications[action].isDue)
            subscribers.notify(action, ended.publications[action].originator);
    }
    if (!wasPublishing)
        subscribers.endPublishing();

    runSafely([&ended] {
        if (modelHooks().changed)
            modelHooks().changed();
        if (!ended.refusal.empty() && modelHooks().denied)
            modelHooks().denied(ended.refusal, ended.refusing);
    });
}

void ChangeSession::whenNothingIsPublished(std::function<void()> task)
{
    if (m_Pauses == 0 && m_Waiting.empty() && !SubscriberList::get().isPublishing()) {
        runSafely(task);
        return;
    }
    m_Waiting.push_back(std::move(task));
    runWaiting();
}

void ChangeSession::endPause() noexcept
{
    --m_Pauses;
    runWaiting();
}

void ChangeSession::runWaiting() noexcept
{
    while (m_Pauses == 0 && !m_Waiting.empty() && !SubscriberList::get().isPublishing()) {
        const std::function<void()> task = std::move(m_Waiting.front());
        m_Waiting.pop_front();
        // One after the other, though each makes changes and so comes by here.
        ++m_Pauses;
        runSafely(task);
        --m_Pauses;
    }
}

bool ChangeSession::writeLogOnce(const std::string &message, LogSeverity severity)
{
    if (m_Step.depth > 0 && !m_Step.logged.insert(message).second)
        return false;
    writeLog(message, severity);
    return true;
}

void ChangeSession::nameStep(const std::string &name)
{
    const bool isNamed = m_Step.name != nullptr && m_Step.nameDepth <= m_Step.depth;
    if (m_IsFollowing || isNamed || name.empty())
        return;
    m_Step.name = std::make_unique<const std::string>(name);
    m_Step.nameDepth = m_Step.depth;
}

void ChangeSession::noteRefusal(const std::string &reason, const Compound &locked)
{
    if (!m_Step.refusal.empty())
        return;
    m_Step.refusal = reason;
    m_Step.refusing = &locked;
}

std::string ChangeSession::takeRefusal() noexcept
{
    m_Step.refusing = nullptr;
    return std::exchange(m_Step.refusal, {});
}

void setEditRecorder(EditRecorder *recorder) noexcept
{
    ChangeSession::get().setRecorder(recorder);
}

EditRecorder *editRecorder() noexcept
{
    return ChangeSession::get().recorder();
}

void setStepJournal(StepJournal *journal) noexcept
{
    ChangeSession::get().setJournal(journal);
}

StepJournal *stepJournal() noexcept
{
    return ChangeSession::get().journal();
}

} // namespace TAMBO
