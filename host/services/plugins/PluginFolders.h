// SPDX-License-Identifier: GPL-3.0-or-later
// The folders that plug-ins come from. They add up; of two files of one name the first counts.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace TAMBO::services {

class PluginFolders
{
public:
    struct Folder
    {
        QString path;
        // The user has named it, so that it is told when it is not there.
        bool isNamed = false;
    };
    struct Library
    {
        QString file;
        // The library of the same name that counts in its place; empty for one that counts.
        QString counts;
    };

    explicit PluginFolders(std::vector<Folder> folders);
    // Each of the variable TAMBO_PLUGIN_DIR, the user's own, /usr/local/lib/tambo/plugins,
    // /usr/lib/tambo/plugins, the one beside the program. The variable TAMBO_SYSTEM_PLUGIN_DIRS
    // stands for the two of the system where it is set, be it empty: for a portable installation
    // and for tests.
    [[nodiscard]] static PluginFolders standard();

    // Full paths, each once.
    [[nodiscard]] const std::vector<Folder> &folders() const noexcept { return m_Folders; }
    [[nodiscard]] QStringList paths() const;

    // Every "*.so" and "*.so.*", by folder and then by name; "libX.so" and "libX.so.0" are one
    // name. A library that is there under several names or by several folders is listed once. The
    // log warns of a folder that cannot be read and of a named one that is missing, and has one
    // line for all others that are.
    [[nodiscard]] std::vector<Library> libraries() const;

private:
    std::vector<Folder> m_Folders;
};

} // namespace TAMBO::services
