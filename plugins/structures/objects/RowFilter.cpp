// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowFilter.h"

#include "RowSources.h"

#include "Space.h"

#include <algorithm>

namespace structures {

namespace {

std::set<const TAMBO::Compound *> chainsOf(const TAMBO::Alignment &alignment)
{
    std::set<const TAMBO::Compound *> chains;
    forEachSource(alignment,
                  [&chains](unsigned long, std::size_t, const TAMBO::ResidueSource &source) {
                      chains.insert(source.chain);
                  });
    return chains;
}

} // namespace

std::vector<TAMBO::Alignment *> RowFilter::choices()
{
    std::vector<TAMBO::Alignment *> found;
    TAMBO::Space *const space = TAMBO::Space::instance();
    for (auto object = space->begin(); object != space->end(); ++object)
        if (auto *const alignment = dynamic_cast<TAMBO::Alignment *>(*object))
            found.push_back(alignment);
    return found;
}

void RowFilter::setAlignment(TAMBO::Alignment *alignment)
{
    m_IsNew = m_IsNew || alignment != m_Alignment;
    m_Alignment = alignment;
}

bool RowFilter::refresh()
{
    bool hasChanged = m_IsNew;
    if (m_Alignment != nullptr) {
        const std::vector<TAMBO::Alignment *> loaded = choices();
        if (std::find(loaded.begin(), loaded.end(), m_Alignment) == loaded.end()) {
            m_Alignment = nullptr;
            hasChanged = true;
        } else if (m_IsNew || m_Layout != m_Alignment->layoutRevision() ||
                   m_Ties != TAMBO::StructureDetails::revision()) {
            m_Layout = m_Alignment->layoutRevision();
            m_Ties = TAMBO::StructureDetails::revision();
            std::set<const TAMBO::Compound *> chains = chainsOf(*m_Alignment);
            hasChanged = hasChanged || chains != m_Chains;
            m_Chains = std::move(chains);
        }
    }
    m_IsNew = false;
    return hasChanged;
}

} // namespace structures
