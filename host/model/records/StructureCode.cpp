// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureCode.h"

#include "FormatTable.h"
#include "Text.h"

#include <algorithm>

namespace TAMBO {

namespace {

bool strip(std::string &name, std::string_view ending)
{
    const bool has = name.size() > ending.size() && name.ends_with(ending);
    if (has)
        name.resize(name.size() - ending.size());
    return has;
}

// In lower case.
void stripEndings(std::string &name)
{
    static const std::vector<std::string_view> endings = endingsOf(FormatKind::Structures);
    strip(name, kCompressedEnding);
    std::ranges::any_of(endings, [&](std::string_view ending) { return strip(name, ending); });
}

} // namespace

std::string structureCode(std::string_view name)
{
    std::string code = lowerCase(withoutDirectories(name));
    stripEndings(code);
    constexpr std::size_t archiveName = 7;
    if (code.size() == archiveName && code.starts_with("pdb") && code[3] >= '0' && code[3] <= '9')
        code.erase(0, 3);
    return code;
}

std::optional<ChainName> chainNameOf(std::string_view name)
{
    // Identifiers of chains are this long at most.
    constexpr std::size_t longest = 4;
    std::string bare = lowerCase(withoutDirectories(name));
    stripEndings(bare);
    const std::string_view asWritten = withoutDirectories(name).substr(0, bare.size());
    const std::size_t line = asWritten.rfind('_');
    if (line == std::string_view::npos || line == 0 || line + 1 == asWritten.size() ||
        asWritten.size() - line - 1 > longest)
        return std::nullopt;
    return ChainName{std::string(asWritten.substr(0, line)),
                     std::string(asWritten.substr(line + 1))};
}

} // namespace TAMBO
