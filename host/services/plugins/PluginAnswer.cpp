// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginAnswer.h"

#include "Logger.h"
#include "PluginRoutes.h"

#include <QString>

#include <utility>

namespace {

using TAMBO::services::PluginRoutes;

bool refuseAnswer(const std::string &name, const char *cause)
{
    Logger::Write(QString::fromStdString("An answer to \"" + name + "\" was refused: " + cause),
                  Logger::Severity::Warning);
    return false;
}

} // namespace

PluginAnswer::PluginAnswer(const std::string &group, const std::string &service,
                           const std::string &command, Handler handler, Way way)
    : m_Group(group), m_Service(service), m_Command(command), m_Way(way)
{
    const std::string name = group + "/" + service + "/" + command;
    if (group.empty() || service.empty() || command.empty()) {
        m_IsGood = refuseAnswer(name, "a part of the name is empty.");
        return;
    }
    if (!handler) {
        m_IsGood = refuseAnswer(name, "there is no handler.");
        return;
    }
    if (PluginRoutes::isOfWorkbench(group, service, command)) {
        m_IsGood = refuseAnswer(name, "the workbench answers it.");
        return;
    }
    PluginRoutes &routes = PluginRoutes::instance();
    m_IsGood = way == Way::Execute || routes.registerCommand(group, service, command, handler);
    if (!m_IsGood || way == Way::Command)
        return;
    m_IsGood = routes.registerExecute(group, service, command, std::move(handler));
    if (!m_IsGood && way == Way::Either)
        routes.removeCommand(group, service, command);
}

PluginAnswer::~PluginAnswer()
{
    if (!m_IsGood)
        return;
    PluginRoutes &routes = PluginRoutes::instance();
    if (m_Way != Way::Execute)
        routes.removeCommand(m_Group, m_Service, m_Command);
    if (m_Way != Way::Command)
        routes.removeExecute(m_Group, m_Service, m_Command);
}
