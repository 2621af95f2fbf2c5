// SPDX-License-Identifier: GPL-3.0-or-later
// An object of no particular kind, for tests of what only reads names and trees.
#pragma once

#include "Compound.h"

#include <string>
#include <utility>
#include <vector>

// Parent and children are tied for their lifetimes: a child must die before its parent.
class FakeCompound : public TAMBO::Compound
{
public:
    FakeCompound(std::string name, std::string kind, FakeCompound *parent = nullptr)
        : m_Name(std::move(name)), m_Kind(std::move(kind)), m_Parent(parent)
    {
        if (m_Parent != nullptr)
            m_Parent->m_Children.push_back(this);
    }
    ~FakeCompound() override
    {
        if (m_Parent != nullptr)
            std::erase(m_Parent->m_Children, this);
    }

    std::string Name() const override { return m_Name; }
    char TypeCode() const override { return '\0'; }
    std::string TypeName() const override { return m_Kind; }
    TAMBO::Compound *Parent() const override { return m_Parent; }
    std::size_t ChildCount() const override { return m_Children.size(); }
    TAMBO::Compound *Child(std::size_t index) const override
    {
        return index < m_Children.size() ? m_Children[index] : nullptr;
    }
    bool IsLocked() const override { return false; }
    TAMBO::Vertex Position() const override { return {}; }
    Color OwnColor() const override { return m_Color; }
    void AssignColor(const Color &color) override { m_Color = color; }
    void SetSelected(bool selected) override { m_Selected = selected; }
    bool IsSelected() const override { return m_Selected; }

private:
    std::string m_Name;
    std::string m_Kind;
    FakeCompound *m_Parent;
    std::vector<FakeCompound *> m_Children;
    Color m_Color;
    bool m_Selected = false;
};
