// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowMatch.h"

#include <algorithm>

namespace companion {

namespace {

constexpr std::uint32_t kUnmatched = ComparedColumns::kNone;

// So many rows may be missing here in a row.
constexpr std::size_t kRowsAhead = 8;

// Large and small letters are the same.
std::string capitalLetters(std::string letters)
{
    for (char &letter : letters)
        if (letter >= 'a' && letter <= 'z')
            letter = char(letter - 'a' + 'A');
    return letters;
}

} // namespace

RowMatch::RowMatch(const TAMBO::Alignment &here, const OtherRows &there)
    : m_Alignment(here), m_Other(there)
{
    m_Here.width = here.width();
    const auto *const alignment = std::get_if<const TAMBO::Alignment *>(&there);
    m_There.width = alignment != nullptr ? (*alignment)->width()
                                         : std::get<const TAMBO::FormerLayout *>(there)->width;
    m_PlacesHere.assign(here.height(), kUnmatched);
    m_PlacesThere.assign(rowsThere(), kUnmatched);
}

unsigned long RowMatch::rowsThere() const
{
    const auto *const alignment = std::get_if<const TAMBO::Alignment *>(&m_Other);
    return alignment != nullptr ? (*alignment)->height()
                                : std::get<const TAMBO::FormerLayout *>(m_Other)->rows.size();
}

TAMBO::RowLayout RowMatch::layoutThere(unsigned long row) const
{
    const auto *const alignment = std::get_if<const TAMBO::Alignment *>(&m_Other);
    return alignment != nullptr ? TAMBO::RowLayouts::of(**alignment, row)
                                : std::get<const TAMBO::FormerLayout *>(m_Other)->rows[row];
}

const TAMBO::Compound *RowMatch::sequenceThere(unsigned long row) const
{
    const auto *const alignment = std::get_if<const TAMBO::Alignment *>(&m_Other);
    return alignment != nullptr
               ? (*alignment)->GetSeq(row)
               : std::get<const TAMBO::FormerLayout *>(m_Other)->rows[row].sequence;
}

bool RowMatch::goOn(std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    bool isLeft = true;
    do {
        isLeft = doNext();
    } while (isLeft && std::chrono::steady_clock::now() < end);
    return isLeft;
}

// Most have their rows in the same order, and no table of a million rows is made for those.
bool RowMatch::doNext()
{
    if (m_NextHere < m_PlacesHere.size()) {
        matchInOrder(m_NextHere++);
        return true;
    }
    if (m_Left.empty())
        return false;
    if (m_NextThere < m_PlacesThere.size()) {
        noteThere(m_NextThere++);
        return true;
    }
    // All by sequences before any by its name.
    if (m_NextLeft == 2 * m_Left.size())
        return false;
    const bool isNamed = m_NextLeft >= m_Left.size();
    const unsigned long row = m_Left[m_NextLeft++ % m_Left.size()];
    if (m_PlacesHere[row] != kUnmatched)
        return true;
    const std::uint32_t there = isNamed ? ofName(row) : ofSequence(m_Alignment.GetSeq(row));
    if (there != kUnmatched)
        pair(row, there, isNamed);
    return true;
}

void RowMatch::matchInOrder(unsigned long row)
{
    const TAMBO::Compound *const sequence = m_Alignment.GetSeq(row);
    const std::size_t end = std::min<std::size_t>(m_Expected + kRowsAhead, m_PlacesThere.size());
    for (std::size_t there = m_Expected; there < end; ++there) {
        if (sequenceThere(there) != sequence)
            continue;
        pair(row, std::uint32_t(there), false);
        m_Expected = there + 1;
        return;
    }
    m_Left.push_back(row);
}

// From the last one on, so that of several the first one is found first. What an alignment was
// before has its own sequences, and no names.
void RowMatch::noteThere(unsigned long row)
{
    const auto from = std::uint32_t(m_PlacesThere.size() - 1 - row);
    if (m_PlacesThere[from] != kUnmatched)
        return;
    m_OfSequence[sequenceThere(from)].push_back(from);
    if (const auto *const alignment = std::get_if<const TAMBO::Alignment *>(&m_Other))
        m_OfName[(*alignment)->GetSeqName(from)].push_back(from);
}

std::uint32_t RowMatch::ofSequence(const TAMBO::Compound *sequence)
{
    const auto found = m_OfSequence.find(sequence);
    if (found == m_OfSequence.end() || found->second.empty())
        return kUnmatched;
    const std::uint32_t there = found->second.back();
    found->second.pop_back();
    return m_PlacesThere[there] == kUnmatched ? there : kUnmatched;
}

std::uint32_t RowMatch::ofName(unsigned long row)
{
    const auto found = m_OfName.find(m_Alignment.GetSeqName(row));
    if (found == m_OfName.end())
        return kUnmatched;
    const TAMBO::Alignment &other = *std::get<const TAMBO::Alignment *>(m_Other);
    const std::string letters = capitalLetters(m_Alignment.GetSequence(row, true));
    for (auto there = found->second.rbegin(); there != found->second.rend(); ++there) {
        if (m_PlacesThere[*there] != kUnmatched ||
            capitalLetters(other.GetSequence(*there, true)) != letters)
            continue;
        const std::uint32_t place = *there;
        found->second.erase(std::next(there).base());
        return place;
    }
    return kUnmatched;
}

void RowMatch::pair(unsigned long row, std::uint32_t there, bool isNamed)
{
    const TAMBO::RowLayout layout = TAMBO::RowLayouts::of(m_Alignment, row);
    const TAMBO::RowLayout other = layoutThere(there);
    m_PlacesHere[row] = m_PlacesThere[there] = std::uint32_t(m_Here.rows.size());
    const auto residues = [isNamed](const TAMBO::RowLayout &of) {
        return isNamed ? std::span<const TAMBO::RowLayout::Residues>() : of.residues;
    };
    m_Here.rows.add(layout.cells, residues(layout));
    m_There.rows.add(other.cells, residues(other));
}

} // namespace companion
