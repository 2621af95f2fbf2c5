// SPDX-License-Identifier: GPL-3.0-or-later
// Which models of a family are to be built, and on which templates.
#pragma once

#include "Result.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace TAMBO::families {

struct FamilyRow
{
    std::string name;
    // Letters, and '-' for gaps; as long as that of every other row.
    std::string text;
    // A measured one with at least one whole backbone.
    bool hasStructure = false;
};

struct Family
{
    std::string name;
    // Where it was read from; empty when nobody knows.
    std::filesystem::path source;
    std::vector<FamilyRow> rows;
};

struct ModelsOrder
{
    // Empty: for each target the row with a structure that is most alike.
    std::string templateName;
    // Empty: all rows without a structure.
    std::vector<std::string> targets;
};

struct PlannedModel
{
    // Rows of the family.
    std::size_t target = 0;
    std::size_t templateRow = 0;
    // Columns in which both have the same letter, X left out, and in which both have one.
    std::size_t identical = 0;
    std::size_t aligned = 0;
    // Of the target.
    std::size_t residues = 0;
};

// In the order of the rows, each target once. One that shares no column with its template is
// planned with none aligned: no model can be built of it, but of the others. The best template has
// the most identical pairs of those that share a column with the target; of several that have, it
// is the first.
[[nodiscard]] Result<std::vector<PlannedModel>> planModels(const Family &family,
                                                           const ModelsOrder &order);

} // namespace TAMBO::families
