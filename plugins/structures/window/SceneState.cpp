// SPDX-License-Identifier: GPL-3.0-or-later
#include "SceneState.h"

#include "JsonRuns.h"
#include "StructureScene.h"

#include "Alignment.h"
#include "SessionPart.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <unordered_map>

namespace structures {

namespace {

// In pixels, of a side of a window.
constexpr int kLeastSide = 100;

} // namespace

ViewState stateOf(const StructureScene &scene)
{
    ViewState state;
    state.hasWaters = scene.areWatersShown();
    state.models = scene.models();
    state.rowsOf = SessionPart::NumberOf(scene.rows().alignment());
    for (const auto &structure : scene.structures()) {
        ViewState::Shown shown;
        shown.object = SessionPart::NumberOf(structure->object());
        shown.isVisible = structure->isVisible();
        shown.hidden = runsOf(structure->hidden());
        if (structure->styles() != firstStyles(structure->molecule()))
            shown.styles = runsOf(structure->styles());
        if (shown.object != 0)
            state.structures.push_back(std::move(shown));
    }
    return state;
}

void restoreScene(const ViewState &state, StructureScene &scene)
{
    scene.setWatersShown(state.hasWaters);
    scene.setRowsOf(state.rowsOf == 0
                        ? nullptr
                        : dynamic_cast<TAMBO::Alignment *>(SessionPart::ObjectOf(state.rowsOf)));
    std::unordered_map<const TAMBO::Compound *, ViewedStructure *> loaded;
    for (const auto &structure : scene.structures())
        loaded.emplace(structure->object(), structure.get());
    for (const ViewState::Shown &shown : state.structures) {
        const auto found = loaded.find(SessionPart::ObjectOf(shown.object));
        if (found == loaded.end())
            continue;
        ViewedStructure &structure = *found->second;
        const std::size_t residues = structure.molecule().residues.size();
        structure.setVisible(shown.isVisible);
        if (auto hidden = readRuns<bool>(shown.hidden, residues))
            structure.setHidden(*std::move(hidden));
        if (auto styles = readRuns<ResidueStyle>(shown.styles, residues))
            structure.setStyles(*std::move(styles));
    }
    scene.setModels(state.models);
    scene.refresh();
}

void putInSight(QWidget &window, const QRect &place)
{
    if (place.width() < kLeastSide || place.height() < kLeastSide)
        return;
    for (const QScreen *const screen : QGuiApplication::screens()) {
        const QRect room = screen->availableGeometry();
        if (!room.intersects(place.adjusted(kLeastSide / 2, 0, -kLeastSide / 2, -kLeastSide / 2)))
            continue;
        window.setGeometry(QRect(place.topLeft(), place.size().boundedTo(room.size())));
        return;
    }
}

} // namespace structures
