// SPDX-License-Identifier: GPL-3.0-or-later
// The letters of an alignment as one knows them who looked at all of them once, and since then only
// at what is told of its changes: '?' where something has come of which nothing is told.
#pragma once

#include "AlignmentTable.h"
#include "LayoutChanges.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

class FollowedLayout
{
public:
    explicit FollowedLayout(const TAMBO::Alignment &alignment)
        : m_Alignment(alignment), m_Revision(TAMBO::LayoutChanges::revision(alignment))
    {
        for (std::size_t row = 0; row < alignment.table().rowCount(); ++row)
            m_Rows.push_back(textOf(row));
    }

    [[nodiscard]] const std::vector<std::string> &rows() const noexcept { return m_Rows; }

    // False when too much has changed to be told; all is looked at then.
    bool follow()
    {
        const auto changes = TAMBO::LayoutChanges::since(m_Alignment, m_Revision);
        if (!changes) {
            *this = FollowedLayout(m_Alignment);
            return false;
        }
        m_Revision = TAMBO::LayoutChanges::revision(m_Alignment);
        for (const TAMBO::LayoutChange &change : *changes)
            apply(change);
        return true;
    }
    // Empty when it has no other rows, columns and letters than the alignment.
    [[nodiscard]] std::string difference() const
    {
        if (m_Rows.size() != m_Alignment.table().rowCount())
            return std::to_string(m_Rows.size()) + " rows";
        for (std::size_t row = 0; row < m_Rows.size(); ++row) {
            const std::string text = textOf(row);
            const bool isSame = std::ranges::equal(m_Rows[row], text, [](char known, char now) {
                return known == now || known == '?';
            });
            if (!isSame)
                return "row " + std::to_string(row) + ": " + m_Rows[row] + ", but " + text;
        }
        return {};
    }

    FollowedLayout &operator=(const FollowedLayout &other)
    {
        m_Revision = other.m_Revision;
        m_Rows = other.m_Rows;
        return *this;
    }

private:
    using Change = TAMBO::LayoutChange;

    [[nodiscard]] std::string textOf(std::size_t row) const
    {
        std::string text(m_Alignment.width(), '-');
        for (std::size_t col = 0; col < text.size(); ++col)
            if (const char letter = m_Alignment.letterAt(row, col); letter != '\0')
                text[col] = letter;
        return text;
    }
    void apply(const Change &change)
    {
        switch (change.kind) {
        case Change::Kind::GapsMoved: {
            std::string &text = m_Rows.at(change.row);
            const std::string gaps = text.substr(change.from, change.count);
            text.erase(change.from, change.count);
            text.insert(change.to, gaps);
            break;
        }
        case Change::Kind::EndMoved:
            for (std::string &text : m_Rows) {
                text.resize(change.from);
                text.append(change.newCount, '-');
            }
            break;
        case Change::Kind::ColumnsReplaced:
            for (std::string &text : m_Rows)
                text.replace(change.from, change.oldCount, change.newCount, '?');
            break;
        case Change::Kind::RowAdded:
            m_Rows.insert(m_Rows.begin() + std::ptrdiff_t(change.row),
                          std::string(m_Alignment.width(), '?'));
            // As wide as the others are by now.
            m_Rows[change.row].resize(m_Rows.size() > 1 ? m_Rows[change.row == 0 ? 1 : 0].size()
                                                        : m_Alignment.width(),
                                      '?');
            break;
        case Change::Kind::RowRemoved:
            m_Rows.erase(m_Rows.begin() + std::ptrdiff_t(change.row));
            break;
        case Change::Kind::RowMoved: {
            const std::string text = m_Rows.at(change.row);
            m_Rows.erase(m_Rows.begin() + std::ptrdiff_t(change.row));
            m_Rows.insert(m_Rows.begin() + std::ptrdiff_t(change.to), text);
            break;
        }
        case Change::Kind::RowsSorted:
            for (std::string &text : m_Rows)
                text.assign(text.size(), '?');
            break;
        }
    }

    const TAMBO::Alignment &m_Alignment;
    std::uint64_t m_Revision;
    std::vector<std::string> m_Rows;
};
