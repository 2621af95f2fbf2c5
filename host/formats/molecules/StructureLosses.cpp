// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureLosses.h"

#include "FormatText.h"
#include "StructureWriter.h"
#include "Text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TAMBO {

namespace {

using namespace formats;

constexpr std::size_t kLongestChainName = 2;
constexpr std::size_t kLongestResidueName = 3;
constexpr std::size_t kLongestAtomName = 4;
constexpr int kLeastNumber = -999;
constexpr int kMostDigits = 9999;
constexpr std::size_t kMostAtoms = 99999;

// A coordinate has eight columns, three of them behind the point.
bool fits(const Vertex &place)
{
    const auto isShort = [&place](std::size_t axis) {
        const float value = place.coordinates()[axis];
        return value > -999.9995F && value < 9999.9995F;
    };
    return isShort(0) && isShort(1) && isShort(2);
}

std::string tooLong(const char *what, const std::string &name)
{
    return std::string("The name of ") + what + ' ' + shown(name) +
           " is too long for a PDB file; an mmCIF file can hold it.";
}

Result<void> checkPdb(const ResidueRecord &residue)
{
    const std::string name = residue.typeName + ' ' + residue.number.getValue();
    if (residue.typeName.size() > kLongestResidueName)
        return unwritable(tooLong("residue", residue.typeName));
    if (residue.number.number() < kLeastNumber)
        return unwritable("The number of residue " + name +
                          " is too long for a PDB file; an mmCIF file can hold it.");
    for (const AtomRecord &atom : residue.atoms) {
        if (atom.name.size() > kLongestAtomName)
            return unwritable(tooLong("atom", atom.name));
        if (!fits(atom.position))
            return unwritable("The position of atom " + atom.name + " of residue " + name +
                              " does not fit into a PDB file; an mmCIF file can hold it.");
    }
    return {};
}

// As a PDB file has it: three digits behind the point.
bool isRounded(float value)
{
    constexpr double digits = 1000;
    return std::abs(std::round(double(value) * digits) / digits - double(value)) <
           double(std::numeric_limits<float>::epsilon()) * std::max(1.0, std::abs(double(value)));
}

bool hasRoundedPlaces(const ResidueRecord &residue)
{
    return std::all_of(residue.atoms.begin(), residue.atoms.end(), [](const AtomRecord &atom) {
        const auto &place = atom.position.coordinates();
        return isRounded(place[0]) && isRounded(place[1]) && isRounded(place[2]);
    });
}

bool hasRoundedPlaces(const StructureRecord &structure)
{
    return std::all_of(structure.chains.begin(), structure.chains.end(),
                       [](const ChainRecord &chain) {
                           return std::all_of(chain.residues.begin(), chain.residues.end(),
                                              [](const ResidueRecord &residue) {
                                                  return hasRoundedPlaces(residue);
                                              });
                       });
}

void addElementLosses(const StructureRecord &structure, FileFormat format,
                      std::vector<std::string> &sentences)
{
    const std::vector<ElementRecord> &elements = structure.elements;
    const auto count = [&elements](auto property) {
        return static_cast<std::size_t>(std::count_if(elements.begin(), elements.end(), property));
    };
    const std::size_t turns =
        count([](const ElementRecord &element) { return element.type == 'T'; });
    const std::vector<ElementRecord> written = writableElements(structure);
    if (turns > 0)
        sentences.push_back(counted(turns, "turn is", "turns are") +
                            " left out: the file has helices and strands only.");
    const std::size_t endless = elements.size() - turns - written.size();
    if (endless > 0)
        sentences.push_back(counted(endless, "helix or strand is", "helices or strands are") +
                            " left out: the residues at the ends are not there.");
    if (structure.brokenElements > 0)
        sentences.push_back(counted(structure.brokenElements, "helix, strand or turn is",
                                    "helices, strands or turns are") +
                            " in several pieces, each of which becomes one of its own.");
    const std::size_t small =
        count([](const ElementRecord &element) { return element.hasSmallType; });
    if (small > 0)
        sentences.push_back(
            counted(small, "helix, strand or turn is", "helices, strands or turns are") +
            " given by a small letter and written as by a capital.");
    const bool areNamesKept =
        std::ranges::equal(written, elementNames(written, format), {}, &ElementRecord::name);
    if (!areNamesKept)
        sentences.emplace_back(
            "The names of helices and strands are changed: the file counts them.");
}

} // namespace

Result<void> checkWritable(const StructureRecord &structure, const WriteOptions &options)
{
    if (!isStructureFormat(options.format))
        return unwritable("A structure cannot be written as " + fileOf(options.format) + '.');
    bool hasAtoms = false;
    const bool areLong = holds(options.format, Content::LongFields);
    for (const ChainRecord &chain : structure.chains) {
        if (!areLong && chain.name.size() > kLongestChainName)
            return unwritable(tooLong("chain", chain.name));
        for (const ResidueRecord &residue : chain.residues) {
            hasAtoms = hasAtoms || !residue.atoms.empty();
            if (areLong)
                continue;
            if (const Result<void> fits = checkPdb(residue); !fits)
                return fits;
        }
    }
    if (!hasAtoms)
        return unwritable("There is nothing to write: the structure has no atoms.");
    return {};
}

std::vector<std::string> lossesOf(const StructureRecord &structure, const WriteOptions &options)
{
    if (!checkWritable(structure, options))
        return {};
    std::vector<std::string> sentences = {
        "There are no waters, other positions of atoms, occupancies, temperature factors or "
        "crystal data in the file."};
    if (structure.models > 1)
        sentences.push_back("Only the first of " + std::to_string(structure.models) +
                            " models is written.");
    if (structure.isModel)
        sentences.emplace_back("The file does not say that it is a model.");
    addElementLosses(structure, options.format, sentences);
    const bool areLong = holds(options.format, Content::LongFields);
    std::size_t atoms = 0;
    bool hasLargeNumbers = false;
    const std::vector<std::string> names = chainNames(structure, options.format);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const ChainRecord &chain = structure.chains[i];
        if (names[i] != chain.name)
            sentences.push_back("Another chain has the name " + shown(chain.name) +
                                " already, so this one becomes " + shown(names[i]) + '.');
        for (const ResidueRecord &residue : chain.residues) {
            atoms += residue.atoms.size();
            hasLargeNumbers = hasLargeNumbers || residue.number.number() > kMostDigits;
        }
    }
    if (!areLong && (hasLargeNumbers || atoms > kMostAtoms))
        sentences.emplace_back("Numbers that are too large for their columns are written with "
                               "letters, which not all programs understand.");
    if (!holds(options.format, Content::ExactPlaces) && !hasRoundedPlaces(structure))
        sentences.emplace_back("The places of atoms are rounded to 0.001 Angstrom.");
    return sentences;
}

std::vector<std::string> looksLostOf(const StructureRecord &structure)
{
    if (!structure.hasOwnColors)
        return {};
    return {"The colors that were given are left out."};
}

} // namespace TAMBO
