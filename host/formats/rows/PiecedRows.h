// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of an alignment whose file gives them piece by piece, block after block.
#pragma once

#include "NameIndex.h"
#include "PackedRows.h"
#include "RowBuilder.h"
#include "StopCount.h"
#include "TextReader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

class PiecedRows
{
public:
    [[nodiscard]] std::size_t size() const noexcept { return m_Rows.size(); }
    [[nodiscard]] bool isEmpty() const noexcept { return m_Rows.empty(); }
    [[nodiscard]] Rare<RowLabel> &label(std::size_t row) noexcept { return m_Rows[row].label; }
    [[nodiscard]] std::string_view name(std::size_t row) const noexcept
    {
        return m_Rows[row].text.name();
    }
    // Columns so far.
    [[nodiscard]] std::uint64_t width(std::size_t row) const noexcept;
    // Where its last piece stands in the file.
    [[nodiscard]] std::uint64_t line(std::size_t row) const noexcept { return m_Pieces[row].line; }

    // A new row behind the others. A name that comes again makes another row.
    std::size_t add(std::string_view name);
    // The rows are looked for in the order in which they were added, from this one on.
    void expect(std::size_t row) noexcept { m_Expected = row; }
    // The row of that name; of several, the one expected.
    [[nodiscard]] std::optional<std::size_t> find(std::string_view name);

    // Appends what is left of the line and gives the character before which it stopped, as
    // readCells() does.
    [[nodiscard]] char append(std::size_t row, TextReader &reader);
    // Appends a text of that line and gives the number of characters taken, as appendCells() does.
    [[nodiscard]] std::size_t append(std::size_t row, std::string_view text, std::uint64_t line);
    void appendGaps(std::size_t row, std::uint64_t count);

    // Indices ascend.
    void remove(const std::vector<std::size_t> &rows);

    // The first row that is not as wide as the first one.
    [[nodiscard]] std::optional<std::size_t> firstUneven() const noexcept;
    // What is to be said of the rows.
    [[nodiscard]] std::vector<std::string> remarks(const std::string &file) const;
    // All rows; none are left.
    [[nodiscard]] PackedRows take();

private:
    struct Pieces
    {
        // Of a row that came in more than one.
        std::unique_ptr<RowBuilder> builder;
        std::uint64_t line = 0;
    };
    [[nodiscard]] RowBuilder &open(std::size_t row);
    void close(std::size_t row);
    void complete(std::size_t row);
    void store(std::size_t row, RowBuilder &builder);

    // The text of a row that came in several pieces has its name alone until it is complete.
    PackedRows m_Rows;
    // Of each row.
    std::vector<Pieces> m_Pieces;
    // By the names as they stand in the file.
    NameIndex m_RowOf;
    std::size_t m_Expected = 0;
    RowBuilder m_Builder;
    StopCount m_Stops;
};

} // namespace TAMBO::formats
