// SPDX-License-Identifier: GPL-3.0-or-later
#include "RealignedRows.h"

#include "AnsweredRows.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace TAMBO::realign {

namespace {

constexpr char kGap = '-';

// The cells of the columns that are kept; a row may end before the last one.
OccupancyRow cellsOf(std::string_view row, const std::vector<bool> &isKept, std::size_t count)
{
    std::vector<OccupancyRow::Word> words(count / OccupancyRow::kWordColumns + 1);
    std::uint64_t place = 0;
    for (std::size_t col = 0; col < row.size(); ++col) {
        if (!isKept[col])
            continue;
        if (!isAnsweredGap(row[col]))
            words[place / OccupancyRow::kWordColumns] |= OccupancyRow::Word(1)
                                                         << place % OccupancyRow::kWordColumns;
        ++place;
    }
    return OccupancyRow(std::move(words));
}

} // namespace

RealignedRows::RealignedRows(const Alignment &alignment, const Alignment::Range &range,
                             const std::vector<bool> &chosen)
    : m_RowCount(alignment.height())
{
    for (std::size_t row = 0; row < m_RowCount; ++row) {
        const bool isSent = chosen.empty() || chosen[row];
        bool hasResidues = false;
        std::string letters;
        for (unsigned long col = range.first; col < range.second; ++col) {
            const char letter = alignment.letterAt(row, col);
            hasResidues = hasResidues || letter != '\0';
            if (letter != '\0')
                letters += asKnown(letter);
            else if (!isSent)
                letters += kGap;
        }
        if (hasResidues)
            (isSent ? m_Sent : m_Kept).push_back({row, std::move(letters)});
    }
}

std::size_t RealignedRows::letters() const noexcept
{
    return std::accumulate(
        m_Sent.begin(), m_Sent.end(), std::size_t(0),
        [](std::size_t sum, const Row &row) { return sum + row.letters.size(); });
}

std::string RealignedRows::fasta() const
{
    std::string text;
    for (std::size_t i = 0; i < m_Sent.size(); ++i)
        text += fastaRecord(i, m_Sent[i].letters);
    return text;
}

Result<std::vector<std::string>> RealignedRows::answersIn(std::string_view answer) const
{
    Result<std::vector<std::string>> rows = answeredRows(answer, m_Sent.size());
    for (std::size_t i = 0; rows && i < m_Sent.size(); ++i)
        if (lettersOf(rows.value()[i]) != m_Sent[i].letters)
            return Failure{FailureKind::BadInput, "it changed the residues of a sequence"};
    return rows;
}

Result<RealignedRows::Columns> RealignedRows::read(std::string_view answer) const
{
    const Result<std::vector<std::string>> answered = answersIn(answer);
    if (!answered)
        return answered.error();
    std::vector<bool> isKept;
    const auto keepColumnsOf = [&isKept](const std::string &row) {
        isKept.resize(std::max(isKept.size(), row.size()));
        for (std::size_t col = 0; col < row.size(); ++col) {
            if (!isAnsweredGap(row[col]))
                isKept[col] = true;
        }
    };
    for (const std::string &row : answered.value())
        keepColumnsOf(row);
    for (const Row &row : m_Kept)
        keepColumnsOf(row.letters);
    Columns columns;
    columns.count = static_cast<unsigned long>(std::ranges::count(isKept, true));
    columns.rows.resize(m_RowCount);
    for (std::size_t i = 0; i < m_Sent.size(); ++i)
        columns.rows[m_Sent[i].index] = cellsOf(answered.value()[i], isKept, columns.count);
    for (const Row &row : m_Kept)
        columns.rows[row.index] = cellsOf(row.letters, isKept, columns.count);
    return columns;
}

} // namespace TAMBO::realign
