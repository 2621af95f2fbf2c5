// SPDX-License-Identifier: GPL-3.0-or-later
#include "PickedSaving.h"

#include "Compound.h"
#include "ObjectReferences.h"
#include "PointerSet.h"
#include "SaveCommand.h"
#include "SavedPlaces.h"
#include "Space.h"

#include <QFileInfo>

#include <algorithm>
#include <memory>

namespace TAMBO::app {

namespace {

bool hasFile(const Compound &object)
{
    const CompoundKind kind = object.Kind();
    return kind == CompoundKind::Alignment || kind == CompoundKind::Structure ||
           kind == CompoundKind::Sequence;
}

Compound *savableAt(Compound *object)
{
    while (object != nullptr && object->Parent() != Space::instance())
        object = object->Parent();
    return object != nullptr && hasFile(*object) ? object : nullptr;
}

QString lastPartOf(const QString &file)
{
    return QFileInfo(file).fileName();
}

} // namespace

PickedSaving::Objects PickedSaving::savable(const Objects &picked)
{
    Objects objects;
    PointerSet<Compound> known;
    for (Compound *object : picked) {
        Compound *const found = savableAt(object);
        if (found != nullptr && known.insert(found))
            objects.push_back(found);
    }
    return objects;
}

bool PickedSaving::canSave()
{
    return std::ranges::any_of(*Space::instance(),
                               [](const Compound *object) { return hasFile(*object); });
}

PickedSaving::Choice PickedSaving::choose(const Objects &picked) const
{
    if (!picked.empty())
        return {savable(picked), tr("What is selected cannot be saved.")};
    const Objects unsaved = m_Places.unsavedObjects();
    if (unsaved.size() == 1)
        return {unsaved, {}};
    return {{},
            unsaved.empty() ? tr("Nothing is unsaved.")
                            : tr("Several objects are unsaved: select those to save.")};
}

PickedSaving::Objects PickedSaving::unsavedOf(const Objects &picked) const
{
    const Objects unsaved = m_Places.unsavedObjects();
    const PointerSet<Compound> known(unsaved.begin(), unsaved.end());
    Objects objects = savable(picked);
    std::erase_if(objects, [&known](const Compound *object) { return !known.contains(object); });
    return objects;
}

QString PickedSaving::save(const Objects &picked, bool isByUser) const
{
    const Choice choice = choose(isByUser ? picked : unsavedOf(picked));
    if (choice.objects.empty())
        return choice.refusal;
    // Some of them may leave while files are asked for.
    std::vector<std::unique_ptr<ObjectReferences>> references;
    for (Compound *object : choice.objects)
        references.push_back(std::make_unique<ObjectReferences>(Objects{object}));
    QStringList files;
    bool isWritten = false;
    for (const auto &reference : references) {
        if (reference->objects().empty())
            continue;
        const SaveCommand::Outcome outcome =
            SaveCommand(m_Places, *reference->objects().front(), &m_Parent).save();
        // What was not saved was called off or has been told, and the user is to see it.
        if (!outcome.isSaved)
            break;
        isWritten = isWritten || outcome.isWritten;
        files << outcome.file;
    }
    if (files.isEmpty())
        return {};
    if (!isWritten)
        return files.size() == 1 ? tr("%1 is up to date.").arg(lastPartOf(files.front()))
                                 : tr("%L1 files are up to date.").arg(files.size());
    return files.size() == 1 ? tr("Saved %1").arg(lastPartOf(files.front()))
                             : tr("Saved %L1 files").arg(files.size());
}

QString PickedSaving::saveAs(const Objects &picked, bool isByUser) const
{
    const bool isMeant = isByUser || savable(picked).size() == 1;
    const Choice choice = choose(isMeant ? picked : unsavedOf(picked));
    if (choice.objects.empty())
        return choice.refusal;
    if (choice.objects.size() > 1)
        return tr("Save As takes one object.");
    const SaveCommand::Outcome outcome =
        SaveCommand(m_Places, *choice.objects.front(), &m_Parent).saveAs();
    return outcome.isSaved ? tr("Saved %1").arg(lastPartOf(outcome.file)) : QString();
}

} // namespace TAMBO::app
