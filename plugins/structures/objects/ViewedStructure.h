// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Coloring.h"
#include "Molecule.h"
#include "MoleculeShapes.h"
#include "Palette.h"
#include "Style.h"

#include "Compound.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace structures {

// A structure of the workbench as a view shows it: what is drawn of it, and the objects behind
// that. It is made anew when atoms came, went or moved.
class ViewedStructure
{
public:
    explicit ViewedStructure(TAMBO::Compound &structure);

    [[nodiscard]] TAMBO::Compound *object() const noexcept { return m_Object; }
    [[nodiscard]] const Molecule &molecule() const noexcept { return m_Molecule; }
    // Reads it again. False when nothing but colors and marks can have changed.
    bool update();

    [[nodiscard]] const std::vector<ResidueStyle> &styles() const noexcept { return m_Styles; }
    // One for each residue.
    void setStyles(std::vector<ResidueStyle> styles);
    // Of all residues for which chosen says so, or of all but waters without it. What no curve can
    // be drawn through keeps its own in place of a cartoon or trace.
    void setStyle(Style style, const std::vector<bool> &chosen = {});
    // Which residues are not drawn, whatever their style is; empty for none.
    [[nodiscard]] const std::vector<bool> &hidden() const noexcept { return m_Hidden; }
    void setHidden(std::vector<bool> hidden);
    [[nodiscard]] bool isVisible() const noexcept { return m_IsVisible; }
    void setVisible(bool visible) noexcept { m_IsVisible = visible; }

    // Of the styles that it has, made when somebody asks; what is drawn keeps them alive.
    [[nodiscard]] const std::shared_ptr<const Shapes> &shapes();
    [[nodiscard]] std::size_t pickCount() const noexcept
    {
        return m_Molecule.atoms.size() + m_Molecule.residues.size();
    }
    // Into palette, from the entry of the first of its picks on.
    void paint(Coloring coloring, Palette &palette, Pick firstPick) const;

    // What a pick of its own (from 1 on) belongs to; the atom is kNone when it is the residue as
    // such.
    struct Place
    {
        std::uint32_t residue = kNone;
        std::uint32_t atom = kNone;
    };
    [[nodiscard]] Place placeOf(Pick pick) const noexcept;
    [[nodiscard]] TAMBO::Compound *residue(std::uint32_t index) const;
    // Where a residue is among the children of its chain.
    [[nodiscard]] std::uint32_t childOf(std::uint32_t residue) const;
    [[nodiscard]] TAMBO::Compound *atom(std::uint32_t index) const;
    [[nodiscard]] TAMBO::Compound *chain(std::uint32_t index) const;
    // "1PPF, chain E, HIS 57, CA".
    [[nodiscard]] std::string describe(const Place &place) const;
    // Where a residue is, in the workbench's coordinates: its trace point, or the middle of it.
    [[nodiscard]] Vec3 positionOf(std::uint32_t residue) const;

private:
    void read();

    TAMBO::Compound *m_Object;
    Molecule m_Molecule;
    std::vector<ResidueStyle> m_Styles;
    std::vector<bool> m_Hidden;
    std::shared_ptr<const Shapes> m_Shapes;
    bool m_IsVisible = true;
    std::vector<TAMBO::Compound *> m_Chains;
    // Of each residue.
    struct Source
    {
        std::uint32_t chain;
        std::uint32_t child;
        float bFactor;
    };
    std::vector<Source> m_Residues;
    std::vector<TAMBO::Compound *> m_Atoms;
};

} // namespace structures
