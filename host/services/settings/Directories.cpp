// SPDX-License-Identifier: GPL-3.0-or-later
#include "Directories.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace TAMBO::services {

namespace {

QString fromEnvironment(const char *variable)
{
    return QDir::cleanPath(QFile::decodeName(qgetenv(variable)));
}

QString userDirectory(const char *below, QStandardPaths::StandardLocation location)
{
    const QString root = fromEnvironment("TAMBO_USER_DIR");
    if (!root.isEmpty())
        return root + '/' + QString::fromLatin1(below);
    return QStandardPaths::writableLocation(location) + QStringLiteral("/tambo");
}

} // namespace

QString Directories::shared()
{
    const QString given = fromEnvironment("TAMBO_SHARE_DIR");
    if (!given.isEmpty())
        return given;
    // Asked of the system and not of the application object, which may not exist yet.
    const QString program = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    return QDir::cleanPath(QFileInfo(program).path() + QStringLiteral("/../share/tambo"));
}

QString Directories::config()
{
    return userDirectory("config", QStandardPaths::GenericConfigLocation);
}

QString Directories::data()
{
    return userDirectory("data", QStandardPaths::GenericDataLocation);
}

QString Directories::scratch()
{
    // The session's own directory where there is one: it is private and emptied at logout.
    const QString session = fromEnvironment("XDG_RUNTIME_DIR");
    const bool portable = qEnvironmentVariableIsSet("TAMBO_USER_DIR");
    if (!portable && QFileInfo(session).isWritable())
        return session + QStringLiteral("/tambo");
    return userDirectory("cache", QStandardPaths::GenericCacheLocation) + QStringLiteral("/tmp");
}

} // namespace TAMBO::services
