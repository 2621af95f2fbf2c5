// SPDX-License-Identifier: GPL-3.0-or-later
// Measures as values that can be kept, and back.
#pragma once

#include "Measures.h"

#include <QJsonObject>

namespace structures {

// {"version": 1, "measures": [{"atoms": [{"chain": 17, "child": 4, "atom": "CA", "nth": 0}, ...]}]}
// A water is {"structure": 12, "water": 3}.
[[nodiscard]] QJsonObject measuresToJson(const Measures &measures);
// What is not understood of it is left out; all of what another version has written.
[[nodiscard]] Measures measuresFromJson(const QJsonObject &json);

} // namespace structures
