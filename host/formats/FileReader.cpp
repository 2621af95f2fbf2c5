// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileReader.h"

#include "ClustalReader.h"
#include "FastaReader.h"
#include "FileFormat.h"
#include "FormatText.h"
#include "MmcifReader.h"
#include "MsfReader.h"
#include "PdbReader.h"
#include "PhylipReader.h"
#include "PirReader.h"
#include "StockholmReader.h"
#include "TextReader.h"

#include <exception>

namespace TAMBO {

namespace {

using namespace formats;

Result<FileContents> read(TextReader &reader)
{
    const std::string_view head = reader.head();
    if (reader.failure())
        return *reader.failure();
    switch (recognise(head)) {
    case FileFormat::Pir:
        return readPir(reader);
    case FileFormat::Fasta:
        return readFasta(reader);
    case FileFormat::Pdb:
        return readPdb(reader);
    case FileFormat::Mmcif:
        return readMmcif(reader);
    case FileFormat::Clustal:
        return readClustal(reader);
    case FileFormat::Stockholm:
        return readStockholm(reader);
    case FileFormat::PlainRows:
        return readPlainRows(reader);
    case FileFormat::Msf:
        return readMsf(reader);
    case FileFormat::Phylip:
        return readPhylip(reader);
    case FileFormat::Unknown:
        break;
    }
    return failureOf(reader.fileName(), describeUnreadable(head));
}

} // namespace

Result<FileContents> readFile(const std::filesystem::path &path, const ReadProgress &progress)
{
    // Of our own code nothing throws but the lack of memory.
    try {
        ByteSource source(path, progress);
        TextReader reader(source);
        return read(reader);
    } catch (const std::exception &error) {
        return failureOf(cleanText(path.filename().string()),
                         std::string("cannot be read: ") + error.what());
    }
}

} // namespace TAMBO
