// SPDX-License-Identifier: GPL-3.0-or-later
// A stored object with a string for its name: all but sequences, of which there are too many.
#pragma once

#include "OwnedCompound.h"

#include <string>
#include <utility>

namespace TAMBO {

class NamedCompound : public OwnedCompound
{
public:
    ~NamedCompound() override;

    std::string Name() const override;

protected:
    explicit NamedCompound(std::string name) : m_Name(std::move(name)) { }

    [[nodiscard]] std::string &ownName() noexcept { return m_Name; }
    // Of the name, on the heap.
    [[nodiscard]] std::size_t nameBytes() const noexcept;

private:
    std::string m_Name;
};

} // namespace TAMBO
