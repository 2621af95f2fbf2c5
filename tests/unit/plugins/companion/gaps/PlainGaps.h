// SPDX-License-Identifier: GPL-3.0-or-later
// What edits of gaps in a block mean, said once more of rows as text, one gap after the other.
#pragma once

#include "GapEdit.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

class PlainGaps
{
public:
    using Rows = std::vector<std::string>;
    using Kind = companion::GapEdit::Kind;

    // All of the same length. Nothing when the edit is to be refused.
    [[nodiscard]] static std::optional<Rows> after(const Rows &rows, const companion::GapEdit &edit,
                                                   const companion::KeptColumns &kept)
    {
        PlainGaps plain(rows, edit, kept);
        if (!plain.isPossible())
            return std::nullopt;
        for (long row = plain.m_RowBegin; row < plain.m_RowEnd; ++row) {
            if (!plain.changeRow(plain.m_Rows[std::size_t(row)]))
                return std::nullopt;
        }
        if (!plain.m_HasResidues)
            return std::nullopt;
        std::size_t width = 0;
        for (const std::string &row : plain.m_Rows)
            width = std::max(width, row.size());
        for (std::string &row : plain.m_Rows)
            row.resize(width, '-');
        return plain.m_Rows;
    }

private:
    PlainGaps(const Rows &rows, const companion::GapEdit &edit, const companion::KeptColumns &kept)
        : m_Rows(rows),
          m_Edit(edit),
          m_Width(rows.empty() ? 0 : long(rows.front().size())),
          m_RowBegin(long(edit.block.rowBegin)),
          m_RowEnd(std::min(long(edit.block.rowEnd), long(rows.size()))),
          m_Begin(long(edit.block.colBegin)),
          m_End(std::min(long(edit.block.colEnd), m_Width)),
          m_Last(m_Width)
    {
        // Columns that are not there are not kept either.
        for (long col = 0; col < m_Width; ++col)
            m_IsKept.push_back(kept && col >= long(kept->first) && col < long(kept->second));
    }

    [[nodiscard]] bool isAllOfBlock() const
    {
        return m_Edit.kind == Kind::PushLeft || m_Edit.kind == Kind::PushRight ||
               (m_Edit.kind == Kind::Slide && m_End - m_Begin > 1);
    }

    bool isPossible()
    {
        if (m_RowBegin >= m_RowEnd || m_Begin >= m_End)
            return false;
        const bool hasSign = m_Edit.kind == Kind::Slide || m_Edit.kind == Kind::Move;
        const bool hasCount = m_Edit.kind != Kind::PushLeft && m_Edit.kind != Kind::PushRight;
        if (hasCount && !hasSign && m_Edit.count < 0)
            return false;
        for (long col = m_Begin; col < (isAllOfBlock() ? m_End : m_Begin + 1); ++col) {
            if (m_IsKept[std::size_t(col)])
                return false;
        }
        // What the edit may use ends before the next kept column, and begins behind the last one.
        for (long col = 0; col < m_Width; ++col) {
            if (m_IsKept[std::size_t(col)] && col < m_Begin)
                m_First = col + 1;
            if (m_IsKept[std::size_t(col)] && col > m_Begin && m_Last == m_Width)
                m_Last = col;
        }
        m_HasKeptBehind = m_Last < m_Width;
        if (hasCount && m_Edit.count == 0) {
            m_HasResidues = true;
            m_RowEnd = m_RowBegin;
        }
        return true;
    }

    bool changeRow(std::string &row)
    {
        const long count = m_Edit.count;
        switch (m_Edit.kind) {
        case Kind::Insert:
            m_HasResidues = true;
            return insert(row, count);
        case Kind::RemoveBefore:
            m_HasResidues = true;
            return remove(row, m_Begin - count, count);
        case Kind::RemoveBehind:
            m_HasResidues = true;
            return remove(row, m_Begin, count);
        case Kind::Slide:
            return slide(row, count);
        case Kind::Move:
            m_HasResidues = true;
            return move(row, count);
        case Kind::PushLeft:
        case Kind::PushRight:
            push(row);
            return true;
        }
        return false;
    }

    [[nodiscard]] static bool isGap(const std::string &row, long col)
    {
        return row[std::size_t(col)] == '-';
    }
    static void put(std::string &row, long col) { row.insert(std::size_t(col), 1, '-'); }
    static void take(std::string &row, long col) { row.erase(std::size_t(col), 1); }
    [[nodiscard]] static bool hasResidue(const std::string &row, long begin, long end)
    {
        for (long col = begin; col < end; ++col) {
            if (!isGap(row, col))
                return true;
        }
        return false;
    }

    bool insert(std::string &row, long count) const
    {
        if (!hasResidue(row, m_Begin, m_Width))
            return true;
        for (long done = 0; done < count; ++done) {
            if (m_HasKeptBehind) {
                long gap = m_Last - 1;
                while (gap >= m_Begin + done && !isGap(row, gap))
                    --gap;
                if (gap < m_Begin + done)
                    return false;
                take(row, gap);
            } else if (isGap(row, long(row.size()) - 1)) {
                row.pop_back();
            }
            put(row, m_Begin);
        }
        return true;
    }

    bool remove(std::string &row, long begin, long count) const
    {
        if (begin < m_First || begin + count > m_Last || hasResidue(row, begin, begin + count))
            return false;
        for (long done = 0; done < count; ++done) {
            take(row, begin);
            put(row, m_Last - 1);
        }
        return true;
    }

    bool slide(std::string &row, long count)
    {
        long begin = m_Begin;
        long end = m_End;
        if (!hasResidue(row, begin, end))
            return true;
        m_HasResidues = true;
        if (!isAllOfBlock()) {
            while (begin > 0 && !isGap(row, begin - 1))
                --begin;
            while (end < m_Width && !isGap(row, end))
                ++end;
        }
        if (begin < m_First || end > m_Last)
            return false;
        for (; count > 0; --count, ++begin, ++end) {
            if (end >= m_Last || !isGap(row, end))
                return false;
            take(row, end);
            put(row, begin);
        }
        for (; count < 0; ++count, --begin, --end) {
            if (begin <= m_First || !isGap(row, begin - 1))
                return false;
            take(row, begin - 1);
            put(row, end - 1);
        }
        return true;
    }

    bool move(std::string &row, long count) const
    {
        if (!isGap(row, m_Begin))
            return count > 0 ? insert(row, count) : remove(row, m_Begin + count, -count);
        long begin = m_Begin;
        long end = m_Begin + 1;
        while (begin > m_First && isGap(row, begin - 1))
            --begin;
        while (end < m_Last && isGap(row, end))
            ++end;
        if (begin + count < m_First || end + count > m_Last)
            return false;
        row.erase(std::size_t(begin), std::size_t(end - begin));
        row.insert(std::size_t(begin + count), std::size_t(end - begin), '-');
        return true;
    }

    void push(std::string &row)
    {
        m_HasResidues = m_HasResidues || hasResidue(row, m_Begin, m_End);
        const bool isToLeft = m_Edit.kind == Kind::PushLeft;
        std::stable_partition(row.begin() + m_Begin, row.begin() + m_End,
                              [&](char cell) { return (cell != '-') == isToLeft; });
    }

    Rows m_Rows;
    companion::GapEdit m_Edit;
    long m_Width;
    long m_RowBegin;
    long m_RowEnd;
    long m_Begin;
    long m_End;
    std::vector<bool> m_IsKept;
    long m_First = 0;
    long m_Last;
    bool m_HasKeptBehind = false;
    bool m_HasResidues = false;
};
