// SPDX-License-Identifier: GPL-3.0-or-later
#include "UnsavedQuestion.h"

#include "JobList.h"
#include "ObjectReferences.h"
#include "SaveCommand.h"
#include "SessionDocument.h"
#include "SessionSaving.h"

#include <QFileInfo>
#include <QScopedValueRollback>

#include <algorithm>
#include <memory>
#include <set>

namespace TAMBO::app {

namespace {

using Things = std::vector<SavedPlaces::Unsaved>;

// Null stands for the session.
std::set<const Compound *> askedIn(const Things &things, const QString &session)
{
    std::set<const Compound *> objects;
    for (const SavedPlaces::Unsaved &thing : things)
        objects.insert(thing.object);
    if (!session.isEmpty())
        objects.insert(nullptr);
    return objects;
}

} // namespace

UnsavedQuestion::Outcome UnsavedQuestion::beforeQuitting(QWidget *parent)
{
    const QScopedValueRollback<bool> open(m_IsOpen, true);
    return askToQuit(parent);
}

UnsavedQuestion::Outcome UnsavedQuestion::askToQuit(QWidget *parent)
{
    std::set<const Compound *> asked;
    bool isFirst = true;
    for (;;) {
        const Things things = unsaved();
        const QString session = unsavedSession();
        const std::set<const Compound *> objects = askedIn(things, session);
        // What a job has made meanwhile is asked about as well.
        const bool isNew = !std::ranges::includes(asked, objects);
        if (!isNew && (!isFirst || m_Jobs.jobs().empty()))
            return Outcome::GoOn;
        UnsavedDialog dialog(UnsavedDialog::Purpose::Quit, things, session, &m_Jobs, parent);
        dialog.exec();
        if (!carryOut(dialog, things, parent))
            return Outcome::Stay;
        if (!m_Jobs.jobs().empty() && dialog.jobs() == UnsavedDialog::Jobs::Wait)
            return Outcome::Wait;
        if (dialog.jobs() == UnsavedDialog::Jobs::Cancel)
            cancelJobs();
        asked.insert(objects.begin(), objects.end());
        isFirst = false;
    }
}

void UnsavedQuestion::cancelJobs()
{
    const std::vector<services::JobList::Job> jobs = m_Jobs.jobs();
    for (const services::JobList::Job &job : jobs)
        m_Jobs.cancel(job.number);
}

UnsavedQuestion::Things UnsavedQuestion::unsaved() const
{
    Things things = m_Places.unsaved();
    std::vector<const Compound *> objects;
    for (const SavedPlaces::Unsaved &thing : things)
        objects.push_back(thing.object);
    const std::vector<bool> held = m_Session.holds(objects);
    std::size_t next = 0;
    std::erase_if(things, [&](const SavedPlaces::Unsaved &) { return held[next++]; });
    return things;
}

QString UnsavedQuestion::unsavedSession() const
{
    return m_Session.isModified() ? QFileInfo(m_Session.file()).fileName() : QString();
}

bool UnsavedQuestion::mayClose(const std::vector<Compound *> &objects, QWidget *parent)
{
    Things things = unsaved();
    std::erase_if(things, [&objects](const SavedPlaces::Unsaved &thing) {
        return std::ranges::find(objects, thing.object) == objects.end();
    });
    return things.empty() || askToClose(things, unsavedSession(), parent);
}

bool UnsavedQuestion::mayCloseAll(QWidget *parent)
{
    const Things things = unsaved();
    const QString session = unsavedSession();
    return (things.empty() && session.isEmpty()) || askToClose(things, session, parent);
}

bool UnsavedQuestion::askToClose(const Things &things, const QString &session, QWidget *parent)
{
    const QScopedValueRollback<bool> open(m_IsOpen, true);
    UnsavedDialog dialog(UnsavedDialog::Purpose::Close, things, session, nullptr, parent);
    dialog.exec();
    return carryOut(dialog, things, parent);
}

bool UnsavedQuestion::carryOut(const UnsavedDialog &dialog, const Things &things, QWidget *parent)
{
    switch (dialog.answer()) {
    case UnsavedDialog::Answer::Save:
        return save(things, dialog.checked(), parent);
    case UnsavedDialog::Answer::SaveSession:
        return m_Saving.save(parent);
    case UnsavedDialog::Answer::Discard:
        return true;
    case UnsavedDialog::Answer::Stay:
        break;
    }
    return false;
}

bool UnsavedQuestion::save(const Things &things, const std::vector<std::size_t> &chosen,
                           QWidget *parent)
{
    // Some of them may leave while files are asked for.
    std::vector<std::unique_ptr<ObjectReferences>> references;
    references.reserve(chosen.size());
    for (const std::size_t index : chosen)
        references.push_back(
            std::make_unique<ObjectReferences>(std::vector<Compound *>{things[index].object}));
    return std::ranges::all_of(references, [&](const auto &reference) {
        return reference->objects().empty() ||
               SaveCommand(m_Places, *reference->objects().front(), parent).saveSafely().isSaved;
    });
}

} // namespace TAMBO::app
