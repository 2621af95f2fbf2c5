// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureLock.h"

#include "ChangeScope.h"
#include "Peptide.h"
#include "Structure.h"

namespace TAMBO {

const Compound *lockWithin(const Structure &structure)
{
    if (const Compound *const locked = lockOn(structure))
        return locked;
    for (std::size_t i = 0; i < structure.objectCount(); ++i) {
        if (structure.chain(i)->IsLocked())
            return structure.chain(i);
    }
    return nullptr;
}

} // namespace TAMBO
