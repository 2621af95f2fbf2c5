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

// Where the file differs from what it is meant to hold.
std::optional<std::string> differenceTo(const FileContents &contents,
                                        std::span<const AlignmentRecord> alignments,
                                        const WriteOptions &options)
{
    if (contents.alignments.size() != alignments.size())
        return "it has " + std::to_string(contents.alignments.size()) + " alignments instead of " +
               std::to_string(alignments.size());
    for (std::size_t i = 0; i < alignments.size(); ++i) {
        const FittedAlignment fitted(alignments[i], options);
        if (std::optional<std::string> difference = fitted.differenceTo(contents.alignments[i]))
            return difference;
    }
    return std::nullopt;
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

// Writes with write, reads what was written, and puts it in place if difference finds none.
std::optional<Failure>
replace(const std::filesystem::path &path, WriteAids *aids,
        const std::function<void(TextSink &)> &write,
        const std::function<std::optional<std::string>(const FileContents &)> &difference)
{
    ReplacementFile file(path, aids == nullptr ? ReplacementFile::Scratch() : aids->scratch);
    // Of our own code nothing throws but the lack of memory.
    try {
        if (!file.failure())
            write(file);
        if (!file.complete())
            return file.failure();
        const Result<FileContents> readBack = readFile(file.path());
        const std::optional<std::string> cause =
            readBack ? difference(readBack.value()) : withoutName(readBack.error());
        if (cause)
            return failureOf(file.fileName(),
                             "was not written, because reading it back gave something else: " +
                                 *cause);
        if (!file.putInPlace())
            return file.failure();
        if (aids != nullptr && file.remark())
            aids->remarks.push_back(*file.remark());
    } catch (const std::exception &error) {
        return failureOf(file.fileName(), std::string("cannot be written: ") + error.what());
    }
    return std::nullopt;
}

} // namespace

std::optional<Failure> writeFile(const std::filesystem::path &path,
                                 std::span<const AlignmentRecord> alignments,
                                 const WriteOptions &options, WriteAids *aids)
{
    const std::string fileName = cleanText(path.filename().string());
    for (const AlignmentRecord &alignment : alignments) {
        if (const std::optional<std::string> obstacle = obstacleTo(alignment, options))
            return failureOf(fileName, *obstacle);
    }
    if (alignments.size() != 1 && (alignments.empty() || !holds(options.format, Content::Several)))
        return failureOf(fileName, fileOf(options.format) + " holds one alignment, not " +
                                       std::to_string(alignments.size()));
    return replace(
        path, aids,
        [&](TextSink &sink) {
            for (const AlignmentRecord &alignment : alignments)
                writeText(FittedAlignment(alignment, options), sink);
        },
        [&](const FileContents &contents) { return differenceTo(contents, alignments, options); });
}

std::optional<Failure> writeFile(const std::filesystem::path &path,
                                 const StructureRecord &structure, const WriteOptions &options,
                                 WriteAids *aids)
{
    if (const std::optional<std::string> obstacle = obstacleTo(structure, options))
        return failureOf(cleanText(path.filename().string()), *obstacle);
    return replace(
        path, aids, [&](TextSink &sink) { sink.write(structureText(structure, options.format)); },
        [&](const FileContents &contents) -> std::optional<std::string> {
            if (contents.structures.empty())
                return "it holds no structure";
            return differenceBetween(structure, contents.structures.front(), options.format);
        });
}

} // namespace TAMBO
