// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleHistory.h"

#include "Directories.h"
#include "Logger.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace TAMBO::app {

namespace {

constexpr QFile::Permissions kForOwner = QFile::ReadOwner | QFile::WriteOwner;

// An entry is a line of the file.
QByteArray entryLine(QString source)
{
    source.replace(u'\\', QStringLiteral("\\\\")).replace(u'\n', QStringLiteral("\\n"));
    return source.toUtf8() + '\n';
}

QString entryOf(const QString &line)
{
    QString source;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] != u'\\' || i + 1 == line.size())
            source += line[i];
        else
            source += line[++i] == u'n' ? u'\n' : line[i];
    }
    return source;
}

} // namespace

QString ConsoleHistory::standardFile()
{
    return services::Directories::data() + QStringLiteral("/console-history");
}

void ConsoleHistory::read()
{
    if (m_IsRead)
        return;
    m_IsRead = true;
    QFile file(m_File);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines.last(std::min<qsizetype>(lines.size(), kMost)))
        m_Entries << entryOf(line);
    // Not at each run.
    if (lines.size() > kMost + kMost / 4)
        writeAgain();
}

void ConsoleHistory::writeAgain() const
{
    QSaveFile file(m_File);
    if (!file.open(QIODevice::WriteOnly))
        return;
    for (const QString &entry : m_Entries)
        file.write(entryLine(entry));
    file.setPermissions(kForOwner);
    file.commit();
}

void ConsoleHistory::add(const QString &source)
{
    read();
    m_Place = -1;
    if (source.isEmpty() || (!m_Entries.isEmpty() && m_Entries.last() == source))
        return;
    m_Entries << source;
    QDir().mkpath(QFileInfo(m_File).path());
    QFile file(m_File);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append) || !file.setPermissions(kForOwner) ||
        file.write(entryLine(source)) < 0 || !file.flush())
        Logger::Write(QStringLiteral("%1: what was typed into the console cannot be kept: %2")
                          .arg(m_File, file.errorString()),
                      Logger::Severity::Warning);
}

const QString *ConsoleHistory::earlier(const QString &typed)
{
    read();
    if (m_Place < 0)
        m_Typed = typed;
    for (qsizetype i = (m_Place < 0 ? m_Entries.size() : m_Place) - 1; i >= 0; --i) {
        if (m_Entries[i].startsWith(m_Typed) && m_Entries[i] != m_Typed) {
            m_Place = i;
            return &m_Entries[i];
        }
    }
    return nullptr;
}

const QString *ConsoleHistory::later()
{
    if (m_Place < 0)
        return nullptr;
    for (qsizetype i = m_Place + 1; i < m_Entries.size(); ++i) {
        if (m_Entries[i].startsWith(m_Typed) && m_Entries[i] != m_Typed) {
            m_Place = i;
            return &m_Entries[i];
        }
    }
    m_Place = -1;
    return &m_Typed;
}

} // namespace TAMBO::app
