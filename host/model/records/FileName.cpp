// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileName.h"

#include "Text.h"

namespace TAMBO {

namespace {

// File systems allow 255 bytes, of which the endings need a few.
constexpr std::size_t kLongest = 240;

// File dialogs take quotation marks for the bounds of several names.
bool isUsable(char character) noexcept
{
    return !isControl(character) && character != '/' && character != '"';
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
    result.resize(shortened(result, kLongest).size());
    return result;
}

} // namespace TAMBO
