// SPDX-License-Identifier: GPL-3.0-or-later
#include "WorkAsFiles.h"

#include "Alignment.h"
#include "Config.h"
#include "FileWriter.h"
#include "Logger.h"
#include "LongWork.h"
#include "ObjectFiles.h"
#include "Text.h"
#include "WritableObject.h"
#include "WriteJob.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <cstddef>
#include <optional>
#include <vector>

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

    // False when the user has given it up.
    [[nodiscard]] bool write(const std::vector<ObjectFile> &files)
    {
        LongWork work("Saving as files", files.size() * kPiecesOfFile, LongWork::Kind::Reading);
        for (std::size_t i = 0; i < files.size(); ++i) {
            const std::size_t before = i * kPiecesOfFile;
            if (!work.goesOnAt(before))
                return false;
            WriteAids aids{Config::GetPersonalTmpDir, {}};
            aids.step = [&](WriteStage stage, double done) {
                const double share = shareWritten(stage, done);
                return work.goesOnAt(before + std::size_t(share * kPiecesOfFile));
            };
            if (!write(files[i], aids))
                return false;
        }
        return true;
    }
    // What has been written.
    void takeBack() const
    {
        for (const QString &name : m_Names)
            QFile::remove(pathOf(name));
        QDir().rmdir(m_Written.folder);
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
    // Of what is shown of a file that takes its time.
    static constexpr std::size_t kPiecesOfFile = 1000;

    [[nodiscard]] bool write(const ObjectFile &file, WriteAids &aids)
    {
        const QString name = QString::fromStdString(file.name);
        const Result<void> done = file.content().write(pathOf(name), file.options, aids);
        for (const std::string &remark : aids.remarks)
            Logger::Write(QString::fromStdString(remark), Logger::Severity::Warning);
        if (!done && done.error().kind == FailureKind::Cancelled)
            return false;
        if (!done) {
            m_Written.problems << FilesText::tr("%1 could not be written: %2")
                                      .arg(describe(file),
                                           QString::fromStdString(done.error().message()));
            return true;
        }
        ++m_Written.files;
        m_Names << name;
        m_Lines << name + QStringLiteral("\n    ") + describe(file);
        return true;
    }

    [[nodiscard]] static QString describe(const ObjectFile &file)
    {
        const Compound &first = *file.objects.front();
        const QString name = QString::fromStdString(first.Name());
        if (const auto *const alignment = dynamic_cast<const Alignment *>(&first))
            return FilesText::tr("%1: alignment of %2 and %3")
                .arg(name, QString::fromStdString(counted(alignment->height(), "row")),
                     QString::fromStdString(counted(alignment->width(), "column")));
        if (first.Kind() == CompoundKind::Structure)
            return FilesText::tr("%1: structure").arg(name);
        return FilesText::tr("%1 that no alignment shows")
            .arg(QString::fromStdString(counted(file.objects.size(), "sequence")));
    }

    [[nodiscard]] QString pathOf(const QString &file) const
    {
        return m_Written.folder + u'/' + file;
    }

    WorkAsFiles m_Written;
    QStringList m_Names;
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
    if (!files.write(objectFilesOf(space))) {
        files.takeBack();
        return Failure(FailureKind::Cancelled, {});
    }
    return files.finish(remarks);
}

} // namespace TAMBO::app
