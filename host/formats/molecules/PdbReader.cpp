// SPDX-License-Identifier: GPL-3.0-or-later
#include "PdbReader.h"

#include "FormatText.h"
#include "PdbText.h"
#include "StructureConversion.h"

#include <gemmi/pdb.hpp>

#include <exception>

namespace TAMBO::formats {

namespace {

Result<gemmi::Structure> parse(const PdbText &text, const std::string &file)
{
    try {
        gemmi::PdbReadOptions options;
        options.split_chain_on_ter = true;
        const std::string &coordinates = text.coordinates();
        return gemmi::read_pdb_from_memory(coordinates.data(), coordinates.size(), file, options);
    } catch (const std::exception &error) {
        return failureOf(file, std::string("cannot be read as a PDB file: ") + error.what());
    }
}

} // namespace

Result<FileContents> readPdb(TextReader &reader)
{
    PdbText text(reader.fileName());
    while (reader.nextLine())
        text.add(reader.restOfLine());
    text.finish();
    if (!reader.outcome())
        return reader.outcome().error();
    if (!text.outcome())
        return text.outcome().error();
    const Result<gemmi::Structure> parsed = parse(text, reader.fileName());
    if (!parsed)
        return parsed.error();

    StructureRecord structure;
    structure.name = baseName(reader.fileName());
    structure.models = text.models();
    structure.elements = text.elements();
    structure.remarks = text.remarks();
    convertModel(parsed.value().models.front(), reader.fileName(), structure);
    FileContents contents;
    contents.format = formatName(FileFormat::Pdb);
    contents.structures.push_back(std::move(structure));
    return contents;
}

} // namespace TAMBO::formats
