// SPDX-License-Identifier: GPL-3.0-or-later
// Which rows of two alignments are the same: those of one sequence, else those of one name with the
// same residues.
#pragma once

#include "Comparison.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

namespace companion {

// What an alignment is compared with: one of the workbench, or what one was before.
using OtherRows = std::variant<const TAMBO::Alignment *, const TAMBO::FormerLayout *>;

// Both alignments stay as they are meanwhile; who sees that they have changed begins anew.
class RowMatch
{
public:
    RowMatch(const TAMBO::Alignment &here, const OtherRows &there);

    // Looks at further rows, for about that time; false when all are done.
    bool goOn(std::chrono::microseconds most);

    [[nodiscard]] std::size_t count() const noexcept { return m_Here.rows.size(); }
    [[nodiscard]] ComparedLayout takeHere() { return std::move(m_Here); }
    [[nodiscard]] ComparedLayout takeThere() { return std::move(m_There); }
    // Of each row of an alignment the place among those that both have, or ComparedColumns::kNone.
    [[nodiscard]] const std::vector<std::uint32_t> &placesHere() const { return m_PlacesHere; }
    [[nodiscard]] const std::vector<std::uint32_t> &placesThere() const { return m_PlacesThere; }

private:
    [[nodiscard]] TAMBO::RowLayout layoutThere(unsigned long row) const;
    [[nodiscard]] unsigned long rowsThere() const;
    [[nodiscard]] const TAMBO::Compound *sequenceThere(unsigned long row) const;
    [[nodiscard]] bool doNext();
    void matchInOrder(unsigned long row);
    // Of the rows there, the last one first, so that of several the first one is found first.
    void noteSequence(std::uint32_t there);
    void noteName(std::uint32_t there);
    void matchLeft(unsigned long row, bool isNamed);
    // kNone for none.
    [[nodiscard]] std::uint32_t ofSequence(const TAMBO::Compound *sequence);
    [[nodiscard]] std::uint32_t ofName(unsigned long row);
    // isNamed: by name, so that residues count in the row alone.
    void pair(unsigned long row, std::uint32_t there, bool isNamed);

    const TAMBO::Alignment &m_Alignment;
    OtherRows m_Other;
    unsigned long m_NextHere = 0;
    // The row there that comes next, when both have one order.
    std::size_t m_Expected = 0;
    // Those that are not the next one.
    std::vector<unsigned long> m_Left;
    // All by sequences before any by its name.
    bool m_IsByName = false;
    unsigned long m_NextThere = 0;
    std::size_t m_NextLeft = 0;
    // Rows there that are left, by their sequences, and then those that still are, by what their
    // names and residues come to.
    std::unordered_map<const TAMBO::Compound *, std::vector<std::uint32_t>> m_OfSequence;
    std::unordered_map<std::size_t, std::vector<std::uint32_t>> m_OfName;
    ComparedLayout m_Here;
    ComparedLayout m_There;
    std::vector<std::uint32_t> m_PlacesHere;
    std::vector<std::uint32_t> m_PlacesThere;
};

} // namespace companion
