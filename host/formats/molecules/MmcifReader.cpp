// SPDX-License-Identifier: GPL-3.0-or-later
#include "MmcifReader.h"

#include "CifMolecule.h"
#include "FormatText.h"
#include "StructureConversion.h"

namespace TAMBO::formats {

Result<FileContents> readMmcif(TextReader &reader)
{
    const std::string text = reader.restOfText();
    if (!reader.outcome())
        return reader.outcome().error();
    const std::string &file = reader.fileName();
    const CifMolecule molecule = readCif(text, file);
    if (!molecule.outcome)
        return molecule.outcome.error();

    StructureRecord structure;
    structure.name = baseName(file);
    structure.models = molecule.structure.models.size();
    for (const CifElement &element : molecule.elements)
        addElement(structure.elements,
                   ElementRecord{cleanText(element.name), element.type, cleanText(element.chain),
                                 SequenceNumber(element.first), SequenceNumber(element.last)});
    if (structure.models > 1)
        structure.remarks.push_back(file + ": the first of " + std::to_string(structure.models) +
                                    " models was read");
    convertModel(molecule.structure.models.front(), file, structure);
    FileContents contents;
    contents.format = formatName(FileFormat::Mmcif);
    contents.structures.push_back(std::move(structure));
    return contents;
}

} // namespace TAMBO::formats
