// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureConversion.h"

#include "FormatText.h"

#include <gemmi/model.hpp>
#include <gemmi/resinfo.hpp>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <map>
#include <set>
#include <span>
#include <utility>

namespace TAMBO::formats {

namespace {

using NumberKey = std::pair<int, char>;

NumberKey keyOf(const gemmi::Residue &residue)
{
    return {residue.seqid.num.has_value() ? *residue.seqid.num : 0, residue.seqid.icode};
}

SequenceNumber numberOf(const gemmi::Residue &residue)
{
    const NumberKey key = keyOf(residue);
    return SequenceNumber(key.first, key.second);
}

bool isWater(const std::string &name)
{
    // What simulation programs call it, cut to three letters in PDB files.
    static constexpr std::array names = std::to_array<std::string_view>(
        {"SOL", "TIP", "TP3", "TIP3", "TIP4", "T3P", "T4P", "SPC", "OH2", "WTR"});
    return gemmi::find_tabulated_residue(name).is_water() ||
           std::find(names.begin(), names.end(), name) != names.end();
}

// A calcium ion in a file that names no elements looks like a carbon but for its residue's name.
bool hasAlphaCarbon(const gemmi::Residue &residue)
{
    return residue.name != "CA" &&
           std::any_of(residue.atoms.begin(), residue.atoms.end(), [](const gemmi::Atom &atom) {
               return atom.name == "CA" && atom.element == gemmi::El::C;
           });
}

bool isAminoAcid(const gemmi::Residue &residue)
{
    return hasAlphaCarbon(residue) || gemmi::find_tabulated_residue(residue.name).is_amino_acid();
}

bool hasAlternatives(const gemmi::Residue &residue)
{
    return std::all_of(residue.atoms.begin(), residue.atoms.end(),
                       [](const gemmi::Atom &atom) { return atom.altloc != '\0'; });
}

char letterOf(const std::string &name)
{
    const char letter = gemmi::find_tabulated_residue(name).one_letter_code;
    return letter == ' ' ? 'X'
                         : static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
}

// Of two alternatives the one that is there more often, then the one with the earlier letter.
bool isPreferred(const gemmi::Atom &atom, const gemmi::Atom &other)
{
    return atom.occ != other.occ ? atom.occ > other.occ : atom.altloc < other.altloc;
}

bool hasPosition(const gemmi::Atom &atom)
{
    constexpr double beyondAnyFile = 1e7;
    const auto isUsable = [](double value) { return std::abs(value) < beyondAnyFile; };
    return isUsable(atom.pos.x) && isUsable(atom.pos.y) && isUsable(atom.pos.z);
}

// Two names at one place are one residue: alternatives of it, or a mistake.
bool isSamePlace(const gemmi::Residue &residue, const gemmi::Residue &next)
{
    return keyOf(residue) == keyOf(next) &&
           (residue.name == next.name || (isAminoAcid(residue) && isAminoAcid(next)) ||
            (hasAlternatives(residue) && hasAlternatives(next)));
}

using Residues = std::span<const gemmi::Residue>;

// The residues from the start that belong together: of one segment, as far as the file has any.
Residues firstRun(Residues residues)
{
    std::size_t end = 1;
    while (end < residues.size() && (residues[end].segment == residues.front().segment ||
                                     isSamePlace(residues[end - 1], residues[end])))
        ++end;
    return residues.first(end);
}

// Collects the residues of one chain from the runs that the file gives it in.
class ChainBuilder
{
public:
    ChainBuilder(std::string name, const std::string &file) : m_File(file)
    {
        m_Chain.name = std::move(name);
    }

    [[nodiscard]] const std::string &name() const { return m_Chain.name; }
    [[nodiscard]] ChainRecord take() { return std::move(m_Chain); }
    [[nodiscard]] bool isEmpty() const { return m_Chain.residues.empty(); }

    // Whether the run begins the chain anew, as a second copy of a molecule does.
    [[nodiscard]] bool collidesWith(Residues run) const
    {
        return std::any_of(run.begin(), run.end(), [&](const gemmi::Residue &residue) {
            return m_AminoAcids.count(keyOf(residue)) > 0 && isAminoAcid(residue);
        });
    }

    void add(Residues run);
    void remarkOn(std::vector<std::string> &remarks) const;

private:
    void addResidue(Residues place);
    void addAtoms(Residues place, ResidueRecord &record);

    ChainRecord m_Chain;
    const std::string &m_File;
    std::set<NumberKey> m_AminoAcids;
    std::vector<std::string> m_LeftOut;
    std::string m_FirstRepeated;
    std::string m_FirstWithoutPosition;
};

void ChainBuilder::add(Residues run)
{
    while (!run.empty()) {
        std::size_t count = 1;
        while (count < run.size() && isSamePlace(run.front(), run[count]))
            ++count;
        addResidue(run.first(count));
        run = run.subspan(count);
    }
}

// The name that the file gives first stands for a place with several.
void ChainBuilder::addResidue(Residues place)
{
    const gemmi::Residue &residue = place.front();
    if (isWater(residue.name))
        return;
    ResidueRecord record;
    record.typeName = cleanText(residue.name);
    record.letter = letterOf(residue.name);
    record.number = numberOf(residue);
    record.isAminoAcid = isAminoAcid(residue);
    addAtoms(place, record);
    if (record.atoms.empty())
        return;
    for (const gemmi::Residue &other : place)
        if (other.name != residue.name && !hasAlternatives(other))
            m_LeftOut.push_back(cleanText(other.name) + ", which has number " +
                                record.number.getValue() + " as " + record.typeName + " has");
    const bool isNew = !record.isAminoAcid || m_AminoAcids.insert(keyOf(residue)).second;
    if (!isNew && m_FirstRepeated.empty())
        m_FirstRepeated = record.number.getValue();
    m_Chain.residues.push_back(std::move(record));
}

void ChainBuilder::addAtoms(Residues place, ResidueRecord &record)
{
    std::map<std::string_view, std::pair<std::size_t, const gemmi::Atom *>> byName;
    for (const gemmi::Residue &residue : place) {
        if (residue.name != place.front().name)
            continue;
        for (const gemmi::Atom &atom : residue.atoms) {
            if (!hasPosition(atom)) {
                if (m_FirstWithoutPosition.empty())
                    m_FirstWithoutPosition = cleanText(atom.name) + " of " + record.typeName + ' ' +
                                             record.number.getValue();
                continue;
            }
            const auto [known, isNew] = byName.try_emplace(atom.name, record.atoms.size(), &atom);
            auto &[index, chosen] = known->second;
            if (isNew)
                record.atoms.emplace_back();
            else if (!isPreferred(atom, *chosen))
                continue;
            chosen = &atom;
            record.atoms[index] = {cleanText(atom.name), atom.element.name(),
                                   Vertex(static_cast<float>(atom.pos.x),
                                          static_cast<float>(atom.pos.y),
                                          static_cast<float>(atom.pos.z))};
        }
    }
}

void ChainBuilder::remarkOn(std::vector<std::string> &remarks) const
{
    const std::string start = m_File + ": chain " + shown(m_Chain.name);
    for (const std::string &leftOut : m_LeftOut)
        remarks.push_back(start + ": left out " + leftOut);
    if (!m_FirstRepeated.empty())
        remarks.push_back(start + " has residue number " + m_FirstRepeated + " more than once");
    if (!m_FirstWithoutPosition.empty())
        remarks.push_back(start + ": left out atoms without a position, the first is " +
                          m_FirstWithoutPosition);
}

} // namespace

void convertModel(const gemmi::Model &model, const std::string &file, StructureRecord &structure)
{
    std::vector<ChainBuilder> chains;
    for (const gemmi::Chain &part : model.chains) {
        const std::string name = cleanText(part.name);
        for (Residues rest(part.residues); !rest.empty();) {
            const Residues run = firstRun(rest);
            rest = rest.subspan(run.size());
            // The latest chain of the name: what follows a new copy belongs to that copy.
            const auto known =
                std::find_if(chains.rbegin(), chains.rend(),
                             [&](const ChainBuilder &chain) { return chain.name() == name; });
            if (known != chains.rend() && !known->collidesWith(run))
                known->add(run);
            else
                chains.emplace_back(name, file).add(run);
        }
    }
    for (ChainBuilder &chain : chains) {
        chain.remarkOn(structure.remarks);
        if (!chain.isEmpty())
            structure.chains.push_back(chain.take());
    }
    std::erase_if(structure.elements, [&](const ElementRecord &element) {
        return std::none_of(structure.chains.begin(), structure.chains.end(),
                            [&](const ChainRecord &chain) { return chain.name == element.chain; });
    });
}

void addElement(std::vector<ElementRecord> &elements, ElementRecord element)
{
    if (!element.first.isValid() || !element.last.isValid())
        return;
    const bool isKnown = std::any_of(elements.begin(), elements.end(), [&](const auto &known) {
        return known.type == element.type && known.chain == element.chain &&
               known.first == element.first && known.last == element.last;
    });
    if (!isKnown)
        elements.push_back(std::move(element));
}

} // namespace TAMBO::formats
