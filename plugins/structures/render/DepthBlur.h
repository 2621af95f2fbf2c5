// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

namespace structures {

// Puts the average of its surroundings, squares of 2 * radius + 1, in place of each value, and in
// its rows once more, so that no edges of squares are seen. Beyond the borders stands what is at
// them. Rows from top to bottom.
void blurDepths(std::vector<float> &depths, int width, int height, int radius);

} // namespace structures
