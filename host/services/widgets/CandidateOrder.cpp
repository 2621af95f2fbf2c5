// SPDX-License-Identifier: GPL-3.0-or-later
#include "CandidateOrder.h"

#include "CandidateModel.h"

#include <QString>

#include <algorithm>
#include <numeric>
#include <utility>

namespace TAMBO::services {

namespace {

// A few milliseconds each.
constexpr std::size_t kReadAtOnce = 16384;
constexpr std::size_t kSortedAtOnce = 8192;
constexpr std::size_t kMergedAtOnce = 65536;

// Compared byte by byte, such texts stand in the order of their characters without case.
void appendFolded(const std::string &text, std::string &out)
{
    const auto isPlain = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
    if (std::ranges::all_of(text, isPlain)) {
        for (const char byte : text)
            out += byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
        return;
    }
    for (const QChar character : QString::fromStdString(text)) {
        const char16_t folded = character.toCaseFolded().unicode();
        if (folded < 0x80) {
            out += static_cast<char>(folded);
            continue;
        }
        out += '\xff';
        out += static_cast<char>(folded >> 8);
        out += static_cast<char>(folded & 0xff);
    }
}

std::uint64_t headOf(std::string_view text)
{
    std::uint64_t head = 0;
    for (std::size_t i = 0; i < sizeof(head); ++i)
        head = head << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
    return head;
}

} // namespace

CandidateOrder::CandidateOrder(const CandidateModel &candidates, int column,
                               Qt::SortOrder direction)
    : m_Candidates(candidates), m_Column(column), m_Direction(direction)
{
    const auto count = std::size_t(candidates.rowCount());
    m_Rows.resize(count);
    std::iota(m_Rows.begin(), m_Rows.end(), 0);
    m_Heads.reserve(count);
    if (column == CandidateModel::NameColumn)
        m_Ends.reserve(count);
}

void CandidateOrder::step()
{
    switch (m_Stage) {
    case Stage::Keys:
        readKeys();
        break;
    case Stage::Heads:
        readHeads();
        break;
    case Stage::Runs:
        sortRuns();
        break;
    case Stage::Merges:
        mergeRuns();
        break;
    case Stage::Done:
        break;
    }
}

void CandidateOrder::readKeys()
{
    const std::size_t end = std::min(m_Next + kReadAtOnce, m_Rows.size());
    for (; m_Next < end; ++m_Next) {
        const int row = int(m_Next);
        if (m_Column == CandidateModel::SizeColumn) {
            m_Heads.push_back(m_Candidates.amount(row));
        } else if (m_Column == CandidateModel::PresentColumn) {
            m_Heads.push_back(m_Candidates.present(row));
        } else if (m_Column == CandidateModel::KindColumn) {
            std::string kind;
            appendFolded(m_Candidates.kind(row), kind);
            // The kinds get their places in the order once all are known.
            m_Heads.push_back(m_Kinds.emplace(std::move(kind), m_Kinds.size()).first->second);
        } else {
            appendFolded(m_Candidates.name(row), m_Keys);
            m_Ends.push_back(m_Keys.size());
            const std::string_view first = key(0);
            const std::string_view own = key(row);
            if (row == 0)
                m_Common = first.size();
            m_Common = std::min(m_Common, own.size());
            const auto differing =
                std::mismatch(own.begin(), own.begin() + std::ptrdiff_t(m_Common), first.begin());
            m_Common = std::size_t(differing.first - own.begin());
        }
    }
    if (m_Next < m_Rows.size())
        return;
    m_Next = 0;
    m_Stage = Stage::Heads;
}

void CandidateOrder::readHeads()
{
    if (m_Column == CandidateModel::KindColumn) {
        std::vector<std::uint64_t> places(m_Kinds.size());
        std::uint64_t place = 0;
        for (const auto &[kind, number] : m_Kinds)
            places[number] = place++;
        for (std::uint64_t &head : m_Heads)
            head = places[head];
    } else if (m_Column == CandidateModel::NameColumn) {
        for (std::size_t row = 0; row < m_Rows.size(); ++row)
            m_Heads.push_back(headOf(key(int(row)).substr(m_Common)));
    }
    m_Stage = Stage::Runs;
}

std::string_view CandidateOrder::key(int row) const
{
    const auto place = std::size_t(row);
    const std::size_t begin = place == 0 ? 0 : m_Ends[place - 1];
    return std::string_view(m_Keys).substr(begin, m_Ends[place] - begin);
}

bool CandidateOrder::isLess(int a, int b) const
{
    if (m_Direction == Qt::DescendingOrder)
        std::swap(a, b);
    const std::uint64_t headA = m_Heads[std::size_t(a)];
    const std::uint64_t headB = m_Heads[std::size_t(b)];
    if (headA != headB || m_Column != CandidateModel::NameColumn)
        return headA < headB;
    return key(a).substr(m_Common) < key(b).substr(m_Common);
}

void CandidateOrder::sortRuns()
{
    const std::size_t end = std::min(m_Next + kSortedAtOnce, m_Rows.size());
    std::stable_sort(m_Rows.begin() + std::ptrdiff_t(m_Next), m_Rows.begin() + std::ptrdiff_t(end),
                     [this](int a, int b) { return isLess(a, b); });
    m_Next = end;
    if (end < m_Rows.size())
        return;
    m_Next = 0;
    m_Run = kSortedAtOnce;
    m_Stage = m_Run < m_Rows.size() ? Stage::Merges : Stage::Done;
}

// Two runs at a time, until a step has done enough.
void CandidateOrder::mergeRuns()
{
    m_Merged.resize(m_Rows.size());
    const auto at = [this](std::size_t place) {
        return m_Rows.begin() + std::ptrdiff_t(std::min(place, m_Rows.size()));
    };
    for (std::size_t done = 0; done < kMergedAtOnce && m_Next < m_Rows.size(); done += 2 * m_Run) {
        std::merge(at(m_Next), at(m_Next + m_Run), at(m_Next + m_Run), at(m_Next + 2 * m_Run),
                   m_Merged.begin() + std::ptrdiff_t(m_Next),
                   [this](int a, int b) { return isLess(a, b); });
        m_Next += 2 * m_Run;
    }
    if (m_Next < m_Rows.size())
        return;
    m_Rows.swap(m_Merged);
    m_Next = 0;
    m_Run *= 2;
    if (m_Run >= m_Rows.size())
        m_Stage = Stage::Done;
}

} // namespace TAMBO::services
