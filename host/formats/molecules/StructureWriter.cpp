// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureWriter.h"

#include "FormatText.h"
#include "MoleculeText.h"

#include <gemmi/resinfo.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <set>

namespace TAMBO::formats {

namespace {

// The shortest decimal number that gives the coordinate: that of the file it came from.
double exact(float value)
{
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    double result = value;
    std::from_chars(digits.data(), end, result);
    return result;
}

gemmi::SeqId idOf(const SequenceNumber &number)
{
    return gemmi::SeqId(number.number(), number.insertionCode());
}

gemmi::Residue makeResidue(const ResidueRecord &record)
{
    gemmi::Residue residue;
    residue.name = record.typeName;
    residue.seqid = idOf(record.number);
    residue.het_flag = gemmi::find_tabulated_residue(record.typeName).is_standard() ? 'A' : 'H';
    for (const AtomRecord &atom : record.atoms) {
        gemmi::Atom made;
        made.name = atom.name;
        made.element = gemmi::Element(atom.element);
        made.occ = 1;
        made.b_iso = 0;
        const auto &place = atom.position.coordinates();
        made.pos = gemmi::Position(exact(place[0]), exact(place[1]), exact(place[2]));
        residue.atoms.push_back(std::move(made));
    }
    return residue;
}

// Of several chains of the name, the first that has the residue.
const ResidueRecord *residueAt(const StructureRecord &structure, const std::string &chain,
                               const SequenceNumber &number)
{
    for (const ChainRecord &candidate : structure.chains) {
        if (candidate.name != chain)
            continue;
        for (const ResidueRecord &residue : candidate.residues) {
            if (residue.number == number)
                return &residue;
        }
    }
    return nullptr;
}

gemmi::AtomAddress addressOf(const StructureRecord &structure, const std::string &chain,
                             const SequenceNumber &number)
{
    const ResidueRecord *residue = residueAt(structure, chain, number);
    return gemmi::AtomAddress(chain, idOf(number), residue->typeName, "CA");
}

// Strands of a sheet "A" are called "A-1", "A-2", ...; a strand of another name is a sheet.
std::string sheetOf(const ElementRecord &strand, std::size_t index)
{
    constexpr std::size_t longest = 3;
    const std::size_t dash = strand.name.rfind('-');
    if (dash != std::string::npos && dash > 0 && dash <= longest)
        return strand.name.substr(0, dash);
    return 'S' + std::to_string((index + 1) % 100);
}

void addStrand(std::vector<gemmi::Sheet> &sheets, const std::string &name,
               gemmi::Sheet::Strand strand)
{
    auto sheet = std::find_if(sheets.begin(), sheets.end(),
                              [&](const gemmi::Sheet &known) { return known.name == name; });
    if (sheet == sheets.end())
        sheet = sheets.insert(sheets.end(), gemmi::Sheet(name));
    sheet->strands.push_back(std::move(strand));
}

void addElements(const StructureRecord &record, gemmi::Structure &structure)
{
    const std::vector<ElementRecord> elements = writableElements(record);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const ElementRecord &element = elements[i];
        const gemmi::AtomAddress first = addressOf(record, element.chain, element.first);
        const gemmi::AtomAddress last = addressOf(record, element.chain, element.last);
        if (element.type == 'H') {
            gemmi::Helix helix;
            helix.start = first;
            helix.end = last;
            helix.pdb_helix_class = gemmi::Helix::RAlpha;
            structure.helices.push_back(std::move(helix));
        } else {
            gemmi::Sheet::Strand strand;
            strand.start = first;
            strand.end = last;
            strand.sense = 0;
            addStrand(structure.sheets, sheetOf(element, i), std::move(strand));
        }
    }
}

gemmi::Structure makeStructure(const StructureRecord &record, FileFormat format)
{
    gemmi::Structure structure;
    structure.name = record.name;
    // What block names may have.
    std::replace_if(
        structure.name.begin(), structure.name.end(),
        [](char c) {
            return static_cast<unsigned char>(c) <= ' ' || static_cast<unsigned char>(c) > '~';
        },
        '_');
    structure.models.emplace_back("1");
    const std::vector<std::string> names = chainNames(record, format);
    for (std::size_t i = 0; i < record.chains.size(); ++i) {
        gemmi::Chain &chain = structure.models.front().chains.emplace_back(names[i]);
        const bool comesAgain = std::find(names.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                          names.end(), names[i]) != names.end();
        for (const ResidueRecord &residue : record.chains[i].residues) {
            chain.residues.push_back(makeResidue(residue));
            // A TER record stands where a polymer ends; in a chain whose name comes again, behind
            // everything.
            const bool isPolymer =
                comesAgain || residue.isAminoAcid ||
                gemmi::find_tabulated_residue(residue.typeName).is_nucleic_acid();
            chain.residues.back().entity_type =
                isPolymer ? gemmi::EntityType::Polymer : gemmi::EntityType::NonPolymer;
        }
    }
    addElements(record, structure);
    return structure;
}

std::string describe(const ChainRecord &chain, const ResidueRecord &residue)
{
    return residue.typeName + ' ' + residue.number.getValue() + " of chain " + shown(chain.name);
}

bool isElementOf(const AtomRecord &atom, const AtomRecord &other)
{
    return gemmi::Element(atom.element) == gemmi::Element(other.element).elem;
}

bool isAt(const Vertex &place, const Vertex &other, float most)
{
    for (std::size_t i = 0; i < 3; ++i) {
        if (!(std::abs(place.coordinates()[i] - other.coordinates()[i]) <= most))
            return false;
    }
    return true;
}

Result<void> checkResidue(const ResidueRecord &residue, const ResidueRecord &readBack,
                          FileFormat format)
{
    if (residue.typeName != readBack.typeName || !(residue.number == readBack.number))
        return different("was read as " + readBack.typeName + ' ' + readBack.number.getValue());
    if (residue.atoms.size() != readBack.atoms.size())
        return different("has " + std::to_string(readBack.atoms.size()) + " atoms instead of " +
                         std::to_string(residue.atoms.size()));
    // A PDB file has three digits behind the point.
    const float most = format == FileFormat::Pdb ? 0.0006F : 0.F;
    for (std::size_t i = 0; i < residue.atoms.size(); ++i) {
        const AtomRecord &atom = residue.atoms[i];
        const AtomRecord &other = readBack.atoms[i];
        if (atom.name != other.name)
            return different("has the atom " + other.name + " instead of " + atom.name);
        if (!isElementOf(atom, other))
            return different("has its atom " + atom.name + " of another element");
        if (!isAt(atom.position, other.position, most))
            return different("has its atom " + atom.name + " at another place");
    }
    return {};
}

// Their names are the files' own.
bool areElements(const std::vector<ElementRecord> &elements,
                 const std::vector<ElementRecord> &readBack)
{
    const auto keysOf = [](const std::vector<ElementRecord> &of) {
        std::set<std::vector<std::string>> keys;
        for (const ElementRecord &element : of)
            keys.insert({std::string(1, element.type), element.chain, element.first.getValue(),
                         element.last.getValue()});
        return keys;
    };
    return keysOf(elements) == keysOf(readBack);
}

} // namespace

std::vector<std::string> chainNames(const StructureRecord &structure, FileFormat format)
{
    std::vector<std::string> names;
    std::set<std::string> taken;
    for (const ChainRecord &chain : structure.chains)
        taken.insert(chain.name);
    std::set<std::string> used;
    for (const ChainRecord &chain : structure.chains) {
        std::string name = chain.name;
        for (int number = 2; format == FileFormat::Mmcif && used.count(name) > 0; ++number) {
            const std::string other = chain.name + '-' + std::to_string(number);
            if (taken.count(other) == 0)
                name = other;
        }
        used.insert(name);
        names.push_back(name);
    }
    return names;
}

std::vector<ElementRecord> writableElements(const StructureRecord &structure)
{
    std::vector<ElementRecord> elements;
    for (const ElementRecord &element : structure.elements) {
        const auto has = [&](const SequenceNumber &number) {
            return residueAt(structure, element.chain, number) != nullptr;
        };
        if (element.type != 'T' && has(element.first) && has(element.last))
            elements.push_back(element);
    }
    return elements;
}

std::vector<std::string> elementNames(const std::vector<ElementRecord> &written, FileFormat format)
{
    std::vector<std::string> names;
    std::map<std::string, int> strands;
    int helices = 0;
    for (std::size_t i = 0; i < written.size(); ++i) {
        if (written[i].type == 'H') {
            names.push_back((format == FileFormat::Mmcif ? "H" : "") + std::to_string(++helices));
        } else {
            const std::string sheet = sheetOf(written[i], i);
            names.push_back(sheet + '-' + std::to_string(++strands[sheet]));
        }
    }
    return names;
}

std::string structureText(const StructureRecord &structure, FileFormat format)
{
    return modelsText({&structure, 1}, format);
}

std::string modelsText(std::span<const StructureRecord> structures, FileFormat format)
{
    gemmi::Structure made = makeStructure(structures.front(), format);
    for (std::size_t i = 1; i < structures.size(); ++i) {
        gemmi::Structure further = makeStructure(structures[i], format);
        made.models.push_back(std::move(further.models.front()));
        made.models.back().name = std::to_string(i + 1);
    }
    return format == FileFormat::Pdb ? pdbTextOf(made) : cifTextOf(made);
}

Result<void> checkSame(const StructureRecord &structure, const StructureRecord &readBack,
                       FileFormat format)
{
    const std::vector<std::string> names = chainNames(structure, format);
    if (readBack.chains.size() != structure.chains.size())
        return different("it has " + std::to_string(readBack.chains.size()) +
                         " chains instead of " + std::to_string(structure.chains.size()));
    for (std::size_t c = 0; c < structure.chains.size(); ++c) {
        const ChainRecord &chain = structure.chains[c];
        const ChainRecord &other = readBack.chains[c];
        if (other.name != names[c])
            return different("chain " + shown(names[c]) + " was read as " + shown(other.name));
        if (other.residues.size() != chain.residues.size())
            return different("chain " + shown(names[c]) + " has " +
                             std::to_string(other.residues.size()) + " residues instead of " +
                             std::to_string(chain.residues.size()));
        for (std::size_t i = 0; i < chain.residues.size(); ++i) {
            if (const Result<void> same =
                    checkResidue(chain.residues[i], other.residues[i], format);
                !same)
                return different(describe(chain, chain.residues[i]) + ' ' + same.error().cause);
        }
    }
    if (!areElements(writableElements(structure), readBack.elements))
        return different("its helices and strands differ");
    return {};
}

} // namespace TAMBO::formats
