// SPDX-License-Identifier: GPL-3.0-or-later
#include "WritableObject.h"

#include "Alignment.h"
#include "Bits.h"
#include "Config.h"
#include "FileWriter.h"
#include "Logger.h"
#include "Peptide.h"
#include "RecordMaker.h"
#include "Structure.h"

#include <QFile>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

namespace TAMBO::app {

namespace {

void add(const Peptide &sequence, AlignmentSnapshot &record)
{
    const std::string_view letters = sequence.letters();
    const AlignmentSnapshot::Room room =
        record.add(sequence.Name(), letters.size(), letters.size());
    std::ranges::copy(letters, room.letters.begin());
    std::ranges::fill(room.occupancy, ~std::uint64_t{0});
    if (!room.occupancy.empty())
        room.occupancy.back() = bits::low((letters.size() - 1) % bits::kPerWord + 1);
    RowRecord row;
    row.hasOwnNumbers = sequence.hasOwnNumbers();
    // A sequence without a structure has nothing else below it.
    row.hasElements = sequence.objectCount() > 0;
    record.say(std::move(row));
}

AlignmentSnapshot recordOf(const std::string &name, const std::vector<const Peptide *> &sequences)
{
    AlignmentRecord whole;
    whole.name = name;
    whole.isAligned = std::ranges::all_of(sequences, [&](const Peptide *sequence) {
        return sequence->letters().size() == sequences.front()->letters().size();
    });
    AlignmentSnapshot record(std::move(whole), sequences.size());
    for (const Peptide *const sequence : sequences)
        add(*sequence, record);
    return record;
}

std::vector<std::string> lossesOfAny(const WriteOptions &options)
{
    StructureRecord plain;
    ResidueRecord &residue = plain.chains.emplace_back().residues.emplace_back();
    residue.typeName = "ALA";
    residue.letter = 'A';
    residue.number = SequenceNumber(1);
    residue.atoms.push_back({"CA", "C", Vertex(0, 0, 0)});
    return lossesOf(plain, options);
}

std::variant<AlignmentSnapshot, StructureRecord> recordOf(const Compound &object)
{
    if (const auto *const structure = dynamic_cast<const Structure *>(&object))
        return makeRecord(*structure);
    if (const auto *const sequence = dynamic_cast<const Peptide *>(&object))
        return recordOf(sequence->Name(), {sequence});
    return makeSnapshot(dynamic_cast<const Alignment &>(object));
}

QStringList sentencesOf(const std::vector<std::string> &texts)
{
    QStringList sentences;
    for (const std::string &text : texts)
        sentences << QString::fromStdString(text);
    return sentences;
}

} // namespace

std::vector<std::string> ownLossesOf(const StructureRecord &structure, const WriteOptions &options)
{
    std::vector<std::string> losses = lossesOf(structure, options);
    for (const std::string &sentence : lossesOfAny(options))
        std::erase(losses, sentence);
    return losses;
}

WritableObject::WritableObject(const Compound &object) : m_Record(recordOf(object)) { }

std::shared_ptr<const WritableObject> WritableObject::asked(const Compound &object)
{
    const auto *const alignment = dynamic_cast<const Alignment *>(&object);
    if (alignment == nullptr)
        return std::make_shared<const WritableObject>(object);
    std::optional<AlignmentSnapshot> snapshot = askedSnapshot(*alignment);
    if (!snapshot)
        return nullptr;
    return std::shared_ptr<const WritableObject>(new WritableObject(Record(*std::move(snapshot))));
}

WritableObject::WritableObject(const std::string &name,
                               const std::vector<const Peptide *> &sequences)
    : m_Record(recordOf(name, sequences))
{ }

bool WritableObject::isWritable(const Compound &object)
{
    const CompoundKind kind = object.Kind();
    return kind == CompoundKind::Alignment || kind == CompoundKind::Structure;
}

std::vector<FileFormat> WritableObject::formats() const
{
    const bool isStructure = std::holds_alternative<StructureRecord>(m_Record);
    std::vector<FileFormat> formats;
    for (const FormatEntry &entry : kFormats) {
        if (isStructureFormat(entry.format) == isStructure)
            formats.push_back(entry.format);
    }
    // Those that change letters are for few, and come last.
    if (!isStructure)
        std::stable_partition(formats.begin(), formats.end(), [](FileFormat format) {
            return holds(format, Content::SmallLetters);
        });
    return formats;
}

Result<void> WritableObject::checkWritable(const WriteOptions &options) const
{
    return std::visit([&](const auto &record) { return TAMBO::checkWritable(record, options); },
                      m_Record);
}

QStringList WritableObject::losses(const WriteOptions &options) const
{
    return sentencesOf(
        std::visit([&](const auto &record) { return lossesOf(record, options); }, m_Record));
}

QStringList WritableObject::lostLooks() const
{
    return sentencesOf(
        std::visit([](const auto &record) { return looksLostOf(record); }, m_Record));
}

QStringList WritableObject::ownLosses(const WriteOptions &options) const
{
    const auto *const structure = std::get_if<StructureRecord>(&m_Record);
    return structure == nullptr ? losses(options) : sentencesOf(ownLossesOf(*structure, options));
}

Result<void> WritableObject::write(const QString &path, const WriteOptions &options) const
{
    WriteAids aids{Config::GetPersonalTmpDir, {}};
    Result<void> written = write(path, options, aids);
    for (const std::string &remark : aids.remarks)
        Logger::Write(QString::fromStdString(remark), Logger::Severity::Warning);
    return written;
}

Result<void> WritableObject::write(const QString &path, const WriteOptions &options,
                                   WriteAids &aids) const
{
    const std::filesystem::path file(QFile::encodeName(path).toStdString());
    return std::visit([&](const auto &record) { return writeFile(file, record, options, &aids); },
                      m_Record);
}

} // namespace TAMBO::app
