// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureConversion.h"

#include "ChainBuilder.h"
#include "FormatText.h"

#include <gemmi/model.hpp>

#include <algorithm>
#include <list>
#include <utility>

namespace TAMBO::formats {

namespace {

// The residues from the start that belong together: of one segment, as far as the file has any.
Residues firstRun(Residues residues)
{
    std::size_t end = 1;
    while (end < residues.size() && (residues[end].segment == residues.front().segment ||
                                     isSamePlace(residues[end - 1], residues[end])))
        ++end;
    return residues.first(end);
}

} // namespace

void convertModel(const gemmi::Model &model, const std::string &file, StructureRecord &structure)
{
    // A list, since builders keep places of their own.
    std::list<ChainBuilder> chains;
    for (const gemmi::Chain &part : model.chains) {
        const std::string name = cleanText(part.name);
        for (Residues rest(part.residues); !rest.empty();) {
            const Residues run = firstRun(rest);
            rest = rest.subspan(run.size());
            // The latest chain of the name: what follows a new copy belongs to that copy.
            const auto known =
                std::find_if(chains.rbegin(), chains.rend(),
                             [&](const ChainBuilder &chain) { return chain.name() == name; });
            if (known != chains.rend() && !known->collidesWith(run))
                known->add(run);
            else
                chains.emplace_back(name, file).add(run);
        }
    }
    for (ChainBuilder &chain : chains) {
        ChainRecord record = chain.take(structure.remarks);
        chain.addWaters(structure.waters);
        if (!record.residues.empty())
            structure.chains.push_back(std::move(record));
    }
    std::erase_if(structure.elements, [&](const ElementRecord &element) {
        return std::none_of(structure.chains.begin(), structure.chains.end(),
                            [&](const ChainRecord &chain) { return chain.name == element.chain; });
    });
}

void addElement(std::vector<ElementRecord> &elements, ElementRecord element)
{
    if (!element.first.isValid() || !element.last.isValid())
        return;
    const bool isKnown = std::any_of(elements.begin(), elements.end(), [&](const auto &known) {
        return known.type == element.type && known.chain == element.chain &&
               known.first == element.first && known.last == element.last;
    });
    if (!isKnown)
        elements.push_back(std::move(element));
}

} // namespace TAMBO::formats
