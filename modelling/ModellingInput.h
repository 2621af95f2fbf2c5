// SPDX-License-Identifier: GPL-3.0-or-later
// What a model is made from: a template with coordinates and a target, aligned.
#pragma once

#include "Records.h"
#include "Result.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kestram {

struct ModellingInput
{
    std::string templateName;
    std::string targetName;
    // One character per column: one of the twenty amino acids, or '-' for a gap; of one length.
    // Template residues that the engine cannot use, for want of coordinates, are gaps.
    std::string templateRow;
    std::string targetRow;
    // Those of the template's letters, in their order, each with a whole backbone and without
    // hydrogens.
    std::vector<TAMBO::ResidueRecord> residues;
    // Template residues that are treated as missing, one sentence for each stretch, and residues
    // that are used as others.
    std::vector<std::string> remarks;
};

// The first two rows of an alignment file, template first, and the first chain of a structure file.
// They are matched by sequence, whatever the numbers say. Where the two part, the failure names
// row, column (from 1), letter and residue.
[[nodiscard]] TAMBO::Result<ModellingInput> readInput(const std::filesystem::path &alignment,
                                                      const std::filesystem::path &structure);

// For the engine: the alignment as FASTA, the template as PDB. Coordinates in Angstrom.
[[nodiscard]] std::string fastaText(const ModellingInput &input);
[[nodiscard]] std::string pdbText(const ModellingInput &input);

} // namespace kestram
