// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Rasterizer.h"
#include "Renderer.h"

#include <memory>
#include <vector>

namespace structures {

// What is in the picture, kept alive for as long as somebody draws it.
struct PictureScene
{
    std::vector<std::shared_ptr<const Shapes>> shapes;
    // Of the shapes.
    std::vector<ScenePart> parts;
    Bounds bounds;
};

} // namespace structures
