// SPDX-License-Identifier: GPL-3.0-or-later
// The way from one plug-in to the commands of another, or of the workbench.
#pragma once

#include "Export.h"

#include <string>

// A call names a group of services ("Parse"), a service in it ("PIR"), the caller, a text for the
// log and the command. What data points to is agreed between caller and command.
class TAMBO_API PluginManager
{
public:
    enum class Outcome { Done, NoService, NoCommand, Failed };

    static Outcome Command(const std::string &group, const std::string &service,
                           const std::string &caller, const std::string &text,
                           const std::string &command, void *data);
    static Outcome Command(const std::string &group, const std::string &service,
                           const std::string &caller, const std::string &text,
                           const std::string &command, const void *data);
    static Outcome Execute(const std::string &group, const std::string &service,
                           const std::string &caller, const std::string &command);
    static Outcome Execute(const std::string &group, const std::string &service,
                           const std::string &caller, const std::string &command, void *data);
};
