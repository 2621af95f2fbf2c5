// SPDX-License-Identifier: GPL-3.0-or-later
// The programs that modelling needs: the adapter that the editor starts and the engine behind it.
#pragma once

#include <QString>

namespace TAMBO::app {

class ModellingTools
{
public:
    // Beside the workbench's own program, or on the search path.
    explicit ModellingTools(const QString &programFolder);

    // Sets the environment variable by which the editor shows its modelling command, when all is
    // there and the user has not decided otherwise by setting it, be it to nothing. An adapter
    // beside the program can be found by its name afterwards, behind all others of that name.
    void offer() const;
    // As the editor's command is: once offer() has been called.
    [[nodiscard]] bool isPossible() const;
    // What is there, or what is missing and how to get it.
    [[nodiscard]] QString stateText() const;

private:
    QString m_ProgramFolder;
    bool m_IsOnSearchPath;
    bool m_IsBeside;
    bool m_HasEngine;
};

} // namespace TAMBO::app
