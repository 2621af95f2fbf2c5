// SPDX-License-Identifier: GPL-3.0-or-later
// The columns of tests/data/columns/scores.tsv, which reference.py beside this file has made.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace KeptColumns {

struct Column
{
    std::string name;
    // As rows of an alignment hand them over: a gap is '\0'.
    std::string letters;
    double conservation = 0;
    double occupancy = 0;
    double information = 0;
    // "L:0.5 V:1.25", from the bottom.
    std::string logo;
};

inline std::vector<std::string> fieldsOf(const std::string &line)
{
    std::vector<std::string> fields(1);
    for (const char letter : line)
        if (letter == '\t')
            fields.emplace_back();
        else
            fields.back() += letter;
    return fields;
}

inline std::vector<Column> all()
{
    std::ifstream file(TEST_DATA_DIR "/columns/scores.tsv");
    std::vector<Column> columns;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        const std::vector<std::string> fields = fieldsOf(line);
        if (fields.size() != 6) {
            ADD_FAILURE() << line;
            continue;
        }
        Column column = {
            fields[0], fields[1], std::stod(fields[2]), std::stod(fields[3]), std::stod(fields[4]),
            fields[5]};
        for (char &letter : column.letters)
            if (letter == '-' || letter == '.' || letter == '~')
                letter = '\0';
        columns.push_back(column);
    }
    EXPECT_GT(columns.size(), 250U);
    return columns;
}

} // namespace KeptColumns
