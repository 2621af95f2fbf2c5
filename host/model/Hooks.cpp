// SPDX-License-Identifier: GPL-3.0-or-later
#include "Hooks.h"

#include "Revisions.h"
#include "SelectionColor.h"

namespace TAMBO {

namespace {

constexpr unsigned kBrightYellow = 0xffff00;
Color s_SelectionColor(kBrightYellow);

} // namespace

ModelHooks &modelHooks() noexcept
{
    // Never destroyed: objects may still ask while the program ends.
    static auto *const hooks = new ModelHooks;
    return *hooks;
}

void setSelectionColor(Color color) noexcept
{
    s_SelectionColor = color;
    growSelectionRevision();
}

Color selectedColor(Color color) noexcept
{
    // The halves without carries between the channels.
    constexpr unsigned kWithoutLowBits = 0xfefefefe;
    const unsigned a = color.argb();
    const unsigned b = s_SelectionColor.argb();
    return Color((a & b) + (((a ^ b) & kWithoutLowBits) >> 1));
}

} // namespace TAMBO
