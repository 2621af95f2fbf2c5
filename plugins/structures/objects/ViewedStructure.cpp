// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewedStructure.h"

#include "Elements.h"
#include "ModelPlacing.h"
#include "MoleculeReading.h"
#include "ThinTrace.h"
#include "WaterShapes.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <utility>

namespace structures {

namespace {

// Of chains, one after the other: told apart by people who see colors otherwise as well, after B.
// Wong, "Points of view: Color blindness", Nat. Methods 8, 441 (2011), and lighter ones of them.
constexpr std::uint32_t kChains[] = {0x3f8fd0, 0xe69f00, 0x2ba884, 0xd5622c, 0xcc79a7,
                                     0x7fc4ee, 0xe8d94a, 0x8a6fc2, 0x9aa66a, 0xb08060};
constexpr std::uint32_t kHelix = 0xd0507a;
constexpr std::uint32_t kStrand = 0xe0b040;
constexpr std::uint32_t kCoil = 0x9fb4c4;
// Of all models that are drawn together.
constexpr std::size_t kMostTracePoints = 250000;
constexpr std::uint32_t kOther = 0xa8a8a8;
constexpr std::uint32_t kWater = 0xe05048;

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
               x.source == y.source && x.isPlaced == y.isPlaced;
    };
    const auto sameResidue = [](const MoleculeResidue &x, const MoleculeResidue &y) {
        return x.firstAtom == y.firstAtom && x.atomCount == y.atomCount && x.chain == y.chain &&
               x.role == y.role && x.fold == y.fold && x.tracePoint == y.tracePoint;
    };
    const auto sameLink = [](const Link &x, const Link &y) {
        return x.atoms.first == y.atoms.first && x.atoms.second == y.atoms.second &&
               x.kind == y.kind;
    };
    return a.centre == b.centre && a.waters == b.waters &&
           std::equal(a.links.begin(), a.links.end(), b.links.begin(), b.links.end(), sameLink) &&
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
    MoleculeExtras extras{TAMBO::StructureDetails::bonds(m_Object),
                          TAMBO::StructureDetails::waters(m_Object)};
    std::erase_if(extras.waters, [](const TAMBO::WaterDetails &water) {
        return !water.position.isDefined() ||
               !isFinite({water.position.x(), water.position.y(), water.position.z()});
    });
    m_Molecule = readMolecule(m_Object->Name(), table, extras);
    m_ModelCount = TAMBO::StructureDetails::modelCount(m_Object);
    if (isOtherModel()) {
        const std::vector<MoleculeResidue> ofFirst = m_Molecule.residues;
        placeInModel(*m_Object, m_Models.index, ofFirst, m_Molecule);
    }
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
    m_Waters.clear();
    m_Waters.reserve(extras.waters.size());
    std::map<std::string, std::uint32_t, std::less<>> chains;
    for (std::uint32_t i = 0; i < m_Chains.size(); ++i)
        chains.emplace(m_Chains[i]->Name(), i);
    for (const TAMBO::WaterDetails &water : extras.waters) {
        const auto chain = chains.find(water.chain);
        m_Waters.push_back(
            {water.number, water.insertionCode, chain == chains.end() ? kNone : chain->second});
    }
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
        for (std::uint32_t i = 0; i < styles.size(); ++i)
            if ((!m_Hidden.empty() && m_Hidden[i]) || isLeftOut(m_Molecule.residues[i].chain))
                styles[i] = {Style::Hidden, false};
        Shapes shapes;
        if (m_Models.all && m_ModelCount > 1)
            addAllModels(styles, shapes);
        else
            shapes = shapesOf(m_Molecule, styles);
        if (m_AreWatersShown)
            addWaters(m_Molecule, drawnWaters(), shapes);
        m_Shapes = std::make_shared<const Shapes>(std::move(shapes));
    }
    return m_Shapes;
}

void ViewedStructure::setLeftOut(std::vector<bool> chains)
{
    if (chains == m_LeftOut)
        return;
    m_LeftOut = std::move(chains);
    m_Shapes.reset();
}

bool ViewedStructure::isInPicture() const
{
    return m_IsVisible && (m_LeftOut.empty() ||
                           std::find(m_LeftOut.begin(), m_LeftOut.end(), false) != m_LeftOut.end());
}

void ViewedStructure::setWatersShown(bool shown)
{
    if (shown != m_AreWatersShown && !m_Molecule.waters.empty())
        m_Shapes.reset();
    m_AreWatersShown = shown;
}

bool ViewedStructure::isChainHidden(std::uint32_t index) const
{
    const MoleculeChain &chain = m_Molecule.chains[index];
    if (m_Hidden.empty() || chain.residueCount == 0)
        return false;
    const auto begin = m_Hidden.begin() + std::ptrdiff_t(chain.firstResidue);
    return std::all_of(begin, begin + std::ptrdiff_t(chain.residueCount), [](bool h) { return h; });
}

bool ViewedStructure::isWaterInPicture(std::uint32_t index) const
{
    if (!m_AreWatersShown || !isInPicture() || index >= m_Waters.size())
        return false;
    const std::uint32_t chain = m_Waters[index].chain;
    return chain == kNone || (!isChainHidden(chain) && !isLeftOut(chain));
}

std::vector<bool> ViewedStructure::drawnWaters() const
{
    std::vector<bool> isChainDrawn;
    for (std::uint32_t i = 0; i < m_Chains.size(); ++i)
        isChainDrawn.push_back(!isChainHidden(i) && !isLeftOut(i));
    std::vector<bool> drawn;
    drawn.reserve(m_Waters.size());
    for (const WaterSource &water : m_Waters)
        drawn.push_back(water.chain == kNone || isChainDrawn[water.chain]);
    return drawn;
}

void ViewedStructure::setModels(const ModelChoice &choice)
{
    if (choice == m_Models)
        return;
    m_Models = choice;
    if (m_ModelCount < 2)
        return;
    read();
    m_Shapes.reset();
}

std::size_t ViewedStructure::mostTraces() const
{
    const std::size_t traced =
        std::size_t(std::count_if(m_Molecule.residues.begin(), m_Molecule.residues.end(),
                                  [](const MoleculeResidue &r) { return r.tracePoint != kNone; }));
    return std::clamp<std::size_t>(kMostTracePoints / std::max<std::size_t>(1, traced), 1,
                                   std::max<std::size_t>(1, m_ModelCount));
}

void ViewedStructure::addAllModels(const std::vector<ResidueStyle> &styles, Shapes &shapes) const
{
    // What is no curve is that of the first model.
    std::vector<ResidueStyle> others(styles);
    for (ResidueStyle &style : others)
        if (style.style == Style::Cartoon || style.style == Style::Trace)
            style = {Style::Hidden, false};
    shapes = shapesOf(m_Molecule, others);
    Molecule molecule(m_Molecule);
    const std::size_t count = mostTraces();
    for (std::size_t model = 0; model < count; ++model) {
        placeInModel(*m_Object, model, m_Molecule.residues, molecule);
        addThinTrace(molecule, styles, shapes);
    }
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
    for (std::uint32_t i = 0; i < m_Molecule.waters.size(); ++i)
        palette.colors[firstPick + pickOfWater(m_Molecule, i)] = kWater;
}

ViewedStructure::Place ViewedStructure::placeOf(Pick pick) const noexcept
{
    if (pick == 0 || pick > m_Molecule.atoms.size() + m_Molecule.residues.size())
        return {};
    const auto index = std::uint32_t(pick - 1);
    if (index < m_Molecule.atoms.size())
        return {m_Molecule.atoms[index].residue, index};
    return {index - std::uint32_t(m_Molecule.atoms.size()), kNone};
}

std::uint32_t ViewedStructure::waterOf(Pick pick) const noexcept
{
    const Pick first = pickOfWater(m_Molecule, 0);
    return pick >= first && pick <= pickCount() ? pick - first : kNone;
}

std::string ViewedStructure::describeWater(std::uint32_t index) const
{
    if (index >= m_Waters.size())
        return {};
    const WaterSource &water = m_Waters[index];
    std::string text = m_Object->Name();
    if (water.chain != kNone)
        text += ", chain " + m_Chains[water.chain]->Name();
    text += ", water " + std::to_string(water.number);
    if (water.insertionCode != ' ')
        text += water.insertionCode;
    return text;
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

std::uint32_t ViewedStructure::residueAt(std::uint32_t chain, std::uint32_t child) const
{
    if (chain >= m_Molecule.chains.size())
        return kNone;
    // In ascending order: the amino acids, then the groups.
    const MoleculeChain &own = m_Molecule.chains[chain];
    const auto begin = m_Residues.begin() + std::ptrdiff_t(own.firstResidue);
    const auto end = begin + std::ptrdiff_t(own.residueCount);
    const auto found = std::lower_bound(
        begin, end, child, [](const Source &source, std::uint32_t c) { return source.child < c; });
    return found != end && found->child == child ? std::uint32_t(found - m_Residues.begin())
                                                 : kNone;
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
    if (isOtherModel())
        text += ", model " + std::to_string(m_Models.index + 1);
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
