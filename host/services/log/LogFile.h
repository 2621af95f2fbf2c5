// SPDX-License-Identifier: GPL-3.0-or-later
// The log on disk: lines are appended, and a file that has grown too large is put aside once.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace TAMBO::services {

class LogFile
{
public:
    // Nothing is opened or made before the first line.
    LogFile(const QString &path, qint64 largest);

    // False when the line could not be written; from then on nothing more is tried.
    bool append(const QByteArray &line);
    [[nodiscard]] QString path() const { return m_File.fileName(); }
    [[nodiscard]] QString error() const { return m_File.errorString(); }

private:
    bool open();
    void rotate();

    QFile m_File;
    qint64 m_Largest;
    // As it was when it was last looked at, and what has been written since.
    qint64 m_Size = 0;
    qint64 m_LookedAt = 0;
    bool m_Failed = false;
};

} // namespace TAMBO::services
