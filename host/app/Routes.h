// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that the workbench itself answers for plug-ins.
#pragma once

namespace TAMBO::services {
struct PluginCall;
}

namespace TAMBO::app {

class Workbench;

// Registered while it lives.
class Routes
{
public:
    explicit Routes(Workbench &workbench);
    ~Routes();
    Routes(const Routes &) = delete;
    Routes &operator=(const Routes &) = delete;

private:
    bool openFile();
    bool readPdb(const services::PluginCall &call);
    bool realign(const services::PluginCall &call);
    bool savePir(const services::PluginCall &call);

    Workbench &m_Workbench;
};

} // namespace TAMBO::app
