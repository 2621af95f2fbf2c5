// SPDX-License-Identifier: GPL-3.0-or-later
#include "RealignedRows.h"

#include "Text.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <optional>

namespace TAMBO::realign {

namespace {

constexpr char kNamePrefix = 'r';
constexpr char kGap = '-';

char asKnown(char letter) noexcept
{
    constexpr std::string_view kKnown = "ACDEFGHIKLMNPQRSTVWY";
    if (letter >= 'a' && letter <= 'z')
        letter = static_cast<char>(letter - 'a' + 'A');
    return kKnown.find(letter) == std::string_view::npos ? 'X' : letter;
}

std::string_view nextLine(std::string_view &text)
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
        line.remove_suffix(1);
    return line;
}

// The number in a name of ours.
std::optional<std::size_t> numberOf(std::string_view header)
{
    const std::string_view name = header.substr(1, header.find_first_of(" \t") - 1);
    if (name.size() < 2 || name.front() != kNamePrefix)
        return std::nullopt;
    return numberIn<std::size_t>(name.substr(1));
}

bool isGap(char c) noexcept
{
    return c == kGap || c == '.';
}

// The cells of the columns that are kept; a row may end before the last one.
OccupancyRow cellsOf(std::string_view row, const std::vector<bool> &isKept, std::size_t count)
{
    std::vector<OccupancyRow::Word> words(count / OccupancyRow::kWordColumns + 1);
    std::uint64_t place = 0;
    for (std::size_t col = 0; col < row.size(); ++col) {
        if (!isKept[col])
            continue;
        if (!isGap(row[col]))
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
        text += '>' + (kNamePrefix + std::to_string(i)) + '\n' + m_Sent[i].letters + '\n';
    return text;
}

Result<std::vector<std::string>> RealignedRows::answersIn(std::string_view answer) const
{
    std::vector<std::optional<std::string>> answered(m_Sent.size());
    std::string *current = nullptr;
    while (!answer.empty()) {
        const std::string_view line = nextLine(answer);
        if (line.starts_with('>')) {
            const auto number = numberOf(line);
            if (!number || *number >= m_Sent.size())
                return Failure{FailureKind::BadInput,
                               "it answered with a sequence that it was not given"};
            if (answered[*number])
                return Failure{FailureKind::BadInput, "it answered with one sequence twice"};
            current = &answered[*number].emplace();
        } else if (current != nullptr) {
            *current += line;
        } else if (!line.empty()) {
            return Failure{FailureKind::BadInput, "its answer is no FASTA"};
        }
    }

    std::vector<std::string> rows;
    rows.reserve(m_Sent.size());
    for (std::size_t i = 0; i < m_Sent.size(); ++i) {
        if (!answered[i])
            return Failure{FailureKind::BadInput, "its answer lacks a sequence"};
        if (i > 0 && answered[i]->size() != rows.front().size())
            return Failure{FailureKind::BadInput, "the rows of its answer differ in length"};
        std::string letters;
        std::ranges::copy_if(*answered[i], std::back_inserter(letters),
                             [](char c) { return !isGap(c); });
        std::ranges::transform(letters, letters.begin(), asKnown);
        if (letters != m_Sent[i].letters)
            return Failure{FailureKind::BadInput, "it changed the residues of a sequence"};
        rows.push_back(std::move(*answered[i]));
    }
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
            if (!isGap(row[col]))
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
