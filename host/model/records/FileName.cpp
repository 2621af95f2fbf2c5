// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileName.h"

namespace TAMBO {

namespace {

// File systems allow 255 bytes, of which the endings need a few.
constexpr std::size_t kLongest = 240;

bool isContinuation(char character) noexcept
{
    return (static_cast<unsigned char>(character) & 0xc0U) == 0x80U;
}

// File dialogs take quotation marks for the bounds of several names.
bool isUsable(char character) noexcept
{
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x20 && byte != 0x7f && character != '/' && character != '"';
}

} // namespace

std::string fileNameOf(const std::string &name)
{
    std::string result = name;
    for (char &character : result) {
        if (!isUsable(character))
            character = '_';
    }
    // Somebody's home folder.
    if (result.starts_with('~'))
        result.front() = '_';
    if (result.size() > kLongest) {
        std::size_t end = kLongest;
        while (end > 0 && isContinuation(result[end]))
            --end;
        result.resize(end);
    }
    return result;
}

} // namespace TAMBO
