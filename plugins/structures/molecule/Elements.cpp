// SPDX-License-Identifier: GPL-3.0-or-later
#include "Elements.h"

namespace structures {

namespace {

constexpr ElementFacts kUnknown{{'?', '\0'}, 1.7F, 0.76F, 0xd060b0, false};

constexpr ElementFacts kElements[] = {
    {{'H', '\0'}, 1.10F, 0.31F, 0xf0f0f0, false}, {{'D', '\0'}, 1.10F, 0.31F, 0xf0f0f0, false},
    {{'C', '\0'}, 1.70F, 0.76F, 0x909090, false}, {{'N', '\0'}, 1.55F, 0.71F, 0x3355ee, false},
    {{'O', '\0'}, 1.52F, 0.66F, 0xe63020, false}, {{'F', '\0'}, 1.47F, 0.57F, 0x70d060, false},
    {{'P', '\0'}, 1.80F, 1.07F, 0xff8c1a, false}, {{'S', '\0'}, 1.80F, 1.05F, 0xe8c832, false},
    {{'C', 'L'}, 1.75F, 1.02F, 0x30c030, false},  {{'S', 'E'}, 1.90F, 1.20F, 0xe0902a, false},
    {{'B', 'R'}, 1.85F, 1.20F, 0xa03020, false},  {{'I', '\0'}, 1.98F, 1.39F, 0x802090, false},
    {{'B', '\0'}, 1.92F, 0.84F, 0xf0b0a0, false}, {{'S', 'I'}, 2.10F, 1.11F, 0xd8b890, false},
    {{'A', 'S'}, 1.85F, 1.19F, 0xb070d0, false},  {{'L', 'I'}, 2.12F, 1.28F, 0xb070f0, true},
    {{'N', 'A'}, 2.50F, 1.66F, 0x9050e0, true},   {{'M', 'G'}, 2.51F, 1.41F, 0x30b020, true},
    {{'A', 'L'}, 2.25F, 1.21F, 0xb0a0a0, true},   {{'K', '\0'}, 2.73F, 2.03F, 0x8040c0, true},
    {{'C', 'A'}, 2.62F, 1.76F, 0x40b050, true},   {{'M', 'N'}, 2.45F, 1.50F, 0x9070b8, true},
    {{'F', 'E'}, 2.44F, 1.42F, 0xd06030, true},   {{'C', 'O'}, 2.40F, 1.38F, 0xe080a0, true},
    {{'N', 'I'}, 2.40F, 1.24F, 0x50c050, true},   {{'C', 'U'}, 2.38F, 1.32F, 0xc07838, true},
    {{'Z', 'N'}, 2.39F, 1.22F, 0x7880a8, true},   {{'M', 'O'}, 2.45F, 1.54F, 0x50b0b0, true},
    {{'C', 'D'}, 2.49F, 1.44F, 0xd8c080, true},   {{'H', 'G'}, 2.45F, 1.32F, 0xa0a0b8, true},
    {{'S', 'R'}, 2.84F, 1.95F, 0x30d040, true},   {{'C', 'S'}, 3.48F, 2.44F, 0x601890, true},
    {{'P', 'T'}, 2.29F, 1.36F, 0xa0a0c0, true},   {{'A', 'U'}, 2.32F, 1.36F, 0xe8c020, true},
    {{'W', '\0'}, 2.57F, 1.62F, 0x3098d0, true},  {{'V', '\0'}, 2.42F, 1.53F, 0xa0a0a8, true},
    {{'Y', 'B'}, 2.79F, 1.87F, 0x20b870, true},   {{'S', 'M'}, 2.90F, 1.98F, 0x70d8b0, true},
};

} // namespace

const ElementFacts &factsOf(std::array<char, 2> symbol) noexcept
{
    for (const ElementFacts &facts : kElements)
        if (facts.symbol == symbol)
            return facts;
    return kUnknown;
}

} // namespace structures
