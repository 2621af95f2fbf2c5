// SPDX-License-Identifier: GPL-3.0-or-later
// Colours of residues as bytes, in the form in which they are kept.
#include "ObjectReader.h"
#include "ResidueColors.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

void ResidueColors::write(ObjectWriter &out) const
{
    out.flag(!m_Wide.empty());
    if (!m_Wide.empty()) {
        out.words(m_Wide);
        return;
    }
    out.palette(m_Palette);
    out.raw({reinterpret_cast<const char *>(m_Small.data()), m_Small.size()});
}

std::unique_ptr<ResidueColors> ResidueColors::read(ObjectReader &in, std::size_t count)
{
    const auto isColored = [](auto entry) { return entry != 0; };
    auto made = std::make_unique<ResidueColors>(0);
    if (in.flag()) {
        if (count > in.left() / sizeof(WideValue)) {
            in.fail("colors are missing");
            return made;
        }
        made->m_Wide.resize(count);
        in.words(made->m_Wide);
        constexpr WideValue kMost = kOwnColor | (kOwnColor - 1);
        if (std::ranges::any_of(made->m_Wide, [](WideValue value) {
                return value > kMost || (value != 0 && (value & kOwnColor) == 0);
            }))
            in.fail("a color is damaged");
        made->m_Colored = std::size_t(std::ranges::count_if(made->m_Wide, isColored));
        return made;
    }
    made->m_Palette = in.palette(kMostOfPalette);
    const std::string_view entries = in.raw(count);
    made->m_Small.assign(entries.begin(), entries.end());
    const std::size_t known = made->m_Palette == nullptr ? 0 : made->m_Palette->size();
    if (std::ranges::any_of(made->m_Small, [known](std::uint8_t entry) { return entry > known; }))
        in.fail("a color is not among those of the sequence");
    made->m_Colored = std::size_t(std::ranges::count_if(made->m_Small, isColored));
    return made;
}

} // namespace TAMBO
