// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of two alignments as texts, and what comparing them gives when each pair of rows is looked
// at.
#pragma once

#include "Comparison.h"

#include <cstddef>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

using Texts = std::vector<std::string>;

inline bool isLost(char letter)
{
    return letter >= 'a' && letter <= 'z';
}

// Letters and gaps; small letters are residues of the sequence that the row has lost.
inline companion::ComparedLayout layoutsOf(const Texts &texts)
{
    companion::ComparedLayout made;
    for (const std::string &text : texts) {
        std::vector<std::uint64_t> cells;
        std::vector<companion::LayoutRows::Residues> runs;
        bool isBroken = false;
        unsigned long residue = 0;
        for (std::size_t column = 0; column < text.size(); ++column) {
            if (text[column] == '-')
                continue;
            const unsigned long present = residue++;
            if (isLost(text[column])) {
                isBroken = true;
                continue;
            }
            if (runs.empty() || runs.back().first + runs.back().count != present)
                runs.push_back({present, 0});
            ++runs.back().count;
            cells.resize(std::max(cells.size(), column / 64 + 1));
            cells[column / 64] |= std::uint64_t(1) << column % 64;
        }
        if (!isBroken)
            runs.clear();
        made.rows.add(cells, runs);
        made.width = std::max<unsigned long>(made.width, text.size());
    }
    return made;
}

inline companion::Comparison compared(const companion::ComparedLayout &here,
                                      const companion::ComparedLayout &there)
{
    return companion::compare(here, there, [](double) { return true; }).value();
}

// The residues of one random row each, laid out twice; every column has one.
struct TwoLayouts
{
    Texts here;
    Texts there;
};

inline void dropEmptyColumns(Texts &rows)
{
    for (std::size_t column = rows.front().size(); column > 0; --column) {
        bool isEmpty = true;
        for (const std::string &row : rows)
            isEmpty = isEmpty && row[column - 1] == '-';
        for (std::string &row : rows)
            if (isEmpty)
                row.erase(column - 1, 1);
    }
}

inline TwoLayouts randomLayouts(std::mt19937 &random, std::size_t rows, std::size_t width)
{
    TwoLayouts made;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string text;
        while (text.size() < width)
            text += random() % 4 == 0 ? '-' : char('A' + random() % 20);
        made.here.push_back(text);
        // Some gaps elsewhere, in some rows.
        for (unsigned i = random() % 4; i > 0; --i) {
            const std::size_t gap = text.find('-', random() % width);
            if (gap == std::string::npos)
                continue;
            text.erase(gap, 1);
            text.insert(random() % (text.size() + 1), "-");
        }
        made.there.push_back(text);
    }
    dropEmptyColumns(made.here);
    dropEmptyColumns(made.there);
    return made;
}
