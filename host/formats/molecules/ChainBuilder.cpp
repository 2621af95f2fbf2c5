// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChainBuilder.h"

#include "FormatText.h"
#include "Text.h"

#include <gemmi/resinfo.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace TAMBO::formats {

namespace {

std::pair<int, char> keyOf(const gemmi::Residue &residue)
{
    return {residue.seqid.num.has_value() ? *residue.seqid.num : 0, residue.seqid.icode};
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
    return letter == ' ' ? 'X' : capitalLetter(letter);
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

float finiteOr(float value, float otherwise)
{
    return std::isfinite(value) ? value : otherwise;
}

bool hasPositions(Residues residues)
{
    return std::any_of(residues.begin(), residues.end(), [&](const gemmi::Residue &residue) {
        return residue.name == residues.front().name &&
               std::any_of(residue.atoms.begin(), residue.atoms.end(), hasPosition);
    });
}

// Whether they give one alternative twice: of one atom, or of residues with two names.
bool clash(const gemmi::Residue &residue, const gemmi::Residue &other)
{
    return std::any_of(residue.atoms.begin(), residue.atoms.end(), [&](const gemmi::Atom &atom) {
        return std::any_of(other.atoms.begin(), other.atoms.end(), [&](const gemmi::Atom &known) {
            return known.altloc == atom.altloc &&
                   (residue.name != other.name || known.name == atom.name);
        });
    });
}

// Of waters with one number: of a simulation there may be several, since its numbers begin anew.
std::vector<const gemmi::Atom *> oxygensOf(Residues residues)
{
    std::vector<const gemmi::Atom *> oxygens;
    const gemmi::Atom *alternative = nullptr;
    const gemmi::Atom *other = nullptr;
    for (const gemmi::Residue &residue : residues) {
        for (const gemmi::Atom &atom : residue.atoms) {
            if (!hasPosition(atom))
                continue;
            if (atom.element != gemmi::El::O)
                other = other == nullptr ? &atom : other;
            else if (atom.altloc == '\0')
                oxygens.push_back(&atom);
            else if (alternative == nullptr || isPreferred(atom, *alternative))
                alternative = &atom;
        }
    }
    if (alternative != nullptr)
        oxygens.push_back(alternative);
    else if (oxygens.empty() && other != nullptr)
        oxygens.push_back(other);
    return oxygens;
}

} // namespace

bool isSamePlace(const gemmi::Residue &residue, const gemmi::Residue &next)
{
    return keyOf(residue) == keyOf(next) &&
           (residue.name == next.name || (isAminoAcid(residue) && isAminoAcid(next)) ||
            (hasAlternatives(residue) && hasAlternatives(next)));
}

bool ChainBuilder::areAlternatives(Residues residues, const Place &place)
{
    return std::all_of(residues.begin(), residues.end(), [&](const gemmi::Residue &residue) {
        const auto clashes = [&](const gemmi::Residue &known) { return clash(residue, known); };
        return hasAlternatives(residue) &&
               isAminoAcid(residue) == isAminoAcid(place.first.front()) &&
               std::none_of(place.first.begin(), place.first.end(), clashes) &&
               std::none_of(place.others.begin(), place.others.end(),
                            [&](const gemmi::Residue *known) { return clashes(*known); });
    });
}

std::optional<ChainBuilder::Places::iterator>
ChainBuilder::placeOfAlternatives(Residues residues) const
{
    const auto known = m_PlacesAt.find(keyOf(residues.front()));
    if (known == m_PlacesAt.end())
        return std::nullopt;
    const auto found =
        std::find_if(known->second.begin(), known->second.end(),
                     [&](const auto &place) { return areAlternatives(residues, *place); });
    return found == known->second.end() ? std::nullopt : std::optional(*found);
}

bool ChainBuilder::hasAminoAcidAt(const NumberKey &key) const
{
    const auto known = m_PlacesAt.find(key);
    return known != m_PlacesAt.end() &&
           std::any_of(known->second.begin(), known->second.end(),
                       [](const auto &place) { return isAminoAcid(place->first.front()); });
}

bool ChainBuilder::collidesWith(Residues run) const
{
    return std::any_of(run.begin(), run.end(), [&](const gemmi::Residue &residue) {
        return hasAminoAcidAt(keyOf(residue)) && isAminoAcid(residue) &&
               !placeOfAlternatives(Residues(&residue, 1));
    });
}

void ChainBuilder::add(Residues run)
{
    // Behind which residue that the chain has already the alternatives have led.
    auto last = m_Places.end();
    while (!run.empty()) {
        std::size_t count = 1;
        while (count < run.size() && isSamePlace(run.front(), run[count]))
            ++count;
        const Residues residues = run.first(count);
        run = run.subspan(count);
        if (isWater(residues.front().name)) {
            m_Waters.push_back(residues);
            continue;
        }
        if (const auto known = placeOfAlternatives(residues)) {
            for (const gemmi::Residue &residue : residues)
                (*known)->others.push_back(&residue);
            last = *known;
            continue;
        }
        // One that the first alternative lacks.
        const bool isInserted = last != m_Places.end() &&
                                std::all_of(residues.begin(), residues.end(), hasAlternatives);
        last = isInserted ? std::next(last) : m_Places.end();
        addPlace(residues, last);
        if (isInserted)
            --last;
    }
}

void ChainBuilder::addPlace(Residues residues, Places::iterator before)
{
    const auto place = m_Places.insert(before, Place{residues, {}});
    if (!hasPositions(residues))
        return;
    const NumberKey key = keyOf(residues.front());
    if (m_FirstRepeated.empty() && isAminoAcid(residues.front()) && hasAminoAcidAt(key))
        m_FirstRepeated = SequenceNumber(key.first, key.second).getValue();
    m_PlacesAt[key].push_back(place);
}

ChainRecord ChainBuilder::take(std::vector<std::string> &remarks)
{
    ChainRecord chain;
    chain.name = m_Name;
    chain.residues.reserve(m_Places.size());
    for (const Place &place : m_Places)
        addRecord(place, chain);
    remarkOn(remarks);
    return chain;
}

// The name that the file gives first stands for a place with several.
void ChainBuilder::addRecord(const Place &place, ChainRecord &chain)
{
    const gemmi::Residue &residue = place.first.front();
    const NumberKey key = keyOf(residue);
    ResidueRecord record;
    record.typeName = cleanText(residue.name);
    record.letter = letterOf(residue.name);
    record.number = SequenceNumber(key.first, key.second);
    record.isAminoAcid = isAminoAcid(residue);
    addAtoms(place, record);
    if (record.atoms.empty())
        return;
    for (const gemmi::Residue &other : place.first) {
        if (other.name != residue.name && !hasAlternatives(other))
            m_LeftOut.push_back(cleanText(other.name) + ", which has number " +
                                record.number.getValue() + " as " + record.typeName + " has");
    }
    chain.residues.push_back(std::move(record));
}

void ChainBuilder::addAtoms(const Place &place, ResidueRecord &record)
{
    std::map<std::string_view, std::pair<std::size_t, const gemmi::Atom *>> byName;
    const auto addAtom = [&](const gemmi::Atom &atom) {
        if (!hasPosition(atom)) {
            if (m_FirstWithoutPosition.empty())
                m_FirstWithoutPosition = cleanText(atom.name) + " of " + record.typeName + ' ' +
                                         record.number.getValue();
            return;
        }
        const auto [known, isNew] = byName.try_emplace(atom.name, record.atoms.size(), &atom);
        auto &[index, chosen] = known->second;
        if (isNew)
            record.atoms.emplace_back();
        else if (!isPreferred(atom, *chosen))
            return;
        chosen = &atom;
        record.atoms[index] = {cleanText(atom.name), atom.element.name(),
                               Vertex(static_cast<float>(atom.pos.x),
                                      static_cast<float>(atom.pos.y),
                                      static_cast<float>(atom.pos.z)),
                               finiteOr(atom.b_iso, 0), finiteOr(atom.occ, 1)};
    };
    const auto addResidue = [&](const gemmi::Residue &residue) {
        if (residue.name == place.first.front().name)
            std::for_each(residue.atoms.begin(), residue.atoms.end(), addAtom);
    };
    std::for_each(place.first.begin(), place.first.end(), addResidue);
    for (const gemmi::Residue *const other : place.others)
        addResidue(*other);
}

void ChainBuilder::addWaters(Waters &waters) const
{
    for (const Residues residues : m_Waters) {
        const auto [number, insertionCode] = keyOf(residues.front());
        for (const gemmi::Atom *const oxygen : oxygensOf(residues))
            waters.add(m_Name, {Vector<float, 3>(oxygen->pos.x, oxygen->pos.y, oxygen->pos.z),
                                finiteOr(oxygen->b_iso, 0), number, 0, insertionCode});
    }
}

void ChainBuilder::remarkOn(std::vector<std::string> &remarks) const
{
    const std::string start = m_File + ": chain " + shown(m_Name);
    for (const std::string &leftOut : m_LeftOut)
        remarks.push_back(start + ": left out " + leftOut);
    if (!m_FirstRepeated.empty())
        remarks.push_back(start + " has residue number " + m_FirstRepeated + " more than once");
    if (!m_FirstWithoutPosition.empty())
        remarks.push_back(start + ": left out atoms without a position, the first is " +
                          m_FirstWithoutPosition);
}

} // namespace TAMBO::formats
