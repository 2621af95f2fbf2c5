// SPDX-License-Identifier: GPL-3.0-or-later
// Globins, their distances and their tree, from tests/data/columns/tree.tsv, which reference.py
// beside this file has made.
#pragma once

#include "DistanceMatrix.h"

#include "KeptColumns.h"

#include <map>

namespace KeptTree {

struct Kept
{
    std::vector<std::string> names;
    std::vector<std::string> rows;
    // "AlignmentLength", "ShorterSequence", "AlignedPairs", and "tree": the ways in the tree.
    std::map<std::string, companion::DistanceMatrix> distances;
};

inline Kept read()
{
    std::ifstream file(TEST_DATA_DIR "/columns/tree.tsv");
    Kept kept;
    std::map<std::string, std::vector<std::vector<std::string>>> tables;
    for (std::string line; std::getline(file, line);) {
        const std::vector<std::string> fields = KeptColumns::fieldsOf(line);
        if (fields[0] == "row") {
            kept.names.push_back(fields.at(1));
            kept.rows.push_back(fields.at(2));
        } else
            tables[fields[0]].push_back(fields);
    }
    EXPECT_EQ(kept.rows.size(), 15U);
    EXPECT_EQ(tables.size(), 4U);
    for (const auto &[name, table] : tables) {
        companion::DistanceMatrix distances(kept.rows.size());
        for (std::size_t a = 0; a < kept.rows.size(); ++a)
            for (std::size_t b = 0; b < a; ++b)
                distances.set(a, b, std::stod(table.at(a).at(b + 2)));
        kept.distances.emplace(name, distances);
    }
    return kept;
}

} // namespace KeptTree
