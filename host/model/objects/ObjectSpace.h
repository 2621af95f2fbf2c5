// SPDX-License-Identifier: GPL-3.0-or-later
// The one Space: it owns the top-level objects.
#pragma once

#include "CompoundState.h"
#include "ObjectContainer.h"
#include "Space.h"

#include <memory>
#include <string>
#include <vector>

namespace TAMBO {

struct StoredHead;

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
    [[nodiscard]] bool canHold(const Compound &object) const override;
    void appendObjects(std::vector<std::unique_ptr<StoredObject>> objects) override;
    void insertObjects(const std::vector<std::size_t> &indices, Objects objects) override;
    // Takes these over, which know already that they stand here, when there are no others. Those of
    // them that refer to sequences standing elsewhere are the second.
    void adopt(std::vector<Compound *> objects, std::vector<StoredObject *> referrers) noexcept;
    [[nodiscard]] Objects takeObjects(const std::vector<std::size_t> &indices) override;

    [[nodiscard]] CompoundState *ownState() noexcept override { return &m_State; }
    [[nodiscard]] const CompoundState *ownState() const noexcept override { return &m_State; }
    void storeName(const std::string &name) override { m_Name = name; }
    [[nodiscard]] std::size_t bytes() const noexcept override;
    // The first part, and then the numbers of its objects in their order.
    [[nodiscard]] std::size_t partCount() const noexcept override;
    void writePart(std::size_t part, ObjectWriter &out) const override;
    // What the first part says.
    void restore(std::string name, const StoredHead &head);
    [[nodiscard]] bool holdsSequences() const noexcept override { return true; }

    // The top-level objects of a kind that refer to sequences standing elsewhere. In no order.
    template <typename T> [[nodiscard]] std::vector<T *> referrers() const
    {
        std::vector<T *> found;
        for (StoredObject *const referrer : m_Referrers) {
            if (auto *const object = dynamic_cast<T *>(referrer))
                found.push_back(object);
        }
        return found;
    }
    // An object, here or elsewhere, refers to others since now.
    void noteReferences(StoredObject &object);

private:
    void makeRoomFor(std::size_t more);

    CompoundState m_State;
    std::string m_Name = "Space";
    // Owned; plain pointers because the interface hands out iterators over them.
    std::vector<Compound *> m_Objects;
    std::vector<StoredObject *> m_Referrers;
};

} // namespace TAMBO
