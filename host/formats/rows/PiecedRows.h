// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of an alignment whose file gives them piece by piece, block after block.
#pragma once

#include "NameIndex.h"
#include "NameList.h"
#include "PackedRows.h"
#include "PieceStore.h"
#include "RowBuilder.h"
#include "RowLines.h"
#include "StopCount.h"
#include "TextReader.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace TAMBO::formats {

class PiecedRows
{
public:
    [[nodiscard]] std::size_t size() const noexcept { return m_Rows.size(); }
    [[nodiscard]] bool isEmpty() const noexcept { return m_Rows.empty(); }
    [[nodiscard]] Rare<RowLabel> &label(std::size_t row);
    [[nodiscard]] std::string_view name(std::size_t row) const noexcept
    {
        return m_Names[m_Rows[row].place];
    }
    // Columns so far.
    [[nodiscard]] std::uint64_t width(std::size_t row) const noexcept { return m_Rows[row].width; }
    // Where its last piece stands in the file.
    [[nodiscard]] std::uint64_t line(std::size_t row) const noexcept { return m_Rows[row].line; }

    // A new row behind the others. A name that comes again makes another row.
    std::size_t add(std::string_view name);
    // The rows are looked for in the order in which they were added, from this one on.
    void expect(std::size_t row) noexcept { m_Expected = row; }
    // The row of that name; of several, the one expected.
    [[nodiscard]] std::optional<std::size_t> find(std::string_view name);

    // Appends the cells of a line.
    void append(std::size_t row, const RowLine &line);
    // Appends a text of that line and gives the number of characters taken, as appendCells() does.
    [[nodiscard]] std::size_t append(std::size_t row, std::string_view text, std::uint64_t line);
    void appendGaps(std::size_t row, std::uint64_t count) { m_Rows[row].width += count; }

    // Indices ascend. None of them has a piece.
    void remove(const std::vector<std::size_t> &rows);

    // The first row that is not as wide as the first one.
    [[nodiscard]] std::optional<std::size_t> firstUneven() const noexcept;
    // What is to be said of the rows.
    [[nodiscard]] std::vector<std::string> remarks(const std::string &file) const;
    // All rows; none are left. Those of a reading that is cancelled meanwhile are of no use.
    [[nodiscard]] PackedRows take(TextReader &reader, bool isWorthThreads = false);

private:
    struct Row
    {
        // Among names and pieces, where rows that were removed still count.
        std::size_t place = 0;
        std::uint64_t width = 0;
        std::uint64_t line = 0;
    };

    [[nodiscard]] std::string_view nameInFile(std::size_t row) const;
    void append(std::size_t row, const GappedView &cells, std::uint64_t stops, std::uint64_t line);

    NameList m_Names;
    PieceStore m_Pieces;
    // By its place, a long row that came in one piece so far; it has none in the store.
    std::unordered_map<std::size_t, PackedRow> m_LongRows;
    std::vector<Row> m_Rows;
    // Up to the last row of which something is said.
    std::vector<Rare<RowLabel>> m_Labels;
    // By the names as they stand in the file; made when a row stands at another place than
    // expected.
    NameIndex m_RowOf;
    std::size_t m_IndexedRows = 0;
    // Of the rows, by their places, whose names were cleaned.
    std::unordered_map<std::size_t, std::string> m_NamesInFile;
    std::size_t m_Expected = 0;
    RowBuilder m_Builder;
    StopCount m_Stops;
};

} // namespace TAMBO::formats
