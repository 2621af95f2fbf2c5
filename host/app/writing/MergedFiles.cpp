// SPDX-License-Identifier: GPL-3.0-or-later
#include "MergedFiles.h"

#include "FileName.h"
#include "FileWriter.h"
#include "RecordMaker.h"
#include "Structure.h"
#include "StructureSet.h"
#include "WritableObject.h"

#include <QCoreApplication>
#include <QFile>

#include <filesystem>

namespace TAMBO::app {

namespace {

constexpr const char *kMergedName = "structures";

void addOnce(QStringList &sentences, const std::vector<std::string> &more)
{
    for (const std::string &sentence : more)
        if (const QString text = QString::fromStdString(sentence); !sentences.contains(text))
            sentences << text;
}

QString togetherLoss(MergedFiles::Kind kind)
{
    return kind == MergedFiles::Kind::Models
               ? QCoreApplication::translate(
                     "MergedFiles", "Helices and strands are those of the first one, and the names "
                                    "of the structures are left out.")
               : QCoreApplication::translate("MergedFiles",
                                             "They are one structure in the file, and their names "
                                             "are left out.");
}

} // namespace

MergedFiles::MergedFiles(const std::vector<const Structure *> &structures)
{
    std::vector<StructureRecord> records;
    records.reserve(structures.size());
    for (const Structure *const structure : structures)
        records.push_back(makeRecord(*structure));
    m_Records = std::make_shared<const std::vector<StructureRecord>>(std::move(records));
}

Result<void> MergedFiles::check(const WriteOptions &options) const
{
    for (const StructureRecord &record : *m_Records)
        if (const Result<void> fits = checkWritable(record, options); !fits)
            return Failure{fits.error().kind, record.name + ": " + fits.error().cause};
    return {};
}

QStringList MergedFiles::notes(Kind kind, const WriteOptions &options) const
{
    QStringList sentences;
    if (kind != Kind::Files)
        sentences << togetherLoss(kind);
    if (kind == Kind::Chains) {
        const MergedStructures merged = mergedChains(*m_Records, kMergedName);
        addOnce(sentences, merged.renamed);
        addOnce(sentences, lossesOf(merged.whole, options));
        addOnce(sentences, looksLostOf(merged.whole));
        return sentences;
    }
    for (const StructureRecord &record : *m_Records) {
        addOnce(sentences, lossesOf(record, options));
        addOnce(sentences, looksLostOf(record));
    }
    return sentences;
}

// What is opened from a file of several is not those again.
QStringList MergedFiles::ownLosses(Kind kind, std::size_t structure,
                                   const WriteOptions &options) const
{
    QStringList sentences;
    if (kind != Kind::Files)
        sentences << togetherLoss(kind);
    addOnce(sentences, ownLossesOf((*m_Records)[structure], options));
    return sentences;
}

QStringList MergedFiles::names() const
{
    QStringList names;
    for (const StructureRecord &record : *m_Records) {
        const QString own = QString::fromStdString(fileNameOf(record.name));
        QString name = own;
        // On some disks large and small letters are the same.
        for (int number = 2; names.contains(name, Qt::CaseInsensitive); ++number)
            name = QStringLiteral("%1-%2").arg(own).arg(number);
        names << name;
    }
    return names;
}

Result<void> MergedFiles::write(const QString &path, Kind kind, std::size_t structure,
                                const WriteOptions &options, WriteAids &aids) const
{
    const std::filesystem::path file(QFile::encodeName(path).toStdString());
    switch (kind) {
    case Kind::Models:
        return writeModels(file, *m_Records, options, &aids);
    case Kind::Chains:
        return writeFile(file, mergedChains(*m_Records, kMergedName).whole, options, &aids);
    case Kind::Files:
        break;
    }
    return writeFile(file, (*m_Records)[structure], options, &aids);
}

} // namespace TAMBO::app
