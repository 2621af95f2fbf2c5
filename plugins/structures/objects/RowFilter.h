// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <set>
#include <vector>

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

namespace structures {

// The chains that are rows of one alignment, or are tied to one, for as long as it is loaded.
class RowFilter
{
public:
    // All that are loaded.
    [[nodiscard]] static std::vector<TAMBO::Alignment *> choices();

    // Null for none: everything is shown.
    void setAlignment(TAMBO::Alignment *alignment);
    // May have been deleted since refresh() was called: not to be asked before.
    [[nodiscard]] TAMBO::Alignment *alignment() const noexcept { return m_Alignment; }
    // Looks at the rows again if they may be others; an alignment that is gone filters nothing.
    // True when other chains are shown than before.
    bool refresh();
    [[nodiscard]] bool shows(const TAMBO::Compound *chain) const
    {
        return m_Alignment == nullptr || m_Chains.count(chain) > 0;
    }

private:
    TAMBO::Alignment *m_Alignment = nullptr;
    // Of which rows it has, and of what these are tied to.
    unsigned long m_Layout = 0;
    std::uint64_t m_Ties = 0;
    bool m_IsNew = false;
    std::set<const TAMBO::Compound *> m_Chains;
};

} // namespace structures
