// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that can be reached through PluginManager, and who answers them.
#pragma once

#include "PluginManager.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace TAMBO::services {

// What the caller handed over.
struct PluginCall
{
    std::string caller;
    // For the log; empty for Execute.
    std::string text;
    // Exactly one of them is set when the caller passed data: the second for read-only data.
    void *data = nullptr;
    const void *readOnlyData = nullptr;
};

// Command and Execute are answered by routes of their own, so that one service can have both under
// one name. A route answers until it is taken away; registering it again replaces it.
class PluginRoutes
{
public:
    // False means that the command failed; whoever answers tells the user why. An exception counts
    // as a failure and is logged.
    using Handler = std::function<bool(const PluginCall &call)>;

    static PluginRoutes &instance();

    void registerCommand(const std::string &group, const std::string &service,
                         const std::string &command, Handler handler);
    void registerExecute(const std::string &group, const std::string &service,
                         const std::string &command, Handler handler);
    void removeCommand(const std::string &group, const std::string &service,
                       const std::string &command);
    void removeExecute(const std::string &group, const std::string &service,
                       const std::string &command);

    [[nodiscard]] PluginManager::Outcome command(const std::string &group,
                                                 const std::string &service,
                                                 const std::string &command,
                                                 const PluginCall &call) const noexcept;
    [[nodiscard]] PluginManager::Outcome execute(const std::string &group,
                                                 const std::string &service,
                                                 const std::string &command,
                                                 const PluginCall &call) const noexcept;

private:
    // Of a service, by command.
    using Handlers = std::map<std::string, Handler>;
    using Service = std::pair<std::string, std::string>;
    using Routes = std::map<Service, Handlers>;

    [[nodiscard]] PluginManager::Outcome answer(const Routes &routes, const Service &service,
                                                const std::string &command,
                                                const PluginCall &call) const;
    [[nodiscard]] bool isService(const Service &service) const;
    static void remove(Routes &routes, const Service &service, const std::string &command);

    Routes m_Commands;
    Routes m_Executes;
};

} // namespace TAMBO::services
