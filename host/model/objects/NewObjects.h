// SPDX-License-Identifier: GPL-3.0-or-later
// Objects that are being made of bytes, until all of them are there and refer to each other. Up to
// then they have no numbers of their own and nothing is kept beside them, so that they can go again
// without a trace.
#pragma once

#include "ObjectIndex.h"
#include "Result.h"
#include "StoredHead.h"

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace TAMBO {

class StoredObject;

class NewObjects
{
public:
    // The objects that they may refer to, with which they are found in the end.
    explicit NewObjects(ObjectIndex &known) noexcept : m_Known(known) { }
    ~NewObjects();
    NewObjects(const NewObjects &) = delete;
    NewObjects &operator=(const NewObjects &) = delete;

    // Gets what the head says, but for number and values. False when the number is another's.
    [[nodiscard]] bool add(StoredObject &object, StoredHead head);
    // A new one, or one that was known before; null when there is none.
    [[nodiscard]] Compound *find(std::uint32_t identity) const noexcept
    {
        return m_Known.find(identity);
    }

    // What is done when all are there. False when it cannot be, which the cause says.
    void linkLater(std::function<Result<void>()> link) { m_Links.push_back(std::move(link)); }

    // Asked now and then whether the work is to go on.
    using GoesOn = std::function<bool()>;
    // Links are made, and the objects get their numbers and values.
    [[nodiscard]] Result<void> complete(const GoesOn &goesOn = {});

private:
    ObjectIndex &m_Known;
    std::vector<std::pair<StoredObject *, std::uint32_t>> m_Objects;
    std::vector<std::pair<StoredObject *, ValueStore::Plugins>> m_Values;
    std::vector<std::function<Result<void>()>> m_Links;
};

} // namespace TAMBO
