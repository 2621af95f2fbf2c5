// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Camera.h"
#include "Lighting.h"
#include "Look.h"
#include "Outline.h"
#include "Palette.h"
#include "Samples.h"

#include <QImage>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace structures {

// Makes pixels of samples. What does not depend on colors is found out once for each picture.
class Resolver
{
public:
    // Pixels beyond the border of a picture that those at the border depend on.
    static constexpr int kMargin = 48;

    // samples has a square of perAxis x perAxis points, 1 or 2, for each pixel.
    void look(const Samples &samples, int perAxis, const Projection &projection,
              const DepthRange &range, const Look &look);
    // Finds out where what is marked is to be seen. Outlines reach beyond it.
    void findMarked(const Samples &samples, int perAxis, const Palette &palette);
    // The same of nothing but what is pointed at.
    void findPointed(const Samples &samples, int perAxis, const Palette &palette);
    // Those that the outline of what is pointed at is in.
    [[nodiscard]] Outline::Rows pointedRows() const noexcept { return m_Pointed.rows(); }
    // Paints rows [firstRow, firstRow + rows) of what was looked at into those of the image that
    // begin at imageRow, and notes in picks what is nearest at each of their pixels.
    void paint(const Samples &samples, int perAxis, const Projection &projection,
               const DepthRange &range, const Look &look, const Palette &palette, int firstRow,
               int rows, QImage &image, int imageRow, std::vector<Pick> &picks);
    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return m_Depths.capacity() * sizeof(float) + m_Light.capacity() + m_Selected.bytes() +
               m_Pointed.bytes();
    }

private:
    [[nodiscard]] std::size_t pixelAt(int x, int y) const noexcept
    {
        return std::size_t(y) * std::size_t(m_Width) + std::size_t(x);
    }
    // What lies behind something near gets less light: the depth is compared with its average
    // around the pixel, after T. Luft, C. Colditz and O. Deussen, "Image enhancement by unsharp
    // masking the depth buffer", ACM Trans. Graph. 25, 1206 (2006).
    void findSurroundings(const Samples &samples, int perAxis, const Projection &projection,
                          float behind);
    template <int kPerAxis, bool kIsPerspective>
    void lightRow(const Samples &samples, float eyeDistance, float behind, const Look &look, int y);

    int m_Width = 0;
    int m_Height = 0;
    // Of each square of four pixels, how far it and its surroundings are.
    std::vector<float> m_Depths;
    // Of each pixel, how much light is left of it.
    std::vector<std::uint8_t> m_Light;
    Outline m_Selected;
    Outline m_Pointed;
};

} // namespace structures
