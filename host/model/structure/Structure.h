// SPDX-License-Identifier: GPL-3.0-or-later
// What a structure file holds: its chains, each a Peptide.
#pragma once

#include "NamedCompound.h"
#include "ObjectContainer.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {

class ObjectReader;
class Peptide;
struct StructureExtras;

class Structure final : public NamedCompound, public ObjectContainer
{
public:
    explicit Structure(std::string name, unsigned long models = 1, bool isModel = false);
    // What follows the first part of a structure as bytes.
    struct Rest
    {
        std::size_t chains = 0;
        std::size_t extras = 0;
    };
    // Of the first part of what writePart() has left, and what belongs to it.
    [[nodiscard]] static std::pair<std::unique_ptr<Structure>, Rest> read(ObjectReader &in);
    // Adds one of its extras.
    void readExtras(ObjectReader &in);
    ~Structure() override;

    // What files of alignments call it: its first name, which is that of the file it came from,
    // whatever it is called now.
    [[nodiscard]] const std::string &code() const noexcept { return m_Code; }
    // How many models the file has; the first one is loaded.
    [[nodiscard]] unsigned long modelCount() const noexcept { return m_ModelCount; }
    // Built by a modelling program. A file of an alignment does not name it as a row's structure.
    [[nodiscard]] bool isModel() const noexcept { return m_IsModel; }
    [[nodiscard]] Peptide *chain(std::size_t index) const noexcept;
    // Null when there are none.
    [[nodiscard]] StructureExtras *extras() const noexcept { return m_Extras.get(); }
    // For a structure that is being made.
    void presetExtras(std::unique_ptr<StructureExtras> extras);

    std::string TypeName() const override;
    std::size_t ChildCount() const override;
    Compound *Child(std::size_t index) const override;
    // Of the structure and all its chains.
    void AssignColor(const Color &color) override;
    void SetSelected(bool selected) override;
    bool IsSelected() const override;

    [[nodiscard]] Compound &asCompound() noexcept override { return *this; }
    [[nodiscard]] CompoundState *ownState() noexcept override { return &state(); }
    [[nodiscard]] const CompoundState *ownState() const noexcept override { return &state(); }
    void storeName(const std::string &name) override { ownName() = name; }
    [[nodiscard]] std::size_t bytes() const noexcept override;
    // The first part, each of its chains, and what else it keeps.
    [[nodiscard]] std::size_t partCount() const noexcept override;
    void writePart(std::size_t part, ObjectWriter &out) const override;
    [[nodiscard]] bool holdsSequences() const noexcept override { return true; }

    [[nodiscard]] std::size_t objectCount() const noexcept override { return m_Chains.size(); }
    [[nodiscard]] Compound *object(std::size_t index) const noexcept override;
    [[nodiscard]] bool canHold(const Compound &object) const override;
    // Only peptides.
    void insertObject(std::size_t index, std::unique_ptr<Compound> object) override;
    [[nodiscard]] std::unique_ptr<Compound> takeObject(std::size_t index) override;

private:
    [[nodiscard]] std::size_t extraParts() const noexcept;

    std::string m_Code;
    unsigned long m_ModelCount;
    bool m_IsModel;
    std::vector<std::unique_ptr<Peptide>> m_Chains;
    std::unique_ptr<StructureExtras> m_Extras;
};

} // namespace TAMBO
