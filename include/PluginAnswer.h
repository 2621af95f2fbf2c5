// SPDX-License-Identifier: GPL-3.0-or-later
// How a plug-in answers a command that others call through PluginManager.
#pragma once

#include "Export.h"

#include <functional>
#include <string>

// What the caller handed over. Valid for the one call.
struct PluginCall
{
    std::string caller;
    // For the log; empty for Execute.
    std::string text;
    // Exactly one of them is set when the caller passed data: the second for read-only data. What
    // they point to is agreed between caller and command.
    void *data = nullptr;
    const void *readOnlyData = nullptr;
};

// Answers "group/service/command" for as long as it exists; it may be a static object of the
// plug-in's library. Nobody is replaced: of two that answer one name the first does, and the names
// of the workbench (WorkbenchCommands) are never given away. Made, called and destroyed in the GUI
// thread.
class TAMBO_API PluginAnswer
{
public:
    // By which of PluginManager's calls the command is reached. Either takes the name for both.
    enum class Way { Command, Execute, Either };

    // False means that the command failed; whoever answers tells the user why. An exception counts
    // as a failure and is logged. The answer may end itself or make others while it is called.
    using Handler = std::function<bool(const PluginCall &call)>;

    // An empty name or handler, or a name that is taken, is refused with a line in the log.
    PluginAnswer(const std::string &group, const std::string &service, const std::string &command,
                 Handler handler, Way way = Way::Either);
    ~PluginAnswer();

    PluginAnswer(const PluginAnswer &) = delete;
    PluginAnswer &operator=(const PluginAnswer &) = delete;

    // Whether calls of the name come here. An answer that was refused never gets any.
    [[nodiscard]] bool isGood() const noexcept { return m_IsGood; }

private:
    std::string m_Group;
    std::string m_Service;
    std::string m_Command;
    Way m_Way;
    bool m_IsGood = false;
};
