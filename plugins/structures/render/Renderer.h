// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Look.h"
#include "Palette.h"
#include "Rasterizer.h"
#include "Resolver.h"

#include <QImage>
#include <QSize>

#include <atomic>
#include <cstddef>
#include <span>
#include <vector>

namespace structures {

// A sphere that everything in view is in.
struct Bounds
{
    Vec3 centre;
    float radius = 0;
};

// The camera with the rotation and perspective of another one that sees all of what is within the
// bounds in a picture of the size.
[[nodiscard]] Camera cameraOnAll(const Camera &camera, const Bounds &bounds, const QSize &size);

struct PictureRequest
{
    std::span<const ScenePart> parts;
    Bounds bounds;
    Camera camera;
    Look look;
    QSize size;
    // Points of each pixel along each of its sides: 1, or 2 for smooth edges.
    int perAxis = 1;
    // With the meshes of fewer triangles.
    bool isCoarse = false;
    // Looked at now and then from all threads: true gives the picture up.
    const std::atomic<bool> *stop = nullptr;
};

// Makes pictures on the processors. Beside the image and a pick for each of its pixels it needs at
// most so many bytes for samples: what is larger is made strip by strip.
class Renderer
{
public:
    explicit Renderer(std::size_t mostBytes = 60U << 20) : m_MostBytes(mostBytes) { }

    // False when it was stopped: the picture before stays.
    bool draw(const PictureRequest &request, const Palette &palette);
    // The same picture in other colors and marks, from the samples of the last one. False where
    // they are not there any more, as of a picture that was made strip by strip: draw it anew.
    bool recolor(const Palette &palette);
    // The same where nothing is other than what is pointed at: few rows are painted.
    bool repoint(const Palette &palette);

    // Format_ARGB32_Premultiplied.
    [[nodiscard]] const QImage &image() const noexcept { return m_Image; }
    // 0 outside of the picture.
    [[nodiscard]] Pick pickAt(int x, int y) const noexcept;
    // All picks, a row after the other.
    [[nodiscard]] const std::vector<Pick> &picks() const noexcept { return m_Picks; }
    // Of what is kept for the next picture, without image and picks.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    [[nodiscard]] static DepthRange depthRange(const PictureRequest &request,
                                               const Projection &projection) noexcept;
    void repaint(const Palette &palette, const Outline::Rows &rows);

    std::size_t m_MostBytes;
    Rasterizer m_Rasterizer;
    Resolver m_Resolver;
    Samples m_Samples;
    QImage m_Image;
    std::vector<Pick> m_Picks;
    PictureRequest m_Last;
    // The samples are those of all of the last picture.
    bool m_HasAll = false;
};

} // namespace structures
