// SPDX-License-Identifier: GPL-3.0-or-later
// The folder in which running workbenches keep their work, one file each, and what those have left
// behind that did not come to their end.
#pragma once

#include "Result.h"

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace TAMBO::app {

// The work of a workbench that is gone.
struct LeftSession
{
    QString file;
    // When the last of its changes was made.
    QDateTime time;
    std::uint64_t changes = 0;
    // How many of all changes were in no file. None is known of an older program's work.
    std::optional<std::uint64_t> unsaved;
    // The names of some of its objects, and of files that were being opened.
    QString objects;
    // How often it was to be recovered and the program did not get that far.
    int attempts = 0;
};

class SessionFolder
{
public:
    // The user's.
    SessionFolder();
    explicit SessionFolder(QString path) : m_Path(std::move(path)) { }

    // For a workbench that begins; makes the folder, which nobody else can look into.
    [[nodiscard]] Result<QString> newFile() const;
    // Whether there may be something; quick.
    [[nodiscard]] bool hasFiles() const;
    // The newest first. Files of workbenches that run are left out, and so are those in which
    // nothing has happened, which are removed.
    [[nodiscard]] std::vector<LeftSession> leftBehind() const;

    // Before and after what may end the program.
    static void noteAttempt(const LeftSession &session);
    // It did not, and nothing is known of whether recovering it would have.
    static void takeBackAttempt(const LeftSession &session);
    static void forgetAttempts(const QString &file);
    static void remove(const QString &file);

private:
    QString m_Path;
};

} // namespace TAMBO::app
