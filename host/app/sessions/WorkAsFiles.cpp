// SPDX-License-Identifier: GPL-3.0-or-later
#include "WorkAsFiles.h"

#include "Alignment.h"
#include "ObjectFiles.h"
#include "WritableObject.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QSaveFile>

#include <optional>

namespace TAMBO::app {

namespace {

struct FilesText
{
    Q_DECLARE_TR_FUNCTIONS(TAMBO::app::WorkAsFiles)
};

Result<QString> makeFolder(const QString &parent)
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    const QString first = QDir(parent).filePath(QStringLiteral("recovered-") + time);
    QString folder = first;
    for (int number = 2; QFileInfo::exists(folder); ++number)
        folder = first + u'-' + QString::number(number);
    if (!QDir().mkdir(folder))
        return Failure(FailureKind::System, "the folder cannot be made", {folder.toStdString()});
    return folder;
}

std::optional<Failure> writeText(const QString &path, const QByteArray &text)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        return std::nullopt;
    return Failure(FailureKind::System, file.errorString().toStdString(), {path.toStdString()});
}

class FolderOfFiles
{
public:
    explicit FolderOfFiles(const QString &folder) { m_Written.folder = folder; }

    void write(const ObjectSpace &space)
    {
        for (const ObjectFile &file : objectFilesOf(space))
            write(file);
    }

    [[nodiscard]] Result<WorkAsFiles> finish(const QStringList &remarks)
    {
        QStringList lines{FilesText::tr("Objects that a workbench has left behind, written on %1.")
                              .arg(QDateTime::currentDateTime().toString(Qt::ISODate))};
        lines += remarks;
        lines << QString();
        lines += m_Lines;
        lines += m_Written.problems;
        const std::optional<Failure> failure =
            writeText(pathOf(QStringLiteral("CONTENTS.txt")), lines.join(u'\n').toUtf8() + '\n');
        if (failure)
            return *failure;
        return m_Written;
    }

private:
    void write(const ObjectFile &file)
    {
        const QString name = QString::fromStdString(file.name);
        if (const Result<void> done = file.content().write(pathOf(name), file.options); !done) {
            m_Written.problems << FilesText::tr("%1 could not be written: %2")
                                      .arg(describe(file),
                                           QString::fromStdString(done.error().message()));
            return;
        }
        ++m_Written.files;
        m_Lines << name + QStringLiteral("\n    ") + describe(file);
    }

    [[nodiscard]] static QString describe(const ObjectFile &file)
    {
        const Compound &first = *file.objects.front();
        const QString name = QString::fromStdString(first.Name());
        if (const auto *const alignment = dynamic_cast<const Alignment *>(&first))
            return FilesText::tr("%1: alignment of %2 rows and %3 columns")
                .arg(name)
                .arg(alignment->height())
                .arg(alignment->width());
        if (first.Kind() == CompoundKind::Structure)
            return FilesText::tr("%1: structure").arg(name);
        return FilesText::tr("%n sequence(s) that no alignment shows", nullptr,
                             int(file.objects.size()));
    }

    [[nodiscard]] QString pathOf(const QString &file) const
    {
        return m_Written.folder + u'/' + file;
    }

    WorkAsFiles m_Written;
    QStringList m_Lines;
};

} // namespace

Result<WorkAsFiles> writeAsFiles(const ObjectSpace &space, const QString &parent,
                                 const QStringList &remarks)
{
    const Result<QString> folder = makeFolder(parent);
    if (!folder)
        return folder.error();
    FolderOfFiles files(folder.value());
    files.write(space);
    return files.finish(remarks);
}

} // namespace TAMBO::app
