// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileReader.h"

#include "ClustalReader.h"
#include "FastaReader.h"
#include "FormatSigns.h"
#include "FormatText.h"
#include "MmcifReader.h"
#include "MsfReader.h"
#include "NexusReader.h"
#include "PdbReader.h"
#include "PhylipReader.h"
#include "PirReader.h"
#include "RowPacking.h"
#include "StockholmReader.h"
#include "TextReader.h"

#include <exception>

namespace TAMBO {

namespace {

using namespace formats;

using Reader = Result<FileContents> (*)(TextReader &);

Reader readerOf(FileFormat format)
{
    switch (entryOf(format).readAs) {
    case FileFormat::Pir:
        return readPir;
    case FileFormat::A2m:
    case FileFormat::Fasta:
    case FileFormat::A3m:
        return readFasta;
    case FileFormat::Clustal:
        return readClustal;
    case FileFormat::Stockholm:
        return readStockholm;
    case FileFormat::Msf:
        return readMsf;
    case FileFormat::Phylip:
        return readPhylip;
    case FileFormat::Nexus:
        return readNexus;
    case FileFormat::Pdb:
        return readPdb;
    case FileFormat::Mmcif:
        break;
    }
    return readMmcif;
}

Result<FileContents> read(TextReader &reader)
{
    const std::string_view head = reader.head();
    if (!reader.outcome())
        return reader.outcome().error();
    const std::optional<Recognised> recognised = recognise(head);
    if (!recognised)
        return failureOf(reader.fileName(), describeUnreadable(head));
    if (recognised->isBare)
        return readPlainRows(reader);
    Result<FileContents> contents = readerOf(recognised->format)(reader);
    if (contents && contents->writtenAs.empty())
        contents->writtenAs = contents->format;
    return contents;
}

} // namespace

namespace {

// Of our own code nothing throws but the lack of memory.
template <typename Read>
Result<FileContents> readSafely(const std::filesystem::path &path, const Read &reading)
{
    try {
        return reading();
    } catch (const std::exception &error) {
        return Failure{FailureKind::System,
                       std::string("cannot be read: ") + error.what(),
                       {cleanText(path.filename().string())}};
    }
}

} // namespace

Result<FileContents> readPackedFile(const std::filesystem::path &path, const ReadProgress &progress)
{
    return readSafely(path, [&] {
        ByteSource source(path, progress);
        TextReader reader(source);
        Result<FileContents> contents = read(reader);
        if (contents)
            contents->state = source.state();
        return contents;
    });
}

Result<FileContents> readFile(const std::filesystem::path &path, const ReadProgress &progress)
{
    return readSafely(path, [&] {
        Result<FileContents> contents = readPackedFile(path, progress);
        if (contents) {
            for (AlignmentRecord &alignment : contents->alignments)
                unpackRows(alignment);
        }
        return contents;
    });
}

} // namespace TAMBO
