// SPDX-License-Identifier: GPL-3.0-or-later
// Which residues of loaded chains the letters of an alignment row are.
#pragma once

#include "Records.h"
#include "SequenceMatch.h"

#include <cstddef>
#include <string>
#include <vector>

namespace TAMBO {

class Peptide;
class Structure;
class StructureLookup;

// Letters first to first + count - 1 of the row are residues chainFirst on of chain.
struct RowTieRun
{
    std::size_t first = 0;
    std::size_t count = 0;
    Peptide *chain = nullptr;
    std::size_t chainFirst = 0;
};

class RowTie
{
public:
    // Nothing when no loaded chain is meant, or none fits.
    RowTie(const RowRecord &row, const StructureLookup &structures);

    // Ascending.
    [[nodiscard]] const std::vector<RowTieRun> &runs() const noexcept { return m_Runs; }
    // The row's letters are consecutive residues of one chain, letter by letter: the row can show
    // the chain itself.
    [[nodiscard]] bool isExact() const noexcept { return m_IsExact; }
    // What the user should know, one sentence each.
    [[nodiscard]] const std::vector<std::string> &remarks() const noexcept { return m_Remarks; }

private:
    struct Candidate
    {
        std::vector<RowTieRun> runs;
        std::size_t identical = 0;
        std::size_t matched = 0;
        // The residues that there were to match.
        std::size_t available = 0;
        bool isExact = false;
    };

    // Those that the row may mean.
    [[nodiscard]] std::vector<Structure *> findStructures(const StructureLookup &structures);
    [[nodiscard]] Candidate tieTo(const Structure &structure) const;
    [[nodiscard]] Candidate tieToChain(Peptide &chain) const;
    [[nodiscard]] Candidate tieToChains(const std::vector<Peptide *> &chains) const;
    void tellDifferences(const Structure &structure);

    const RowRecord &m_Row;
    // The chain that the row means; empty when it does not say.
    std::string m_Chain;
    std::vector<RowTieRun> m_Runs;
    bool m_IsExact = false;
    std::vector<std::string> m_Remarks;
};

} // namespace TAMBO
