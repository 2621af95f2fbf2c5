// SPDX-License-Identifier: GPL-3.0-or-later
// Collects the residues of one chain from the pieces in which a file gives them, and makes records
// of them. Alternatives of a residue may stand far apart.
#pragma once

#include "Records.h"

#include <gemmi/model.hpp>

#include <list>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO::formats {

using Residues = std::span<const gemmi::Residue>;

// Two names at one place are one residue: alternatives of it, or a mistake.
[[nodiscard]] bool isSamePlace(const gemmi::Residue &residue, const gemmi::Residue &next);

class ChainBuilder
{
public:
    // The file's name, which outlives this, is for the remarks.
    ChainBuilder(std::string name, const std::string &file) : m_Name(std::move(name)), m_File(file)
    { }

    [[nodiscard]] const std::string &name() const { return m_Name; }
    // Whether the run begins the chain anew, as a second copy of a molecule does.
    [[nodiscard]] bool collidesWith(Residues run) const;
    // They outlive this.
    void add(Residues run);
    // Has no residues when none has a position.
    [[nodiscard]] ChainRecord take(std::vector<std::string> &remarks);
    // Those that were added, in their order.
    void addWaters(Waters &waters) const;

private:
    // One residue: how the file gives it first, and alternatives that stand elsewhere.
    struct Place
    {
        Residues first;
        std::vector<const gemmi::Residue *> others;
    };
    using Places = std::list<Place>;
    using NumberKey = std::pair<int, char>;

    [[nodiscard]] static bool areAlternatives(Residues residues, const Place &place);
    // The residue of which these are alternatives.
    [[nodiscard]] std::optional<Places::iterator> placeOfAlternatives(Residues residues) const;
    [[nodiscard]] bool hasAminoAcidAt(const NumberKey &key) const;
    void addPlace(Residues residues, Places::iterator before);
    void addRecord(const Place &place, ChainRecord &chain);
    void addAtoms(const Place &place, ResidueRecord &record);
    void remarkOn(std::vector<std::string> &remarks) const;

    std::string m_Name;
    const std::string &m_File;
    Places m_Places;
    std::vector<Residues> m_Waters;
    std::map<NumberKey, std::vector<Places::iterator>> m_PlacesAt;
    std::vector<std::string> m_LeftOut;
    std::string m_FirstRepeated;
    std::string m_FirstWithoutPosition;
};

} // namespace TAMBO::formats
