// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewedStructure.h"

#include "Elements.h"
#include "MoleculeReading.h"

#include <algorithm>
#include <cmath>

namespace structures {

namespace {

// Of chains, one after the other: told apart by people who see colors otherwise as well, after B.
// Wong, "Points of view: Color blindness", Nat. Methods 8, 441 (2011), and lighter ones of them.
constexpr std::uint32_t kChains[] = {0x3f8fd0, 0xe69f00, 0x2ba884, 0xd5622c, 0xcc79a7,
                                     0x7fc4ee, 0xe8d94a, 0x8a6fc2, 0x9aa66a, 0xb08060};
constexpr std::uint32_t kHelix = 0xd0507a;
constexpr std::uint32_t kStrand = 0xe0b040;
constexpr std::uint32_t kCoil = 0x9fb4c4;
constexpr std::uint32_t kOther = 0xa8a8a8;

std::uint32_t mixed(std::uint32_t a, std::uint32_t b, float share) noexcept
{
    const auto part = [&](unsigned shift) {
        const auto from = float((a >> shift) & 0xffU);
        const auto to = float((b >> shift) & 0xffU);
        return std::uint32_t(std::lrint(from + (to - from) * share)) << shift;
    };
    return part(16) | part(8) | part(0);
}

// Blue, white, red.
std::uint32_t scaleColor(float share) noexcept
{
    constexpr std::uint32_t kLow = 0x2f5fd0;
    constexpr std::uint32_t kMiddle = 0xf4f4f4;
    constexpr std::uint32_t kHigh = 0xd03030;
    return share < 0.5F ? mixed(kLow, kMiddle, share * 2) : mixed(kMiddle, kHigh, share * 2 - 1);
}

bool areAlike(const Molecule &a, const Molecule &b)
{
    const auto sameAtom = [](const MoleculeAtom &x, const MoleculeAtom &y) {
        return x.position == y.position && x.residue == y.residue && x.element == y.element &&
               x.source == y.source;
    };
    const auto sameResidue = [](const MoleculeResidue &x, const MoleculeResidue &y) {
        return x.firstAtom == y.firstAtom && x.atomCount == y.atomCount && x.chain == y.chain &&
               x.role == y.role && x.fold == y.fold && x.tracePoint == y.tracePoint;
    };
    return a.centre == b.centre &&
           std::equal(a.atoms.begin(), a.atoms.end(), b.atoms.begin(), b.atoms.end(), sameAtom) &&
           std::equal(a.residues.begin(), a.residues.end(), b.residues.begin(), b.residues.end(),
                      sameResidue);
}

} // namespace

ViewedStructure::ViewedStructure(TAMBO::Compound &structure) : m_Object(&structure)
{
    read();
    m_Styles = firstStyles(m_Molecule);
}

void ViewedStructure::read()
{
    const TAMBO::StructureTable table = TAMBO::StructureDetails::read(m_Object);
    m_Molecule = readMolecule(m_Object->Name(), table);
    m_Chains.clear();
    for (const TAMBO::ChainDetails &chain : table.chains)
        m_Chains.push_back(chain.chain);
    m_Residues.clear();
    m_Residues.reserve(table.residues.size());
    for (const TAMBO::ResidueDetails &residue : table.residues) {
        float sum = 0;
        for (std::uint32_t i = residue.atomBegin; i < residue.atomEnd; ++i)
            sum += table.atoms[i].bFactor;
        const std::uint32_t count = residue.atomEnd - residue.atomBegin;
        m_Residues.push_back({residue.chain, residue.child, count > 0 ? sum / float(count) : 0});
    }
    m_Atoms.clear();
    m_Atoms.reserve(m_Molecule.atoms.size());
    for (const MoleculeAtom &atom : m_Molecule.atoms)
        m_Atoms.push_back(table.atoms[atom.source].atom);
}

bool ViewedStructure::update()
{
    const Molecule before = std::move(m_Molecule);
    read();
    if (areAlike(before, m_Molecule))
        return false;
    m_Shapes.reset();
    if (before.residues.size() != m_Molecule.residues.size()) {
        m_Styles = firstStyles(m_Molecule);
        m_Hidden.clear();
    }
    return true;
}

void ViewedStructure::setStyles(std::vector<ResidueStyle> styles)
{
    if (styles == m_Styles || styles.size() != m_Molecule.residues.size())
        return;
    m_Styles = std::move(styles);
    m_Shapes.reset();
}

void ViewedStructure::setStyle(Style style, const std::vector<bool> &chosen)
{
    const bool isCurve = style == Style::Cartoon || style == Style::Trace;
    std::vector<ResidueStyle> styles(m_Styles);
    for (std::size_t i = 0; i < styles.size(); ++i) {
        const MoleculeResidue &residue = m_Molecule.residues[i];
        const bool isChosen = chosen.empty() ? residue.role != Role::Water : chosen[i];
        if (isChosen && (!isCurve || residue.tracePoint != kNone))
            styles[i].style = style;
    }
    setStyles(std::move(styles));
}

void ViewedStructure::setHidden(std::vector<bool> hidden)
{
    if (hidden == m_Hidden || (!hidden.empty() && hidden.size() != m_Molecule.residues.size()))
        return;
    m_Hidden = std::move(hidden);
    m_Shapes.reset();
}

const std::shared_ptr<const Shapes> &ViewedStructure::shapes()
{
    if (!m_Shapes) {
        std::vector<ResidueStyle> styles(m_Styles);
        for (std::size_t i = 0; i < m_Hidden.size(); ++i)
            if (m_Hidden[i])
                styles[i] = {Style::Hidden, false};
        m_Shapes = std::make_shared<const Shapes>(shapesOf(m_Molecule, styles));
    }
    return m_Shapes;
}

void ViewedStructure::paint(Coloring coloring, Palette &palette, Pick firstPick) const
{
    float least = 0;
    float most = 0;
    if (coloring == Coloring::BFactor && !m_Residues.empty()) {
        const auto byFactor = [](const Source &a, const Source &b) {
            return a.bFactor < b.bFactor;
        };
        const auto [low, high] =
            std::minmax_element(m_Residues.begin(), m_Residues.end(), byFactor);
        least = low->bFactor;
        most = high->bFactor;
    }
    for (std::uint32_t i = 0; i < m_Molecule.residues.size(); ++i) {
        const MoleculeResidue &residue = m_Molecule.residues[i];
        const TAMBO::Compound *const object = this->residue(i);
        std::uint32_t color = kOther;
        switch (coloring) {
        case Coloring::Workbench:
            if (object)
                color = object->GetColor().rgb();
            break;
        case Coloring::Chain:
            color = kChains[residue.chain % std::size(kChains)];
            break;
        case Coloring::SecondaryStructure:
            if (residue.role == Role::AminoAcid)
                color = residue.fold == Fold::Helix    ? kHelix
                        : residue.fold == Fold::Strand ? kStrand
                                                       : kCoil;
            break;
        case Coloring::BFactor:
            color =
                scaleColor(most > least ? (m_Residues[i].bFactor - least) / (most - least) : 0.5F);
            break;
        }
        const std::uint8_t mark = object && object->IsSelected() ? Palette::kSelected : 0;
        const std::size_t own = firstPick + pickOfResidue(m_Molecule, i);
        palette.colors[own] = color;
        palette.marks[own] = mark;
        for (std::uint32_t a = residue.firstAtom; a < residue.firstAtom + residue.atomCount; ++a) {
            const MoleculeAtom &atom = m_Molecule.atoms[a];
            const std::size_t place = firstPick + pickOfAtom(a);
            palette.colors[place] = atom.isElement('C') ? color : factsOf(atom.element).color;
            palette.marks[place] =
                m_Atoms[a] && m_Atoms[a]->IsSelected() ? std::uint8_t(Palette::kSelected) : mark;
        }
    }
}

ViewedStructure::Place ViewedStructure::placeOf(Pick pick) const noexcept
{
    if (pick == 0 || pick > pickCount())
        return {};
    const auto index = std::uint32_t(pick - 1);
    if (index < m_Molecule.atoms.size())
        return {m_Molecule.atoms[index].residue, index};
    return {index - std::uint32_t(m_Molecule.atoms.size()), kNone};
}

TAMBO::Compound *ViewedStructure::residue(std::uint32_t index) const
{
    if (index >= m_Residues.size())
        return nullptr;
    const Source &source = m_Residues[index];
    TAMBO::Compound *const chain = m_Chains[source.chain];
    return chain ? chain->Child(source.child) : nullptr;
}

std::uint32_t ViewedStructure::childOf(std::uint32_t residue) const
{
    return residue < m_Residues.size() ? m_Residues[residue].child : kNone;
}

TAMBO::Compound *ViewedStructure::atom(std::uint32_t index) const
{
    return index < m_Atoms.size() ? m_Atoms[index] : nullptr;
}

TAMBO::Compound *ViewedStructure::chain(std::uint32_t index) const
{
    return index < m_Chains.size() ? m_Chains[index] : nullptr;
}

std::string ViewedStructure::describe(const Place &place) const
{
    if (place.residue == kNone || place.residue >= m_Molecule.residues.size())
        return {};
    std::string text = m_Object->Name();
    if (const TAMBO::Compound *chain = this->chain(m_Molecule.residues[place.residue].chain))
        text += ", chain " + chain->Name();
    if (const TAMBO::Compound *residue = this->residue(place.residue))
        text += ", " + residue->Name();
    if (const TAMBO::Compound *atom = this->atom(place.atom))
        text += ", " + atom->Name();
    return text;
}

Vec3 ViewedStructure::positionOf(std::uint32_t index) const
{
    const MoleculeResidue &residue = m_Molecule.residues[index];
    if (residue.tracePoint != kNone)
        return m_Molecule.atoms[residue.tracePoint].position + m_Molecule.centre;
    Vec3 sum;
    for (std::uint32_t i = 0; i < residue.atomCount; ++i)
        sum = sum + m_Molecule.atoms[residue.firstAtom + i].position;
    return sum * (1 / float(std::max(1U, residue.atomCount))) + m_Molecule.centre;
}

} // namespace structures
