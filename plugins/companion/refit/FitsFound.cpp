// SPDX-License-Identifier: GPL-3.0-or-later
#include "FitsFound.h"

#include <algorithm>
#include <utility>

namespace companion {

using TAMBO::StructureFit;
using TAMBO::StructureFits;
using TAMBO::StructureRow;

namespace {

constexpr unsigned long kRowsBetweenLooks = 4096;
// In Angstrom.
constexpr double kElsewhere = 0.01;

} // namespace

void FitsFound::begin(const TAMBO::FitChoice &choice)
{
    *this = FitsFound();
    m_Choice = choice;
}

bool FitsFound::goOn(const TAMBO::Alignment &alignment, std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    const unsigned long height = alignment.height();
    const auto isDone = [&] { return m_NextRow >= height && m_Fits.size() + 1 >= m_Rows.size(); };
    while (!isDone()) {
        look(alignment);
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return !isDone();
}

void FitsFound::look(const TAMBO::Alignment &alignment)
{
    const unsigned long height = alignment.height();
    if (m_NextRow >= height) {
        m_Fits.push_back(StructureFits::measure(alignment, m_Rows.front().row,
                                                m_Rows[m_Fits.size() + 1].row, m_Choice));
        return;
    }
    const unsigned long last = std::min(height, m_NextRow + kRowsBetweenLooks);
    while (m_NextRow < last) {
        const unsigned long row = m_NextRow++;
        if (!alignment.hasPositions(row))
            continue;
        TAMBO::Compound *const structure = StructureFits::structureOf(alignment, row);
        if (structure != nullptr &&
            std::ranges::find(m_Rows, structure, &StructureRow::structure) == m_Rows.end())
            m_Rows.push_back({row, structure});
        return;
    }
}

bool liesElsewhere(const StructureFit &fit)
{
    return fit.problem.empty() && fit.coreRmsdNow > fit.coreRmsd + kElsewhere;
}

} // namespace companion
