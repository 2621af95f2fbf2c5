// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Coloring.h"
#include "PictureScene.h"
#include "RowFilter.h"
#include "ViewedStructure.h"

#include "Subscriber.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
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
        // Other atoms, or other places of them, or others that are shown.
        bool places = false;
    };
    // What is other than at the last call.
    Changes refresh();

    [[nodiscard]] const std::vector<std::unique_ptr<ViewedStructure>> &structures() const noexcept
    {
        return m_Structures;
    }
    // How often a structure has been read, by any scene.
    [[nodiscard]] static std::size_t readings() noexcept;
    // Places in a picture are relative to it. The same for as long as there are structures.
    [[nodiscard]] Vec3 origin() const noexcept { return m_Origin; }

    // Of the structures in view, in their order: the first pick less one.
    [[nodiscard]] Pick firstPickOf(const ViewedStructure &structure) const noexcept;
    // Those that are to be seen.
    [[nodiscard]] std::shared_ptr<const PictureScene> picture();
    // Why there is nothing to be seen; empty when there is something.
    [[nodiscard]] std::string remark() const;
    // Null: chains are not filtered. Seen when refresh() is called.
    void setRowsOf(TAMBO::Alignment *alignment) { m_Rows.setAlignment(alignment); }
    [[nodiscard]] const RowFilter &rows() const noexcept { return m_Rows; }
    // Off at first. Of structures that come later too.
    void setWatersShown(bool shown);
    [[nodiscard]] bool areWatersShown() const noexcept { return m_AreWatersShown; }
    // Of all structures, and of those that come later.
    void setModels(const ModelChoice &choice);
    [[nodiscard]] const ModelChoice &models() const noexcept { return m_Models; }
    // Of the structure that has the most of them; 0 without any.
    [[nodiscard]] std::size_t modelCount() const noexcept;
    [[nodiscard]] Palette palette(Coloring coloring) const;

    struct Place
    {
        ViewedStructure *structure = nullptr;
        ViewedStructure::Place place;
    };
    // Nothing for the background, and for waters, which are no objects.
    [[nodiscard]] std::optional<Place> placeOf(Pick pick) const noexcept;
    // The residue that is a child of a chain; nothing where there is no such.
    [[nodiscard]] std::optional<Place> placeOf(const TAMBO::Compound *chain,
                                               std::uint32_t child) const;
    // Nothing for what is no water.
    struct WaterPlace
    {
        const ViewedStructure *structure = nullptr;
        std::uint32_t water = kNone;
    };
    [[nodiscard]] std::optional<WaterPlace> waterOf(Pick pick) const noexcept;
    // Relative to the origin.
    [[nodiscard]] Vec3 positionOf(const Place &place) const;

    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

private:
    void read();
    void leaveOutChains();
    void listChains();

    std::function<void()> m_Changed;
    Changes m_Changes;
    // What the structures have been read at.
    std::uint64_t m_Revision = 0;
    std::vector<std::unique_ptr<ViewedStructure>> m_Structures;
    // Where each chain is: in which structure, and which of its chains.
    std::unordered_map<const TAMBO::Compound *, std::pair<ViewedStructure *, std::uint32_t>>
        m_Chains;
    Vec3 m_Origin;
    bool m_AreWatersShown = false;
    ModelChoice m_Models;
    RowFilter m_Rows;
};

} // namespace structures
