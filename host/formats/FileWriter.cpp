// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileWriter.h"

#include "AlignmentWriters.h"
#include "FileReader.h"
#include "FormatText.h"
#include "ReplacementFile.h"
#include "StructureWriter.h"

#include <algorithm>
#include <exception>
#include <functional>

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
    case FileFormat::Pdb:
    case FileFormat::Mmcif:
        break;
    }
}

// Whether the file holds what it is meant to hold.
Result<void> checkSame(const FileContents &contents, std::span<const AlignmentRecord> alignments,
                       const WriteOptions &options)
{
    if (contents.alignments.size() != alignments.size())
        return different("it has " + std::to_string(contents.alignments.size()) +
                         " alignments instead of " + std::to_string(alignments.size()));
    for (std::size_t i = 0; i < alignments.size(); ++i) {
        const FittedAlignment fitted(alignments[i], options);
        if (const Result<void> same = fitted.checkSame(contents.alignments[i]); !same)
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

// Writes with write, reads what was written, and puts it in place if check finds it the same.
Result<void> replace(const std::filesystem::path &path, WriteAids *aids,
                     const std::function<void(TextSink &)> &write,
                     const std::function<Result<void>(const FileContents &)> &check)
{
    ReplacementFile file(path, aids == nullptr ? ReplacementFile::Scratch() : aids->scratch);
    // Of our own code nothing throws but the lack of memory.
    try {
        if (file.outcome())
            write(file);
        if (const Result<void> completed = file.complete(); !completed)
            return completed;
        const Result<FileContents> readBack = readFile(file.path());
        const Result<void> same =
            readBack ? check(readBack.value()) : different(withoutName(readBack.error()));
        if (!same)
            return Failure{FailureKind::System,
                           "was not written, because reading it back gave something else: " +
                               same.error().cause,
                           {file.fileName()}};
        if (const Result<void> placed = file.putInPlace(); !placed)
            return placed;
        if (aids != nullptr && file.remark())
            aids->remarks.push_back(*file.remark());
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

} // namespace

Result<void> writeFile(const std::filesystem::path &path,
                       std::span<const AlignmentRecord> alignments, const WriteOptions &options,
                       WriteAids *aids)
{
    const std::string fileName = cleanText(path.filename().string());
    for (const AlignmentRecord &alignment : alignments) {
        if (const Result<void> fits = checkWritable(alignment, options); !fits)
            return refusal(fileName, fits.error().cause);
    }
    if (alignments.size() != 1 && (alignments.empty() || !holds(options.format, Content::Several)))
        return refusal(fileName, fileOf(options.format) + " holds one alignment, not " +
                                     std::to_string(alignments.size()));
    return replace(
        path, aids,
        [&](TextSink &sink) {
            for (const AlignmentRecord &alignment : alignments)
                writeText(FittedAlignment(alignment, options), sink);
        },
        [&](const FileContents &contents) { return checkSame(contents, alignments, options); });
}

Result<void> writeFile(const std::filesystem::path &path, const StructureRecord &structure,
                       const WriteOptions &options, WriteAids *aids)
{
    if (const Result<void> fits = checkWritable(structure, options); !fits)
        return refusal(cleanText(path.filename().string()), fits.error().cause);
    return replace(
        path, aids, [&](TextSink &sink) { sink.write(structureText(structure, options.format)); },
        [&](const FileContents &contents) -> Result<void> {
            if (contents.structures.empty())
                return different("it holds no structure");
            return checkSame(structure, contents.structures.front(), options.format);
        });
}

} // namespace TAMBO
