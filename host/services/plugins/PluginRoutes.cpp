// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRoutes.h"

#include "Logger.h"
#include "WorkbenchCommands.h"

#include <QString>

#include <algorithm>
#include <exception>

namespace TAMBO::services {

namespace {

using Outcome = PluginManager::Outcome;

void complain(const std::string &what, const std::string &caller, Logger::Severity severity)
{
    Logger::Write(QString::fromStdString(what + " (asked by " + caller + ")"), severity);
}

std::string fullName(const std::pair<std::string, std::string> &service, const std::string &command)
{
    return service.first + "/" + service.second + "/" + command;
}

} // namespace

PluginRoutes &PluginRoutes::instance()
{
    // Never destroyed: a plug-in's static answer may go later.
    static auto *const routes = new PluginRoutes;
    return *routes;
}

bool PluginRoutes::isOfWorkbench(const std::string &group, const std::string &service,
                                 const std::string &command)
{
    return std::ranges::any_of(WorkbenchCommands::kAll, [&](const CommandName &name) {
        return group == name.group && service == name.service && command == name.command;
    });
}

bool PluginRoutes::registerCommand(const std::string &group, const std::string &service,
                                   const std::string &command, Handler handler)
{
    return add(m_Commands, {group, service}, command, std::move(handler));
}

bool PluginRoutes::registerExecute(const std::string &group, const std::string &service,
                                   const std::string &command, Handler handler)
{
    return add(m_Executes, {group, service}, command, std::move(handler));
}

bool PluginRoutes::add(Routes &routes, const Service &service, const std::string &command,
                       Handler handler)
{
    const auto found = routes.find(service);
    if (found != routes.end() && found->second.contains(command)) {
        Logger::Write(
            QString::fromStdString(fullName(service, command) +
                                   " is answered already; a second answer to it was refused."),
            Logger::Severity::Warning);
        return false;
    }
    routes[service][command] = std::make_shared<const Handler>(std::move(handler));
    return true;
}

void PluginRoutes::remove(Routes &routes, const Service &service, const std::string &command)
{
    const auto found = routes.find(service);
    if (found == routes.end())
        return;
    found->second.erase(command);
    if (found->second.empty())
        routes.erase(found);
}

void PluginRoutes::removeCommand(const std::string &group, const std::string &service,
                                 const std::string &command)
{
    remove(m_Commands, {group, service}, command);
}

void PluginRoutes::removeExecute(const std::string &group, const std::string &service,
                                 const std::string &command)
{
    remove(m_Executes, {group, service}, command);
}

Outcome PluginRoutes::command(const std::string &group, const std::string &service,
                              const std::string &command, const PluginCall &call) const noexcept
{
    return answer(m_Commands, {group, service}, command, call);
}

Outcome PluginRoutes::execute(const std::string &group, const std::string &service,
                              const std::string &command, const PluginCall &call) const noexcept
{
    return answer(m_Executes, {group, service}, command, call);
}

bool PluginRoutes::isService(const Service &service) const
{
    return m_Commands.contains(service) || m_Executes.contains(service);
}

Outcome PluginRoutes::answer(const Routes &routes, const Service &service,
                             const std::string &command, const PluginCall &call) const
{
    if (!isService(service)) {
        complain("Nobody offers " + service.first + "/" + service.second, call.caller,
                 Logger::Severity::Warning);
        return Outcome::NoService;
    }
    const auto handlers = routes.find(service);
    const bool known = handlers != routes.end() && handlers->second.contains(command);
    if (!known) {
        complain(service.first + "/" + service.second + " has no command \"" + command + "\"",
                 call.caller, Logger::Severity::Warning);
        return Outcome::NoCommand;
    }
    // Held, since a command may remove its own route.
    const std::shared_ptr<const Handler> handler = handlers->second.at(command);
    try {
        return (*handler)(call) ? Outcome::Done : Outcome::Failed;
    } catch (const std::exception &exception) {
        complain(fullName(service, command) + " failed: " + exception.what(), call.caller,
                 Logger::Severity::Error);
    } catch (...) {
        complain(fullName(service, command) + " failed", call.caller, Logger::Severity::Error);
    }
    return Outcome::Failed;
}

} // namespace TAMBO::services
