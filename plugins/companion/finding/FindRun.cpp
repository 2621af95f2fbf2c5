// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindRun.h"

#include "Alignment.h"
#include "Compound.h"

#include <string>

namespace companion {

std::pair<unsigned long, unsigned long> columnsOf(const TAMBO::Alignment &alignment, const Hit &hit)
{
    return {alignment.columnOfResidue(hit.row, hit.residues.begin),
            alignment.columnOfResidue(hit.row, hit.residues.end - 1) + 1};
}

FindRun::FindRun(const TAMBO::Alignment &alignment, SequencePattern pattern, FindIn where,
                 bool onlySelected, std::size_t mostHits)
    : m_Alignment(alignment),
      m_Pattern(std::move(pattern)),
      m_Where(where),
      m_OnlySelected(onlySelected),
      m_MostHits(mostHits),
      m_Rows(alignment.height())
{ }

bool FindRun::goOn(std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    while (!isDone()) {
        lookAt(m_NextRow++);
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return !isDone();
}

void FindRun::lookAt(unsigned long row)
{
    if (m_Where == FindIn::Names) {
        const bool isWanted = !m_OnlySelected || m_Alignment.isRowSelected(row);
        if (isWanted && m_Pattern.isIn(QString::fromStdString(m_Alignment.GetSeqName(row))))
            m_Hits.push_back({row, {}});
        return;
    }
    const std::string letters = m_Alignment.GetSequence(row, true);
    for (const Match &match : m_Pattern.matchesIn(letters)) {
        const Hit hit{row, match};
        if (isFull())
            return;
        if (!m_OnlySelected || isSelected(hit))
            m_Hits.push_back(hit);
    }
}

bool FindRun::isSelected(const Hit &hit) const
{
    const auto [begin, end] = columnsOf(m_Alignment, hit);
    for (unsigned long col = begin; col < end; ++col) {
        const TAMBO::Compound *const residue = m_Alignment.getItem(hit.row, col);
        if (residue != nullptr && !residue->IsSelected())
            return false;
    }
    return true;
}

} // namespace companion
