// SPDX-License-Identifier: GPL-3.0-or-later
#include "Renderer.h"

#include <algorithm>
#include <cmath>

namespace structures {

namespace {

// Of a pixel beside its samples: light, coverages, and what shadows are found with.
constexpr std::size_t kPixelBytes = 3 + 2 * sizeof(float);

// Angstrom.
constexpr float kSmallest = 4;
// The outermost atoms of most molecules are far fewer than would fill the sphere.
constexpr float kDiameter = 1.85F;

} // namespace

Camera cameraOnAll(const Camera &camera, const Bounds &bounds, const QSize &size)
{
    Camera all;
    all.rotation = camera.rotation;
    all.isPerspective = camera.isPerspective;
    all.target = bounds.centre;
    all.height = std::max(bounds.radius, kSmallest) * kDiameter;
    if (size.width() < size.height() && size.width() > 0)
        all.height *= float(size.height()) / float(size.width());
    return all;
}

DepthRange Renderer::depthRange(const PictureRequest &request,
                                const Projection &projection) noexcept
{
    const float middle = projection.toView(request.bounds.centre).z;
    DepthRange range{middle + request.bounds.radius, middle - request.bounds.radius};
    range.front = std::min(range.front, projection.front());
    range.back = std::max(range.back, projection.back());
    return range;
}

bool Renderer::draw(const PictureRequest &request, const Palette &palette)
{
    const int width = request.size.width();
    const int height = request.size.height();
    if (width <= 0 || height <= 0)
        return true;
    const int perAxis = std::max(1, request.perAxis);
    const Projection projection(request.camera, float(width * perAxis), float(height * perAxis));
    const DepthRange range = depthRange(request, projection);

    const std::size_t rowBytes =
        std::size_t(width) *
        (std::size_t(perAxis) * std::size_t(perAxis) * Samples::kBytes + kPixelBytes);
    const auto affordable = int(std::min<std::size_t>(m_MostBytes / rowBytes, 1U << 30U));
    const bool isWhole = affordable >= height;
    const int stripRows = isWhole ? height : std::max(1, affordable - 2 * Resolver::kMargin);

    // A picture that is given up before it is painted is still the one before.
    QImage image;
    if (isWhole && m_Image.size() == request.size)
        image = std::move(m_Image);
    else
        image = QImage(request.size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return false;
    std::vector<Pick> picks(std::move(m_Picks));
    picks.resize(std::size_t(width) * std::size_t(height));
    m_HasAll = false;
    for (int row = 0; row < height; row += stripRows) {
        const int rows = std::min(stripRows, height - row);
        // With what lies beyond the strip and has a part in how its pixels look.
        const int above = std::min(row, Resolver::kMargin);
        const int below = std::min(height - row - rows, Resolver::kMargin);
        m_Samples.resize(width * perAxis, (above + rows + below) * perAxis);
        if (!m_Rasterizer.draw(request.parts, projection, (row - above) * perAxis, request.isCoarse,
                               request.stop, m_Samples)) {
            m_Picks = std::move(picks);
            if (isWhole && !image.isNull() && m_Image.isNull())
                m_Image = std::move(image);
            return false;
        }
        m_Resolver.look(m_Samples, perAxis, projection, range, request.look);
        m_Resolver.paint(m_Samples, perAxis, projection, range, request.look, palette, above, rows,
                         image, row, picks);
    }
    m_Image = std::move(image);
    m_Picks = std::move(picks);
    m_Last = request;
    m_Last.perAxis = perAxis;
    m_HasAll = isWhole;
    return true;
}

bool Renderer::recolor(const Palette &palette)
{
    if (!m_HasAll)
        return false;
    const int perAxis = m_Last.perAxis;
    const Projection projection(m_Last.camera, float(m_Samples.width()), float(m_Samples.height()));
    m_Resolver.paint(m_Samples, perAxis, projection, depthRange(m_Last, projection), m_Last.look,
                     palette, 0, m_Image.height(), m_Image, 0, m_Picks);
    return true;
}

Pick Renderer::pickAt(int x, int y) const noexcept
{
    if (x < 0 || y < 0 || x >= m_Image.width() || y >= m_Image.height())
        return 0;
    return m_Picks[std::size_t(y) * std::size_t(m_Image.width()) + std::size_t(x)];
}

std::size_t Renderer::bytes() const noexcept
{
    const std::size_t samples = std::size_t(m_Samples.width()) * std::size_t(m_Samples.height());
    const std::size_t pixels = samples / std::size_t(m_Last.perAxis * m_Last.perAxis);
    return samples * Samples::kBytes + pixels * 3;
}

} // namespace structures
