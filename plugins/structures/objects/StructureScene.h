// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Coloring.h"
#include "PictureScene.h"
#include "ViewedStructure.h"

#include "Subscriber.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace structures {

// All structures that are loaded, as one view shows them. Follows the workbench: what is deleted is
// let go at once; all else is read again when refresh() is called.
class StructureScene final : public Subscriber
{
public:
    // Called whenever refresh() may find something new, while changes are being published too.
    explicit StructureScene(std::function<void()> changed);

    struct Changes
    {
        // Other structures than before.
        bool structures = false;
        // Other atoms, or other places of them.
        bool places = false;
    };
    // What is other than at the last call.
    Changes refresh();

    [[nodiscard]] const std::vector<std::unique_ptr<ViewedStructure>> &structures() const noexcept
    {
        return m_Structures;
    }
    // Places in a picture are relative to it. The same for as long as there are structures.
    [[nodiscard]] Vec3 origin() const noexcept { return m_Origin; }

    // Of the structures in view, in their order: the first pick less one.
    [[nodiscard]] Pick firstPickOf(const ViewedStructure &structure) const noexcept;
    // Those that are to be seen.
    [[nodiscard]] std::shared_ptr<const PictureScene> picture();
    // Why there is nothing to be seen; empty when there is something.
    [[nodiscard]] std::string remark() const;
    [[nodiscard]] Palette palette(Coloring coloring) const;

    struct Place
    {
        ViewedStructure *structure = nullptr;
        ViewedStructure::Place place;
    };
    // Nothing for the background.
    [[nodiscard]] std::optional<Place> placeOf(Pick pick) const noexcept;
    // Relative to the origin.
    [[nodiscard]] Vec3 positionOf(const Place &place) const;

    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

private:
    void read();

    std::function<void()> m_Changed;
    Changes m_Changes;
    std::vector<std::unique_ptr<ViewedStructure>> m_Structures;
    Vec3 m_Origin;
};

} // namespace structures
