// SPDX-License-Identifier: GPL-3.0-or-later
// Saves one object for the user, with the questions that this takes over a window.
#pragma once

#include "SavedPlaces.h"

#include <QString>

#include <memory>
#include <optional>

class QWidget;

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

class ObjectReferences;

class SaveCommand
{
    Q_DECLARE_TR_FUNCTIONS(SaveCommand)

public:
    // When it is not saved, a failure has been told, and what the user has called off need not be.
    struct Outcome
    {
        bool isSaved = false;
        // Not when the file held it already.
        bool isWritten = false;
        QString file;
    };

    // Both outlive the command; the object may go while the user is asked.
    SaveCommand(SavedPlaces &places, Compound &object, QWidget *parent);
    ~SaveCommand();
    SaveCommand(const SaveCommand &) = delete;
    SaveCommand &operator=(const SaveCommand &) = delete;

    // Into the file that the object came from or was saved to, if nothing else is in it; what would
    // be lost there is asked about once. Otherwise with a dialog. What its file holds already is
    // not written again.
    [[nodiscard]] Outcome save();
    // With a dialog in which format and file are chosen.
    [[nodiscard]] Outcome saveAs();
    // Into the file that the object came from or was saved to, if that holds all of it; otherwise
    // with a dialog.
    [[nodiscard]] Outcome saveSafely();

private:
    enum class Choice { GoOn, SaveAs, Stop };

    // Null when it has gone.
    [[nodiscard]] Compound *object() const;
    [[nodiscard]] Outcome saveTo(SavedPlaces::Place place, bool asksAboutLosses);
    // What the user wants to do with a file that is not what it was; expected becomes that which
    // may be replaced.
    [[nodiscard]] Choice askAboutChange(const SavedPlaces::Place &place,
                                        std::optional<FileState> &expected) const;
    [[nodiscard]] Choice askAboutLosses(const SavedPlaces::Place &place,
                                        const QStringList &losses) const;
    void tellFailure(const QString &name, const QString &cause) const;

    SavedPlaces &m_Places;
    std::unique_ptr<ObjectReferences> m_Object;
    QWidget *m_Parent;
};

} // namespace TAMBO::app
