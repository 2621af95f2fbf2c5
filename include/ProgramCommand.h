// SPDX-License-Identifier: GPL-3.0-or-later
// A sub-command of the program `tambo` that a plug-in carries out.
#pragma once

#include <QIODevice>
#include <QString>
#include <QStringList>

#include <functional>

// What `tambo WORD ARGUMENTS...` hands to the plug-in whose descriptor has WORD among its Commands.
// The library is opened, and then kGroup, kService and WORD are called by Execute with one of these
// as data; whoever answers (PluginAnswer) is registered by then, as a static object is. No window
// is on a screen and nobody can be asked. The data lives for the one call, all of it in the GUI
// thread. An answer of false, or an exception, ends the program with status 1 and a message.
struct ProgramCommand
{
    static constexpr const char *kGroup = "Program";
    static constexpr const char *kService = "Command";

    // What stands behind the word, as the shell gave it; options are the command's own.
    QStringList arguments;
    // Standard output and standard error, open for writing; never null.
    QIODevice *output = nullptr;
    QIODevice *errors = nullptr;
    // Opens a structure, an alignment or sequences in any format that the workbench reads, or,
    // before all other files, a session; what it holds is in Space afterwards. False, with a
    // message on errors and nothing changed, when it cannot be read.
    std::function<bool(const QString &file)> openFile;
    // What the shell is told: 0, as long as nothing else is set; 1 when a file is bad; 2 when the
    // arguments are wrong.
    int exitStatus = 0;
};
