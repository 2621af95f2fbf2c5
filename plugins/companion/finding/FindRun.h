// SPDX-License-Identifier: GPL-3.0-or-later
// A search in the names or sequences of an alignment, done in small parts, so that the window stays
// quick at any size and the search can be given up at any time.
#pragma once

#include "SequencePattern.h"

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace TAMBO {
class Alignment;
}

namespace companion {

enum class FindIn { Sequences, Names };

struct Hit
{
    unsigned long row = 0;
    // Which of the row's residues; empty when it is the name.
    Match residues;

    [[nodiscard]] bool isName() const noexcept { return residues.begin == residues.end; }
};

// The columns from the first to behind the last residue of a hit in a sequence; gaps between them
// are among them.
[[nodiscard]] std::pair<unsigned long, unsigned long> columnsOf(const TAMBO::Alignment &alignment,
                                                                const Hit &hit);

class FindRun
{
public:
    // Of so many hits one looks at no more; the search ends there, and isFull() tells.
    static constexpr std::size_t kMostHits = 1'000'000;

    // The alignment stays as it is until the search is done or given up. onlySelected: hits of
    // which every residue is selected.
    FindRun(const TAMBO::Alignment &alignment, SequencePattern pattern, FindIn where,
            bool onlySelected, std::size_t mostHits = kMostHits);

    // Looks at further rows, for about that time and at one at least; false when nothing is left.
    bool goOn(std::chrono::microseconds most);
    [[nodiscard]] bool isDone() const noexcept { return m_NextRow >= m_Rows || isFull(); }
    [[nodiscard]] bool isFull() const noexcept { return m_Hits.size() >= m_MostHits; }
    // From 0 to 100.
    [[nodiscard]] int percent() const noexcept
    {
        return m_Rows == 0 ? 100 : static_cast<int>(m_NextRow * 100 / m_Rows);
    }
    // By row, and by the first residue within one.
    [[nodiscard]] const std::vector<Hit> &hits() const noexcept { return m_Hits; }

private:
    void lookAt(unsigned long row);
    [[nodiscard]] bool isSelected(const Hit &hit) const;

    const TAMBO::Alignment &m_Alignment;
    SequencePattern m_Pattern;
    FindIn m_Where;
    bool m_OnlySelected;
    std::size_t m_MostHits;
    unsigned long m_Rows;
    unsigned long m_NextRow = 0;
    std::vector<Hit> m_Hits;
};

} // namespace companion
