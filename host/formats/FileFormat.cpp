// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileFormat.h"

#include "FormatText.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace TAMBO::formats {

namespace {

constexpr std::array kPdbRecords = std::to_array<std::string_view>(
    {"HEADER", "OBSLTE", "TITLE",  "SPLIT",  "CAVEAT", "COMPND", "SOURCE", "KEYWDS",
     "EXPDTA", "NUMMDL", "MDLTYP", "AUTHOR", "REVDAT", "SPRSDE", "JRNL",   "REMARK",
     "DBREF",  "DBREF1", "SEQADV", "SEQRES", "MODRES", "HET",    "HETNAM", "HETSYN",
     "FORMUL", "HELIX",  "SHEET",  "TURN",   "SSBOND", "LINK",   "CISPEP", "SITE",
     "CRYST1", "ORIGX1", "SCALE1", "MTRIX1", "MODEL",  "ATOM",   "HETATM", "USER"});

struct Signature
{
    std::string_view bytes;
    std::string_view name;
};
using namespace std::string_view_literals;
constexpr std::array kSignatures = std::to_array<Signature>({
    {"BZh"sv, "a bzip2 archive; unpack it first"sv},
    {"\xfd"
     "7zXZ"sv,
     "an xz archive; unpack it first"sv},
    {"PK\x03\x04"sv, "a zip archive; unpack it first"sv},
    {"\x28\xb5\x2f\xfd"sv, "a zstd archive; unpack it first"sv},
    {"\xff\xfe"sv, "UTF-16 text; save it as UTF-8 first"sv},
    {"\xfe\xff"sv, "UTF-16 text; save it as UTF-8 first"sv},
});

std::string_view firstLine(std::string_view &text) noexcept
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

// The record name of a line of a PDB file: its first six columns.
std::string_view recordName(std::string_view line) noexcept
{
    const std::string_view name = line.substr(0, std::min<std::size_t>(6, line.size()));
    return name.substr(0, name.find_last_not_of(' ') + 1);
}

bool isPdbRecord(std::string_view line) noexcept
{
    return std::find(kPdbRecords.begin(), kPdbRecords.end(), recordName(line)) != kPdbRecords.end();
}

bool startsWithoutCase(std::string_view text, std::string_view lowerCaseStart) noexcept
{
    return text.size() >= lowerCaseStart.size() &&
           std::equal(
               lowerCaseStart.begin(), lowerCaseStart.end(), text.begin(),
               [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); });
}

// Two numbers alone: rows and columns.
bool isPhylipHeader(std::string_view line) noexcept
{
    int numbers = 0;
    while (!(line = trimmed(line)).empty()) {
        const std::size_t end = std::min(line.find_first_not_of("0123456789"), line.size());
        if (end == 0 || (end < line.size() && !isBlank(line[end])))
            return false;
        ++numbers;
        line.remove_prefix(end);
    }
    return numbers == 2;
}

bool isMsfLine(std::string_view line) noexcept
{
    return line.find("MSF:") != std::string_view::npos &&
           trimmed(line).substr(std::max<std::size_t>(trimmed(line).size(), 2) - 2) == "..";
}

bool isText(std::string_view line) noexcept
{
    return std::none_of(line.begin(), line.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < 0x20 && !isBlank(c)) || byte == 0x7f;
    });
}

FileFormat byFirstLine(std::string_view line) noexcept
{
    if (startsWithoutCase(line, "# stockholm"))
        return FileFormat::Stockholm;
    if (startsWithoutCase(line, "clustal") ||
        line.find("multiple sequence alignment") != std::string_view::npos)
        return FileFormat::Clustal;
    if (line.starts_with("!!AA_MULTIPLE_ALIGNMENT") ||
        line.starts_with("!!NA_MULTIPLE_ALIGNMENT") || line.starts_with("PileUp"))
        return FileFormat::Msf;
    if (isPdbRecord(line))
        return FileFormat::Pdb;
    if (isPhylipHeader(line))
        return FileFormat::Phylip;
    return FileFormat::Unknown;
}

} // namespace

bool isPirStart(std::string_view line) noexcept
{
    const auto isCode = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
    return line.size() >= 4 && line[0] == '>' && isCode(line[1]) && isCode(line[2]) &&
           line[3] == ';';
}

bool isAtomRecord(std::string_view line) noexcept
{
    constexpr std::size_t xEnd = 38;
    if (line.size() < xEnd || (recordName(line) != "ATOM" && recordName(line) != "HETATM"))
        return false;
    const std::string_view x = trimmed(line.substr(30, 8));
    return x.find('.') != std::string_view::npos &&
           x.find_first_not_of("+-.0123456789") == std::string_view::npos;
}

FileFormat recognise(std::string_view head)
{
    bool isFirst = true;
    bool isAllText = true;
    for (std::string_view rest = head; !rest.empty();) {
        const std::string_view line = firstLine(rest);
        if (trimmed(line).empty())
            continue;
        if (isFirst) {
            const FileFormat format = byFirstLine(line);
            if (format != FileFormat::Unknown)
                return format;
        }
        // Comments may come first, also in front of sequences.
        if (startsWithoutCase(line, "data_") && isFirst)
            return FileFormat::Mmcif;
        isFirst = isFirst && line.front() == '#';
        if (isMsfLine(line))
            return FileFormat::Msf;
        if (isAtomRecord(line))
            return FileFormat::Pdb;
        // Text in front of the first record is usual enough; other bytes are not.
        if (line.front() == '>' && isAllText)
            return isPirStart(line) ? FileFormat::Pir : FileFormat::Fasta;
        isAllText = isAllText && isText(line);
    }
    return FileFormat::Unknown;
}

std::string describeUnreadable(FileFormat format, std::string_view head)
{
    const auto alignment = [](const char *name) {
        return std::string("is ") + name +
               " alignment, which cannot be read yet; alignments are read from PIR and FASTA files";
    };
    switch (format) {
    case FileFormat::Clustal:
        return alignment("a Clustal");
    case FileFormat::Stockholm:
        return alignment("a Stockholm");
    case FileFormat::Msf:
        return alignment("an MSF");
    case FileFormat::Phylip:
        return alignment("a PHYLIP");
    default:
        break;
    }
    if (head.empty())
        return "is empty";
    for (const Signature &signature : kSignatures)
        if (head.starts_with(signature.bytes))
            return "is " + std::string(signature.name);
    const std::string_view text =
        head.substr(std::min(head.find_first_not_of("\n\t "), head.size()));
    if (text.empty())
        return "holds nothing but blanks";
    const std::string_view begin = text.substr(0, text.find('\n'));
    const std::string expected = "expected a PDB, mmCIF, PIR or FASTA file";
    if (!isText(begin))
        return "is no text file of a known format; " + expected;
    return "begins with " + shown(begin) + "; " + expected;
}

} // namespace TAMBO::formats
