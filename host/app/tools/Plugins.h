// SPDX-License-Identifier: GPL-3.0-or-later
// The installed plug-ins as the workbench uses them: by title, and for the windows they open.
#pragma once

#include "PluginFolders.h"
#include "PluginLoader.h"
#include "Result.h"

#include <QIcon>
#include <QString>

#include <vector>

class QWidget;

namespace TAMBO {
class Alignment;
}

namespace TAMBO::app {

class Plugins
{
public:
    explicit Plugins(services::PluginFolders folders = services::PluginFolders::standard())
        : m_Folders(std::move(folders))
    { }

    // Reads what the folders have, and no code of a plug-in runs. Their default settings and help
    // pages are there from now on.
    void find();
    // Opens one that was found.
    const services::PluginRecord &load(const services::PluginRecord &plugin)
    {
        return m_Loader.open(plugin);
    }
    // All that can be found, in their order.
    void loadAll();

    [[nodiscard]] const services::PluginLoader &loader() const noexcept { return m_Loader; }
    [[nodiscard]] const services::PluginFolders &folders() const noexcept { return m_Folders; }
    // From the settings, otherwise from the descriptor, otherwise its name.
    [[nodiscard]] static QString titleOf(const services::PluginRecord &plugin);
    // Its own, or the one of all plug-ins without.
    [[nodiscard]] static QIcon iconOf(const services::PluginRecord &plugin);

    // Calls Execute0. The window that it opened, or null.
    QWidget *open(const services::PluginRecord &plugin);
    // Those whose role it is to show alignments: the one that the settings name, then the others in
    // their order.
    [[nodiscard]] std::vector<const services::PluginRecord *> alignmentViewers() const;
    // All that can be used: these, and then the others in their order.
    [[nodiscard]] std::vector<const services::PluginRecord *> tools() const;
    // That of a title, or of a name as the settings have it. The failure says which there are.
    [[nodiscard]] Result<const services::PluginRecord *> toolCalled(const QString &title) const;
    // In a new window of the first of these viewers that is able to; no other plug-in is called.
    Result<QWidget *> show(Alignment &alignment);
    // In a window of a plug-in that is open already, by its own slot.
    static void showIn(QWidget &window, Alignment &alignment);
    // Whether it has that slot.
    [[nodiscard]] static bool canShowIn(const QWidget &window);
    // Those that are not done even then have a line in the log.
    void shutDown() { m_Loader.shutDown(); }

private:
    [[nodiscard]] Failure whyNoViewer() const;
    Result<QWidget *> showWith(const services::PluginRecord &plugin, Alignment &alignment);

    services::PluginFolders m_Folders;
    services::PluginLoader m_Loader;
};

} // namespace TAMBO::app
