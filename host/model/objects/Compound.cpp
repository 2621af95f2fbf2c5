// SPDX-License-Identifier: GPL-3.0-or-later
#include "Compound.h"

#include "ChangeScope.h"
#include "Peptide.h"
#include "SelectionColor.h"
#include "Space.h"
#include "Structure.h"

namespace TAMBO {

Compound::~Compound() = default;
Group::~Group() = default;
Residue::~Residue() = default;
Space::~Space() = default;

std::string Compound::GetFQName() const
{
    std::string path = Name();
    for (const Compound *above = Parent(); above != nullptr; above = above->Parent()) {
        // The root is everybody's, and a blank chain identifier says nothing.
        if (dynamic_cast<const Space *>(above) != nullptr)
            break;
        const std::string name = above->Name();
        if (!name.empty())
            path = path.empty() ? name : name + "/" + path;
    }
    return path;
}

Color Compound::GetColor() const
{
    return IsSelected() ? selectedColor(OwnColor()) : OwnColor();
}

void Compound::SetColor(const Color &color)
{
    if (mayChange(*this))
        AssignColor(color);
}

void Compound::ToggleSelected()
{
    SetSelected(!IsSelected());
}

void Compound::ShowMenu()
{
    // Copied: the menu may do anything, replacing the hook included.
    const auto showMenu = modelHooks().showMenu;
    if (showMenu)
        showMenu(*this);
}

namespace {

void appendIfProtein(Compound *object, std::vector<Compound *> &out)
{
    const Peptide *const peptide = Peptide::from(object);
    if (peptide != nullptr && peptide->residueCount() > 0)
        out.push_back(object);
}

// Residues and atoms are never descended into for peptides, nor are alignments, whose rows borrow
// their sequences.
bool mayHoldPeptides(const Compound *object)
{
    return dynamic_cast<const Space *>(object) != nullptr ||
           dynamic_cast<const Structure *>(object) != nullptr;
}

} // namespace

void GetPeptides(Compound *root, std::vector<Compound *> &out, bool recursive)
{
    if (root == nullptr)
        return;
    if (recursive)
        appendIfProtein(root, out);
    if (!mayHoldPeptides(root))
        return;
    const std::size_t count = root->ChildCount();
    for (std::size_t i = 0; i < count; ++i) {
        if (recursive)
            GetPeptides(root->Child(i), out, true);
        else
            appendIfProtein(root->Child(i), out);
    }
}

} // namespace TAMBO
