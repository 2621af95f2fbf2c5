// SPDX-License-Identifier: GPL-3.0-or-later
#include "Renderer.h"

#include <algorithm>
#include <cmath>

namespace structures {

namespace {

// Of a pixel beside its samples: light, coverages, and what shadows are found with; and so much
// again that may be left of a picture with fewer samples a pixel.
constexpr std::size_t kPixelBytes = 3 + 2 * sizeof(float);
// Of a strip, with what lies beyond it.
constexpr int kFewestRows = 2 * Resolver::kMargin + 8;

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
    const auto affordableRows = [&](int axis) {
        const std::size_t rowBytes =
            std::size_t(width) * (std::size_t(axis * axis) * Samples::kBytes + kPixelBytes);
        return int(std::min<std::size_t>(m_MostBytes / rowBytes, 1U << 30U));
    };
    int perAxis = std::clamp(request.perAxis, 1, 2);
    int affordable = affordableRows(perAxis);
    // So wide that not even a strip fits: its edges are less smooth.
    if (affordable < std::min(height, kFewestRows)) {
        perAxis = 1;
        affordable = affordableRows(perAxis);
    }
    const Projection projection(request.camera, float(width * perAxis), float(height * perAxis));
    const DepthRange range = depthRange(request, projection);
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
        m_Resolver.findMarked(m_Samples, perAxis, palette);
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
    m_Resolver.findMarked(m_Samples, m_Last.perAxis, palette);
    repaint(palette, {0, m_Image.height()});
    return true;
}

bool Renderer::repoint(const Palette &palette)
{
    if (!m_HasAll)
        return false;
    const Outline::Rows before = m_Resolver.pointedRows();
    m_Resolver.findPointed(m_Samples, m_Last.perAxis, palette);
    const Outline::Rows now = m_Resolver.pointedRows();
    repaint(palette, before);
    repaint(palette, now);
    return true;
}

void Renderer::repaint(const Palette &palette, const Outline::Rows &rows)
{
    const Projection projection(m_Last.camera, float(m_Samples.width()), float(m_Samples.height()));
    m_Resolver.paint(m_Samples, m_Last.perAxis, projection, depthRange(m_Last, projection),
                     m_Last.look, palette, rows.begin, rows.end - rows.begin, m_Image, rows.begin,
                     m_Picks);
}

Pick Renderer::pickAt(int x, int y) const noexcept
{
    if (x < 0 || y < 0 || x >= m_Image.width() || y >= m_Image.height())
        return 0;
    return m_Picks[std::size_t(y) * std::size_t(m_Image.width()) + std::size_t(x)];
}

std::size_t Renderer::bytes() const noexcept
{
    return m_Samples.bytes() + m_Resolver.bytes();
}

} // namespace structures
