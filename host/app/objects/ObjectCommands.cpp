// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectCommands.h"

#include "Alignment.h"
#include "BaseWindow.h"
#include "ChangedFileBox.h"
#include "ColorPicking.h"
#include "DataDelete.h"
#include "DataPoint.h"
#include "DestroyedObjects.h"
#include "ExportDialog.h"
#include "ExportRuns.h"
#include "KeptState.h"
#include "LongWork.h"
#include "ObjectFacts.h"
#include "ObjectNotes.h"
#include "ObjectOperations.h"
#include "ObjectReferences.h"
#include "ObjectSources.h"
#include "PointerSet.h"
#include "PropertiesDialog.h"
#include "RenumberDialog.h"
#include "RenumberTable.h"
#include "SavedPlaces.h"
#include "Selections.h"
#include "Space.h"
#include "StatusLine.h"
#include "StoredObject.h"
#include "Structure.h"
#include "StructuresDialog.h"
#include "WritableObject.h"
#include "WriteJob.h"

#include <QApplication>
#include <QCursor>
#include <QFile>
#include <QInputDialog>
#include <QMenu>

#include <algorithm>
#include <iterator>
#include <utility>

namespace TAMBO::app {

struct ObjectCommands::Entry
{
    QAction *action;
    std::function<void(const Objects &objects)> run;
};

namespace {

// One step of undo around a change of each object that its lock allows. False when the user has
// given it up.
template <typename Change>
bool changeEach(const ObjectCommands::Objects &objects, const char *what, LongWork::Kind kind,
                const Change &change)
{
    LongWork work(what, objects.size(), kind);
    const DataPoint<Space> step(nullptr, Space::instance());
    if (!step.m_good)
        return true;
    for (Compound *object : objects) {
        if (!work.goesOn())
            return false;
        const DataPoint<Compound> guard(nullptr, object);
        if (guard.m_good)
            change(*object);
    }
    return true;
}

ObjectCommands::Objects writableObjects()
{
    ObjectCommands::Objects objects;
    for (Compound *object : *Space::instance()) {
        if (WritableObject::isWritable(*object))
            objects.push_back(object);
    }
    return objects;
}

bool hasSequence(const Compound &object)
{
    switch (object.Kind()) {
    case CompoundKind::Structure:
    case CompoundKind::Chain:
    case CompoundKind::Sequence:
    case CompoundKind::Alignment:
        return true;
    default:
        return false;
    }
}

QString residuesText(std::size_t count)
{
    return count == 1 ? ObjectCommands::tr("1 residue")
                      : ObjectCommands::tr("%L1 residues").arg(count);
}

QString wholeName(const ObjectCommands::Objects &objects)
{
    return objects.size() == 1 ? fullNameText(*objects.front())
                               : ObjectCommands::tr("%L1 objects").arg(objects.size());
}

// Two at least, when nothing else was picked; else none.
std::vector<Structure *> structuresOf(const ObjectCommands::Objects &picked)
{
    std::vector<Structure *> structures;
    for (Compound *const object : picked)
        if (auto *const structure = dynamic_cast<Structure *>(object))
            structures.push_back(structure);
    const bool areAll = structures.size() == picked.size() && structures.size() > 1;
    return areAll ? structures : std::vector<Structure *>{};
}

// The object itself, or what it is a part of.
const Compound *writableAt(const Compound *object)
{
    while (object != nullptr && !WritableObject::isWritable(*object))
        object = object->Parent();
    return object;
}

} // namespace

ObjectCommands::ObjectCommands(const ObjectSources &sources) : m_Sources(sources) { }

// A window of a plug-in ends its dialogs when it is closed; others are the workbench's to ask over.
QWidget *ObjectCommands::dialogParent() const
{
    QWidget *const active = QApplication::activeWindow();
    const bool isCaller =
        active != nullptr && active->isVisible() && qobject_cast<BaseWindow *>(active) != nullptr;
    return isCaller ? active : m_DialogParent;
}

bool ObjectCommands::select(const Objects &objects, bool selected)
{
    // It can be given up, though no history takes a selection back: what is selected can be seen.
    return changeEach(objects, "Selecting", LongWork::Kind::Reading,
                      [selected](Compound &object) { object.SetSelected(selected); });
}

// The deselected ones first: one may hold, or be part of, a selected one.
void ObjectCommands::changeSelection(const Objects &selected, const Objects &deselected)
{
    const DataPoint<Space> step(nullptr, Space::instance());
    if (!step.m_good)
        return;
    if (select(deselected, false))
        select(selected, true);
}

void ObjectCommands::selectNone()
{
    const DataPoint<Space> guard(nullptr, Space::instance());
    if (!guard.m_good)
        return;
    const SelectedCount count = Selections::deselectAll();
    if (count.isNone())
        StatusLine::Say(tr("Nothing is selected."));
    else if (count.residues == 0)
        StatusLine::Say(tr("Nothing is selected any more; Select Again in the menu Edit selects "
                           "again what was."));
    else
        StatusLine::Say(tr("Deselected %1; Select Again in the menu Edit takes that back.")
                            .arg(residuesText(count.residues)));
}

void ObjectCommands::selectAgain()
{
    const DataPoint<Space> guard(nullptr, Space::instance());
    if (!guard.m_good)
        return;
    const SelectedCount count = Selections::selectAgain();
    if (count.isNone())
        StatusLine::Say(tr("Nothing of what was deselected last is left to be selected again."));
    else if (count.residues == 0)
        StatusLine::Say(tr("What was deselected is selected again."));
    else
        StatusLine::Say(tr("Selected %1 again.").arg(residuesText(count.residues)));
}

void ObjectCommands::color(const Objects &objects, const QColor &color)
{
    changeEach(objects, "Coloring", LongWork::Kind::Changing,
               [&color](Compound &object) { object.SetColor(Color(color)); });
}

void ObjectCommands::rename(Compound &object, const QString &name)
{
    changeEach({&object}, "Renaming", LongWork::Kind::Fixed,
               [&name](Compound &renamed) { renameObject(renamed, name.toStdString()); });
}

void ObjectCommands::setLocked(const Objects &objects, bool locked)
{
    // No guard on the objects themselves: a locked one would refuse to be unlocked.
    const DataPoint<Space> guard(nullptr, Space::instance());
    if (!guard.m_good)
        return;
    for (Compound *object : objects)
        setObjectLocked(*object, locked);
}

std::size_t ObjectCommands::destroy(const Objects &objects)
{
    LongWork work("Deleting", objects.size(), LongWork::Kind::Reading);
    const DataDelete<Space> step(nullptr, Space::instance());
    if (!step.m_good)
        return 0;
    Objects going;
    going.reserve(objects.size());
    for (Compound *object : uppermost(objects)) {
        if (!work.goesOn())
            return 0;
        // What is above an object that goes must allow it too.
        const DataPoint<Compound> guard(nullptr, object);
        if (guard.m_good && isDestroyable(*object))
            going.push_back(object);
    }
    destroyObjects(going);
    return going.size();
}

bool ObjectCommands::isDestroyable(const Compound &object)
{
    switch (kindOf(object)) {
    case ObjectKind::Residue:
    case ObjectKind::Group:
    case ObjectKind::Atom:
    case ObjectKind::Other:
        return false;
    default:
        return true;
    }
}

ObjectCommands::Objects ObjectCommands::uppermost(const Objects &objects)
{
    const PointerSet<Compound> all(objects.begin(), objects.end());
    Objects result;
    for (Compound *object : objects) {
        const Compound *above = object->Parent();
        while (above != nullptr && !all.contains(above))
            above = above->Parent();
        if (above == nullptr)
            result.push_back(object);
    }
    return result;
}

void ObjectCommands::askColor(const Objects &objects) const
{
    if (objects.empty())
        return;
    const ObjectReferences references(objects);
    const QColor chosen =
        services::pickColor(objects.front()->OwnColor().toQColor(), dialogParent(),
                            tr("Color of %1").arg(wholeName(objects)));
    if (chosen.isValid())
        color(references.objects(), chosen);
}

void ObjectCommands::askRename(Compound &object) const
{
    const ObjectReferences references({&object});
    bool accepted = false;
    const QString name =
        QInputDialog::getText(dialogParent(), tr("Rename %1").arg(fullNameText(object)),
                              tr("Name of the %1:").arg(kindText(kindOf(object))),
                              QLineEdit::Normal, QString::fromStdString(object.Name()), &accepted)
            .trimmed();
    if (accepted && !name.isEmpty() && !references.objects().empty())
        rename(object, name);
}

void ObjectCommands::askRenumber(const Objects &objects) const
{
    const Objects sequences = RenumberTable::sequencesOf(objects);
    if (sequences.empty())
        return;
    const ObjectReferences references(sequences);
    RenumberDialog dialog(sequences, dialogParent());
    // Without one of them the rows of the table are not those of the objects any more.
    if (dialog.exec() == QDialog::Accepted && references.objects().size() == sequences.size())
        dialog.table().apply(sequences);
}

void ObjectCommands::showProperties(const Compound &object) const
{
    std::vector<Fact> facts = factsOf(object);
    const std::optional<SavedPlaces::Place> place =
        m_Places == nullptr ? std::nullopt : m_Places->lastPlaceOf(object);
    const std::filesystem::path file = m_Sources.fileOf(object);
    if (place)
        facts.emplace_back(tr("File"), place->file);
    else if (!file.empty())
        facts.emplace_back(tr("File"), QFile::decodeName(file.c_str()));
    if (place && place->state) {
        const QString news =
            changeText(checkFile(QFile::encodeName(place->file).toStdString(), *place->state));
        if (!news.isEmpty())
            facts.emplace_back(tr("File on the disk"), news);
    }
    PropertiesDialog dialog(fullNameText(object), facts, dialogParent());
    if (const ObjectNote *const note = m_Notes == nullptr ? nullptr : m_Notes->of(object)) {
        std::vector<Fact> known;
        for (const auto &[name, value] : note->values)
            known.emplace_back(QString::fromStdString(name), QString::fromStdString(value));
        dialog.add(QString::fromStdString(note->title), known);
    }
    dialog.exec();
}

bool ObjectCommands::canExport()
{
    // An alignment stands behind the sequences that came with it, of which there may be a million.
    Space &space = *Space::instance();
    return std::any_of(std::make_reverse_iterator(space.end()),
                       std::make_reverse_iterator(space.begin()),
                       [](const Compound *object) { return WritableObject::isWritable(*object); });
}

QString ObjectCommands::askExport(const Objects &picked) const
{
    if (const std::vector<Structure *> several = structuresOf(picked); !several.empty()) {
        StructuresDialog dialog(several, dialogParent());
        return runExport(dialog);
    }
    const Objects objects = writableObjects();
    if (objects.empty())
        return {};
    const Compound *chosen = nullptr;
    for (std::size_t i = 0; i < picked.size() && chosen == nullptr; ++i)
        chosen = writableAt(picked[i]);
    ExportDialog dialog(objects, chosen, dialogParent());
    return dialog.isGivenUp() ? QString() : runExport(dialog);
}

QString ObjectCommands::runExport(WriteDialog &dialog) const
{
    if (m_Places != nullptr)
        dialog.setPlaces(*m_Places);
    dialog.setGoesOn(m_Exports != nullptr);
    dialog.exec();
    QString first;
    for (const ExportRuns::Order &order : dialog.takeWritten()) {
        if (first.isEmpty())
            first = order.job->path();
        if (m_Places != nullptr)
            ExportRuns::note(*m_Places, order, order.job->path());
    }
    if (std::vector<ExportRuns::Order> rest = dialog.takeRest(); !rest.empty())
        m_Exports->take(std::move(rest), m_DialogParent);
    return first;
}

void ObjectCommands::fillMenu(QMenu &menu, const Objects &objects,
                              std::vector<Entry> &entries) const
{
    const auto add = [&](const QString &text, bool isEnabled,
                         std::function<void(const Objects &)> run) {
        QAction *action = menu.addAction(text);
        action->setEnabled(isEnabled);
        entries.push_back({action, std::move(run)});
    };
    const auto all = [&](auto property) { return std::ranges::all_of(objects, property); };
    const bool isSingle = objects.size() == 1;
    const bool areLocked = all([](const Compound *object) { return object->IsLocked(); });

    if (m_Editor && isSingle && dynamic_cast<Alignment *>(objects.front()) != nullptr) {
        add(tr("Open in the &Editor"), true, [this](const Objects &chosen) {
            m_Editor(dynamic_cast<Alignment &>(*chosen.front()));
        });
        menu.setDefaultAction(entries.back().action);
        menu.addSeparator();
    }
    add(tr("&Select"), !all([](const Compound *object) { return object->IsSelected(); }),
        [](const Objects &chosen) { select(chosen, true); });
    add(tr("D&eselect"), true, [](const Objects &chosen) { select(chosen, false); });
    add(tr("&Color…"), true, [this](const Objects &chosen) { askColor(chosen); });
    menu.addSeparator();
    add(tr("&Rename…"), isSingle && isRenamable(*objects.front()),
        [this](const Objects &chosen) { askRename(*chosen.front()); });
    add(tr("Re&number…"), all([](const Compound *object) { return hasSequence(*object); }),
        [this](const Objects &chosen) { askRenumber(chosen); });
    add(areLocked ? tr("Un&lock") : tr("&Lock"),
        all([](Compound *object) { return stateOf(*object) != nullptr; }),
        [areLocked](const Objects &chosen) { setLocked(chosen, !areLocked); });
    add(tr("E&xport…"),
        (isSingle && writableAt(objects.front()) != nullptr) || !structuresOf(objects).empty(),
        [this](const Objects &chosen) { askExport(chosen); });
    add(tr("&Delete"), all([](const Compound *object) { return isDestroyable(*object); }),
        [](const Objects &chosen) { destroy(chosen); });
    menu.addSeparator();
    add(tr("&Properties…"), isSingle,
        [this](const Objects &chosen) { showProperties(*chosen.front()); });
}

void ObjectCommands::popUpMenu(const Objects &objects) const
{
    if (objects.empty())
        return;
    const ObjectReferences references(objects);
    QMenu menu;
    menu.setObjectName(QStringLiteral("ObjectMenu"));
    const QString title = wholeName(objects);
    menu.addSection(title);
    // A menu is as broad as its entries only.
    constexpr int kMargins = 32;
    constexpr int kBroadest = 640;
    menu.setMinimumWidth(
        std::min(menu.fontMetrics().horizontalAdvance(title) + kMargins, kBroadest));
    std::vector<Entry> entries;
    fillMenu(menu, objects, entries);
    const QAction *chosen = menu.exec(QCursor::pos());
    const auto entry = std::ranges::find(entries, chosen, &Entry::action);
    // What was offered was offered for all of them.
    if (entry != entries.end() && references.objects().size() == objects.size())
        entry->run(objects);
}

} // namespace TAMBO::app
