// SPDX-License-Identifier: GPL-3.0-or-later
// What one view shows, as text that any version of the view can read.
#pragma once

#include "Camera.h"
#include "Coloring.h"
#include "Look.h"
#include "ModelChoice.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRect>

#include <cstdint>
#include <optional>
#include <vector>

namespace structures {

struct ViewState
{
    // Of a structure. Runs over its residues, empty where nothing is said: how many there are is
    // known when it is looked at.
    struct Shown
    {
        // As sessions number it.
        std::uint32_t object = 0;
        bool isVisible = true;
        QJsonArray hidden;
        QJsonArray styles;
    };

    QRect place;
    bool isMaximized = false;
    // Its target is where it is in the workbench.
    Camera camera;
    Look look;
    Coloring coloring = Coloring::Workbench;
    bool hasWaters = false;
    ModelChoice models;
    // Of an alignment; 0 for none.
    std::uint32_t rowsOf = 0;
    std::vector<Shown> structures;
    // What this version does not know, to be kept as it is.
    QJsonObject others;

    [[nodiscard]] QJsonObject json() const;
    // Nothing for what cannot have been a view's: what is missing is as in a new one.
    [[nodiscard]] static std::optional<ViewState> of(const QJsonObject &json);
};

} // namespace structures
