// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowMatch.h"

#include <algorithm>
#include <functional>
#include <iterator>

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

// A name has no null character.
std::string nameAndResidues(const TAMBO::Alignment &alignment, unsigned long row)
{
    std::string text = alignment.GetSeqName(row);
    text += '\0';
    return text += capitalLetters(alignment.GetSequence(row, true));
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
        const auto there = std::uint32_t(m_PlacesThere.size() - ++m_NextThere);
        if (m_PlacesThere[there] == kUnmatched && m_IsByName)
            noteName(there);
        else if (m_PlacesThere[there] == kUnmatched)
            noteSequence(there);
        return true;
    }
    if (m_NextLeft < m_Left.size()) {
        matchLeft(m_Left[m_NextLeft++], m_IsByName);
        return true;
    }
    // What an alignment was before has its own sequences, and no names.
    if (m_IsByName || !std::holds_alternative<const TAMBO::Alignment *>(m_Other))
        return false;
    m_IsByName = true;
    m_NextThere = 0;
    m_NextLeft = 0;
    return true;
}

void RowMatch::matchLeft(unsigned long row, bool isNamed)
{
    if (m_PlacesHere[row] != kUnmatched)
        return;
    const std::uint32_t there = isNamed ? ofName(row) : ofSequence(m_Alignment.GetSeq(row));
    if (there != kUnmatched)
        pair(row, there, isNamed);
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

void RowMatch::noteSequence(std::uint32_t there)
{
    m_OfSequence[sequenceThere(there)].push_back(there);
}

void RowMatch::noteName(std::uint32_t there)
{
    const TAMBO::Alignment &other = *std::get<const TAMBO::Alignment *>(m_Other);
    m_OfName[std::hash<std::string>()(nameAndResidues(other, there))].push_back(there);
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
    const std::string wanted = nameAndResidues(m_Alignment, row);
    const auto found = m_OfName.find(std::hash<std::string>()(wanted));
    if (found == m_OfName.end())
        return kUnmatched;
    const TAMBO::Alignment &other = *std::get<const TAMBO::Alignment *>(m_Other);
    // As a rule the first one is it: others come to the same by chance alone.
    for (auto there = found->second.rbegin(); there != found->second.rend(); ++there) {
        if (nameAndResidues(other, *there) != wanted)
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
