// SPDX-License-Identifier: GPL-3.0-or-later
#include "Resolver.h"

#include "DepthBlur.h"
#include "RowWork.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace structures {

namespace {

// Angstrom between two neighbours, where a line begins to show and where it is darkest.
constexpr float kLineBegins = 2.0F;
constexpr float kLineFull = 5.0F;
constexpr float kLine = 0.65F;
// Of shadows.
constexpr float kShadowReach = 3.5F;
constexpr float kShadowFull = 9.0F;
constexpr float kShadow = 0.55F;

float share(float value) noexcept
{
    value = value > 0 ? value : 0.0F;
    return value < 1 ? value : 1.0F;
}

// Of four pixels, premultiplied by their alpha.
std::uint32_t average(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) noexcept
{
    constexpr std::uint32_t kEven = 0x00ff00ffU;
    const std::uint32_t even = (a & kEven) + (b & kEven) + (c & kEven) + (d & kEven) + 0x00020002U;
    const std::uint32_t odd = ((a >> 8U) & kEven) + ((b >> 8U) & kEven) + ((c >> 8U) & kEven) +
                              ((d >> 8U) & kEven) + 0x00020002U;
    return ((even >> 2U) & kEven) | (((odd >> 2U) & kEven) << 8U);
}

} // namespace

void Resolver::findSurroundings(const Samples &samples, int perAxis, const Projection &projection,
                                float behind)
{
    // The surroundings are much larger than a pixel: one place for each square of four will do.
    const int side = 2 * perAxis;
    const int width = (m_Width + 1) / 2;
    const int height = (m_Height + 1) / 2;
    resizeExactly(m_Depths, std::size_t(width) * std::size_t(height));
    byRows(height, [&](int y) {
        const int sy = std::min(y * side + side / 2, samples.height() - 1);
        const float *const keys = &samples.keys[samples.at(0, sy)];
        float *const depths = &m_Depths[std::size_t(y) * std::size_t(width)];
        for (int x = 0; x < width; ++x) {
            const float key = keys[std::min(x * side + side / 2, samples.width() - 1)];
            depths[x] =
                key == Samples::kNothing ? behind : std::max(projection.depthOf(key), behind);
        }
    });
    const float halves = projection.scale() / float(side);
    blurDepths(m_Depths, width, height, int(std::clamp(kShadowReach * halves, 1.0F, 11.0F)));
}

template <int kPerAxis, bool kIsPerspective>
void Resolver::lightRow(const Samples &samples, float eyeDistance, float behind, const Look &look,
                        int y)
{
    const Samples::Stretch pixels = pixelStretch(samples, kPerAxis, y);
    if (pixels.begin >= pixels.end)
        return;
    const int width = samples.width();
    RowMemory &memory = rowMemory(std::size_t(width));
    // Of each sample, how dark the line in it is.
    float *const lines[2] = {memory.floats[0].data(), memory.floats[1].data()};
    const int begin = pixels.begin * kPerAxis;
    const int end = pixels.end * kPerAxis;
    for (int sub = 0; sub < kPerAxis; ++sub) {
        float *const line = lines[sub];
        if (!look.hasOutlines) {
            std::fill(line + begin, line + end, 0.0F);
            continue;
        }
        const int sy = y * kPerAxis + sub;
        const float *const row = &samples.keys[samples.at(0, sy)];
        const float *const above = sy > 0 ? row - width : row;
        const float *const below = sy + 1 < samples.height() ? row + width : row;
        const auto lineAt = [&](float key, float left, float right, float up, float down) {
            float least = left < right ? left : right;
            least = up < least ? up : least;
            least = down < least ? down : least;
            least = key < least ? key : least;
            const float farther = depthOf<kIsPerspective>(least, eyeDistance);
            const float step = depthOf<kIsPerspective>(key, eyeDistance) -
                               (least == Samples::kNothing ? behind - kLineFull : farther);
            const float dark = share((step - kLineBegins) * (1 / (kLineFull - kLineBegins)));
            return key == Samples::kNothing ? 0.0F : dark;
        };
        const auto lineAtBorder = [&](int x) {
            line[x] = lineAt(row[x], row[std::max(x - 1, 0)], row[std::min(x + 1, width - 1)],
                             above[x], below[x]);
        };
        const int last = std::min(end, width - 1);
        if (begin == 0)
            lineAtBorder(0);
        for (int x = std::max(begin, 1); x < last; ++x)
            line[x] = lineAt(row[x], row[x - 1], row[x + 1], above[x], below[x]);
        if (end == width)
            lineAtBorder(width - 1);
    }
    std::uint8_t *const light = &m_Light[pixelAt(0, y)];
    const float *const first = &samples.keys[samples.at(0, y * kPerAxis)];
    const float *const around =
        look.hasShadows ? &m_Depths[std::size_t(y / 2) * std::size_t((m_Width + 1) / 2)] : nullptr;
    std::uint32_t *const left = memory.pixels[0].data();
    for (int x = pixels.begin; x < pixels.end; ++x)
        left[x] = 255;
    if (around != nullptr) {
        float *const surroundings = memory.floats[2].data();
        for (int x = pixels.begin; x < pixels.end; ++x)
            surroundings[x] = around[x / 2];
        for (int x = pixels.begin; x < pixels.end; ++x) {
            float key = first[x * kPerAxis];
            if constexpr (kPerAxis == 2) {
                const float *const second = first + width;
                const float upper = std::max(key, first[x * 2 + 1]);
                const float lower = std::max(second[x * 2], second[x * 2 + 1]);
                key = std::max(upper, lower);
            }
            const float depth = depthOf<kIsPerspective>(key, eyeDistance);
            const float nearer = surroundings[x] - (depth > behind ? depth : behind);
            left[x] = std::uint32_t(int(255 * (1 - share(nearer * (1 / kShadowFull)) * kShadow)));
        }
    }
    for (int x = pixels.begin; x < pixels.end; ++x) {
        float line = lines[0][x * kPerAxis];
        if constexpr (kPerAxis == 2)
            line = (line + lines[0][x * 2 + 1] + lines[1][x * 2] + lines[1][x * 2 + 1]) * 0.25F;
        light[x] = std::uint8_t(int(float(int(left[x])) * (1 - kLine * line)));
    }
}

void Resolver::look(const Samples &samples, int perAxis, const Projection &projection,
                    const DepthRange &range, const Look &look)
{
    m_Width = samples.width() / perAxis;
    m_Height = samples.height() / perAxis;
    resizeExactly(m_Light, std::size_t(m_Width) * std::size_t(m_Height));
    if (look.hasShadows)
        findSurroundings(samples, perAxis, projection, range.back);
    withKind(perAxis, projection, [&](auto axis, auto perspective) {
        byRows(m_Height, [&](int y) {
            lightRow<axis(), perspective()>(samples, projection.eyeDistance(), range.back, look, y);
        });
    });
}

void Resolver::findMarked(const Samples &samples, int perAxis, const Palette &palette)
{
    m_Selected.find(samples, perAxis, palette.marks, Palette::kSelected);
    findPointed(samples, perAxis, palette);
}

void Resolver::findPointed(const Samples &samples, int perAxis, const Palette &palette)
{
    m_Pointed.find(samples, perAxis, palette.marks, Palette::kPointed);
}

void Resolver::paint(const Samples &samples, int perAxis, const Projection &projection,
                     const DepthRange &range, const Look &look, const Palette &palette,
                     int firstRow, int rows, QImage &image, int imageRow, std::vector<Pick> &picks)
{
    const Lighting lighting(range, look, palette, projection.eyeDistance());
    // Beforehand, so that rows can be painted side by side.
    uchar *const bits = image.bits();
    const qsizetype bytesPerLine = image.bytesPerLine();
    const auto paintRow = [&](auto axis, auto perspective, int row) {
        constexpr int kPerAxis = axis();
        const int y = firstRow + row;
        auto *const out = reinterpret_cast<QRgb *>(bits + qsizetype(imageRow + row) * bytesPerLine);
        Pick *const picked = &picks[std::size_t(imageRow + row) * std::size_t(m_Width)];
        const Samples::Stretch pixels = pixelStretch(samples, kPerAxis, y);
        const int count = std::max(0, pixels.end - pixels.begin) * kPerAxis;
        std::fill(out, out + (count > 0 ? pixels.begin : m_Width), lighting.empty());
        std::fill(picked, picked + (count > 0 ? pixels.begin : m_Width), 0U);
        if (count == 0)
            return;
        std::fill(out + pixels.end, out + m_Width, lighting.empty());
        std::fill(picked + pixels.end, picked + m_Width, 0U);

        RowMemory &memory = rowMemory(std::size_t(samples.width()));
        float *const left = memory.floats[0].data();
        const std::uint8_t *const light = &m_Light[pixelAt(pixels.begin, y)];
        for (int i = 0; i < count; ++i)
            left[i] = float(int(light[i / kPerAxis])) * (1 / 255.0F);
        const std::size_t at = samples.at(pixels.begin * kPerAxis, y * kPerAxis);
        if constexpr (kPerAxis == 1) {
            std::copy_n(&samples.picks[at], count, picked + pixels.begin);
            lighting.paint<perspective()>(&samples.keys[at], &samples.picks[at],
                                          &samples.shades[at], left, count, out + pixels.begin);
        } else {
            const auto width = std::size_t(samples.width());
            std::uint32_t *const upper = memory.pixels[0].data();
            std::uint32_t *const lower = memory.pixels[1].data();
            lighting.paint<perspective()>(&samples.keys[at], &samples.picks[at],
                                          &samples.shades[at], left, count, upper);
            lighting.paint<perspective()>(&samples.keys[at + width], &samples.picks[at + width],
                                          &samples.shades[at + width], left, count, lower);
            for (int i = 0; i < count / 2; ++i)
                out[pixels.begin + i] =
                    average(upper[2 * i], upper[2 * i + 1], lower[2 * i], lower[2 * i + 1]);
            for (int i = 0; i < count / 2; ++i) {
                std::size_t nearest = at + 2 * std::size_t(i);
                for (const std::size_t other : {nearest + 1, nearest + width, nearest + width + 1})
                    if (samples.keys[other] > samples.keys[nearest])
                        nearest = other;
                picked[pixels.begin + i] = samples.picks[nearest];
            }
        }
    };
    withKind(perAxis, projection, [&](auto axis, auto perspective) {
        byRows(rows, [&](int row) {
            paintRow(axis, perspective, row);
            auto *const out =
                reinterpret_cast<QRgb *>(bits + qsizetype(imageRow + row) * bytesPerLine);
            m_Selected.paint(palette.selectedOutline, firstRow + row, out);
            m_Pointed.paint(palette.pointedOutline, firstRow + row, out);
        });
    });
}

} // namespace structures
