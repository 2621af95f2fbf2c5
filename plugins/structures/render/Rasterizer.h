// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Camera.h"
#include "Samples.h"
#include "Shapes.h"

#include <atomic>
#include <span>
#include <vector>

namespace structures {

// Shapes in the picture. What is added to their picks tells molecules apart; offset is added to
// their places.
struct ScenePart
{
    const Shapes *shapes = nullptr;
    Pick firstPick = 0;
    Vec3 offset;
};

// Puts shapes on a raster, the nearest thing at each of its points, in bands of rows that all
// processors share. Triangles are filled span by span between their projected corners; spheres and
// sticks are met exactly, by the ray through each point. Keeps its memory from picture to picture.
class Rasterizer
{
public:
    // rows [firstRow, firstRow + samples.height()) of a raster of which the projection is. coarse:
    // with the meshes of fewer triangles. False when it was stopped; samples mean nothing then.
    bool draw(std::span<const ScenePart> parts, const Projection &projection, int firstRow,
              bool isCoarse, const std::atomic<bool> *stop, Samples &samples);

private:
    struct Corner
    {
        // In the picture.
        Vec3 place;
        // In view coordinates.
        Vec3 normal;
    };
    struct Triangle
    {
        std::uint32_t corners[3];
        Pick pick;
    };
    // Of a sphere or a stick, in view coordinates, with what it covers of the raster.
    struct Extent
    {
        int left;
        int right;
        int top;
        int bottom;
    };
    struct Ball
    {
        Vec3 centre;
        float radius;
        Pick pick;
        Extent extent;
    };
    struct Rod
    {
        Vec3 from;
        Vec3 to;
        float radius;
        Pick fromPick;
        Pick toPick;
        Extent extent;
    };
    // What of a share of the shapes is in each band.
    struct Bin
    {
        std::vector<Triangle> triangles;
        std::vector<Ball> balls;
        std::vector<Rod> rods;
    };
    // A stretch of triangles, spheres or sticks of one part, which are put into bins together.
    struct Share;
    class Band;

    void project(std::span<const ScenePart> parts, const Projection &projection, int firstRow,
                 bool isCoarse);
    void bin(const Share &share, const Projection &projection, int firstRow, int width, int height,
             std::vector<Bin> &bins) const;

    std::vector<Corner> m_Corners;
    // By share, then by band.
    std::vector<std::vector<Bin>> m_Bins;
};

} // namespace structures
