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

// Asked of the system and not of the application object, which may not exist yet; once, since every
// part of the path is looked at.
QString besideProgram(const char *path)
{
    static const QString folder =
        QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath()).path();
    return QDir::cleanPath(folder + QStringLiteral("/../") + QString::fromLatin1(path));
}

} // namespace

QString Directories::shared()
{
    const QString given = fromEnvironment("TAMBO_SHARE_DIR");
    return given.isEmpty() ? besideProgram("share/tambo") : given;
}

QString Directories::libraries()
{
    return besideProgram("lib/tambo/parts");
}

QString Directories::plugins()
{
    return besideProgram("lib/tambo/plugins");
}

QString Directories::config()
{
    return userDirectory("config", QStandardPaths::GenericConfigLocation);
}

QString Directories::data()
{
    return userDirectory("data", QStandardPaths::GenericDataLocation);
}

QString Directories::state()
{
    const QString root = fromEnvironment("TAMBO_USER_DIR");
    if (!root.isEmpty())
        return root + QStringLiteral("/state");
    // A relative path there means nothing.
    const QString state = fromEnvironment("XDG_STATE_HOME");
    const QString home = QDir::homePath() + QStringLiteral("/.local/state");
    return (state.startsWith(u'/') ? state : home) + QStringLiteral("/tambo");
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
