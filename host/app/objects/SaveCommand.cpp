// SPDX-License-Identifier: GPL-3.0-or-later
#include "SaveCommand.h"

#include "ExportDialog.h"
#include "FailureBoxes.h"
#include "Logger.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "SavedPlaces.h"
#include "WritableObject.h"

#include <QApplication>
#include <QFileInfo>

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
    places.noteSaved(object, {dialog.file(), dialog.options()});
    return true;
}

} // namespace

bool saveObject(SavedPlaces &places, Compound &object, QWidget *parent)
{
    const std::optional<SavedPlaces::Place> place = places.placeOf(object);
    if (!place)
        return saveByDialog(places, object, parent);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const Result<void> written = WritableObject(object).write(place->file, place->options);
    QApplication::restoreOverrideCursor();
    if (!written) {
        const QString cause = QString::fromStdString(written.error().message());
        Logger::Write(cause, Logger::Severity::Error);
        services::FailureBoxes::showOver(
            parent, translated("%1 could not be saved.").arg(nameText(object)), {cause});
        return false;
    }
    Logger::Write(translated("Saved %1 to %2").arg(nameText(object), place->file));
    places.noteSavedAgain(object);
    return true;
}

} // namespace TAMBO::app
