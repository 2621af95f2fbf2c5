// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that can be reached through PluginManager, and who answers them.
#pragma once

#include "PluginAnswer.h"
#include "PluginManager.h"

#include <map>
#include <memory>
#include <string>
#include <utility>

namespace TAMBO::services {

using ::PluginCall;

// Command and Execute are answered by routes of their own, so that one service can have both under
// one name. A route answers until it is taken away; registering it again replaces it.
class PluginRoutes
{
public:
    using Handler = PluginAnswer::Handler;

    static PluginRoutes &instance();

    // Whether the name is one of the workbench's own, by either way and registered or not.
    [[nodiscard]] static bool isOfWorkbench(const std::string &group, const std::string &service,
                                            const std::string &command);

    // False, with a line in the log and nothing changed, when the route has been taken.
    bool registerCommand(const std::string &group, const std::string &service,
                         const std::string &command, Handler handler);
    bool registerExecute(const std::string &group, const std::string &service,
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
    using Handlers = std::map<std::string, std::shared_ptr<const Handler>>;
    using Service = std::pair<std::string, std::string>;
    using Routes = std::map<Service, Handlers>;

    [[nodiscard]] PluginManager::Outcome answer(const Routes &routes, const Service &service,
                                                const std::string &command,
                                                const PluginCall &call) const;
    [[nodiscard]] bool isService(const Service &service) const;
    static bool add(Routes &routes, const Service &service, const std::string &command,
                    Handler handler);
    static void remove(Routes &routes, const Service &service, const std::string &command);

    Routes m_Commands;
    Routes m_Executes;
};

} // namespace TAMBO::services
