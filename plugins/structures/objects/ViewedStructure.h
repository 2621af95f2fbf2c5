// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Coloring.h"
#include "ModelChoice.h"
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
    // All of its residues are.
    [[nodiscard]] bool isChainHidden(std::uint32_t index) const;
    // Those of its file, the first included.
    [[nodiscard]] std::size_t modelCount() const noexcept { return m_ModelCount; }
    // The molecule is that of the model that is chosen, or the first one.
    void setModels(const ModelChoice &choice);
    [[nodiscard]] const ModelChoice &models() const noexcept { return m_Models; }
    // Of all together, those for which there is place in a picture.
    [[nodiscard]] std::size_t mostTraces() const;
    // The waters of which its file tells, as small spheres; those of a chain that is hidden are
    // not to be seen.
    void setWatersShown(bool shown);
    [[nodiscard]] bool areWatersShown() const noexcept { return m_AreWatersShown; }
    [[nodiscard]] bool isWaterInPicture(std::uint32_t index) const;
    [[nodiscard]] bool isVisible() const noexcept { return m_IsVisible; }
    void setVisible(bool visible) noexcept { m_IsVisible = visible; }
    // Chains that are not drawn, whatever is said of their residues; empty for none.
    void setLeftOut(std::vector<bool> chains);
    [[nodiscard]] bool isLeftOut(std::uint32_t chain) const
    {
        return chain < m_LeftOut.size() && m_LeftOut[chain];
    }
    // It is visible, and not all of its chains are left out.
    [[nodiscard]] bool isInPicture() const;

    // Of the styles that it has, made when somebody asks; what is drawn keeps them alive.
    [[nodiscard]] const std::shared_ptr<const Shapes> &shapes();
    [[nodiscard]] std::size_t pickCount() const noexcept
    {
        return m_Molecule.atoms.size() + m_Molecule.residues.size() + m_Molecule.waters.size();
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
    // Which water a pick of its own belongs to; kNone for what is none.
    [[nodiscard]] std::uint32_t waterOf(Pick pick) const noexcept;
    // "1PPF, chain E, water 301".
    [[nodiscard]] std::string describeWater(std::uint32_t index) const;
    [[nodiscard]] TAMBO::Compound *residue(std::uint32_t index) const;
    // Where a residue is among the children of its chain.
    [[nodiscard]] std::uint32_t childOf(std::uint32_t residue) const;
    // The other way round; kNone for a child that is no residue.
    [[nodiscard]] std::uint32_t residueAt(std::uint32_t chain, std::uint32_t child) const;
    [[nodiscard]] TAMBO::Compound *atom(std::uint32_t index) const;
    [[nodiscard]] TAMBO::Compound *chain(std::uint32_t index) const;
    // "1PPF, chain E, HIS 57, CA".
    [[nodiscard]] std::string describe(const Place &place) const;
    // Where a residue is, in the workbench's coordinates: its trace point, or the middle of it.
    [[nodiscard]] Vec3 positionOf(std::uint32_t residue) const;

private:
    void read();
    [[nodiscard]] std::vector<bool> drawnWaters() const;
    // Whether there is a further model that is to be drawn in place of the first one.
    [[nodiscard]] bool isOtherModel() const noexcept
    {
        return !m_Models.all && m_Models.index > 0 && m_Models.index < m_ModelCount;
    }
    void addAllModels(const std::vector<ResidueStyle> &styles, Shapes &shapes) const;

    TAMBO::Compound *m_Object;
    Molecule m_Molecule;
    std::vector<ResidueStyle> m_Styles;
    std::vector<bool> m_Hidden;
    std::vector<bool> m_LeftOut;
    std::shared_ptr<const Shapes> m_Shapes;
    bool m_IsVisible = true;
    bool m_AreWatersShown = false;
    std::size_t m_ModelCount = 1;
    ModelChoice m_Models;
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
    struct WaterSource
    {
        int number;
        char insertionCode;
        // In m_Chains; kNone where there is no chain of its name.
        std::uint32_t chain;
    };
    std::vector<WaterSource> m_Waters;
};

} // namespace structures
