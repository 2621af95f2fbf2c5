// SPDX-License-Identifier: GPL-3.0-or-later
// Sorts the candidates by a column in small steps, between which the dialog lives on. Those that
// are equal stay in their order.
#pragma once

#include <Qt>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::services {

class CandidateModel;

class CandidateOrder
{
public:
    // The candidates outlive it, and stay as they are meanwhile.
    CandidateOrder(const CandidateModel &candidates, int column, Qt::SortOrder direction);

    [[nodiscard]] bool isDone() const noexcept { return m_Stage == Stage::Done; }
    void step();
    // Once it is done.
    [[nodiscard]] std::vector<int> take() { return std::move(m_Rows); }

private:
    enum class Stage { Keys, Heads, Runs, Merges, Done };

    void readKeys();
    void readHeads();
    void sortRuns();
    void mergeRuns();
    [[nodiscard]] bool isLess(int a, int b) const;
    [[nodiscard]] std::string_view key(int row) const;

    const CandidateModel &m_Candidates;
    const int m_Column;
    const Qt::SortOrder m_Direction;
    Stage m_Stage = Stage::Keys;
    std::size_t m_Next = 0;
    // Texts as bytes that stand in the order of what they are without case.
    std::string m_Keys;
    std::vector<std::size_t> m_Ends;
    // So much of the keys is the same in all of them.
    std::size_t m_Common = 0;
    std::map<std::string, std::uint64_t> m_Kinds;
    // The first eight bytes behind that, or a number: one look mostly tells which is less.
    std::vector<std::uint64_t> m_Heads;
    std::vector<int> m_Rows;
    std::vector<int> m_Merged;
    std::size_t m_Run = 0;
};

} // namespace TAMBO::services
