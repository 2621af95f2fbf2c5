// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureContents.h"

#include "StoredObject.h"
#include "TextBytes.h"

namespace TAMBO {

std::size_t StructureContents::bytes() const noexcept
{
    std::size_t sum = sizeof(*this) + atomStarts.capacity() * sizeof(atomStarts[0]) +
                      positions.capacity() * sizeof(positions[0]) +
                      typeNames.capacity() * sizeof(typeNames[0]) +
                      objects.capacity() * sizeof(objects[0]) +
                      elements.capacity() * sizeof(void *) + models.bytes();
    if (!atomStarts.empty()) {
        sum += atomStarts.back() * sizeof(Atom);
        for (std::uint32_t i = 0; i < atomStarts.back(); ++i)
            sum += atoms[i].bytes();
    }
    for (const auto &[index, name] : typeNames)
        sum += textBytes(name);
    for (const std::unique_ptr<Compound> &object : objects)
        sum += StoredObject::from(object.get())->bytes();
    return sum;
}

} // namespace TAMBO
