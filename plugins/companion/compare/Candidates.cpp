// SPDX-License-Identifier: GPL-3.0-or-later
#include "Candidates.h"

#include "Space.h"

#include <algorithm>

namespace companion {

std::vector<TAMBO::Alignment *> allAlignments()
{
    std::vector<TAMBO::Alignment *> found;
    for (TAMBO::Compound *const object : *TAMBO::Space::instance())
        if (object->Kind() == TAMBO::CompoundKind::Alignment)
            found.push_back(static_cast<TAMBO::Alignment *>(object));
    return found;
}

bool isInWorkbench(const TAMBO::Alignment *alignment)
{
    TAMBO::Space &space = *TAMBO::Space::instance();
    return std::find(space.begin(), space.end(), alignment) != space.end();
}

Candidates::Candidates(const TAMBO::Alignment &here) : m_Here(here), m_Others(allAlignments())
{
    std::erase(m_Others, &here);
}

bool Candidates::goOn(std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    while (m_Other < m_Others.size()) {
        if (m_Next < std::min(m_Here.height(), kMostRows)) {
            m_Sequences.insert(m_Here.GetSeq(m_Next));
            m_Names.insert(m_Here.GetSeqName(m_Next++));
        } else {
            TAMBO::Alignment *const other = m_Others[m_Other];
            const bool hasRow = m_Row < other->height();
            m_Shared += hasRow && isShared(*other, m_Row++) ? 1 : 0;
            if (m_Shared == kFewestRows)
                m_Found.push_back(other);
            if (!hasRow || m_Shared == kFewestRows) {
                ++m_Other;
                m_Row = m_Shared = 0;
            }
        }
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return m_Other < m_Others.size();
}

bool Candidates::isShared(const TAMBO::Alignment &other, unsigned long row) const
{
    return m_Sequences.contains(other.GetSeq(row)) || m_Names.contains(other.GetSeqName(row));
}

} // namespace companion
