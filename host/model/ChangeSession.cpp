// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChangeSession.h"

#include "ChangeScope.h"
#include "ObjectsEdit.h"
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

} // namespace

ChangeSession &ChangeSession::get()
{
    static auto *const session = new ChangeSession;
    return *session;
}

void ChangeSession::noteGuard(Publisher::ActionType action, Subscriber *originator) noexcept
{
    Publication &publication = m_Publications[action];
    if (!publication.isDue)
        publication = {true, originator};
    else if (publication.originator != originator)
        publication.originator = nullptr;
}

void ChangeSession::publishAtEnd(Publisher::ActionType action) noexcept
{
    m_Publications[action].isDue = true;
}

void ChangeSession::forget(const Subscriber *originator) noexcept
{
    for (Publication &publication : m_Publications) {
        if (publication.originator == originator)
            publication.originator = nullptr;
    }
}

void ChangeSession::record(std::unique_ptr<Edit> inverse)
{
    if (inverse == nullptr)
        return;
    if (!m_Step.empty()) {
        auto *const last = dynamic_cast<ObjectsEdit *>(m_Step.back().get());
        const auto *const next = dynamic_cast<const ObjectsEdit *>(inverse.get());
        if (last != nullptr && next != nullptr && last->absorb(*next))
            return;
    }
    m_Step.push_back(std::move(inverse));
}

void ChangeSession::recordGrowing(std::unique_ptr<GrowingEdit> inverse)
{
    m_Growing.push_back(inverse.get());
    m_Step.push_back(std::move(inverse));
}

void ChangeSession::handToRecorder()
{
    std::vector<std::unique_ptr<Edit>> step = std::exchange(m_Step, {});
    if (step.empty())
        return;
    if (m_Recorder == nullptr) {
        for (std::unique_ptr<Edit> &edit : step)
            m_Released.push_back(std::move(edit));
        return;
    }
    m_Recorder->begin();
    for (std::unique_ptr<Edit> &edit : step)
        m_Recorder->record(std::move(edit));
    m_Recorder->end();
}

void ChangeSession::close() noexcept
{
    if (m_Depth > 1) {
        --m_Depth;
        return;
    }
    for (GrowingEdit *edit : std::exchange(m_Growing, {}))
        edit->close();
    m_Logged.clear();
    // Still open: what the recorder drops must outlive the notification.
    runSafely([this] { handToRecorder(); });
    m_Depth = 0;

    // Taken out first: a subscriber may make a step of its own (a selection, say).
    const std::vector<std::unique_ptr<Edit>> released = std::exchange(m_Released, {});
    const std::array<Publication, 3> publications = std::exchange(m_Publications, {});

    // Deletions first, so that nobody updates the display of an object that is gone.
    SubscriberList &subscribers = SubscriberList::get();
    const bool wasPublishing = subscribers.isPublishing();
    subscribers.beginPublishing();
    for (const auto action : {Publisher::Delete, Publisher::Add, Publisher::Update}) {
        if (publications[action].isDue)
            subscribers.notify(action, publications[action].originator);
    }
    if (!wasPublishing)
        subscribers.endPublishing();

    runSafely([] {
        if (modelHooks().changed)
            modelHooks().changed();
    });
}

void ChangeSession::writeLogOnce(const std::string &message, LogSeverity severity)
{
    if (m_Depth > 0 && !m_Logged.insert(message).second)
        return;
    writeLog(message, severity);
}

void setEditRecorder(EditRecorder *recorder) noexcept
{
    ChangeSession::get().setRecorder(recorder);
}

EditRecorder *editRecorder() noexcept
{
    return ChangeSession::get().recorder();
}

} // namespace TAMBO
