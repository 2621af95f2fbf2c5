// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileWriter.h"

#include "AlignmentWriters.h"
#include "FileCheck.h"
#include "FileReader.h"
#include "FormatText.h"
#include "ReplacementFile.h"
#include "StructureWriter.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <memory>

namespace TAMBO {

namespace {

using namespace formats;

void writeText(const FittedAlignment &alignment, TextSink &sink)
{
    switch (alignment.options().format) {
    case FileFormat::Pir:
        return writePir(alignment, sink);
    case FileFormat::Fasta:
        return writeFasta(alignment, sink);
    case FileFormat::A2m:
    case FileFormat::A3m:
        return writeInsertions(alignment, sink);
    case FileFormat::Clustal:
        return writeClustal(alignment, sink);
    case FileFormat::Stockholm:
        return writeStockholm(alignment, sink);
    case FileFormat::Msf:
        return writeMsf(alignment, sink);
    case FileFormat::Phylip:
        return writePhylip(alignment, sink);
    case FileFormat::Nexus:
        return writeNexus(alignment, sink);
    case FileFormat::Pdb:
    case FileFormat::Mmcif:
        break;
    }
}

using Fitted = std::vector<std::unique_ptr<FittedAlignment>>;

// How far it has come, and whether it goes on.
class Steps
{
public:
    explicit Steps(const WriteAids *aids) noexcept : m_Aids(aids) { }

    [[nodiscard]] bool take(WriteStage stage, double done) const
    {
        return m_Aids == nullptr || !m_Aids->step || m_Aids->step(stage, done);
    }
    // For those who count.
    [[nodiscard]] std::function<bool(std::uint64_t, std::uint64_t)> of(WriteStage stage) const
    {
        if (m_Aids == nullptr || !m_Aids->step)
            return {};
        return [this, stage](std::uint64_t done, std::uint64_t total) {
            return take(stage, total == 0 ? 0 : std::min(1.0, double(done) / double(total)));
        };
    }

private:
    const WriteAids *m_Aids;
};

// Passes text on as long as the writing goes on.
class SteppedSink final : public TextSink
{
public:
    // expected: about so many characters.
    SteppedSink(ReplacementFile &file, const Steps &steps, std::uint64_t expected) noexcept
        : m_File(file), m_Steps(steps), m_Expected(expected)
    { }

    void write(std::string_view text) override
    {
        m_IsCancelled = m_IsCancelled || !m_Steps.take(WriteStage::Text, done());
        if (m_IsCancelled)
            return;
        m_File.write(text);
        m_Size += text.size();
    }
    [[nodiscard]] bool isOpen() const override { return !m_IsCancelled && m_File.isOpen(); }
    [[nodiscard]] bool isCancelled() const noexcept { return m_IsCancelled; }

private:
    [[nodiscard]] double done() const
    {
        return m_Size >= m_Expected ? 1 : double(m_Size) / double(m_Expected);
    }

    ReplacementFile &m_File;
    const Steps &m_Steps;
    std::uint64_t m_Expected;
    std::uint64_t m_Size = 0;
    bool m_IsCancelled = false;
};

Failure cancelled()
{
    return {FailureKind::Cancelled, {}};
}

// Cells and names, which is nearly all of it.
std::uint64_t expectedSize(const std::vector<const AlignmentSource *> &alignments)
{
    std::uint64_t size = 0;
    for (const AlignmentSource *const alignment : alignments)
        size += alignment->rowCount() * (alignment->cells(0).width + alignment->name(0).size());
    return size;
}

// Whether the file holds what it is meant to hold.
Result<void> checkSame(const FileContents &contents, const Fitted &alignments, const Steps &steps)
{
    if (contents.alignments.size() != alignments.size())
        return different("it has " + std::to_string(contents.alignments.size()) +
                         " alignments instead of " + std::to_string(alignments.size()));
    const auto step = steps.of(WriteStage::Comparing);
    for (std::size_t i = 0; i < alignments.size(); ++i) {
        const FittedAlignment &fitted = *alignments[i];
        const auto ofRow = [&](std::size_t row) {
            constexpr std::size_t rowsAStep = 64;
            return !step || row % rowsAStep != 0 ||
                   step(i * fitted.rowCount() + row, alignments.size() * fitted.rowCount());
        };
        if (const Result<void> same = fitted.checkSame(contents.alignments[i], ofRow); !same)
            return same;
    }
    return {};
}

// Why the file that was just written cannot be read, without the name that nobody knows.
std::string withoutName(const Failure &failure)
{
    if (failure.place.file.empty())
        return failure.cause;
    if (failure.place.line == 0)
        return "the file " + failure.cause;
    return "line " + std::to_string(failure.place.line) + ": " + failure.cause;
}

// What was written cannot be what was meant, or was called off.
Failure unfaithful(const std::string &fileName, const Failure &failure)
{
    if (failure.kind == FailureKind::Cancelled)
        return failure;
    return {FailureKind::System,
            "was not written, because reading it back gave something else: " + failure.cause,
            {fileName}};
}

bool isAnother(const std::filesystem::path &path, const FileState &expected)
{
    const FileChange change = checkFile(path, expected).change;
    return change == FileChange::Content || change == FileChange::Replaced;
}

// Writes with write, reads what was written, and puts it in place if check finds it the same.
Result<void> replace(const std::filesystem::path &path, WriteAids *aids, std::uint64_t expected,
                     const std::function<void(TextSink &)> &write,
                     const std::function<Result<void>(const FileContents &)> &check)
{
    const Steps steps(aids);
    ReplacementFile file(path, aids == nullptr ? ReplacementFile::Scratch() : aids->scratch);
    if (aids != nullptr && aids->keepsBackups)
        file.keepBackups();
    // Of our own code nothing throws but the lack of memory.
    try {
        SteppedSink sink(file, steps, expected);
        if (file.outcome())
            write(sink);
        if (sink.isCancelled())
            return cancelled();
        if (const Result<void> completed = file.complete(steps.of(WriteStage::Sync)); !completed)
            return completed;
        std::optional<FileState> state;
        {
            const Result<FileContents> readBack =
                readFile(file.path(), steps.of(WriteStage::Reading));
            const Result<void> same = readBack ? check(readBack.value())
                                      : readBack.error().kind == FailureKind::Cancelled
                                          ? readBack.error()
                                          : different(withoutName(readBack.error()));
            if (!same)
                return unfaithful(file.fileName(), same.error());
            state = readBack.value().state;
        }
        if (aids != nullptr && aids->expected && isAnother(path, *aids->expected))
            return Failure{FailureKind::Refused,
                           "was not written, because another program has changed it meanwhile",
                           {file.fileName()}};
        if (const Result<void> placed = file.putInPlace(steps.of(WriteStage::Placing)); !placed)
            return placed;
        if (aids != nullptr) {
            aids->written = state;
            if (file.remark())
                aids->remarks.push_back(*file.remark());
        }
    } catch (const std::exception &error) {
        return Failure{FailureKind::System,
                       std::string("cannot be written: ") + error.what(),
                       {file.fileName()}};
    }
    return {};
}

Failure refusal(const std::string &fileName, const std::string &cause)
{
    return {FailureKind::Refused, cause, {fileName}};
}

Result<void> writeAlignments(const std::filesystem::path &path,
                             const std::vector<const AlignmentSource *> &alignments,
                             const WriteOptions &options, WriteAids *aids)
{
    const std::string fileName = cleanText(path.filename().string());
    for (const AlignmentSource *const alignment : alignments) {
        if (const Result<void> fits = checkWritable(*alignment, options); !fits)
            return refusal(fileName, fits.error().cause);
    }
    if (alignments.size() != 1 && (alignments.empty() || !holds(options.format, Content::Several)))
        return refusal(fileName, fileOf(options.format) + " holds one alignment, not " +
                                     std::to_string(alignments.size()));
    const Steps steps(aids);
    Fitted fitted;
    return replace(
        path, aids, expectedSize(alignments),
        [&](TextSink &sink) {
            for (const AlignmentSource *const alignment : alignments) {
                fitted.push_back(std::make_unique<FittedAlignment>(*alignment, options));
                writeText(*fitted.back(), sink);
            }
        },
        [&](const FileContents &contents) { return checkSame(contents, fitted, steps); });
}

} // namespace

Result<void> writeFile(const std::filesystem::path &path,
                       std::span<const AlignmentRecord> alignments, const WriteOptions &options,
                       WriteAids *aids)
{
    const std::vector<RecordSource> sources(alignments.begin(), alignments.end());
    std::vector<const AlignmentSource *> pointers;
    pointers.reserve(sources.size());
    for (const RecordSource &source : sources)
        pointers.push_back(&source);
    return writeAlignments(path, pointers, options, aids);
}

Result<void> writeFile(const std::filesystem::path &path, const AlignmentSource &alignment,
                       const WriteOptions &options, WriteAids *aids)
{
    return writeAlignments(path, {&alignment}, options, aids);
}

Result<void> writeFile(const std::filesystem::path &path, const StructureRecord &structure,
                       const WriteOptions &options, WriteAids *aids)
{
    return writeModels(path, {&structure, 1}, options, aids);
}

Result<void> writeModels(const std::filesystem::path &path,
                         std::span<const StructureRecord> structures, const WriteOptions &options,
                         WriteAids *aids)
{
    for (const StructureRecord &structure : structures)
        if (const Result<void> fits = checkWritable(structure, options); !fits)
            return refusal(cleanText(path.filename().string()),
                           structures.size() == 1 ? fits.error().cause
                                                  : structure.name + ": " + fits.error().cause);
    return replace(
        path, aids, 0, [&](TextSink &sink) { sink.write(modelsText(structures, options.format)); },
        [&](const FileContents &contents) -> Result<void> {
            if (contents.structures.empty())
                return different("it holds no structure");
            const StructureRecord &readBack = contents.structures.front();
            if (readBack.models != structures.size())
                return different("it holds " + std::to_string(readBack.models) +
                                 " models instead of " + std::to_string(structures.size()));
            return checkSame(structures.front(), readBack, options.format);
        });
}

} // namespace TAMBO
