// SPDX-License-Identifier: GPL-3.0-or-later
#include "PdbText.h"

#include "FormatText.h"
#include "StructureConversion.h"
#include "Text.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace TAMBO::formats {

namespace {

// A line of the cleaned text, its end included.
constexpr std::size_t kLineLength = 81;
constexpr std::size_t kCoordinatesEnd = 54;
// Of HELIX and SHEET records, the end of the number of the last residue.
constexpr std::size_t kElementRecordEnd = 37;
constexpr std::size_t kOccupancyLength = 6;
constexpr std::size_t kSegment = 72;
constexpr std::size_t kElement = 76;
constexpr std::size_t kCharge = 78;

// Columns counted from 0, what there is of them.
std::string_view columns(std::string_view line, std::size_t from, std::size_t count) noexcept
{
    return from < line.size() ? line.substr(from, count) : std::string_view();
}

char column(std::string_view line, std::size_t place) noexcept
{
    return place < line.size() ? line[place] : ' ';
}

bool isCoordinate(std::string_view field) noexcept
{
    field = trimmed(field);
    if (!field.empty() && field.front() == '+')
        field.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    return error == std::errc() && end == field.data() + field.size() && value > -1e7 &&
           value < 1e7;
}

// A number, or four letters and digits that count on beyond 9999.
bool isResidueNumber(std::string_view field) noexcept
{
    if (field.size() == 4 && isLetter(field.front()))
        return std::all_of(field.begin(), field.end(),
                           [](char c) { return isLetter(c) || isDigit(c); });
    field = trimmed(field);
    if (!field.empty() && (field.front() == '-' || field.front() == '+'))
        field.remove_prefix(1);
    return !field.empty() && isAllDigits(field);
}

bool isCharge(char first, char second) noexcept
{
    const auto isSign = [](char c) { return c == '+' || c == '-'; };
    return (first == ' ' && second == ' ') ||
           (isDigit(first) && (isSign(second) || second == ' ')) ||
           (isSign(first) && isDigit(second));
}

// Whether columns 77 to 80 hold an element and a charge, or nothing. Old files have the entry's
// code and the line's number in columns 73 to 80.
bool hasElementAndCharge(std::string_view line) noexcept
{
    const char first = column(line, kElement);
    const char second = column(line, kElement + 1);
    const bool isElement = (first == ' ' || isLetter(first)) && (second == ' ' || isLetter(second));
    const bool isEmpty = first == ' ' && second == ' ';
    const char charge = column(line, kCharge);
    const char sign = column(line, kCharge + 1);
    return isElement && isCharge(charge, sign) && !(isEmpty && (charge != ' ' || sign != ' '));
}

SequenceNumber residueNumber(std::string_view line, std::size_t from)
{
    return SequenceNumber(std::string(trimmed(columns(line, from, 4))) + column(line, from + 4));
}

std::string chainName(std::string_view line, std::size_t from)
{
    return cleanText(trimmed(columns(line, from, 2)));
}

// Of a bond to an atom of a neighbour in the crystal, which is not there.
bool isToNeighbour(std::string_view line)
{
    const std::string_view first = trimmed(columns(line, 59, 6));
    const std::string_view second = trimmed(columns(line, 66, 6));
    return !first.empty() && !second.empty() && first != second;
}

NamedAtom atomOfLink(std::string_view line, std::size_t from)
{
    return {chainName(line, from + 8), residueNumber(line, from + 10),
            cleanText(trimmed(columns(line, from, 4)))};
}

// Counted on with letters beyond 99999, as the coordinate library does.
std::optional<int> serialNumber(std::string_view field)
{
    if (field.size() == 5 && isLetter(field.front())) {
        constexpr int firstWithLetters = 16796160;
        int value = 0;
        for (const char c : field) {
            if (!isLetter(c) && !isDigit(c))
                return std::nullopt;
            value = value * 36 + (isDigit(c) ? c - '0' : capitalLetter(c) - 'A' + 10);
        }
        return value - firstWithLetters + 100000;
    }
    field = trimmed(field);
    int value = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    return error == std::errc() && end == field.data() + field.size() ? std::optional(value)
                                                                      : std::nullopt;
}

} // namespace

void PdbText::add(std::string_view line)
{
    ++m_Line;
    std::string record = upperCase(columns(line, 0, 6));
    record.resize(6, ' ');
    if (record == "ATOM  " || record == "HETATM") {
        addAtom(line, record);
    } else if (record == "MODEL " || record == "ENDMDL" || record == "END   ") {
        m_ModelHasAtoms = false;
    } else if (record.starts_with("TER ") && m_ModelHasAtoms) {
        std::string &coordinates = m_Coordinates.back();
        coordinates += "TER";
        coordinates.append(kLineLength - 4, ' ');
        coordinates += '\n';
    } else if (record == "HELIX ") {
        addHelix(line);
    } else if (record == "SHEET ") {
        addStrand(line);
    } else if (record == "SSBOND") {
        addDisulfide(line);
    } else if (record == "LINK  ") {
        addLink(line);
    } else if (record == "CONECT") {
        addConnections(line);
    }
}

void PdbText::finish()
{
    if (m_HasBookkeeping)
        std::for_each(m_Coordinates.begin(), m_Coordinates.end(), blankSegments);
    if (m_Incomplete > 0)
        m_Remarks.push_back(
            at(m_FileName, m_FirstIncompleteLine,
               "an atom record without complete coordinates was left out" +
                   (m_Incomplete > 1
                        ? "; so were " + std::to_string(m_Incomplete - 1) + " more further down"
                        : std::string())));
    if (models() > 1)
        m_Remarks.push_back(m_FileName + ": the first of " + std::to_string(models()) +
                            " models was read");
    if (models() == 0 && m_Outcome)
        m_Outcome = failureOf(m_FileName, "is a PDB file without atoms");
}

void PdbText::addAtom(std::string_view line, std::string_view record)
{
    if (line.size() < kCoordinatesEnd) {
        if (m_Incomplete++ == 0)
            m_FirstIncompleteLine = m_Line;
        return;
    }
    if (!m_ModelHasAtoms) {
        m_ModelHasAtoms = true;
        m_Coordinates.emplace_back();
    }
    if (!m_Outcome || !isReadable(line))
        return;

    std::string &coordinates = m_Coordinates.back();
    const std::size_t start = coordinates.size();
    coordinates += record;
    for (const char c : columns(line, 6, kLineLength - 7))
        coordinates += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    coordinates.resize(start + kLineLength - 1, ' ');
    // An atom of which nothing is said is there all the time.
    if (trimmed(columns(line, kCoordinatesEnd, kOccupancyLength)).empty())
        coordinates.replace(start + kCoordinatesEnd, kOccupancyLength, "  1.00");
    if (!hasElementAndCharge(std::string_view(coordinates).substr(start))) {
        // Of the first model, which is read as if it were alone.
        m_HasBookkeeping = m_HasBookkeeping || models() == 1;
        std::fill(coordinates.begin() + static_cast<std::ptrdiff_t>(start + kElement),
                  coordinates.end(), ' ');
    }
    coordinates += '\n';
}

// What is damaged in the first model is damage of the file; in further ones the atom is missing.
bool PdbText::isReadable(std::string_view line)
{
    std::string_view found;
    const char *expected = nullptr;
    for (std::size_t place = 30; expected == nullptr && place < kCoordinatesEnd; place += 8) {
        found = columns(line, place, 8);
        if (!isCoordinate(found))
            expected = "a coordinate";
    }
    if (expected == nullptr) {
        found = columns(line, 22, 4);
        if (!isResidueNumber(found))
            expected = "a residue number";
    }
    if (expected != nullptr && models() == 1)
        fail(found, expected);
    return expected == nullptr;
}

void PdbText::addHelix(std::string_view line)
{
    if (line.size() < kElementRecordEnd || chainName(line, 18) != chainName(line, 30))
        return;
    addElement(m_Elements,
               ElementRecord{cleanText(trimmed(columns(line, 11, 3))), 'H', chainName(line, 18),
                             residueNumber(line, 21), residueNumber(line, 33)});
}

void PdbText::addStrand(std::string_view line)
{
    if (line.size() < kElementRecordEnd || chainName(line, 20) != chainName(line, 31))
        return;
    const std::string name =
        cleanText(trimmed(columns(line, 11, 3))) + '-' + cleanText(trimmed(columns(line, 7, 3)));
    addElement(m_Elements, ElementRecord{name, 'E', chainName(line, 20), residueNumber(line, 22),
                                         residueNumber(line, 33)});
}

void PdbText::addDisulfide(std::string_view line)
{
    constexpr std::size_t end = 35;
    if (line.size() >= end && !isToNeighbour(line))
        m_Bonds.push_back({{chainName(line, 14), residueNumber(line, 17), "SG"},
                           {chainName(line, 28), residueNumber(line, 31), "SG"},
                           BondKind::Disulfide});
}

void PdbText::addLink(std::string_view line)
{
    constexpr std::size_t end = 56;
    if (line.size() >= end && !isToNeighbour(line))
        m_Bonds.push_back({atomOfLink(line, 12), atomOfLink(line, 42), std::nullopt});
}

void PdbText::addConnections(std::string_view line)
{
    constexpr std::size_t width = 5;
    const std::optional<int> from = serialNumber(columns(line, 6, width));
    for (std::size_t place = 11; from && place < 31; place += width) {
        if (const std::optional<int> to = serialNumber(columns(line, place, width)))
            m_SerialBonds.emplace_back(*from, *to);
    }
}

// Where some lines have an entry code in the place of the segment, all have.
void PdbText::blankSegments(std::string &coordinates)
{
    for (std::size_t start = 0; start < coordinates.size(); start += kLineLength)
        std::fill_n(coordinates.begin() + static_cast<std::ptrdiff_t>(start + kSegment),
                    kElement - kSegment, ' ');
}

void PdbText::fail(std::string_view found, const char *expected)
{
    m_Outcome =
        failureAt(m_FileName, m_Line,
                  "found " + shown(found) + " in columns " +
                      (expected == std::string_view("a coordinate") ? "31 to 54" : "23 to 26") +
                      ", expected " + expected);
}

} // namespace TAMBO::formats
