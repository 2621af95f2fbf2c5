// SPDX-License-Identifier: GPL-3.0-or-later
// A temporary folder for one run of a program. It goes with this; one of a process that was killed
// is removed by the next one.
#pragma once

#include <QTemporaryDir>

namespace companion {

class ProgramFolder
{
public:
    ProgramFolder();
    ~ProgramFolder();
    ProgramFolder(const ProgramFolder &) = delete;
    ProgramFolder &operator=(const ProgramFolder &) = delete;

    [[nodiscard]] bool isValid() const { return m_Folder.isValid(); }
    [[nodiscard]] QString path() const { return m_Folder.path(); }
    [[nodiscard]] QString filePath(const QString &name) const { return m_Folder.filePath(name); }
    void remove();

    // Folders of the user that no process has any more.
    static void removeLeftBehind();

private:
    QTemporaryDir m_Folder;
    // The folder itself, locked for as long as the process lives.
    int m_Lock = -1;
};

} // namespace companion
