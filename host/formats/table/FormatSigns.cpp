// SPDX-License-Identifier: GPL-3.0-or-later
#include "FormatSigns.h"

#include "FormatText.h"
#include "Text.h"

#include <algorithm>
#include <array>
#include <vector>

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

bool hasWithoutCase(std::string_view text, std::string_view lowerCasePart) noexcept
{
    for (; text.size() >= lowerCasePart.size(); text.remove_prefix(1))
        if (startsWithoutCase(text, lowerCasePart))
            return true;
    return false;
}

bool isCell(char character) noexcept
{
    return isLetter(character) ||
           std::string_view("-.~_*?").find(character) != std::string_view::npos;
}

bool isText(std::string_view line) noexcept
{
    return std::none_of(line.begin(), line.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < 0x20 && !isBlank(c)) || byte == 0x7f;
    });
}

std::optional<Recognised> byFirstLine(std::string_view line) noexcept
{
    if (startsWithoutCase(line, "#nexus"))
        return Recognised{FileFormat::Nexus};
    if (startsWithoutCase(line, "# stockholm"))
        return Recognised{FileFormat::Stockholm};
    if (hasWithoutCase(line, "clustal") || hasWithoutCase(line, "multiple sequence alignment"))
        return Recognised{FileFormat::Clustal};
    if (line.starts_with("!!AA_MULTIPLE_ALIGNMENT") ||
        line.starts_with("!!NA_MULTIPLE_ALIGNMENT") || line.starts_with("PileUp"))
        return Recognised{FileFormat::Msf};
    if (isPdbRecord(line))
        return Recognised{FileFormat::Pdb};
    if (isPhylipHeader(line))
        return Recognised{FileFormat::Phylip};
    return std::nullopt;
}

// Rows that are a name and columns, one as wide as the other, up to an empty line or a line of
// marks; columns may be counted at the end. Text that has no other sign of its format is only taken
// for rows when no prose looks like that.
bool isBlockOfRows(std::string_view text)
{
    constexpr std::size_t widerThanWords = 20;
    std::size_t rows = 0;
    std::size_t width = 0;
    bool hasGaps = false;
    while (!text.empty()) {
        // The last line may be cut.
        const bool isWhole = text.find('\n') != std::string_view::npos;
        const std::string_view line = takeLine(text);
        if (rows > 0 && (trimmed(line).empty() || isBlank(line.front()) || !isWhole))
            break;
        const std::vector<std::string_view> words = wordsOf(line);
        if (words.size() < 2 || words.size() > 3 || isBlank(line.front()) ||
            !std::all_of(words[1].begin(), words[1].end(), isCell) ||
            (words.size() == 3 && !isAllDigits(words[2])) || (rows > 0 && words[1].size() != width))
            return false;
        width = words[1].size();
        hasGaps = hasGaps || words[1].find_first_of("-.") != std::string_view::npos;
        ++rows;
    }
    return rows > 1 && (hasGaps || width >= widerThanWords);
}

// Where the text goes on behind empty lines.
std::string_view withoutEmptyLines(std::string_view text) noexcept
{
    for (std::string_view rest = text; !rest.empty(); text = rest)
        if (!trimmed(takeLine(rest)).empty())
            break;
    return text;
}

std::optional<Recognised> byRows(std::string_view head)
{
    std::string_view text = withoutEmptyLines(head);
    if (isBlockOfRows(text))
        return Recognised{FileFormat::Stockholm, true};
    // A program that says in its own way what it writes.
    (void)takeLine(text);
    const bool isSetOff =
        !text.empty() && trimmed(std::string_view(text).substr(0, text.find('\n'))).empty();
    if (isSetOff && isBlockOfRows(withoutEmptyLines(text)))
        return Recognised{FileFormat::Clustal};
    return std::nullopt;
}

} // namespace

bool isClustalWord(std::string_view word) noexcept
{
    return startsWithoutCase(word, "clustal");
}

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

bool isPirStart(std::string_view line) noexcept
{
    const auto isCode = [](char c) { return isLetter(c) || isDigit(c); };
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

std::optional<Recognised> recognise(std::string_view head)
{
    bool isFirst = true;
    bool isAllText = true;
    for (std::string_view rest = head; !rest.empty();) {
        const std::string_view line = takeLine(rest);
        if (trimmed(line).empty())
            continue;
        // Text in front of the first record is usual enough; other bytes are not. Its name and
        // description may have any words.
        if (line.front() == '>' && isAllText)
            return Recognised{isPirStart(line) ? FileFormat::Pir : FileFormat::Fasta};
        if (isFirst) {
            if (const std::optional<Recognised> format = byFirstLine(line))
                return format;
        }
        // Comments may come first, also in front of sequences.
        if (startsWithoutCase(line, "data_") && isFirst)
            return Recognised{FileFormat::Mmcif};
        isFirst = isFirst && line.front() == '#';
        if (isMsfLine(line))
            return Recognised{FileFormat::Msf};
        if (isAtomRecord(line))
            return Recognised{FileFormat::Pdb};
        isAllText = isAllText && isText(line);
    }
    return byRows(head);
}

std::string describeUnreadable(std::string_view head)
{
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
    const auto titles = [](FormatKind kind) {
        return formatTitles([kind](const FormatEntry &entry) {
            return entry.kind == kind && entry.isRecognised();
        });
    };
    const std::string expected = "expected a structure (" + titles(FormatKind::Structures) +
                                 ") or an alignment (" + titles(FormatKind::Alignments) + ')';
    if (!isText(begin))
        return "is no text file of a known format; " + expected;
    return "begins with " + shown(begin) + "; " + expected;
}

} // namespace TAMBO::formats
