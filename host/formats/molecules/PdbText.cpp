// SPDX-License-Identifier: GPL-3.0-or-later
#include "PdbText.h"

#include "FormatText.h"
#include "StructureConversion.h"
#include "Text.h"

#include <algorithm>
#include <charconv>

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
    } else if (record.starts_with("TER ") && m_Models == 1 && m_ModelHasAtoms) {
        m_Coordinates += "TER";
        m_Coordinates.append(kLineLength - 4, ' ');
        m_Coordinates += '\n';
    } else if (record == "HELIX ") {
        addHelix(line);
    } else if (record == "SHEET ") {
        addStrand(line);
    }
}

void PdbText::finish()
{
    if (m_HasBookkeeping)
        blankSegments();
    if (m_Incomplete > 0)
        m_Remarks.push_back(
            at(m_FileName, m_FirstIncompleteLine,
               "an atom record without complete coordinates was left out" +
                   (m_Incomplete > 1
                        ? "; so were " + std::to_string(m_Incomplete - 1) + " more further down"
                        : std::string())));
    if (m_Models > 1)
        m_Remarks.push_back(m_FileName + ": the first of " + std::to_string(m_Models) +
                            " models was read");
    if (m_Models == 0 && m_Outcome)
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
        ++m_Models;
    }
    if (m_Models > 1 || !m_Outcome)
        return;
    for (std::size_t place = 30; place < kCoordinatesEnd; place += 8)
        if (!isCoordinate(columns(line, place, 8)))
            return fail(columns(line, place, 8), "a coordinate");
    if (!isResidueNumber(columns(line, 22, 4)))
        return fail(columns(line, 22, 4), "a residue number");

    const std::size_t start = m_Coordinates.size();
    m_Coordinates += record;
    for (const char c : columns(line, 6, kLineLength - 7))
        m_Coordinates += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    m_Coordinates.resize(start + kLineLength - 1, ' ');
    // An atom of which nothing is said is there all the time.
    if (trimmed(columns(line, kCoordinatesEnd, kOccupancyLength)).empty())
        m_Coordinates.replace(start + kCoordinatesEnd, kOccupancyLength, "  1.00");
    if (!hasElementAndCharge(std::string_view(m_Coordinates).substr(start))) {
        m_HasBookkeeping = true;
        std::fill(m_Coordinates.begin() + static_cast<std::ptrdiff_t>(start + kElement),
                  m_Coordinates.end(), ' ');
    }
    m_Coordinates += '\n';
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

// Where some lines have an entry code in the place of the segment, all have.
void PdbText::blankSegments()
{
    for (std::size_t start = 0; start < m_Coordinates.size(); start += kLineLength)
        std::fill_n(m_Coordinates.begin() + static_cast<std::ptrdiff_t>(start + kSegment),
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
