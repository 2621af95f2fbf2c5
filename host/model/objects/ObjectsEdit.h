// SPDX-License-Identifier: GPL-3.0-or-later
// Objects come to, or leave, the object that owns them. Whoever is out of the tree is owned here.
#pragma once

#include "EditBytes.h"

#include <memory>
#include <vector>

namespace TAMBO {

class ObjectContainer;

class ObjectsEdit final : public Edit
{
public:
    // Applying takes the one object at index out.
    ObjectsEdit(ObjectContainer &container, std::size_t index, const char *kind,
                EditPart part = EditPart::Whole);
    // Applying takes these out, which begin at index.
    ObjectsEdit(ObjectContainer &container, std::size_t index, const char *kind, EditPart part,
                std::vector<Compound *> members);
    // Applying puts the object, which was taken out, back at index.
    ObjectsEdit(ObjectContainer &container, std::size_t index, const char *kind,
                std::unique_ptr<Compound> object);
    // The same of several, at least one, at indices that ascend.
    ObjectsEdit(ObjectContainer &container, std::vector<std::size_t> indices, const char *kind,
                std::vector<std::unique_ptr<Compound>> objects);
    ~ObjectsEdit() override;

    // Takes the next edit over when both take out objects of one kind that stand side by side.
    [[nodiscard]] bool absorb(const Edit &next) override;

    std::unique_ptr<Edit> apply() override;
    std::size_t bytes() const override;
    const char *kind() const override { return m_Kind; }
    EditPart part() const override;
    // The first of the objects.
    Compound *subject() const override;
    bool actsOnWhole() const override { return true; }
    void appendSubjects(std::vector<const Compound *> &out) const override;
    void appendHolders(std::vector<const Compound *> &out) const override;
    void appendOwned(std::vector<const Compound *> &out) const override;
    // Not what it takes out, which stands in the container.
    void appendNeeded(std::vector<const Compound *> &out) const override;
    const Compound *guarded() const override;
    // Applying takes its subjects out of the container, or else puts them in.
    [[nodiscard]] bool isRemoval() const noexcept { return m_Owned.empty(); }
    [[nodiscard]] const Compound &container() const noexcept;

    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;
    // What one has stored behind its tag.
    [[nodiscard]] static LoadedEdit load(EditReader &in);

private:
    explicit ObjectsEdit(ObjectsEdit &applied);
    // With what is in the objects, or else by their numbers.
    void store(bool withContents, EditWriter &out) const;
    [[nodiscard]] bool fitsAsRemoval() const;
    [[nodiscard]] bool isTop() const;
    [[nodiscard]] std::vector<std::size_t> indices() const;

    ObjectContainer &m_Container;
    // Of the first, and of all when they do not stand side by side.
    std::size_t m_Index;
    std::vector<std::size_t> m_Indices;
    const char *m_Kind;
    // Of objects that stand in Space.
    EditPart m_Part = EditPart::Whole;
    // In the order of the container.
    std::vector<Compound *> m_Members;
    // The members while they are out of the tree; else empty.
    std::vector<std::unique_ptr<Compound>> m_Owned;
};

} // namespace TAMBO
