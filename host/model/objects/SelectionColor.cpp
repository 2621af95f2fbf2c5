// SPDX-License-Identifier: GPL-3.0-or-later
#include "SelectionColor.h"

#include "Revisions.h"

namespace TAMBO {

namespace {

constexpr unsigned kFull = 255;

struct Parts
{
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
};

constexpr Parts partsOf(Color color) noexcept
{
    constexpr unsigned kByte = 8;
    return {color.rgb() >> (2 * kByte), color.rgb() >> kByte & kFull, color.rgb() & kFull};
}

template <typename Change>
constexpr Parts changed(const Parts &parts, const Change &change) noexcept
{
    return {change(parts.red), change(parts.green), change(parts.blue)};
}

// What is mixed in, and how many parts of kWhole it has; the rest is the own colour.
struct Mixture
{
    static constexpr unsigned kWhole = 32;

    Parts color;
    unsigned share;
};

// Most colours of most schemes are light, so a dark colour is far from all of them. It has to be so
// dark because pure red is a dark brown to those who see no green or no red.
constexpr Mixture makeShade(Color selection) noexcept
{
    constexpr unsigned kShare = 31;
    constexpr unsigned kLightness = 3;
    const auto darken = [](unsigned part) {
        return (part * kLightness + Mixture::kWhole / 2) / Mixture::kWhole;
    };
    return {changed(partsOf(selection), darken), kShare};
}

// On dark colours. Maps that go from dark to light are yellowish at their light ends, which a tint
// of a yellow would be too near to.
constexpr Mixture makeTint(Color selection) noexcept
{
    constexpr unsigned kShare = 29;
    constexpr unsigned kDepth = 30;
    constexpr unsigned kPercent = 100;
    const auto oppose = [](unsigned part) {
        return kFull - (part * kDepth + kPercent / 2) / kPercent;
    };
    return {changed(partsOf(selection), oppose), kShare};
}

struct Mixtures
{
    Mixture shade;
    Mixture tint;
};

constexpr Mixtures makeMixtures(Color selection) noexcept
{
    return {makeShade(selection), makeTint(selection)};
}

constexpr unsigned kBrightYellow = 0xffff00;
Mixtures s_Mixtures = makeMixtures(Color(kBrightYellow));

// As cells show it.
constexpr Parts overWhite(Color color) noexcept
{
    constexpr unsigned kAlphaShift = 24;
    const Parts parts = partsOf(color);
    if (color.isOpaque())
        return parts;
    const unsigned alpha = color.argb() >> kAlphaShift;
    return changed(parts,
                   [alpha](unsigned part) { return kFull - (kFull - part) * alpha / kFull; });
}

// Luminance below 1/16. x * x * (3 + x) / 4 is the luminance of a part, near enough.
constexpr bool isDark(const Parts &parts) noexcept
{
    using Light = unsigned long long;
    constexpr Light kLightest = Light(256) * kFull * kFull * (4 * kFull);
    const auto light = [](Light part) { return part * part * (3 * kFull + part); };
    return 16 * (54 * light(parts.red) + 183 * light(parts.green) + 19 * light(parts.blue)) <
           kLightest;
}

} // namespace

void setSelectionColor(Color color) noexcept
{
    s_Mixtures = makeMixtures(color);
    growSelectionRevision();
}

Color selectedColor(Color color) noexcept
{
    const Parts own = overWhite(color);
    const Mixture &mixture = isDark(own) ? s_Mixtures.tint : s_Mixtures.shade;
    const auto mix = [&mixture](unsigned part, unsigned with) {
        const unsigned sum = part * (Mixture::kWhole - mixture.share) + with * mixture.share;
        return (sum + Mixture::kWhole / 2) / Mixture::kWhole;
    };
    return Color(mix(own.red, mixture.color.red) << 16 | mix(own.green, mixture.color.green) << 8 |
                 mix(own.blue, mixture.color.blue));
}

} // namespace TAMBO
