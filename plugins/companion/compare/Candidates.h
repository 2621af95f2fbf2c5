// SPDX-License-Identifier: GPL-3.0-or-later
// The alignments of the workbench that have sequences in common with one, found between events.
#pragma once

#include "Alignment.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

namespace companion {

// All of them stay as they are meanwhile; who hears that something has changed begins anew.
class Candidates
{
public:
    static constexpr std::size_t kFewestRows = 2;
    // Of the alignment, further ones are not looked for.
    static constexpr unsigned long kMostRows = 100'000;

    explicit Candidates(const TAMBO::Alignment &here);

    // Looks at further rows, for about that time; false when all are done.
    bool goOn(std::chrono::microseconds most);
    // With a sequence, or a name, of so many rows at least. In the order of the tree.
    [[nodiscard]] const std::vector<TAMBO::Alignment *> &found() const noexcept { return m_Found; }

private:
    [[nodiscard]] bool isShared(const TAMBO::Alignment &other, unsigned long row) const;

    const TAMBO::Alignment &m_Here;
    std::unordered_set<const TAMBO::Compound *> m_Sequences;
    std::unordered_set<std::string> m_Names;
    unsigned long m_Next = 0;
    std::vector<TAMBO::Alignment *> m_Others;
    std::size_t m_Other = 0;
    unsigned long m_Row = 0;
    std::size_t m_Shared = 0;
    std::vector<TAMBO::Alignment *> m_Found;
};

// Those that are in the tree now.
[[nodiscard]] std::vector<TAMBO::Alignment *> allAlignments();
[[nodiscard]] bool isInWorkbench(const TAMBO::Alignment *alignment);

} // namespace companion
