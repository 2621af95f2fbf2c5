// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectFactory.h"

#include "AlignmentMaking.h"
#include "ChangeScope.h"
#include "Element.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "Structure.h"

#include <numeric>
#include <utility>

namespace TAMBO {

namespace {

Peptide *chainNamed(const Structure &structure, const std::string &name, const SequenceNumber &with)
{
    for (std::size_t i = 0; i < structure.objectCount(); ++i) {
        Peptide *const chain = structure.chain(i);
        if (chain->Name() != name)
            continue;
        for (std::size_t k = 0; k < chain->residueCount(); ++k) {
            if (chain->number(k) == with)
                return chain;
        }
    }
    return nullptr;
}

void addElement(const Structure &structure, ElementRecord &&record)
{
    Peptide *const chain = chainNamed(structure, record.chain, record.first);
    if (chain == nullptr)
        return;
    const auto indexOf = [chain](const SequenceNumber &number, std::size_t from) {
        std::size_t index = from;
        while (index < chain->residueCount() && !(chain->number(index) == number))
            ++index;
        return index;
    };
    const std::size_t first = indexOf(record.first, 0);
    const std::size_t last = indexOf(record.last, first);
    if (last == chain->residueCount())
        return;
    std::vector<std::uint32_t> residues(last - first + 1);
    std::iota(residues.begin(), residues.end(), static_cast<std::uint32_t>(first));
    chain->insertObject(
        chain->objectCount(),
        std::make_unique<Element>(std::move(record.name), record.type, std::move(residues)));
}

} // namespace

Structure *ObjectFactory::adopt(StructureRecord &&record)
{
    auto made = std::make_unique<Structure>(std::move(record.name), record.models, record.isModel);
    for (ChainRecord &chain : record.chains) {
        if (!chain.residues.empty())
            made->insertObject(made->objectCount(), std::make_unique<Peptide>(std::move(chain)));
    }
    for (ElementRecord &element : record.elements)
        addElement(*made, std::move(element));
    Structure *const structure = made.get();
    ObjectSpace::get().add(std::move(made));
    return structure;
}

Alignment *ObjectFactory::adopt(AlignmentRecord &&record)
{
    const ChangeScope scope;
    AlignmentMaking making(std::move(record));
    making.makeRows(making.rowCount());
    return making.finish();
}

} // namespace TAMBO
