// SPDX-License-Identifier: GPL-3.0-or-later
// A matrix of a NEXUS file, whose rows come in one piece each or in blocks.
#pragma once

#include "AlignmentParser.h"
#include "NameIndex.h"
#include "NameList.h"
#include "NexusSymbols.h"
#include "NexusText.h"
#include "PiecedRows.h"
#include "RowBuilder.h"
#include "Text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace TAMBO::formats {

// What is said before a matrix.
struct NexusHead
{
    std::optional<std::uint64_t> rows;
    std::optional<std::uint64_t> columns;
    NexusSymbols symbols;
    bool isInterleaved = false;
    bool hasLabels = true;
    // The rows need not be among the names that the file announces.
    bool hasNewNames = false;
    std::string title;
};

// The names of the rows that a file announces. Their case means nothing.
class NexusNames
{
public:
    void add(const std::string &name)
    {
        m_Index.add(lowerCase(name), m_Names.size());
        m_Names.add(name);
    }
    [[nodiscard]] std::size_t size() const noexcept { return m_Names.size(); }
    [[nodiscard]] std::string_view operator[](std::size_t place) const { return m_Names[place]; }
    [[nodiscard]] bool has(const std::string &name) const
    {
        return m_Index
            .find(lowerCase(name),
                  [&](std::size_t place) { return isSameWithoutCase(m_Names[place], name); })
            .has_value();
    }

private:
    NameList m_Names;
    NameIndex m_Index;
};

class NexusMatrix : AlignmentParser
{
public:
    // All of which outlive this.
    NexusMatrix(TextReader &reader, NexusText &text, const NexusHead &head, const NexusNames &names)
        : AlignmentParser(reader), m_Text(text), m_Head(head), m_Names(names)
    { }

    // Up to the end of the command; the matrix has so many rows. Other reasons to end early are
    // what the text and its reader tell.
    [[nodiscard]] Result<AlignmentRecord> read(const std::optional<std::uint64_t> &rows);

private:
    void readRowLine();
    [[nodiscard]] std::optional<std::size_t> rowHere();
    [[nodiscard]] std::optional<std::size_t> namedRow(const std::string &name);
    [[nodiscard]] std::optional<std::string> nameHere();
    [[nodiscard]] char readRowCells(std::size_t row);
    [[nodiscard]] std::size_t appendPlain(std::string_view text);
    [[nodiscard]] std::size_t appendMeant(std::string_view text, std::size_t row);
    [[nodiscard]] bool appendSet(std::size_t row);
    void failAt(char found, std::size_t row);
    void finish(const std::optional<std::uint64_t> &rows);

    NexusText &m_Text;
    const NexusHead &m_Head;
    const NexusNames &m_Names;
    NexusTable m_Table{};
    // The characters mean what they mean in most files.
    bool m_IsPlain = true;
    PiecedRows m_Rows;
    RowBuilder m_Builder;
    std::string m_Piece;
    // What the symbol for "as in the first row" stands for in each column.
    std::string m_FirstRow;
    // A row that goes on in the next line, and where it begins.
    std::optional<std::size_t> m_OpenRow;
    std::uint64_t m_RowsLine = 0;
    // Rows without names come in the order of the names.
    std::size_t m_NextRow = 0;
    bool m_IsFirstSection = true;
    std::uint64_t m_Sets = 0;
    std::uint64_t m_SetsLine = 0;
};

} // namespace TAMBO::formats
