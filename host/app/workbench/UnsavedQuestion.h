// SPDX-License-Identifier: GPL-3.0-or-later
// Asks what is to become of unsaved work and of running jobs, and does it.
#pragma once

#include "UnsavedDialog.h"

#include <vector>

namespace TAMBO::app {

class SessionDocument;
class SessionSaving;

class UnsavedQuestion
{
public:
    enum class Outcome {
        // Nothing is left that the user wants to keep.
        GoOn,
        Stay,
        // Go on when no job runs any more.
        Wait
    };

    // All outlive the question.
    UnsavedQuestion(SavedPlaces &places, const SessionDocument &session, SessionSaving &saving,
                    services::JobList &jobs)
        : m_Places(places), m_Session(session), m_Saving(saving), m_Jobs(jobs)
    { }

    // Without a question when there is nothing to ask about.
    [[nodiscard]] Outcome beforeQuitting(QWidget *parent);
    [[nodiscard]] bool mayClose(const std::vector<Compound *> &objects, QWidget *parent);
    // All objects, and the session with them.
    [[nodiscard]] bool mayCloseAll(QWidget *parent);

    // The user is being asked, or a file is being chosen or written because of the answer.
    [[nodiscard]] bool isOpen() const noexcept { return m_IsOpen; }

private:
    using Things = std::vector<SavedPlaces::Unsaved>;

    // What is in no file, that of the session included.
    [[nodiscard]] Things unsaved() const;
    // Its name, when it could be saved.
    [[nodiscard]] QString unsavedSession() const;
    [[nodiscard]] Outcome askToQuit(QWidget *parent);
    [[nodiscard]] bool askToClose(const Things &things, const QString &session, QWidget *parent);
    // False when the user stays, or something was not saved.
    [[nodiscard]] bool carryOut(const UnsavedDialog &dialog, const Things &things, QWidget *parent);
    void cancelJobs();
    // False when one of them was not saved.
    [[nodiscard]] bool save(const Things &things, const std::vector<std::size_t> &chosen,
                            QWidget *parent);

    SavedPlaces &m_Places;
    const SessionDocument &m_Session;
    SessionSaving &m_Saving;
    services::JobList &m_Jobs;
    bool m_IsOpen = false;
};

} // namespace TAMBO::app
