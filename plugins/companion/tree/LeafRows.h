// SPDX-License-Identifier: GPL-3.0-or-later
// Which rows of an alignment the leaves of a tree are, while rows move, come and go, and whether
// they are still as they were when the tree was made.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace TAMBO {
class Alignment;
}

namespace companion {

inline constexpr unsigned long kNoRow = ~0UL;

// By which a row is found again.
struct LeafRow
{
    // The number of its sequence, which no other has.
    std::uint32_t sequence = 0;
    // Of letters and gaps: two that differ are of different rows.
    std::uint64_t letters = 0;
    // For when the row is gone.
    std::string name;
};

// Of a row as it is now; letters are what Alignment::GetSequence() gives.
[[nodiscard]] LeafRow leafRowOf(const TAMBO::Alignment &alignment, unsigned long row,
                                const std::string &letters);

// Looks at the rows between events, since there may be a great many of them.
class LeafRows
{
public:
    enum class State { Looking, Same, Changed };

    // One for each leaf.
    explicit LeafRows(std::vector<LeafRow> leaves = {});

    // All of it may be another now. What was found stays until something else is.
    void begin();
    // Goes on for so long. False when nothing is left to do.
    bool goOn(const TAMBO::Alignment &alignment, std::chrono::milliseconds budget);
    // Until rows are known, which takes one look at each.
    void findRows(const TAMBO::Alignment &alignment);

    [[nodiscard]] std::size_t size() const noexcept { return m_Leaves.size(); }
    [[nodiscard]] const LeafRow &leaf(std::size_t leaf) const { return m_Leaves[leaf]; }
    // kNoRow of a leaf whose row is gone.
    [[nodiscard]] unsigned long rowOf(std::size_t leaf) const { return m_Rows[leaf]; }
    // Grows when a leaf has got another row.
    [[nodiscard]] unsigned long revision() const noexcept { return m_Revision; }
    // Rows that are no leaf, and leaves that are no row.
    [[nodiscard]] unsigned long added() const noexcept { return m_Added; }
    [[nodiscard]] unsigned long gone() const noexcept { return m_Gone; }
    [[nodiscard]] State state() const noexcept { return m_State; }

private:
    void lookAtRow(const TAMBO::Alignment &alignment);
    void takeRows();
    void lookAtLetters(const TAMBO::Alignment &alignment, std::size_t leaf);

    std::vector<LeafRow> m_Leaves;
    // Leaves of a sequence, in their order: it may stand in several rows.
    std::unordered_map<std::uint32_t, std::vector<std::size_t>> m_BySequence;
    std::vector<unsigned long> m_Rows;
    unsigned long m_Revision = 0;
    unsigned long m_Added = 0;
    unsigned long m_Gone = 0;
    State m_State = State::Looking;

    // What is being found out.
    bool m_HasRows = false;
    unsigned long m_NextRow = 0;
    std::vector<unsigned long> m_NewRows;
    unsigned long m_NewAdded = 0;
    std::size_t m_NextLeaf = 0;
    // Was another than it had been, and likely still is.
    std::size_t m_Suspect = 0;
};

} // namespace companion
