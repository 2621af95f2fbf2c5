// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectFactory.h"

#include "AlignmentMaking.h"
#include "ChangeScope.h"
#include "ObjectSpace.h"
#include "Structure.h"
#include "StructureMaking.h"

#include <utility>

namespace TAMBO {

Structure *ObjectFactory::adopt(StructureRecord &&record)
{
    std::unique_ptr<Structure> made = makeStructure(std::move(record));
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
