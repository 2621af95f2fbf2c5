// SPDX-License-Identifier: GPL-3.0-or-later
// Opens files of sessions: each becomes all that a workbench holds. What is open already is closed
// before, if the user says so, or stays, and the session opens in a workbench of its own.
#pragma once

#include "Result.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace TAMBO {
class History;
} // namespace TAMBO

namespace TAMBO::sessions {
class KeptValues;
class StoreReader;
} // namespace TAMBO::sessions

namespace TAMBO::app {

class Loader;
class MainWindow;
class SessionDocument;
class UnsavedQuestion;

class SessionOpening
{
    Q_DECLARE_TR_FUNCTIONS(SessionOpening)

public:
    // All of them outlive this.
    struct Parts
    {
        History &history;
        sessions::KeptValues &values;
        SessionDocument &document;
        UnsavedQuestion &question;
        Loader &loader;
        MainWindow &window;
        // Whether there is somebody to ask.
        bool mayAsk;
    };
    struct Actions
    {
        // What is done is not kept on the disk for a while, and then again.
        std::function<void()> endKeeping;
        std::function<void()> beginKeeping;
        // A session is there.
        std::function<void(const QString &file)> opened;
        // Opens files in a workbench beside this one. False when it does not start.
        std::function<bool(const QStringList &files)> startWorkbench;
    };
    struct Outcome
    {
        // The user has called it off; what else was to be opened with it is not either.
        bool isCancelled = false;
        // The last session is in a workbench of its own, and so are the files that came with it.
        bool areOthersElsewhere = false;
        // Each has its line in the log already.
        std::vector<Failure> failures;
    };

    SessionOpening(const Parts &parts, Actions actions)
        : m_Parts(parts), m_Actions(std::move(actions))
    { }

    // One after the other; others are the files that came with them, to be added to the last one.
    // Called from the event loop: it closes windows.
    [[nodiscard]] Outcome open(const QStringList &files, const QStringList &others);

private:
    enum class Choice { Replace, New, Cancel };

    enum class Place { Here, Elsewhere };

    // Where it is now. others go with it into a workbench of its own.
    [[nodiscard]] Result<Place> openOne(const QString &file, const QStringList &others);
    [[nodiscard]] Choice ask(const QString &file) const;
    [[nodiscard]] Result<void> openInNewWorkbench(const QStringList &files) const;
    // False when an object is locked, or the user gives up.
    [[nodiscard]] bool closeAll();
    [[nodiscard]] Result<void> load(const QString &file, sessions::StoreReader &session);
    [[nodiscard]] bool isEmpty() const;

    Parts m_Parts;
    Actions m_Actions;
};

} // namespace TAMBO::app
