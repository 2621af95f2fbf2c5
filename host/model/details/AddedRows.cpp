// SPDX-License-Identifier: GPL-3.0-or-later
#include "AddedRows.h"

#include "AnsweredRows.h"
#include "Peptide.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace TAMBO::realign {

namespace {

constexpr std::size_t kNewColumn = std::numeric_limits<std::size_t>::max();

bool isPartOf(std::string_view part, std::string_view whole)
{
    std::size_t next = 0;
    for (const char letter : whole)
        if (next < part.size() && part[next] == letter)
            ++next;
    return next == part.size();
}

class Cells
{
public:
    void fill(std::size_t column)
    {
        const std::size_t word = column / OccupancyRow::kWordColumns;
        if (word >= m_Words.size())
            m_Words.resize(word + 1);
        m_Words[word] |= OccupancyRow::Word(1) << column % OccupancyRow::kWordColumns;
    }
    [[nodiscard]] OccupancyRow row() const { return OccupancyRow(m_Words); }

private:
    std::vector<OccupancyRow::Word> m_Words;
};

} // namespace

AddedRows::AddedRows(const Alignment &alignment, const std::vector<unsigned long> &rows,
                     const std::vector<Peptide *> &newcomers)
    : m_Width(alignment.width()), m_HasAdded(alignment.width(), false)
{
    std::vector<bool> isSent(m_Width, false);
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        const bool isAdded = std::ranges::binary_search(rows, row);
        std::string text(m_Width, '-');
        bool hasResidues = false;
        for (unsigned long col = 0; col < m_Width; ++col) {
            const char letter = alignment.letterAt(row, col);
            if (letter == '\0')
                continue;
            hasResidues = true;
            text[col] = asKnown(letter);
            (isAdded ? m_HasAdded : isSent)[col] = true;
        }
        if (!hasResidues)
            continue;
        if (isAdded)
            m_Added.push_back({row, lettersOf(text)});
        else
            m_Others.push_back({row, std::move(text)});
    }
    for (std::size_t i = 0; i < newcomers.size(); ++i) {
        std::string text;
        std::ranges::transform(newcomers[i]->letters(), std::back_inserter(text), asKnown);
        if (!text.empty())
            m_Added.push_back({alignment.height() + i, std::move(text)});
    }
    for (unsigned long col = 0; col < m_Width; ++col)
        if (isSent[col])
            m_Sent.push_back(col);
    for (Row &other : m_Others) {
        std::string sent;
        sent.reserve(m_Sent.size());
        for (const unsigned long col : m_Sent)
            sent += other.text[col];
        other.text = std::move(sent);
    }
}

std::string AddedRows::othersAsFasta() const
{
    std::string text;
    for (std::size_t i = 0; i < m_Others.size(); ++i)
        text += fastaRecord(i, m_Others[i].text);
    return text;
}

std::string AddedRows::addedAsFasta() const
{
    std::string text;
    for (std::size_t i = 0; i < m_Added.size(); ++i)
        text += fastaRecord(m_Others.size() + i, m_Added[i].text);
    return text;
}

Result<AddedRows::Layout> AddedRows::checked(const Answer &answer) const
{
    const Failure changed{FailureKind::BadInput, "it changed the residues of a sequence"};
    for (std::size_t i = 0; i < m_Others.size(); ++i)
        if (lettersOf(answer[i]) != lettersOf(m_Others[i].text))
            return changed;
    Layout layout;
    for (std::size_t i = 0; i < m_Added.size(); ++i) {
        const std::string letters = lettersOf(answer[m_Others.size() + i]);
        const std::string &sent = m_Added[i].text;
        if (!isPartOf(letters, sent))
            return changed;
        if (letters.size() < sent.size())
            layout.leftOut.emplace_back(m_Added[i].row, sent.size() - letters.size());
    }
    return layout;
}

Result<std::vector<std::size_t>> AddedRows::columnsOf(const Answer &answer) const
{
    std::vector<std::size_t> columns;
    std::size_t next = 0;
    for (std::size_t col = 0; col < answer.front().size(); ++col) {
        bool isNew = true;
        bool isNext = next < m_Sent.size();
        for (std::size_t i = 0; i < m_Others.size(); ++i) {
            const bool isGap = isAnsweredGap(answer[i][col]);
            isNew = isNew && isGap;
            isNext = isNext && isGap == isAnsweredGap(m_Others[i].text[next]);
        }
        if (!isNew && !isNext)
            return Failure{FailureKind::BadInput, "it tore the columns of the other rows apart"};
        columns.push_back(isNew ? kNewColumn : next++);
    }
    if (next < m_Sent.size())
        return Failure{FailureKind::BadInput, "it tore the columns of the other rows apart"};
    return columns;
}

Result<AddedRows::Layout> AddedRows::read(std::string_view answer) const
{
    const Result<Answer> rows = answeredRows(answer, m_Others.size() + m_Added.size());
    if (!rows)
        return rows.error();
    if (rows.value().empty())
        return Failure{FailureKind::BadInput, "its answer lacks a sequence"};
    Result<Layout> found = checked(rows.value());
    if (!found)
        return found;
    const Result<std::vector<std::size_t>> columns = columnsOf(rows.value());
    if (!columns)
        return columns.error();
    if (!found->leftOut.empty())
        return found;

    Layout &layout = found.value();
    std::vector<Cells> cells(m_Added.size());
    // As the columns count in the end: behind the sent column of before stand those that come.
    unsigned long insertedSoFar = 0;
    unsigned long behind = 0;
    for (std::size_t col = 0; col < columns.value().size(); ++col) {
        const auto hasResidue = [&](std::size_t i) {
            return !isAnsweredGap(rows.value()[m_Others.size() + i][col]);
        };
        unsigned long place = 0;
        if (columns.value()[col] != kNewColumn) {
            behind = m_Sent[columns.value()[col]];
            place = behind++ + insertedSoFar;
        } else {
            bool isUsed = false;
            for (std::size_t i = 0; i < m_Added.size(); ++i)
                isUsed = isUsed || hasResidue(i);
            if (!isUsed)
                continue;
            if (layout.inserted.empty() || layout.inserted.back().column != behind)
                layout.inserted.push_back({behind, 0});
            ++layout.inserted.back().count;
            place = behind + insertedSoFar++;
        }
        for (std::size_t i = 0; i < m_Added.size(); ++i)
            if (hasResidue(i))
                cells[i].fill(place);
    }
    for (std::size_t i = 0; i < m_Added.size(); ++i)
        layout.rows.emplace_back(m_Added[i].row, cells[i].row());
    markEmptied(layout, insertedSoFar);
    return found;
}

void AddedRows::markEmptied(Layout &layout, unsigned long inserted) const
{
    std::vector<bool> isSent(m_Width, false);
    for (const unsigned long col : m_Sent)
        isSent[col] = true;
    layout.isEmptied.assign(m_Width + inserted, false);
    unsigned long before = 0;
    auto run = layout.inserted.begin();
    for (unsigned long col = 0; col < m_Width; ++col) {
        for (; run != layout.inserted.end() && run->column <= col; ++run)
            before += run->count;
        const unsigned long place = col + before;
        layout.isEmptied[place] = m_HasAdded[col] && !isSent[col] &&
                                  std::ranges::none_of(layout.rows, [place](const auto &row) {
                                      return row.second.isResidue(place);
                                  });
    }
}

} // namespace TAMBO::realign
