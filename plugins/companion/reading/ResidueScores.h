// SPDX-License-Identifier: GPL-3.0-or-later
// The modelling engine's score of the residues of a row whose structure is a model.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

namespace companion {

// Of one model, whose scores are worth something among each other alone.
class ResidueScores
{
public:
    // For each residue of a sequence, or nothing. At least one has a score.
    explicit ResidueScores(std::vector<std::optional<double>> scores);

    [[nodiscard]] std::optional<double> of(std::size_t residue) const;
    // Into how many like parts the residues are divided by their order, it is in which of them,
    // from 0 for the lowest, which is the best. Equal scores are in one part.
    [[nodiscard]] std::optional<std::size_t> partOf(std::size_t residue, std::size_t parts) const;

private:
    std::vector<std::optional<double>> m_Scores;
    // Ascending.
    std::vector<double> m_Order;
};

// Of the residues of the row's sequence, by the models that they are tied to; nothing when the
// workbench knows no score of them.
[[nodiscard]] std::optional<ResidueScores> residueScores(const TAMBO::Alignment &alignment,
                                                         unsigned long row);
// A structure of which the workbench knows scores, whoever shows it.
[[nodiscard]] bool hasScores(const TAMBO::Compound &object);
// The value of a structure that has them: numbers, or "-", parted by blanks.
[[nodiscard]] std::vector<std::optional<double>> scoresIn(std::string_view value);

} // namespace companion
