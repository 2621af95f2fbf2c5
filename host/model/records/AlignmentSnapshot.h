// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment as it is at one moment, in few large blocks: quick to take in the GUI thread, to be
// written in another one while the alignment is edited. What is said of most rows is nothing, and
// takes no room.
#pragma once

#include "AlignmentSource.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace TAMBO {

class AlignmentSnapshot final : public AlignmentSource
{
public:
    // whole: without rows.
    explicit AlignmentSnapshot(AlignmentRecord whole, std::size_t rows);

    // Room for the next row, which the caller fills in.
    struct Room
    {
        std::span<char> letters;
        std::span<std::uint64_t> occupancy;
    };
    [[nodiscard]] Room add(std::string_view name, std::size_t letters, std::uint64_t width);
    // Of the row that was added last; name and cells of it are not looked at.
    void say(RowRecord said);

    [[nodiscard]] const AlignmentRecord &whole() const override { return m_Whole; }
    [[nodiscard]] std::size_t rowCount() const override { return m_Rows.size(); }
    [[nodiscard]] std::string_view name(std::size_t row) const override;
    [[nodiscard]] GappedView cells(std::size_t row) const override;
    [[nodiscard]] const RowRecord &row(std::size_t row) const override;

    // What it occupies, but for what is said of rows.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    struct Row
    {
        // The words of its cells, then its letters, then its name.
        const std::uint64_t *start;
        std::size_t letters;
        std::size_t nameLength;
        std::uint64_t width;
    };

    [[nodiscard]] std::uint64_t *allocate(std::size_t words);

    AlignmentRecord m_Whole;
    std::vector<Row> m_Rows;
    std::vector<std::unique_ptr<std::uint64_t[]>> m_Blocks;
    // Of the last block.
    std::uint64_t *m_Next = nullptr;
    std::size_t m_Left = 0;
    std::size_t m_Words = 0;
    std::unordered_map<std::size_t, RowRecord> m_Said;
};

} // namespace TAMBO
