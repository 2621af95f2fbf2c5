// SPDX-License-Identifier: GPL-3.0-or-later
// Which columns of an alignment are insertions, as A2M and A3M files have them: columns with small
// letters and no capitals. In all other columns these formats know capitals only.
#pragma once

#include "AlignmentSource.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO::formats {

class InsertionColumns
{
public:
    explicit InsertionColumns(const AlignmentSource &alignment);

    [[nodiscard]] bool areNone() const noexcept { return m_Runs.empty(); }
    // The row with capitals where small letters would be taken for insertions; nothing when it has
    // none of these.
    [[nodiscard]] std::optional<GappedSequence> capitalised(const GappedView &row) const;

    // Gaps in insertions are '.'.
    [[nodiscard]] std::string dotted(const GappedView &row) const;
    // Gaps in insertions are left out.
    [[nodiscard]] std::string packed(const GappedView &row) const;
    // The row as readers get it back from packed(): the letters of an insertion begin at its left.
    [[nodiscard]] std::string unpacked(const GappedView &row) const;

private:
    // The columns [begin, end), at least one of them.
    struct Run
    {
        std::uint64_t begin;
        std::uint64_t end;
        // The most letters that a row has there.
        std::uint64_t longest;
    };

    void findRuns(const std::vector<std::uint64_t> &capitals,
                  const std::vector<std::uint64_t> &smallLetters, std::uint64_t width);

    std::vector<Run> m_Runs;
};

} // namespace TAMBO::formats
