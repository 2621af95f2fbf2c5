// SPDX-License-Identifier: GPL-3.0-or-later
#include "AminoAcids.h"

#include <array>

namespace TAMBO {

namespace {

struct AminoAcid
{
    std::string_view name = "UNK";
    Color color{0xdcdcdc};
};

// Groups differ in lightness as well as in hue, so that they are told apart without full colour
// vision; acids stay red and bases blue as everywhere. No group is near the yellow of the selection
// or the white of a gap.
constexpr unsigned kSmall = 0xa0b5bb;
constexpr unsigned kAliphatic = 0xeec280;
constexpr unsigned kAromatic = 0x8f69b0;
constexpr unsigned kSulphur = 0x7d6607;
constexpr unsigned kProline = 0xffc4e8;
constexpr unsigned kHydroxyl = 0xb9e3c7;
constexpr unsigned kAmide = 0x5fad89;
constexpr unsigned kAcid = 0xe45739;
constexpr unsigned kBase = 0x376ec9;
constexpr unsigned kHistidine = 0x8dc3fd;

constexpr std::array<AminoAcid, 26> makeTable()
{
    std::array<AminoAcid, 26> table;
    const auto set = [&table](char letter, std::string_view name, unsigned rgb) {
        table[static_cast<std::size_t>(letter - 'A')] = {name, Color(rgb)};
    };
    set('A', "ALA", 0xf5e0b8);
    set('B', "ASX", 0xe59a8f);
    set('C', "CYS", kSulphur);
    set('D', "ASP", kAcid);
    set('E', "GLU", kAcid);
    set('F', "PHE", kAromatic);
    set('G', "GLY", kSmall);
    set('H', "HIS", kHistidine);
    set('I', "ILE", kAliphatic);
    set('J', "XLE", kAliphatic);
    set('K', "LYS", kBase);
    set('L', "LEU", kAliphatic);
    set('M', "MET", kAliphatic);
    set('N', "ASN", kAmide);
    set('O', "PYL", kBase);
    set('P', "PRO", kProline);
    set('Q', "GLN", kAmide);
    set('R', "ARG", kBase);
    set('S', "SER", kHydroxyl);
    set('T', "THR", kHydroxyl);
    set('U', "SEC", kSulphur);
    set('V', "VAL", kAliphatic);
    set('W', "TRP", kAromatic);
    set('Y', "TYR", kAromatic);
    set('Z', "GLX", 0xe59a8f);
    return table;
}

constexpr std::array<AminoAcid, 26> kAminoAcids = makeTable();
constexpr AminoAcid kUnknown;

constexpr const AminoAcid &aminoAcid(char letter) noexcept
{
    if (letter >= 'A' && letter <= 'Z')
        return kAminoAcids[static_cast<std::size_t>(letter - 'A')];
    if (letter >= 'a' && letter <= 'z')
        return kAminoAcids[static_cast<std::size_t>(letter - 'a')];
    return kUnknown;
}

} // namespace

std::string_view aminoAcidName(char letter) noexcept
{
    return aminoAcid(letter).name;
}

Color aminoAcidColor(char letter) noexcept
{
    return aminoAcid(letter).color;
}

} // namespace TAMBO
