// SPDX-License-Identifier: GPL-3.0-or-later
// A sequence as what it is made of knows it: the handles of its residues, its atoms, its elements,
// and the edits of its numbers and colours.
#pragma once

#include "OwnedCompound.h"

#include <cstddef>
#include <optional>
#include <string>

namespace TAMBO {

class Atom;
class Element;

// An index must be below residueCount().
class ResidueOwner : public OwnedCompound
{
public:
    [[nodiscard]] virtual std::size_t residueCount() const noexcept = 0;
    [[nodiscard]] virtual char letter(std::size_t index) const noexcept = 0;
    // Three letters; a modified residue has its own.
    [[nodiscard]] virtual std::string typeName(std::size_t index) const = 0;
    // At the same address from the first call on. It may be changed whoever asks for it.
    [[nodiscard]] virtual Residue *residue(std::size_t index) const = 0;
    // Where the data of a residue are: the chain that it is tied to, or else this.
    [[nodiscard]] virtual const Compound &dataOwner(std::size_t index) const noexcept = 0;

    [[nodiscard]] virtual Vertex position(std::size_t index) const = 0;
    [[nodiscard]] virtual Element *elementAt(std::size_t index) const noexcept = 0;
    [[nodiscard]] virtual std::size_t atomCount(std::size_t index) const noexcept = 0;
    // Null beyond the last.
    [[nodiscard]] virtual Atom *atom(std::size_t index, std::size_t atom) const noexcept = 0;

    [[nodiscard]] virtual SequenceNumber number(std::size_t index) const = 0;
    // Refused, with one line in the log for a change, when the number is invalid.
    virtual void setNumber(std::size_t index, const SequenceNumber &number) = 0;
    [[nodiscard]] virtual Color ownColor(std::size_t index) const noexcept = 0;
    // Without a colour the residue has that of its type.
    virtual void setColor(std::size_t index, std::optional<Color> color) = 0;
    [[nodiscard]] virtual bool isSelected(std::size_t index) const noexcept = 0;
    virtual void setSelected(std::size_t index, bool selected) = 0;

protected:
    using OwnedCompound::OwnedCompound;
};

} // namespace TAMBO
