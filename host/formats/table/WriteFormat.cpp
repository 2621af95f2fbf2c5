// SPDX-License-Identifier: GPL-3.0-or-later
#include "WriteFormat.h"

#include "FileEndings.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace TAMBO {

namespace {

struct Entry
{
    WriteFormat format;
    std::string_view name;
    std::string_view title;
    std::string_view article;
};

constexpr std::array kEntries =
    std::to_array<Entry>({{WriteFormat::Pir, "pir", "PIR", "a"},
                          {WriteFormat::Fasta, "fasta", "FASTA", "a"},
                          {WriteFormat::A2m, "a2m", "A2M", "an"},
                          {WriteFormat::A3m, "a3m", "A3M", "an"},
                          {WriteFormat::Clustal, "clustal", "Clustal", "a"},
                          {WriteFormat::Stockholm, "stockholm", "Stockholm", "a"},
                          {WriteFormat::Msf, "msf", "MSF", "an"},
                          {WriteFormat::Phylip, "phylip", "PHYLIP", "a"},
                          {WriteFormat::Pdb, "pdb", "PDB", "a"},
                          {WriteFormat::Mmcif, "mmcif", "mmCIF", "an"}});

const Entry &entryOf(WriteFormat format)
{
    return *std::find_if(kEntries.begin(), kEntries.end(),
                         [format](const Entry &entry) { return entry.format == format; });
}

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

std::string lowerCase(std::string text)
{
    for (char &character : text)
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    return text;
}

} // namespace

std::optional<WriteOptions> writeOptionsNamed(std::string_view name)
{
    WriteOptions options;
    for (const Entry &entry : kEntries) {
        if (entry.name == name) {
            options.format = entry.format;
            return options;
        }
    }
    for (const Variant &variant : kPhylipVariants) {
        if (variant.name == name) {
            options.format = WriteFormat::Phylip;
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
    for (const Entry &entry : kEntries) {
        names.push_back(entry.name);
        if (entry.format == WriteFormat::Phylip)
            for (const Variant &variant : kPhylipVariants)
                names.push_back(variant.name);
    }
    return names;
}

std::optional<WriteOptions> writeOptionsFor(const std::filesystem::path &file)
{
    std::filesystem::path name = lowerCase(file.filename().string());
    if (name.extension() == kCompressedEnding)
        name.replace_extension();
    const std::string ending = name.extension().string();
    for (const Entry &entry : kEntries) {
        const std::vector<std::string_view> &endings = endingsOf(entry.name);
        if (std::find(endings.begin(), endings.end(), ending) != endings.end())
            return WriteOptions{entry.format};
    }
    return std::nullopt;
}

std::string formatTitle(WriteFormat format)
{
    return std::string(entryOf(format).title);
}

std::string fileOf(WriteFormat format)
{
    const Entry &entry = entryOf(format);
    return std::string(entry.article) + ' ' + std::string(entry.title) + " file";
}

std::vector<std::string_view> fileEndings(WriteFormat format)
{
    return endingsOf(entryOf(format).name);
}

bool isStructureFormat(WriteFormat format) noexcept
{
    return format == WriteFormat::Pdb || format == WriteFormat::Mmcif;
}

bool holdsSeveral(WriteFormat format) noexcept
{
    return format == WriteFormat::Stockholm || format == WriteFormat::Phylip;
}

bool holdsDescriptions(WriteFormat format) noexcept
{
    switch (format) {
    case WriteFormat::Pir:
    case WriteFormat::Fasta:
    case WriteFormat::A2m:
    case WriteFormat::A3m:
    case WriteFormat::Stockholm:
        return true;
    default:
        return false;
    }
}

} // namespace TAMBO
