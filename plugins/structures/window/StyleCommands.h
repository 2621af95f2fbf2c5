// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

    // Of what is selected; of everything when nothing is.
    void setStyle(Style style);
    void setSideChains(bool shown);
    // What is selected, or all else; nothing when nothing is selected.
    void hideSelection();
    void hideOthers();
    void showAll();

    // Of each structure, which of its residues are selected; nothing when none is.
    [[nodiscard]] std::vector<std::vector<bool>> selected() const;
    // Around what is selected, relative to the scene's origin.
    [[nodiscard]] std::optional<Bounds> selectedBounds() const;

signals:
    // Other shapes are to be seen than before.
    void changed();

private:
    void hide(bool others);

    StructureScene &m_Scene;
};

} // namespace structures
