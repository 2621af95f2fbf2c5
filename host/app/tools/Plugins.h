// SPDX-License-Identifier: GPL-3.0-or-later
// The installed plug-ins as the workbench uses them: by title, and for the windows they open.
#pragma once

#include "PluginLoader.h"

#include <QString>

class QWidget;

namespace TAMBO {
class Alignment;
}

namespace TAMBO::app {

class Plugins
{
public:
    // The libraries of the directory in the order of their names; a library that is there under
    // several names is loaded once.
    void loadAll(const QString &directory);
    // Beside the program; the environment variable TAMBO_PLUGIN_DIR moves it.
    [[nodiscard]] static QString directory();

    [[nodiscard]] const services::PluginLoader &loader() const noexcept { return m_Loader; }
    // From the settings, otherwise the file's name without its endings.
    [[nodiscard]] static QString titleOf(const services::PluginRecord &plugin);

    // Calls Execute0. The window that it opened, or null.
    QWidget *open(const services::PluginRecord &plugin);
    // In a new window of the first plug-in whose windows can show one. Null when there is none.
    QWidget *show(Alignment &alignment);
    // In a window of a plug-in that is open already, by its own slot.
    static void showIn(QWidget &window, Alignment &alignment);
    [[nodiscard]] bool hasUsable() const;
    // Those that are not done even then have a line in the log.
    void shutDown() { m_Loader.shutDown(); }

private:
    services::PluginLoader m_Loader;
};

} // namespace TAMBO::app
