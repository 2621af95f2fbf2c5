// SPDX-License-Identifier: GPL-3.0-or-later
// An object that owns others which can be added and taken out: Space, a structure, a peptide.
#pragma once

#include "StoredObject.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace TAMBO {

class ObjectContainer : public StoredObject
{
public:
    ~ObjectContainer() override;

    [[nodiscard]] virtual std::size_t objectCount() const noexcept = 0;
    // Null beyond the last.
    [[nodiscard]] virtual Compound *object(std::size_t index) const noexcept = 0;
    // Without recording; the way of the edits. Sets and clears the parent.
    virtual void insertObject(std::size_t index, std::unique_ptr<Compound> object) = 0;
    [[nodiscard]] virtual std::unique_ptr<Compound> takeObject(std::size_t index) = 0;

    // The same of many behind the last.
    virtual void appendObjects(std::vector<std::unique_ptr<StoredObject>> objects);
    // The objects come to stand at the indices, or stand there now; these ascend.
    using Objects = std::vector<std::unique_ptr<Compound>>;
    virtual void insertObjects(const std::vector<std::size_t> &indices, Objects objects);
    [[nodiscard]] virtual Objects takeObjects(const std::vector<std::size_t> &indices);

    // Whether such an object may stand here. Asked of what comes from a file.
    [[nodiscard]] virtual bool canHold(const Compound &object) const = 0;

    // What all that it owns occupies.
    [[nodiscard]] std::size_t bytesOfObjects() const noexcept;

    // Appends an object as a recorded change. Of one in Space, part says whether it is new work.
    // Stands beside the edit that is recorded.
    Compound &add(std::unique_ptr<Compound> object, EditPart part = EditPart::Whole);
    // Objects of one kind, as if they were added one after the other.
    void addAll(std::vector<std::unique_ptr<StoredObject>> objects,
                EditPart part = EditPart::Whole);

protected:
    ObjectContainer() = default;
};

} // namespace TAMBO
