// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogFile.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace TAMBO::services {

LogFile::LogFile(const QString &path, qint64 largest) : m_File(path), m_Largest(largest) { }

bool LogFile::open()
{
    QDir().mkpath(QFileInfo(m_File).path());
    // Unbuffered, so that a line is one write and lines of two workbenches do not mix.
    if (!m_File.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        return false;
    m_File.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    return true;
}

void LogFile::rotate()
{
    const QString aside = path() + QStringLiteral(".1");
    m_File.close();
    QFile::remove(aside);
    QFile::rename(path(), aside);
}

bool LogFile::append(const QByteArray &line)
{
    if (m_Failed)
        return false;
    // Others may write it too, and it may be gone; of a thousand lines within a moment the first
    // one looks.
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (!m_File.isOpen() || now != m_LookedAt) {
        m_Size = QFileInfo(path()).size();
        m_LookedAt = now;
    }
    if (m_Size > 0 && m_Size + line.size() > m_Largest) {
        rotate();
        m_Size = 0;
    }
    if ((!m_File.isOpen() && !open()) || m_File.write(line) != line.size())
        m_Failed = true;
    m_Size += line.size();
    return !m_Failed;
}

} // namespace TAMBO::services
