// SPDX-License-Identifier: GPL-3.0-or-later
#include "WorkAsFiles.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "FileName.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "PointerSet.h"
#include "Structure.h"
#include "WritableObject.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QSaveFile>
#include <QSet>

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

    void write(const ObjectSpace &space)
    {
        std::vector<const Peptide *> sequences;
        PointerSet<Compound> shown;
        for (std::size_t i = 0; i < space.objectCount(); ++i) {
            const Compound *const object = space.object(i);
            if (const auto *const alignment = dynamic_cast<const Alignment *>(object)) {
                const AlignmentTable &table = alignment->table();
                for (std::size_t row = 0; row < table.rowCount(); ++row)
                    shown.insert(&table.row(row).sequence());
                write(*alignment);
            } else if (const auto *const structure = dynamic_cast<const Structure *>(object)) {
                write(*structure);
            } else if (const auto *const sequence = dynamic_cast<const Peptide *>(object)) {
                sequences.push_back(sequence);
            }
        }
        std::erase_if(sequences, [&](const Peptide *sequence) { return shown.contains(sequence); });
        if (!sequences.empty())
            write(sequences);
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
    void write(const Alignment &alignment)
    {
        const QString file = fileFor(alignment, QStringLiteral(".pir"));
        note(file, alignment, WritableObject(alignment).write(pathOf(file), WriteOptions()),
             FilesText::tr("alignment of %1 rows and %2 columns")
                 .arg(alignment.height())
                 .arg(alignment.width()));
    }
    void write(const Structure &structure)
    {
        const QString file = fileFor(structure, QStringLiteral(".cif"));
        WriteOptions options;
        options.format = FileFormat::Mmcif;
        note(file, structure, WritableObject(structure).write(pathOf(file), options),
             FilesText::tr("structure"));
    }
    void write(const std::vector<const Peptide *> &sequences)
    {
        QByteArray text;
        for (const Peptide *const sequence : sequences) {
            const std::string_view letters = sequence->letters();
            text += '>' + QString::fromStdString(sequence->Name()).simplified().toUtf8() + '\n';
            text += QByteArray(letters.data(), qsizetype(letters.size())) + '\n';
        }
        const QString file = unique(QStringLiteral("sequences"), QStringLiteral(".fasta"));
        if (const std::optional<Failure> failure = writeText(pathOf(file), text))
            m_Written.problems << QString::fromStdString(failure->message());
        else
            list(file, FilesText::tr("%n sequence(s) that no alignment shows", nullptr,
                                     int(sequences.size())));
    }

    void note(const QString &file, const Compound &object, const Result<void> &done,
              const QString &what)
    {
        const QString name = QString::fromStdString(object.Name());
        if (done)
            list(file, FilesText::tr("%1: %2").arg(name, what));
        else
            m_Written.problems << FilesText::tr("\"%1\" could not be written: %2")
                                      .arg(name, QString::fromStdString(done.error().message()));
    }
    void list(const QString &file, const QString &what)
    {
        ++m_Written.files;
        m_Lines << file + QStringLiteral("\n    ") + what;
    }

    [[nodiscard]] QString fileFor(const Compound &object, const QString &ending)
    {
        return unique(QString::fromStdString(fileNameOf(object.Name())), ending);
    }
    // There are folders that do not tell "A" from "a".
    [[nodiscard]] QString unique(const QString &wanted, const QString &ending)
    {
        const QString first = wanted.isEmpty() ? QStringLiteral("object") : wanted;
        QString name = first;
        for (int number = 2; m_Taken.contains((name + ending).toLower()); ++number)
            name = first + u'-' + QString::number(number);
        m_Taken.insert((name + ending).toLower());
        return name + ending;
    }
    [[nodiscard]] QString pathOf(const QString &file) const
    {
        return m_Written.folder + u'/' + file;
    }

    WorkAsFiles m_Written;
    QStringList m_Lines;
    QSet<QString> m_Taken;
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
