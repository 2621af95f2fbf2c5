// SPDX-License-Identifier: GPL-3.0-or-later
#include "Lighting.h"

#include "RowWork.h"

namespace structures {

namespace {

// What is in the shade.
constexpr float kAmbient = 0.32F;
constexpr float kDiffuse = 0.72F;
constexpr float kMirrored = 0.28F;
// How much of what is farthest away fades.
constexpr float kFade = 0.72F;

} // namespace

Lighting::Lighting(const DepthRange &range, const Look &look, const Palette &palette,
                   float eyeDistance) noexcept
    : m_Ground(rgbOf(look.background)),
      m_Empty(look.isTransparent ? 0 : (look.background | 0xff000000U)),
      m_Front(range.front),
      m_Fade(look.hasDepthCue && !look.isTransparent && range.front > range.back
                 ? kFade / (range.front - range.back)
                 : 0),
      m_EyeDistance(eyeDistance),
      m_Colors(palette.colors.data())
{ }

template <bool kIsPerspective>
void Lighting::paint(const float *keys, const Pick *picks, const std::uint16_t *shades,
                     const float *left, int count, std::uint32_t *out) const noexcept
{
    // By themselves, since they are anywhere; all else is side by side.
    for (int i = 0; i < count; ++i)
        out[i] = m_Colors[picks[i]];
    const Rgb ground = m_Ground;
    const std::uint32_t empty = m_Empty;
    const float front = m_Front;
    const float fadeShare = m_Fade;
    const float eyeDistance = m_EyeDistance;
    for (int i = 0; i < count; ++i) {
        const std::uint32_t color = out[i];
        const std::uint32_t shade = shades[i];
        const float diffuse = (kAmbient + kDiffuse / 255 * float(int(shade & 0xffU))) * left[i];
        const float mirrored = kMirrored * float(int(shade >> 8U)) * left[i] + 0.5F;
        float fade = (front - depthOf<kIsPerspective>(keys[i], eyeDistance)) * fadeShare;
        fade = fade > 0 ? fade : 0.0F;
        fade = fade < kFade ? fade : kFade;
        const auto lit = [&](std::uint32_t value, float back) {
            float bright = float(int(value & 0xffU)) * diffuse + mirrored;
            bright = bright < 255.5F ? bright : 255.5F;
            return std::uint32_t(int(bright + (back + 0.5F - bright) * fade));
        };
        const std::uint32_t painted = 0xff000000U | (lit(color >> 16U, ground.red) << 16U) |
                                      (lit(color >> 8U, ground.green) << 8U) |
                                      lit(color, ground.blue);
        out[i] = keys[i] == Samples::kNothing ? empty : painted;
    }
}

template void Lighting::paint<false>(const float *, const Pick *, const std::uint16_t *,
                                     const float *, int, std::uint32_t *) const noexcept;
template void Lighting::paint<true>(const float *, const Pick *, const std::uint16_t *,
                                    const float *, int, std::uint32_t *) const noexcept;

} // namespace structures
