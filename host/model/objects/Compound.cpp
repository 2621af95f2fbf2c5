// SPDX-License-Identifier: GPL-3.0-or-later
#include "Compound.h"

#include "ChangeScope.h"
#include "SelectionColor.h"
#include "Space.h"

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

} // namespace TAMBO
