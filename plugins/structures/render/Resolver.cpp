// SPDX-License-Identifier: GPL-3.0-or-later
#include "Resolver.h"

#include "DepthBlur.h"
#include "Parallel.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace structures {

namespace {

constexpr int kRowsAtOnce = 16;
// What is in the shade.
constexpr float kAmbient = 0.32F;
constexpr float kDiffuse = 0.72F;
constexpr float kMirrored = 0.28F;
// How much of what is farthest away fades.
constexpr float kFade = 0.72F;
// Angstrom between two neighbours, where a line begins to show and where it is darkest.
constexpr float kLineBegins = 2.0F;
constexpr float kLineFull = 5.0F;
constexpr float kLine = 0.65F;
// Of shadows.
constexpr float kShadowReach = 3.5F;
constexpr float kShadowFull = 9.0F;
constexpr float kShadow = 0.55F;
// Of what is selected, in pixels.
constexpr int kOutline = 2;

struct Rgb
{
    float red;
    float green;
    float blue;
};

Rgb rgbOf(std::uint32_t color) noexcept
{
    return {float((color >> 16U) & 0xffU), float((color >> 8U) & 0xffU), float(color & 0xffU)};
}

template <typename Work> void byRows(int rows, const Work &work)
{
    inParallel(std::size_t((rows + kRowsAtOnce - 1) / kRowsAtOnce), [&](std::size_t piece) {
        const int end = std::min(rows, int(piece + 1) * kRowsAtOnce);
        for (int y = int(piece) * kRowsAtOnce; y < end; ++y)
            work(y);
    });
}

} // namespace

void Resolver::castShadows(const Samples &samples, int perAxis, const Projection &projection,
                           float behind)
{
    const auto depthOf = [&](float key) {
        return key == Samples::kNothing ? behind : std::max(projection.depthOf(key), behind);
    };
    // The surroundings are much larger than a pixel: one place for each square of four will do.
    const int side = 2 * perAxis;
    const int width = (m_Width + 1) / 2;
    const int height = (m_Height + 1) / 2;
    m_Depths.resize(std::size_t(width) * std::size_t(height));
    byRows(height, [&](int y) {
        for (int x = 0; x < width; ++x) {
            const int sx = std::min(x * side + side / 2, samples.width() - 1);
            const int sy = std::min(y * side + side / 2, samples.height() - 1);
            m_Depths[std::size_t(y) * std::size_t(width) + std::size_t(x)] =
                depthOf(samples.keys[samples.at(sx, sy)]);
        }
    });
    const float halves = projection.scale() / float(side);
    blurDepths(m_Depths, width, height, int(std::clamp(kShadowReach * halves, 1.0F, 11.0F)));
    m_Light.resize(std::size_t(m_Width) * std::size_t(m_Height));
    byRows(m_Height, [&](int y) {
        const float *const around = &m_Depths[std::size_t(y / 2) * std::size_t(width)];
        for (int x = 0; x < m_Width; ++x) {
            float key = Samples::kNothing;
            for (int sy = y * perAxis; sy < (y + 1) * perAxis; ++sy)
                for (int sx = x * perAxis; sx < (x + 1) * perAxis; ++sx)
                    key = std::max(key, samples.keys[samples.at(sx, sy)]);
            std::uint8_t light = 255;
            if (key != Samples::kNothing) {
                const float nearer = around[x / 2] - depthOf(key);
                light = std::uint8_t(255 *
                                     (1 - std::clamp(nearer / kShadowFull, 0.0F, 1.0F) * kShadow));
            }
            m_Light[pixelAt(x, y)] = light;
        }
    });
}

void Resolver::look(const Samples &samples, int perAxis, const Projection &projection,
                    const DepthRange &range, const Look &look)
{
    m_Width = samples.width() / perAxis;
    m_Height = samples.height() / perAxis;
    const float behind = range.back;
    if (look.hasShadows)
        castShadows(samples, perAxis, projection, behind);
    else
        m_Light.assign(std::size_t(m_Width) * std::size_t(m_Height), 255);
    if (!look.hasOutlines)
        return;
    const int width = samples.width();
    const int height = samples.height();
    byRows(m_Height, [&](int y) {
        for (int x = 0; x < m_Width; ++x) {
            float line = 0;
            for (int sy = y * perAxis; sy < (y + 1) * perAxis; ++sy)
                for (int sx = x * perAxis; sx < (x + 1) * perAxis; ++sx) {
                    const float key = samples.keys[samples.at(sx, sy)];
                    if (key == Samples::kNothing)
                        continue;
                    float least = key;
                    if (sx > 0)
                        least = std::min(least, samples.keys[samples.at(sx - 1, sy)]);
                    if (sx + 1 < width)
                        least = std::min(least, samples.keys[samples.at(sx + 1, sy)]);
                    if (sy > 0)
                        least = std::min(least, samples.keys[samples.at(sx, sy - 1)]);
                    if (sy + 1 < height)
                        least = std::min(least, samples.keys[samples.at(sx, sy + 1)]);
                    if (least == key)
                        continue;
                    const float step = projection.depthOf(key) - (least == Samples::kNothing
                                                                      ? behind - kLineFull
                                                                      : projection.depthOf(least));
                    line +=
                        std::clamp((step - kLineBegins) / (kLineFull - kLineBegins), 0.0F, 1.0F);
                }
            if (line > 0) {
                std::uint8_t &light = m_Light[pixelAt(x, y)];
                const float share = line / float(perAxis * perAxis);
                light = std::uint8_t(float(light) * (1 - kLine * share));
            }
        }
    });
}

void Resolver::findCoverage(const Samples &samples, int perAxis, const Palette &palette,
                            std::uint8_t mark, Coverage &coverage) const
{
    coverage.rows.clear();
    if (std::none_of(palette.marks.begin(), palette.marks.end(),
                     [mark](std::uint8_t marks) { return (marks & mark) != 0; }))
        return;
    coverage.rows.assign(std::size_t(m_Height), {m_Width, 0});
    coverage.shares.resize(std::size_t(m_Width) * std::size_t(m_Height));
    const int most = perAxis * perAxis;
    byRows(m_Height, [&](int y) {
        Coverage::Stretch &stretch = coverage.rows[std::size_t(y)];
        std::uint8_t *const shares = &coverage.shares[pixelAt(0, y)];
        for (int x = 0; x < m_Width; ++x) {
            int count = 0;
            for (int sy = y * perAxis; sy < (y + 1) * perAxis; ++sy)
                for (int sx = x * perAxis; sx < (x + 1) * perAxis; ++sx)
                    count += int((palette.marks[samples.picks[samples.at(sx, sy)]] & mark) != 0);
            shares[x] = std::uint8_t(255 * count / most);
            if (count > 0) {
                stretch.begin = std::min(stretch.begin, x);
                stretch.end = x + 1;
            }
        }
    });
}

void Resolver::paintOutline(const Coverage &coverage, std::uint32_t color, int row,
                            std::uint32_t *pixels) const
{
    if (coverage.rows.empty())
        return;
    const int top = std::max(0, row - kOutline);
    const int bottom = std::min(m_Height - 1, row + kOutline);
    int begin = m_Width;
    int end = 0;
    for (int y = top; y <= bottom; ++y) {
        begin = std::min(begin, coverage.rows[std::size_t(y)].begin);
        end = std::max(end, coverage.rows[std::size_t(y)].end);
    }
    if (begin >= end)
        return;
    begin = std::max(0, begin - kOutline);
    end = std::min(m_Width, end + kOutline);
    const Rgb line = rgbOf(color);
    for (int x = begin; x < end; ++x) {
        const int own = coverage.shares[pixelAt(x, row)];
        if (own == 255)
            continue;
        int most = 0;
        for (int y = top; y <= bottom; ++y)
            for (int nx = std::max(0, x - kOutline); nx <= std::min(m_Width - 1, x + kOutline);
                 ++nx)
                // A disc rather than a square.
                if (std::abs(y - row) + std::abs(nx - x) < 2 * kOutline)
                    most = std::max<int>(most, coverage.shares[pixelAt(nx, y)]);
        if (most <= own)
            continue;
        const float share = float(most - own) / 255;
        const QRgb before = pixels[x];
        const auto drawn = [share](int value, float wanted) {
            return int(std::lrint(float(value) + (wanted - float(value)) * share));
        };
        pixels[x] = qRgba(drawn(qRed(before), line.red), drawn(qGreen(before), line.green),
                          drawn(qBlue(before), line.blue), drawn(qAlpha(before), 255));
    }
}

void Resolver::paint(const Samples &samples, int perAxis, const Projection &projection,
                     const DepthRange &range, const Look &look, const Palette &palette,
                     int firstRow, int rows, QImage &image, int imageRow, std::vector<Pick> &picks)
{
    findCoverage(samples, perAxis, palette, Palette::kSelected, m_Selected);
    findCoverage(samples, perAxis, palette, Palette::kPointed, m_Pointed);
    const Rgb ground = rgbOf(look.background);
    const float extent = range.front - range.back;
    const float fadeShare = look.hasDepthCue && extent > 0 ? kFade / extent : 0;
    const float share = 1 / float(perAxis * perAxis);
    const QRgb empty = look.isTransparent ? 0 : (look.background | 0xff000000U);
    // Beforehand, so that rows can be painted side by side.
    uchar *const bits = image.bits();
    const qsizetype bytesPerLine = image.bytesPerLine();
    byRows(rows, [&](int row) {
        const int y = firstRow + row;
        auto *const out = reinterpret_cast<QRgb *>(bits + qsizetype(imageRow + row) * bytesPerLine);
        Pick *const picked = &picks[std::size_t(imageRow + row) * std::size_t(m_Width)];
        for (int x = 0; x < m_Width; ++x) {
            Rgb sum{0, 0, 0};
            int covered = 0;
            float nearest = Samples::kNothing;
            Pick pick = 0;
            const float left = float(m_Light[pixelAt(x, y)]) * (1 / 255.0F);
            for (int sy = y * perAxis; sy < (y + 1) * perAxis; ++sy)
                for (int sx = x * perAxis; sx < (x + 1) * perAxis; ++sx) {
                    const std::size_t at = samples.at(sx, sy);
                    const float key = samples.keys[at];
                    if (key == Samples::kNothing)
                        continue;
                    ++covered;
                    if (key > nearest) {
                        nearest = key;
                        pick = samples.picks[at];
                    }
                    const Rgb own = rgbOf(palette.colors[samples.picks[at]]);
                    const std::uint16_t shade = samples.shades[at];
                    const float light =
                        (kAmbient + kDiffuse * float(shade & 0xffU) * (1 / 255.0F)) * left;
                    const float mirrored = kMirrored * float(shade >> 8U) * left;
                    float fade = 0;
                    if (fadeShare > 0 && !look.isTransparent)
                        fade = std::clamp((range.front - projection.depthOf(key)) * fadeShare, 0.0F,
                                          kFade);
                    const auto lit = [&](float value, float back) {
                        const float bright = std::min(255.0F, value * light + mirrored);
                        return bright + (back - bright) * fade;
                    };
                    sum.red += lit(own.red, ground.red);
                    sum.green += lit(own.green, ground.green);
                    sum.blue += lit(own.blue, ground.blue);
                }
            picked[x] = pick;
            if (covered == 0) {
                out[x] = empty;
                continue;
            }
            // Premultiplied by the alpha already, as it is summed over what is covered.
            const float alpha = float(covered) * share;
            const float uncovered = look.isTransparent ? 0 : 1 - alpha;
            const auto mixed = [&](float value, float back) {
                return int(std::lrint(value * share + back * uncovered));
            };
            out[x] = qRgba(mixed(sum.red, ground.red), mixed(sum.green, ground.green),
                           mixed(sum.blue, ground.blue),
                           look.isTransparent ? int(std::lrint(alpha * 255)) : 255);
        }
        paintOutline(m_Selected, palette.selectedOutline, y, out);
        paintOutline(m_Pointed, palette.pointedOutline, y, out);
    });
}

} // namespace structures
