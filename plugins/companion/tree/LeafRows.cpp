// SPDX-License-Identifier: GPL-3.0-or-later
#include "LeafRows.h"

#include "Alignment.h"
#include "SessionPart.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

namespace companion {

namespace {

// Between two looks at the clock.
constexpr int kRowsOfALook = 256;

// An alignment that has become wider by what stands in one row is not another for the others.
std::uint64_t valueOf(std::string_view letters)
{
    const std::size_t end = letters.find_last_not_of('-');
    return std::hash<std::string_view>()(
        letters.substr(0, end == std::string_view::npos ? 0 : end + 1));
}

} // namespace

LeafRow leafRowOf(const TAMBO::Alignment &alignment, unsigned long row, const std::string &letters)
{
    return {SessionPart::NumberOf(alignment.GetSeq(row)), valueOf(letters),
            alignment.GetSeqName(row)};
}

LeafRows::LeafRows(std::vector<LeafRow> leaves)
    : m_Leaves(std::move(leaves)), m_Rows(m_Leaves.size(), kNoRow), m_Gone(m_Leaves.size())
{
    for (std::size_t leaf = 0; leaf < m_Leaves.size(); ++leaf)
        m_BySequence[m_Leaves[leaf].sequence].push_back(leaf);
    begin();
}

void LeafRows::begin()
{
    m_State = State::Looking;
    m_HasRows = false;
    m_NextRow = 0;
    m_NewRows.assign(m_Leaves.size(), kNoRow);
    m_NewAdded = 0;
    m_NextLeaf = 0;
}

void LeafRows::lookAtRow(const TAMBO::Alignment &alignment)
{
    const unsigned long row = m_NextRow++;
    const auto found = m_BySequence.find(SessionPart::NumberOf(alignment.GetSeq(row)));
    if (found != m_BySequence.end()) {
        for (const std::size_t leaf : found->second) {
            if (m_NewRows[leaf] == kNoRow) {
                m_NewRows[leaf] = row;
                return;
            }
        }
    }
    ++m_NewAdded;
}

void LeafRows::takeRows()
{
    m_HasRows = true;
    m_Added = m_NewAdded;
    if (m_NewRows == m_Rows && m_Revision > 0)
        return;
    m_Rows = m_NewRows;
    m_Gone = static_cast<unsigned long>(std::ranges::count(m_Rows, kNoRow));
    ++m_Revision;
}

void LeafRows::findRows(const TAMBO::Alignment &alignment)
{
    if (m_HasRows)
        return;
    while (m_NextRow < alignment.height())
        lookAtRow(alignment);
    takeRows();
}

void LeafRows::lookAtLetters(const TAMBO::Alignment &alignment, std::size_t leaf)
{
    const unsigned long row = m_Rows[leaf];
    if (row != kNoRow && valueOf(alignment.GetSequence(row, false)) == m_Leaves[leaf].letters)
        return;
    m_Suspect = leaf;
    m_State = State::Changed;
}

bool LeafRows::goOn(const TAMBO::Alignment &alignment, std::chrono::milliseconds budget)
{
    const auto end = std::chrono::steady_clock::now() + budget;
    while (!m_HasRows) {
        for (int i = 0; i < kRowsOfALook && m_NextRow < alignment.height(); ++i)
            lookAtRow(alignment);
        if (m_NextRow >= alignment.height())
            takeRows();
        if (std::chrono::steady_clock::now() >= end)
            return true;
    }
    if (m_State == State::Looking && (m_Gone > 0 || m_Added > 0))
        m_State = State::Changed;
    if (m_State == State::Looking && m_NextLeaf == 0 && m_Suspect < m_Leaves.size())
        lookAtLetters(alignment, m_Suspect);
    while (m_State == State::Looking) {
        if (m_NextLeaf == m_Leaves.size())
            m_State = State::Same;
        else
            lookAtLetters(alignment, m_NextLeaf++);
        if (m_State == State::Looking && std::chrono::steady_clock::now() >= end)
            return true;
    }
    return false;
}

} // namespace companion
