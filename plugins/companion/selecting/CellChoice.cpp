// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellChoice.h"

#include "DataPoint.h"
#include "Measures.h"
#include "Space.h"

#include <algorithm>

namespace companion {

namespace {

// True in [begin, end).
std::vector<bool> stretch(unsigned long size, unsigned long begin, unsigned long end)
{
    std::vector<bool> chosen(size, false);
    end = std::min(end, size);
    for (unsigned long i = begin; i < end; ++i)
        chosen[i] = true;
    return chosen;
}

} // namespace

CellChoice choiceOf(const TAMBO::Alignment &alignment, const TAMBO::CellBlock &block)
{
    return {stretch(alignment.height(), block.rowBegin, block.rowEnd),
            stretch(alignment.width(), block.colBegin, block.colEnd)};
}

CellChoice choiceOf(const TAMBO::Alignment &alignment, const Measure &measure, const Limit &limit)
{
    CellChoice choice{std::vector<bool>(alignment.height(), !measure.isOfRows()),
                      std::vector<bool>(alignment.width(), measure.isOfRows())};
    std::vector<bool> &chosen = measure.isOfRows() ? choice.rows : choice.columns;
    for (std::size_t i = 0; i < std::min(chosen.size(), measure.values().size()); ++i)
        chosen[i] = limit.holds(measure.values()[i]);
    return choice;
}

bool select(TAMBO::Alignment &alignment, const CellChoice &choice, TAMBO::Alignment::Selecting how)
{
    const DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
    if (change.m_good)
        alignment.selectCells(choice.rows, choice.columns, how);
    return change.m_good;
}

} // namespace companion
