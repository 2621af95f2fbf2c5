// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginFolders.h"

#include "Directories.h"
#include "LogBook.h"
#include "Logger.h"
#include "PluginDescriptor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace TAMBO::services {

namespace {

constexpr const char *kSystemFolders = "/usr/local/lib/tambo/plugins:/usr/lib/tambo/plugins";

QStringList foldersOf(const QByteArray &list)
{
    return QFile::decodeName(list).split(u':', Qt::SkipEmptyParts);
}

// Asked of the system, which knows more causes than the toolkit tells apart. Of those that nobody
// has named it is normal that they are not there: they are added to missing.
bool isReadable(const PluginFolders::Folder &folder, QStringList &missing)
{
    std::error_code error;
    const std::filesystem::directory_iterator entries(QFile::encodeName(folder.path).toStdString(),
                                                      error);
    if (!error)
        return true;
    if (!folder.isNamed && error == std::errc::no_such_file_or_directory)
        missing << folder.path;
    else
        Logger::Write(QStringLiteral("The folder of plug-ins %1 cannot be read: %2")
                          .arg(folder.path, QString::fromStdString(error.message())),
                      Logger::Severity::Warning);
    return false;
}

} // namespace

PluginFolders::PluginFolders(std::vector<Folder> folders)
{
    for (Folder &folder : folders) {
        folder.path = QDir::cleanPath(QDir::current().absoluteFilePath(folder.path));
        if (std::ranges::find(m_Folders, folder.path, &Folder::path) == m_Folders.end())
            m_Folders.push_back(std::move(folder));
    }
}

PluginFolders PluginFolders::standard()
{
    std::vector<Folder> folders;
    for (const QString &path : foldersOf(qgetenv("TAMBO_PLUGIN_DIR")))
        folders.push_back({path, true});
    folders.push_back({Directories::data() + QStringLiteral("/plugins")});
    const bool isMoved = qEnvironmentVariableIsSet("TAMBO_SYSTEM_PLUGIN_DIRS");
    for (const QString &path :
         foldersOf(isMoved ? qgetenv("TAMBO_SYSTEM_PLUGIN_DIRS") : QByteArray(kSystemFolders)))
        folders.push_back({path});
    folders.push_back({Directories::plugins()});
    return PluginFolders(std::move(folders));
}

QStringList PluginFolders::paths() const
{
    QStringList paths;
    for (const Folder &folder : m_Folders)
        paths << folder.path;
    return paths;
}

std::vector<PluginFolders::Library> PluginFolders::libraries() const
{
    const QStringList patterns = {QStringLiteral("*.so"), QStringLiteral("*.so.*")};
    std::vector<Library> found;
    QSet<QString> seen;
    QMap<QString, QString> byStem;
    QStringList missing;
    for (const Folder &folder : m_Folders) {
        if (!isReadable(folder, missing))
            continue;
        const auto entries = QDir(folder.path).entryInfoList(patterns, QDir::Files, QDir::Name);
        for (const QFileInfo &entry : entries) {
            const QString library = entry.canonicalFilePath();
            if (library.isEmpty() || seen.contains(library))
                continue;
            seen.insert(library);
            const QString stem = PluginDescriptor::stemOf(entry.fileName());
            const QString first = byStem.value(stem);
            if (first.isEmpty())
                byStem.insert(stem, entry.absoluteFilePath());
            found.push_back({entry.absoluteFilePath(), first});
        }
    }
    if (!missing.isEmpty())
        LogBook::instance().writeForDevelopers(QStringLiteral("There is no folder of plug-ins %1")
                                                   .arg(missing.join(QStringLiteral(", "))),
                                               Logger::Severity::Info);
    return found;
}

} // namespace TAMBO::services
