// SPDX-License-Identifier: GPL-3.0-or-later
#include "ForeignData.h"

#include "PrivateDirectory.h"

#include <QFile>
#include <QMimeData>
#include <QRegularExpression>
#include <QUrl>

namespace TAMBO::app {

namespace {

// As web pages show a sequence: lines of letters and nothing else. What has matched is never looked
// at once more, since to come back to each of many lines would take more memory than there is for
// it.
bool isBareSequence(const QString &text)
{
    static const QRegularExpression lines(
        QStringLiteral("\\A\\s*+(?:[A-Za-z*-]++[^\\S\\n]*+"
                       "(?:\\n(?:[^\\S\\n]*+(?:\\n|\\z))*+|\\z))++\\z"));
    return lines.match(text).hasMatch();
}

QString asFile(const QString &text, const QString &name)
{
    return isBareSequence(text) ? u'>' + name + u'\n' + text : text;
}

} // namespace

QStringList localFiles(const QMimeData &data)
{
    QStringList files;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    return files;
}

QString PastedTexts::folder() const
{
    return m_Folder->path() + u'/';
}

Result<std::filesystem::path> PastedTexts::add(const QString &text)
{
    if (m_Folder == nullptr)
        m_Folder = std::make_unique<QTemporaryDir>(services::personalScratchDirectory() +
                                                   QStringLiteral("/pasted-XXXXXX"));
    const QString name =
        m_Count == 0 ? QStringLiteral("pasted") : QStringLiteral("pasted_%1").arg(m_Count + 1);
    QFile file(folder() + name);
    const QByteArray bytes = asFile(text, name).toUtf8();
    if (!m_Folder->isValid() || !file.open(QIODevice::WriteOnly | QIODevice::NewOnly) ||
        file.write(bytes) != bytes.size() || !file.flush())
        return Failure(FailureKind::System, file.errorString().toStdString());
    ++m_Count;
    return std::filesystem::path(QFile::encodeName(file.fileName()).toStdString());
}

bool PastedTexts::has(const std::filesystem::path &file) const
{
    return m_Folder != nullptr &&
           QFile::decodeName(QByteArray::fromStdString(file.string())).startsWith(folder());
}

} // namespace TAMBO::app
