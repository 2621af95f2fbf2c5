// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectContainer.h"

namespace TAMBO {

ObjectContainer::~ObjectContainer() = default;

std::size_t ObjectContainer::bytesOfObjects() const noexcept
{
    std::size_t sum = 0;
    for (std::size_t i = 0; i < objectCount(); ++i)
        sum += StoredObject::from(object(i))->bytes();
    return sum;
}

} // namespace TAMBO
