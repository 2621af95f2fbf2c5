// SPDX-License-Identifier: GPL-3.0-or-later
#include "MmcifReader.h"

#include "CifMolecule.h"
#include "FormatText.h"
#include "FurtherModels.h"
#include "NamedBonds.h"
#include "StructureConversion.h"

namespace TAMBO::formats {

namespace {

std::optional<BondKind> connectionKind(gemmi::Connection::Type type)
{
    switch (type) {
    case gemmi::Connection::Covale:
        return BondKind::Covalent;
    case gemmi::Connection::Disulf:
        return BondKind::Disulfide;
    case gemmi::Connection::Hydrog:
        return BondKind::Hydrogen;
    case gemmi::Connection::MetalC:
        return BondKind::Metal;
    case gemmi::Connection::Unknown:
        break;
    }
    return std::nullopt;
}

NamedAtom partnerOf(const gemmi::AtomAddress &address)
{
    const gemmi::SeqId &id = address.res_id.seqid;
    return {cleanText(address.chain_name),
            SequenceNumber(id.num.has_value() ? *id.num : 0, id.icode),
            cleanText(address.atom_name)};
}

// Those to atoms of neighbours in the crystal lead nowhere.
std::vector<NamedBond> connectionsOf(const gemmi::Structure &structure)
{
    std::vector<NamedBond> bonds;
    for (const gemmi::Connection &connection : structure.connections) {
        if (connection.asu != gemmi::Asu::Different)
            bonds.push_back({partnerOf(connection.partner1), partnerOf(connection.partner2),
                             connectionKind(connection.type)});
    }
    return bonds;
}

} // namespace

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
    addBonds(connectionsOf(molecule.structure), structure);
    FurtherModels further(file, structure);
    for (std::size_t i = 1; i < molecule.structure.models.size(); ++i)
        further.add(&molecule.structure.models[i]);
    further.finish();
    FileContents contents;
    contents.format = formatName(FileFormat::Mmcif);
    contents.structures.push_back(std::move(structure));
    return contents;
}

} // namespace TAMBO::formats
