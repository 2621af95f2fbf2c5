// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColorEdit.h"

#include "ResidueOwner.h"
#include "Revisions.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

void ColorSlot::store(std::size_t index, std::optional<Color> color, std::size_t count)
{
    if (colors == nullptr) {
        if (!color)
            return;
        colors = std::make_unique<ResidueColors>(count);
    }
    colors->set(index, color);
    if (colors->colored() == 0)
        colors.reset();
}

ColorEdit::ColorEdit(ResidueOwner &owner, ColorSlot &slot)
    : m_Owner(owner), m_Slot(slot), m_Count(owner.residueCount())
{ }

ColorEdit::~ColorEdit() = default;

bool ColorEdit::prefersRuns(std::size_t runs, std::size_t residues) noexcept
{
    return runs * sizeof(Run) <= std::max<std::size_t>(residues, 256);
}

void ColorEdit::note(std::size_t first, std::size_t count, std::optional<Color> before)
{
    if (m_HasAll)
        return;
    if (!m_Runs.empty()) {
        Run &last = m_Runs.back();
        if (std::size_t(last.first) + last.count == first && last.color == before) {
            last.count += static_cast<std::uint32_t>(count);
            return;
        }
    }
    m_Runs.push_back(
        {static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(count), before});
    if (!prefersRuns(m_Runs.size(), m_Count))
        takeAll();
}

void ColorEdit::noteAll(std::unique_ptr<ResidueColors> before)
{
    if (!m_HasAll)
        keepAll(std::move(before));
}

void ColorEdit::takeAll()
{
    keepAll(m_Slot.colors ? std::make_unique<ResidueColors>(*m_Slot.colors) : nullptr);
}

// The colours without what the runs tell of.
void ColorEdit::keepAll(std::unique_ptr<ResidueColors> colors)
{
    if (colors == nullptr && !m_Runs.empty())
        colors = std::make_unique<ResidueColors>(m_Count);
    for (auto run = m_Runs.rbegin(); run != m_Runs.rend(); ++run) {
        for (std::uint32_t i = 0; i < run->count; ++i)
            colors->set(run->first + i, run->color);
    }
    if (colors != nullptr && colors->colored() == 0)
        colors.reset();
    m_All = std::move(colors);
    m_HasAll = true;
    m_Runs = {};
}

void ColorEdit::close() noexcept
{
    m_Slot.open = nullptr;
    m_Runs.shrink_to_fit();
}

std::unique_ptr<Edit> ColorEdit::apply()
{
    auto inverse = std::make_unique<ColorEdit>(m_Owner, m_Slot);
    std::unique_ptr<ResidueColors> &colors = m_Slot.colors;
    if (m_HasAll) {
        inverse->m_HasAll = true;
        inverse->m_All = std::exchange(colors, std::move(m_All));
    } else {
        for (auto run = m_Runs.rbegin(); run != m_Runs.rend(); ++run) {
            for (std::uint32_t i = 0; i < run->count; ++i) {
                const std::size_t index = run->first + i;
                inverse->note(index, 1, colors ? colors->at(index) : std::nullopt);
                m_Slot.store(index, run->color, m_Count);
            }
        }
        inverse->m_Runs.shrink_to_fit();
    }
    growColorRevision();
    return inverse;
}

std::size_t ColorEdit::bytes() const
{
    return sizeof(*this) + m_Runs.capacity() * sizeof(Run) + (m_All ? m_All->bytes() : 0);
}

Compound *ColorEdit::subject() const
{
    return &m_Owner;
}

} // namespace TAMBO
