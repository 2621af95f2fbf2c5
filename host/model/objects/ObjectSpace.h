// SPDX-License-Identifier: GPL-3.0-or-later
// The one Space: it owns the top-level objects.
#pragma once

#include "CompoundState.h"
#include "ObjectContainer.h"
#include "Space.h"

#include <memory>
#include <vector>

namespace TAMBO {

class Alignment;
class Peptide;

class ObjectSpace final : public Space, public ObjectContainer
{
public:
    [[nodiscard]] static ObjectSpace &get();

    ObjectSpace();
    ~ObjectSpace() override;

    // Frees every object without a notification or an edit. For the program's end and for tests,
    // when no history holds edits of these objects any more.
    void reset();

    iterator begin() override;
    iterator end() override;

    std::string Name() const override;
    char TypeCode() const override;
    std::string TypeName() const override;
    Compound *Parent() const override;
    std::size_t ChildCount() const override;
    Compound *Child(std::size_t index) const override;
    bool IsLocked() const override;
    Vertex Position() const override;
    Color OwnColor() const override;
    void AssignColor(const Color &color) override;
    void SetSelected(bool selected) override;
    bool IsSelected() const override;

    [[nodiscard]] Compound &asCompound() noexcept override { return *this; }
    [[nodiscard]] std::size_t objectCount() const noexcept override { return m_Objects.size(); }
    [[nodiscard]] Compound *object(std::size_t index) const noexcept override;
    void insertObject(std::size_t index, std::unique_ptr<Compound> object) override;
    [[nodiscard]] std::unique_ptr<Compound> takeObject(std::size_t index) override;

    [[nodiscard]] CompoundState &state() noexcept { return m_State; }

    // Of the top-level objects, those that refer to sequences standing elsewhere. In no order.
    [[nodiscard]] const std::vector<Alignment *> &alignments() const noexcept
    {
        return m_Alignments;
    }
    [[nodiscard]] const std::vector<Peptide *> &tiedSequences() const noexcept { return m_Tied; }
    // The ties of a sequence, here or elsewhere, are others now.
    void noteTies(Peptide &sequence);

private:
    CompoundState m_State;
    // Owned; plain pointers because the interface hands out iterators over them.
    std::vector<Compound *> m_Objects;
    std::vector<Alignment *> m_Alignments;
    std::vector<Peptide *> m_Tied;
};

} // namespace TAMBO
