// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Camera.h"
#include "Look.h"
#include "Palette.h"
#include "Samples.h"

#include <QImage>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace structures {

// Where what is seen begins and ends, in Angstrom to the viewer.
struct DepthRange
{
    float front = 0;
    float back = 0;
};

// Makes pixels of samples. What does not depend on colors is found out once for each picture.
class Resolver
{
public:
    // Pixels beyond the border of a picture that those at the border depend on.
    static constexpr int kMargin = 48;

    // samples has a square of perAxis x perAxis points for each pixel.
    void look(const Samples &samples, int perAxis, const Projection &projection,
              const DepthRange &range, const Look &look);
    // Paints rows [firstRow, firstRow + rows) of what was looked at into those of the image that
    // begin at imageRow, and notes in picks what is nearest at each of their pixels.
    void paint(const Samples &samples, int perAxis, const Projection &projection,
               const DepthRange &range, const Look &look, const Palette &palette, int firstRow,
               int rows, QImage &image, int imageRow, std::vector<Pick> &picks);

private:
    // How much of each pixel has a mark, and where in each row such pixels are.
    struct Coverage
    {
        std::vector<std::uint8_t> shares;
        // Half-open; empty where a row has none. No rows: nothing has the mark.
        struct Stretch
        {
            int begin;
            int end;
        };
        std::vector<Stretch> rows;
    };

    [[nodiscard]] std::size_t pixelAt(int x, int y) const noexcept
    {
        return std::size_t(y) * std::size_t(m_Width) + std::size_t(x);
    }
    // What lies behind something near gets less light: the depth is compared with its average
    // around the pixel, after T. Luft, C. Colditz and O. Deussen, "Image enhancement by unsharp
    // masking the depth buffer", ACM Trans. Graph. 25, 1206 (2006).
    void castShadows(const Samples &samples, int perAxis, const Projection &projection,
                     float behind);
    void findCoverage(const Samples &samples, int perAxis, const Palette &palette,
                      std::uint8_t mark, Coverage &coverage) const;
    // Paints the outline of what is covered into a row of pixels.
    void paintOutline(const Coverage &coverage, std::uint32_t color, int row,
                      std::uint32_t *pixels) const;

    int m_Width = 0;
    int m_Height = 0;
    // Of each square of four pixels, how far it and its surroundings are.
    std::vector<float> m_Depths;
    // Of each pixel, how much light is left of it.
    std::vector<std::uint8_t> m_Light;
    Coverage m_Selected;
    Coverage m_Pointed;
};

} // namespace structures
