// SPDX-License-Identifier: GPL-3.0-or-later
#include "TypeColors.h"

#include "Texts.h"

#include <array>
#include <string>
#include <string_view>

namespace companion {

namespace {

struct TypeGroup
{
    std::string_view letters;
    Color color;
};

// As the workbench gives them: a test compares them.
constexpr std::array<TypeGroup, 12> kTypeGroups = {{{"ILMVJ", Color(0xeec280)},
                                                    {"A", Color(0xf5e0b8)},
                                                    {"G", Color(0xa0b5bb)},
                                                    {"P", Color(0xffc4e8)},
                                                    {"FWY", Color(0x8f69b0)},
                                                    {"CU", Color(0x7d6607)},
                                                    {"ST", Color(0xb9e3c7)},
                                                    {"NQ", Color(0x5fad89)},
                                                    {"DE", Color(0xe45739)},
                                                    {"BZ", Color(0xe59a8f)},
                                                    {"KRO", Color(0x376ec9)},
                                                    {"H", Color(0x8dc3fd)}}};
constexpr Color kOfOthers(0xdcdcdc);

} // namespace

Color typeColor(char letter) noexcept
{
    const char capital = letter >= 'a' && letter <= 'z' ? char(letter - 'a' + 'A') : letter;
    for (const TypeGroup &group : kTypeGroups)
        if (group.letters.find(capital) != std::string_view::npos)
            return group.color;
    return kOfOthers;
}

Legend typeLegend()
{
    Legend legend{tr("Residue type").toStdString(), {}, {}, {}};
    for (const TypeGroup &group : kTypeGroups) {
        std::string label;
        for (const char letter : group.letters)
            label += (label.empty() ? "" : " ") + std::string(1, letter);
        legend.entries.push_back({label, group.color, {}});
    }
    legend.entries.push_back({tr("others").toStdString(), kOfOthers, {}});
    return legend;
}

} // namespace companion
