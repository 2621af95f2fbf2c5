// SPDX-License-Identifier: GPL-3.0-or-later
#include "SaveCommand.h"

#include "ExportDialog.h"
#include "FailureBoxes.h"
#include "KeptState.h"
#include "Logger.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "SavedPlaces.h"
#include "WritableObject.h"
#include "WriteJob.h"
#include "WriteWait.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <memory>
#include <optional>

namespace TAMBO::app {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("SaveCommand", text);
}

bool saveByDialog(SavedPlaces &places, Compound &object, QWidget *parent)
{
    const ObjectReferences reference({&object});
    ExportDialog dialog({&object}, &object, parent);
    dialog.setPlaces(places);
    const SavedPlaces::Place beside = places.suggestionFor(object);
    dialog.saveInstead(beside.file.isEmpty() ? QString() : QFileInfo(beside.file).absolutePath(),
                       beside.options.format);
    if (dialog.exec() == QDialog::Rejected || reference.objects().empty())
        return false;
    places.accept(object, dialog.losses());
    places.noteSaved(object, {dialog.file(), dialog.options()}, *dialog.takeState());
    return true;
}

} // namespace

bool saveObject(SavedPlaces &places, Compound &object, QWidget *parent)
{
    const std::optional<SavedPlaces::Place> place = places.placeOf(object);
    if (!place)
        return saveByDialog(places, object, parent);
    const QString name = nameText(object);
    const std::unique_ptr<KeptState> state = places.keepState(object);
    WriteJob job(std::make_shared<WritableObject>(object), place->file, place->options);
    job.start();
    const Result<void> written = waitToTheEnd(job, translated("Save"), parent);
    if (!written && written.error().kind == FailureKind::Cancelled)
        return false;
    if (!written) {
        const QString cause = QString::fromStdString(written.error().message());
        Logger::Write(cause, Logger::Severity::Error);
        services::FailureBoxes::showOver(parent, translated("%1 could not be saved.").arg(name),
                                         {cause});
        return false;
    }
    Logger::Write(translated("Saved %1 to %2").arg(name, place->file));
    places.noteSavedAgain(*state);
    return true;
}

} // namespace TAMBO::app
