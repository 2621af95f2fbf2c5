// SPDX-License-Identifier: GPL-3.0-or-later
// The earlier colours of the residues of a sequence that a step has coloured.
#pragma once

#include "ChangeSession.h"
#include "EditBytes.h"
#include "ResidueColors.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace TAMBO {

class ColorEdit;
class ResidueOwner;

// Where a sequence keeps its residues' colours.
struct ColorSlot
{
    // Null: all by type.
    std::unique_ptr<ResidueColors> colors;
    // Of the step under way, which owns it; null when there is none.
    ColorEdit *open = nullptr;

    // Of one of count residues.
    void store(std::size_t index, std::optional<Color> color, std::size_t count);
};

// Keeps runs of residues that had the same colour, or all colours of the sequence when that takes
// less, so that a pass over many residues costs a byte a residue at most.
class ColorEdit final : public GrowingEdit
{
public:
    // Whether so many runs take less than the colours of all residues.
    [[nodiscard]] static bool prefersRuns(std::size_t runs, std::size_t residues) noexcept;

    // The slot is the owner's.
    ColorEdit(ResidueOwner &owner, ColorSlot &slot);
    ~ColorEdit() override;
    // What one has stored behind its tag and its owner, which has the slot.
    [[nodiscard]] static LoadedEdit load(ResidueOwner &owner, ColorSlot &slot, EditReader &in);

    // So many runs are to come, if all of each has one colour.
    void expect(std::size_t runs) { m_Runs.reserve(m_Runs.size() + runs); }
    // Before residues that have one colour get others.
    void note(std::size_t first, std::size_t count, std::optional<Color> before);
    // All residues have got other colours; null: all had that of their type.
    void noteAll(std::unique_ptr<ResidueColors> before);

    void close() noexcept override;
    std::unique_ptr<Edit> apply() override;
    std::size_t bytes() const override;
    const char *kind() const override { return "color residues"; }
    EditPart part() const override { return EditPart::Display; }
    Compound *subject() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    struct Run
    {
        std::uint32_t first;
        std::uint32_t count;
        std::optional<Color> color;
    };

    void storeHead(EditWriter &out) const;
    void storeAll(const ResidueColors *colors, EditWriter &out) const;
    void loadAll(char how, EditReader &in);
    void takeAll();
    void keepAll(std::unique_ptr<ResidueColors> colors);

    ResidueOwner &m_Owner;
    ColorSlot &m_Slot;
    std::size_t m_Count;
    std::vector<Run> m_Runs;
    bool m_HasAll = false;
    // Null with m_HasAll: all by type.
    std::unique_ptr<ResidueColors> m_All;
};

} // namespace TAMBO
