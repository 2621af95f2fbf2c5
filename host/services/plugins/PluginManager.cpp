// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginManager.h"

#include "PluginRoutes.h"

using TAMBO::services::PluginRoutes;

PluginManager::Outcome PluginManager::Command(const std::string &group, const std::string &service,
                                              const std::string &caller, const std::string &text,
                                              const std::string &command, void *data)
{
    return PluginRoutes::instance().command(group, service, command, {caller, text, data, nullptr});
}

PluginManager::Outcome PluginManager::Command(const std::string &group, const std::string &service,
                                              const std::string &caller, const std::string &text,
                                              const std::string &command, const void *data)
{
    return PluginRoutes::instance().command(group, service, command, {caller, text, nullptr, data});
}

PluginManager::Outcome PluginManager::Execute(const std::string &group, const std::string &service,
                                              const std::string &caller, const std::string &command)
{
    return Execute(group, service, caller, command, nullptr);
}

PluginManager::Outcome PluginManager::Execute(const std::string &group, const std::string &service,
                                              const std::string &caller, const std::string &command,
                                              void *data)
{
    return PluginRoutes::instance().execute(group, service, command, {caller, {}, data, nullptr});
}
