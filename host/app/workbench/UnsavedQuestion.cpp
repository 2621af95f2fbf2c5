// SPDX-License-Identifier: GPL-3.0-or-later
#include "UnsavedQuestion.h"

#include "JobList.h"
#include "ObjectReferences.h"
#include "SaveCommand.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <memory>
#include <set>

namespace TAMBO::app {

namespace {

using Things = std::vector<SavedPlaces::Unsaved>;

std::set<const Compound *> objectsOf(const Things &things)
{
    std::set<const Compound *> objects;
    for (const SavedPlaces::Unsaved &thing : things)
        objects.insert(thing.object);
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
        const Things things = m_Places.unsaved();
        const std::set<const Compound *> objects = objectsOf(things);
        // What a job has made meanwhile is asked about as well.
        const bool isNew = !std::ranges::includes(asked, objects);
        if (!isNew && (!isFirst || m_Jobs.jobs().empty()))
            return Outcome::GoOn;
        UnsavedDialog dialog(UnsavedDialog::Purpose::Quit, things, &m_Jobs, parent);
        dialog.exec();
        const bool isSaving = dialog.answer() == UnsavedDialog::Answer::Save;
        if (dialog.answer() == UnsavedDialog::Answer::Stay ||
            (isSaving && !save(things, dialog.checked(), parent)))
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

bool UnsavedQuestion::mayClose(const std::vector<Compound *> &objects, QWidget *parent)
{
    Things things = m_Places.unsaved();
    std::erase_if(things, [&objects](const SavedPlaces::Unsaved &thing) {
        return std::ranges::find(objects, thing.object) == objects.end();
    });
    if (things.empty())
        return true;
    const QScopedValueRollback<bool> open(m_IsOpen, true);
    UnsavedDialog dialog(UnsavedDialog::Purpose::Close, things, nullptr, parent);
    dialog.exec();
    return dialog.answer() == UnsavedDialog::Answer::Discard ||
           (dialog.answer() == UnsavedDialog::Answer::Save &&
            save(things, dialog.checked(), parent));
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
