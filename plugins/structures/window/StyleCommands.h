// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ListedPart.h"
#include "Renderer.h"
#include "StructureScene.h"

#include <QObject>

#include <optional>
#include <vector>

namespace structures {

// How structures are drawn and what of them is hidden, by what is selected.
class StyleCommands final : public QObject
{
    Q_OBJECT

public:
    // The scene outlives this.
    explicit StyleCommands(StructureScene &scene);

    // Of each structure, which of its residues; of nothing, all.
    using Residues = std::vector<std::vector<bool>>;
    // Those that are selected; nothing when none is.
    [[nodiscard]] Residues selected() const;
    // Those of a structure or of one of its chains, by their places in the scene.
    [[nodiscard]] Residues residuesOf(const ListedPart &part) const;

    void setStyle(Style style, const Residues &chosen);
    void setSideChains(bool shown, const Residues &chosen);
    void show(const ListedPart &part);
    // As the box of the list says: of a structure, whatever is hidden of it stays so.
    void setShown(const ListedPart &part, bool isShown);
    void showOnly(const ListedPart &part);
    // What is selected, or all else; nothing when nothing is selected.
    void hideSelection();
    void hideOthers();
    void showAll();
    void setWatersShown(bool shown);
    void setModels(const ModelChoice &choice);
    // Null for no alignment: everything is shown.
    void showRowsOf(TAMBO::Alignment *alignment);
    // The next model, or the one before, with the first behind the last.
    void stepModel(bool forward);

    // Around the residues, relative to the scene's origin; nothing where there are none.
    [[nodiscard]] std::optional<Bounds> boundsOf(const Residues &chosen) const;

signals:
    // Other shapes are to be seen than before.
    void changed();

private:
    void hideSelected(bool others);
    // Structures may have gone since the list was filled.
    [[nodiscard]] bool isThere(const ListedPart &part) const;
    void setHidden(const ListedPart &part, bool isHidden);

    StructureScene &m_Scene;
};

} // namespace structures
