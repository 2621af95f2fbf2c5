// SPDX-License-Identifier: GPL-3.0-or-later
// Where the waters of a structure are. There may be more of them than of anything else, so each
// takes some bytes and is no object.
#pragma once

#include "Vertex.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

struct Water
{
    // Of its oxygen, in Angstrom.
    Vector<float, 3> position;
    float bFactor = 0;
    std::int32_t number = 0;
    // In Waters::chains.
    std::uint32_t chain = 0;
    char insertionCode = ' ';

    friend bool operator==(const Water &, const Water &) = default;
};

struct Waters
{
    // The names that the file gives, each of some waters that follow each other.
    std::vector<std::string> chains;
    std::vector<Water> places;

    void add(std::string_view chain, Water water)
    {
        if (chains.empty() || chains.back() != chain)
            chains.emplace_back(chain);
        water.chain = static_cast<std::uint32_t>(chains.size() - 1);
        places.push_back(water);
    }
};

} // namespace TAMBO
