// SPDX-License-Identifier: GPL-3.0-or-later
// The colors of distances between residues of a column: those of the editor's By Distance, which
// its settings name.
#pragma once

#include "Colormap.h"
#include "Config.h"

#include <string>

namespace TAMBO {

// From "DistanceCutoffMin" to "DistanceCutoffMax" by the map "DistanceColorMap", of section
// "KALMO2"; blue from 0 through white to red at 6 Angstrom where nothing else is set. Settings are
// read at each call.
[[nodiscard]] inline Colormap distanceColors()
{
    constexpr int kSteps = 100;
    const auto setting = [](const char *key) { return Config::GetSetting("KALMO2", key); };
    bool hasFile = false;
    const std::string file = setting("DistanceColorMap").ToString(&hasFile);
    bool hasLow = false;
    const float low = setting("DistanceCutoffMin").ToFloat(&hasLow);
    bool hasHigh = false;
    const float high = setting("DistanceCutoffMax").ToFloat(&hasHigh);
    Colormap map(hasFile ? file : "BlueRed.cm", kSteps, "No name");
    map.setMinMax(hasLow ? low : 0.0F, hasHigh ? high : 6.0F);
    return map;
}

} // namespace TAMBO
