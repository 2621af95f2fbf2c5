// SPDX-License-Identifier: GPL-3.0-or-later
// All file formats: what they are called, how their files end, and what a file of each can hold.
// Whoever reads, writes, offers or explains formats asks here. A file is known by its content;
// endings serve where there is none to look at: a file that is to be found, offered or written.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

enum class FileFormat : unsigned char {
    Pir,
    Fasta,
    A2m,
    A3m,
    Clustal,
    Stockholm,
    Msf,
    Phylip,
    Nexus,
    Pdb,
    Mmcif
};

enum class FormatKind : unsigned char { Alignments, Structures };

// What not every format can hold of an alignment or a structure. The rest is lost when a file is
// written.
enum class Content : unsigned {
    // Of alignments.
    Several = 1U << 0U,
    Unaligned = 1U << 1U,
    SmallLetters = 1U << 2U,
    EqualNames = 1U << 3U,
    EmptyNames = 1U << 4U,
    Descriptions = 1U << 5U,
    StructureTies = 1U << 6U,
    ResidueNumbers = 1U << 7U,
    ChainBreaks = 1U << 8U,
    Annotation = 1U << 9U,
    // Of structures.
    LongFields = 1U << 10U,
    ExactPlaces = 1U << 11U
};

constexpr unsigned operator|(Content a, Content b) noexcept
{
    return static_cast<unsigned>(a) | static_cast<unsigned>(b);
}

constexpr unsigned operator|(unsigned a, Content b) noexcept
{
    return a | static_cast<unsigned>(b);
}

struct ContentEntry
{
    Content content;
    // As the page about formats has it.
    std::string_view title;
    FormatKind kind;
};

inline constexpr std::array kContents = std::to_array<ContentEntry>({
    {Content::Several, "several alignments", FormatKind::Alignments},
    {Content::Unaligned, "sequences that are not aligned", FormatKind::Alignments},
    {Content::SmallLetters, "small letters in any column", FormatKind::Alignments},
    {Content::EqualNames, "equal names", FormatKind::Alignments},
    {Content::EmptyNames, "rows without a name", FormatKind::Alignments},
    {Content::Descriptions, "descriptions", FormatKind::Alignments},
    {Content::StructureTies, "ties to structures", FormatKind::Alignments},
    {Content::ResidueNumbers, "residue numbers of structures", FormatKind::Alignments},
    {Content::ChainBreaks, "breaks between chains", FormatKind::Alignments},
    {Content::Annotation, "annotation", FormatKind::Alignments},
    {Content::LongFields, "names and numbers of any length", FormatKind::Structures},
    {Content::ExactPlaces, "places to the last digit", FormatKind::Structures},
});

// Whether people are asked how wide the lines are to be.
enum class Lines : unsigned char { Fixed, Asked };

struct FormatEntry
{
    FileFormat format;
    // What a file of it is told to be of. Not every format can be told from another one.
    FileFormat readAs;
    FormatKind kind;
    Lines lines;
    // In commands, and of a file that was read.
    std::string_view name;
    // For people, with its article.
    std::string_view article;
    std::string_view title;
    // Contents, one behind the other.
    unsigned contents;
    // In lower case with the dot, the usual one first.
    std::array<std::string_view, 6> possibleEndings;

    [[nodiscard]] constexpr std::span<const std::string_view> endings() const noexcept
    {
        return {possibleEndings.begin(), std::ranges::find(possibleEndings, std::string_view())};
    }
    // Whether files are told to be of it.
    [[nodiscard]] constexpr bool isRecognised() const noexcept { return readAs == format; }
    [[nodiscard]] constexpr bool holds(Content content) const noexcept
    {
        return (contents & static_cast<unsigned>(content)) != 0;
    }
};

// What the formats with a line a row have in common, and those with blocks.
inline constexpr unsigned kInsertionContents = Content::EqualNames | Content::Descriptions;
inline constexpr unsigned kFastaContents =
    kInsertionContents | Content::SmallLetters | Content::Unaligned;
inline constexpr unsigned kPirContents = kFastaContents | Content::EmptyNames |
                                         Content::StructureTies | Content::ResidueNumbers |
                                         Content::ChainBreaks;
inline constexpr unsigned kBlockContents = static_cast<unsigned>(Content::SmallLetters);
inline constexpr unsigned kStockholmContents =
    kBlockContents | Content::Several | Content::Descriptions | Content::Annotation;
inline constexpr unsigned kPhylipContents = kBlockContents | Content::Several;
inline constexpr unsigned kMmcifContents = Content::LongFields | Content::ExactPlaces;

// In the order of FileFormat.
// clang-format off
inline constexpr std::array kFormats = std::to_array<FormatEntry>({
    {FileFormat::Pir, FileFormat::Pir, FormatKind::Alignments, Lines::Asked,
     "pir", "a", "PIR", kPirContents, {".ali", ".pir"}},
    {FileFormat::Fasta, FileFormat::Fasta, FormatKind::Alignments, Lines::Asked,
     "fasta", "a", "FASTA", kFastaContents, {".fasta", ".fa", ".fas", ".afa", ".mfa", ".faa"}},
    {FileFormat::A2m, FileFormat::Fasta, FormatKind::Alignments, Lines::Asked,
     "a2m", "an", "A2M", kInsertionContents, {".a2m"}},
    {FileFormat::A3m, FileFormat::A3m, FormatKind::Alignments, Lines::Asked,
     "a3m", "an", "A3M", kInsertionContents, {".a3m"}},
    {FileFormat::Clustal, FileFormat::Clustal, FormatKind::Alignments, Lines::Asked,
     "clustal", "a", "Clustal", kBlockContents, {".aln", ".clustal", ".clw"}},
    {FileFormat::Stockholm, FileFormat::Stockholm, FormatKind::Alignments, Lines::Fixed,
     "stockholm", "a", "Stockholm", kStockholmContents, {".sto", ".stk", ".stockholm", ".pfam"}},
    {FileFormat::Msf, FileFormat::Msf, FormatKind::Alignments, Lines::Fixed,
     "msf", "an", "MSF", kBlockContents, {".msf"}},
    {FileFormat::Phylip, FileFormat::Phylip, FormatKind::Alignments, Lines::Asked,
     "phylip", "a", "PHYLIP", kPhylipContents, {".phy", ".phylip"}},
    {FileFormat::Nexus, FileFormat::Nexus, FormatKind::Alignments, Lines::Asked,
     "nexus", "a", "NEXUS", kBlockContents, {".nex", ".nexus", ".nxs"}},
    {FileFormat::Pdb, FileFormat::Pdb, FormatKind::Structures, Lines::Fixed,
     "pdb", "a", "PDB", 0, {".pdb", ".ent"}},
    {FileFormat::Mmcif, FileFormat::Mmcif, FormatKind::Structures, Lines::Fixed,
     "mmcif", "an", "mmCIF", kMmcifContents, {".cif", ".mmcif"}},
});
// clang-format on

[[nodiscard]] constexpr const FormatEntry &entryOf(FileFormat format) noexcept
{
    return kFormats[static_cast<std::size_t>(format)];
}

[[nodiscard]] constexpr bool holds(FileFormat format, Content content) noexcept
{
    return entryOf(format).holds(content);
}

[[nodiscard]] constexpr bool isStructureFormat(FileFormat format) noexcept
{
    return entryOf(format).kind == FormatKind::Structures;
}

[[nodiscard]] constexpr std::span<const std::string_view> fileEndings(FileFormat format) noexcept
{
    return kFormats[static_cast<std::size_t>(format)].endings();
}

// "pir", for commands.
[[nodiscard]] inline std::string formatName(FileFormat format)
{
    return std::string(entryOf(format).name);
}

// "PIR", for people.
[[nodiscard]] inline std::string formatTitle(FileFormat format)
{
    return std::string(entryOf(format).title);
}

// "a PIR file", "an MSF file".
[[nodiscard]] inline std::string fileOf(FileFormat format)
{
    const FormatEntry &entry = entryOf(format);
    return std::string(entry.article).append(" ").append(entry.title).append(" file");
}

// "PDB, mmCIF": the titles of those that are asked for.
template <typename Property>
[[nodiscard]] std::string formatTitles(Property isAskedFor, std::string_view between = ", ")
{
    std::string titles;
    for (const FormatEntry &entry : kFormats)
        if (isAskedFor(entry))
            titles.append(titles.empty() ? std::string_view() : between).append(entry.title);
    return titles;
}

// Of all formats of that kind.
[[nodiscard]] inline std::vector<std::string_view> endingsOf(FormatKind kind)
{
    std::vector<std::string_view> all;
    for (const FormatEntry &entry : kFormats)
        if (entry.kind == kind)
            all.insert(all.end(), entry.endings().begin(), entry.endings().end());
    return all;
}

// Behind any ending, of a file that is compressed.
inline constexpr std::string_view kCompressedEnding = ".gz";

} // namespace TAMBO
