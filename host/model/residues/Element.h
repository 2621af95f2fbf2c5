// SPDX-License-Identifier: GPL-3.0-or-later
// A secondary-structure element: a helix, strand or turn over residues of the peptide above it.
#pragma once

#include "NamedCompound.h"
#include "StoredObject.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace TAMBO {

class ObjectReader;

class Element final : public NamedCompound, public StoredObject
{
public:
    // The indices of the residues in their peptide, in any order.
    Element(std::string name, char type, std::vector<std::uint32_t> residues);
    // Of what writePart() has left; fails when there is none.
    [[nodiscard]] static std::unique_ptr<Element> read(ObjectReader &in);
    ~Element() override;

    // Whether the type letter is one of H, E, T in either case.
    [[nodiscard]] static bool isType(char type) noexcept;

    [[nodiscard]] bool contains(std::size_t residue) const noexcept;
    [[nodiscard]] std::size_t residueCount() const noexcept { return m_ResidueCount; }
    // One past the last of its residues: a peptide that owns it has so many at least.
    [[nodiscard]] std::size_t residueEnd() const noexcept
    {
        return m_Runs.empty() ? 0 : m_Runs.back().last;
    }

    // Calls visit(first, end) for each run of its residues, in ascending order.
    template <typename Visit> void forEachRun(Visit visit) const
    {
        for (const Run &run : m_Runs)
            visit(std::size_t(run.first), std::size_t(run.last));
    }

    // In chain order; null beyond the last. They are children of the peptide, not of the element.
    [[nodiscard]] Residue *residue(std::size_t index) const;

    // The letter as it was given.
    char TypeCode() const override;
    std::string TypeName() const override;

    [[nodiscard]] Compound &asCompound() noexcept override { return *this; }
    [[nodiscard]] CompoundState *ownState() noexcept override { return &state(); }
    [[nodiscard]] const CompoundState *ownState() const noexcept override { return &state(); }
    void storeName(const std::string &name) override { ownName() = name; }
    [[nodiscard]] std::size_t bytes() const noexcept override;
    void writePart(std::size_t part, ObjectWriter &out) const override;
    [[nodiscard]] EditPart partOfParent() const noexcept override { return EditPart::Elements; }

private:
    // Residues [first, last).
    struct Run
    {
        std::uint32_t first;
        std::uint32_t last;
    };

    Element(std::string name, char type, std::vector<Run> runs);

    char m_Type;
    std::size_t m_ResidueCount = 0;
    std::vector<Run> m_Runs;
};

} // namespace TAMBO
