// SPDX-License-Identifier: GPL-3.0-or-later
#include "WriteOptions.h"

#include "Text.h"

#include <algorithm>
#include <array>

namespace TAMBO {

namespace {

struct Variant
{
    std::string_view name;
    bool hasLongNames;
    bool isSequential;
};
constexpr std::array kPhylipVariants =
    std::to_array<Variant>({{"phylip-relaxed", true, false},
                            {"phylip-sequential", false, true},
                            {"phylip-relaxed-sequential", true, true}});

} // namespace

std::optional<WriteOptions> writeOptionsNamed(std::string_view name)
{
    WriteOptions options;
    for (const FormatEntry &entry : kFormats) {
        if (entry.name == name) {
            options.format = entry.format;
            return options;
        }
    }
    for (const Variant &variant : kPhylipVariants) {
        if (variant.name == name) {
            options.format = FileFormat::Phylip;
            options.hasLongNames = variant.hasLongNames;
            options.isSequential = variant.isSequential;
            return options;
        }
    }
    return std::nullopt;
}

std::vector<std::string_view> writeFormatNames()
{
    std::vector<std::string_view> names;
    for (const FormatEntry &entry : kFormats) {
        names.push_back(entry.name);
        if (entry.format == FileFormat::Phylip)
            for (const Variant &variant : kPhylipVariants)
                names.push_back(variant.name);
    }
    return names;
}

std::string withEndingOf(std::string name, FileFormat format)
{
    const std::optional<WriteOptions> known = writeOptionsFor(name);
    if (known && known->format == format)
        return name;
    std::string compressed;
    if (std::filesystem::path(lowerCase(name)).extension() == kCompressedEnding) {
        compressed = name.substr(name.size() - kCompressedEnding.size());
        name.resize(name.size() - compressed.size());
    }
    if (known)
        name.resize(name.rfind('.'));
    return name.append(fileEndings(format).front()).append(compressed);
}

std::optional<WriteOptions> writeOptionsFor(const std::filesystem::path &file)
{
    std::filesystem::path name = lowerCase(file.filename().string());
    if (name.extension() == kCompressedEnding)
        name.replace_extension();
    const std::string ending = name.extension().string();
    for (const FormatEntry &entry : kFormats) {
        if (std::ranges::find(entry.endings(), ending) != entry.endings().end())
            return WriteOptions{entry.format};
    }
    return std::nullopt;
}

} // namespace TAMBO
