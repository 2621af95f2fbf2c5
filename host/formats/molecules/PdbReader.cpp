// SPDX-License-Identifier: GPL-3.0-or-later
#include "PdbReader.h"

#include "FormatText.h"
#include "FurtherModels.h"
#include "NamedBonds.h"
#include "PdbText.h"
#include "StructureConversion.h"

#include <gemmi/pdb.hpp>

#include <exception>
#include <unordered_map>

namespace TAMBO::formats {

namespace {

Result<gemmi::Structure> parse(const std::string &coordinates, const std::string &file)
{
    try {
        gemmi::PdbReadOptions options;
        options.split_chain_on_ter = true;
        return gemmi::read_pdb_from_memory(coordinates.data(), coordinates.size(), file, options);
    } catch (const std::exception &error) {
        return failureOf(file, std::string("cannot be read as a PDB file: ") + error.what());
    }
}

std::vector<NamedBond> bondsOf(const PdbText &text, const gemmi::Model &model)
{
    std::vector<NamedBond> bonds = text.bonds();
    if (text.serialBonds().empty())
        return bonds;
    std::unordered_map<int, NamedAtom> atoms;
    for (const auto &[first, second] : text.serialBonds()) {
        atoms.try_emplace(first);
        atoms.try_emplace(second);
    }
    for (const gemmi::Chain &chain : model.chains) {
        for (const gemmi::Residue &residue : chain.residues) {
            for (const gemmi::Atom &atom : residue.atoms) {
                const auto wanted = atoms.find(atom.serial);
                if (wanted == atoms.end() || !wanted->second.name.empty())
                    continue;
                const gemmi::SeqId &id = residue.seqid;
                wanted->second = {cleanText(chain.name),
                                  SequenceNumber(id.num.has_value() ? *id.num : 0, id.icode),
                                  cleanText(atom.name)};
            }
        }
    }
    for (const auto &[first, second] : text.serialBonds())
        bonds.push_back({atoms.at(first), atoms.at(second), std::nullopt});
    return bonds;
}

// One after the other, since many would take a multiple of the file's size.
void addFurtherModels(const PdbText &text, const std::string &file, StructureRecord &structure)
{
    FurtherModels further(file, structure);
    for (std::size_t i = 1; i < text.coordinates().size(); ++i) {
        const Result<gemmi::Structure> parsed = parse(text.coordinates()[i], file);
        const bool isThere = parsed && !parsed.value().models.empty();
        further.add(isThere ? &parsed.value().models.front() : nullptr);
    }
    further.finish();
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
    const Result<gemmi::Structure> parsed = parse(text.coordinates().front(), reader.fileName());
    if (!parsed)
        return parsed.error();

    StructureRecord structure;
    structure.name = baseName(reader.fileName());
    structure.models = text.models();
    structure.elements = text.elements();
    structure.remarks = text.remarks();
    const gemmi::Model &first = parsed.value().models.front();
    convertModel(first, reader.fileName(), structure);
    addBonds(bondsOf(text, first), structure);
    addFurtherModels(text, reader.fileName(), structure);
    FileContents contents;
    contents.format = formatName(FileFormat::Pdb);
    contents.structures.push_back(std::move(structure));
    return contents;
}

} // namespace TAMBO::formats
