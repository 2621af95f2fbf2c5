// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureSet.h"

#include "FormatText.h"

#include <map>
#include <set>
#include <string_view>

namespace TAMBO {

namespace {

constexpr std::string_view kChainLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

std::string freeName(const std::set<std::string> &taken)
{
    for (const char letter : kChainLetters)
        if (taken.count(std::string(1, letter)) == 0)
            return {letter};
    for (const char first : kChainLetters)
        for (const char second : kChainLetters)
            if (const std::string name = {first, second}; taken.count(name) == 0)
                return name;
    return "A-" + std::to_string(taken.size());
}

// Chains of one name within a structure go on having one.
std::map<std::string, std::string> newNames(const StructureRecord &structure,
                                            std::set<std::string> &taken,
                                            const std::set<std::string> &avoided)
{
    std::map<std::string, std::string> names;
    for (const ChainRecord &chain : structure.chains) {
        if (names.count(chain.name) > 0)
            continue;
        const bool isFree = taken.count(chain.name) == 0;
        std::set<std::string> both = taken;
        both.insert(avoided.begin(), avoided.end());
        const std::string name = isFree ? chain.name : freeName(both);
        names[chain.name] = name;
        taken.insert(name);
    }
    return names;
}

} // namespace

MergedStructures mergedChains(std::span<const StructureRecord> structures, const std::string &name)
{
    MergedStructures merged;
    merged.whole.name = name;
    // A new name must not be one that a later chain has of its own.
    std::set<std::string> own;
    for (const StructureRecord &structure : structures)
        for (const ChainRecord &chain : structure.chains)
            own.insert(chain.name);
    std::set<std::string> taken;
    for (const StructureRecord &structure : structures) {
        const std::map<std::string, std::string> names = newNames(structure, taken, own);
        for (const auto &[from, to] : names)
            if (from != to)
                merged.renamed.push_back("Chain " + formats::shown(from) + " of " + structure.name +
                                         " becomes " + formats::shown(to) + '.');
        for (const ChainRecord &chain : structure.chains) {
            merged.whole.chains.push_back(chain);
            merged.whole.chains.back().name = names.at(chain.name);
        }
        for (const ElementRecord &element : structure.elements) {
            const auto found = names.find(element.chain);
            if (found == names.end())
                continue;
            merged.whole.elements.push_back(element);
            merged.whole.elements.back().chain = found->second;
        }
        merged.whole.isModel = merged.whole.isModel || structure.isModel;
        merged.whole.hasOwnColors = merged.whole.hasOwnColors || structure.hasOwnColors;
        merged.whole.brokenElements += structure.brokenElements;
    }
    return merged;
}

} // namespace TAMBO
