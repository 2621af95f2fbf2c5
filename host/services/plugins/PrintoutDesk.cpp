// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintoutDesk.h"

#include "ConfigStore.h"
#include "Logger.h"
#include "Printouts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace TAMBO::services {

namespace {

constexpr const char *kSection = "Files";
constexpr const char *kKey = "PrintDirectory";

bool takesFiles(const QString &folder)
{
    const QFileInfo info(folder);
    return !folder.isEmpty() && info.isDir() && info.isWritable();
}

} // namespace

PrintoutDesk &PrintoutDesk::instance()
{
    static PrintoutDesk desk;
    return desk;
}

QString PrintoutDesk::folderFor(const Compound &object) const
{
    const std::string last = ConfigStore::instance().value(kSection, kKey).value_or(std::string());
    for (const QString &folder : {QString::fromStdString(last),
                                  m_FolderOf ? m_FolderOf(object) : QString(), QDir::currentPath()})
        if (takesFiles(folder))
            return QDir(folder).absolutePath();
    return QDir::homePath();
}

void PrintoutDesk::noteWritten(const QString &path)
{
    ConfigStore &store = ConfigStore::instance();
    store.setValue(kSection, kKey, QFileInfo(path).absolutePath().toStdString());
    store.saveOrLog();
    const QString format = formatOf(path);
    Logger::Write(format.isEmpty() ? QStringLiteral("Printed to %1").arg(path)
                                   : QStringLiteral("Printed to %1 (%2)").arg(path, format));
    emit written(path);
}

QString PrintoutDesk::formatOf(const QString &path)
{
    const auto postScript = QStringLiteral("PostScript");
    QFile file(path);
    const QByteArray begin = file.open(QIODevice::ReadOnly) ? file.read(4) : QByteArray();
    if (begin == "%!PS")
        return postScript;
    if (begin == "%PDF")
        return QStringLiteral("PDF");
    const QString ending = QFileInfo(path).suffix().toUpper();
    return ending == u"PS" ? postScript : ending;
}

void PrintoutDesk::noteSent(const QString &printer)
{
    Logger::Write(QStringLiteral("Sent to the printer %1").arg(printer));
    emit sent(printer);
}

void PrintoutDesk::noteRefused(const QString &cause)
{
    emit refused(cause);
}

} // namespace TAMBO::services

using TAMBO::services::PrintoutDesk;

QString Printouts::Folder(const TAMBO::Compound &object)
{
    return PrintoutDesk::instance().folderFor(object);
}

void Printouts::Written(const QString &path)
{
    PrintoutDesk::instance().noteWritten(path);
}

void Printouts::Sent(const QString &printer)
{
    PrintoutDesk::instance().noteSent(printer);
}

void Printouts::Refused(const QString &cause)
{
    PrintoutDesk::instance().noteRefused(cause);
}

#include "moc_PrintoutDesk.cpp"
