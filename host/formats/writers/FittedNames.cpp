// SPDX-License-Identifier: GPL-3.0-or-later
#include "FittedNames.h"

#include "FormatSigns.h"
#include "FormatText.h"
#include "Text.h"

#include <algorithm>
#include <string_view>

namespace TAMBO::formats {

namespace {

// Trees made of PHYLIP files have these between the names.
bool isTreePunctuation(char character) noexcept
{
    return std::string_view("()[]:;,").find(character) != std::string_view::npos;
}

bool isAllowed(char character, const WriteOptions &options) noexcept
{
    switch (options.format) {
    case FileFormat::Pir:
    // Between quotation marks.
    case FileFormat::Nexus:
        return true;
    case FileFormat::Phylip:
        return static_cast<unsigned char>(character) < 0x80 && !isTreePunctuation(character) &&
               (character != ' ' || !options.hasLongNames);
    default:
        return character != ' ';
    }
}

// Characters that mean something at the start of a line.
void removeMarks(std::string &name, FileFormat format)
{
    switch (format) {
    case FileFormat::Fasta:
    case FileFormat::A2m:
    case FileFormat::A3m:
        if (isPirStart('>' + name))
            name[2] = '_';
        break;
    case FileFormat::Clustal:
        if (isClustalWord(name))
            name.insert(0, 1, '_');
        break;
    case FileFormat::Stockholm:
        if (name.starts_with('#'))
            name[0] = '_';
        [[fallthrough]];
    case FileFormat::Msf:
        if (name.starts_with("//"))
            name[0] = '_';
        break;
    default:
        break;
    }
}

std::string replaced(std::string_view name, const WriteOptions &options)
{
    std::string result;
    result.reserve(name.size());
    for (const char character : name) {
        if (isAllowed(character, options))
            result += character;
        else if (!isContinuation(character))
            result += '_';
    }
    removeMarks(result, options.format);
    return result;
}

} // namespace

FittedNames::FittedNames(const AlignmentSource &alignment, const WriteOptions &options)
    : m_Source(alignment),
      m_Format(options.format),
      m_Longest(options.format == FileFormat::Phylip && !options.hasLongNames ? kShortPhylipName
                                                                              : 0),
      m_MustDiffer(!holds(options.format, Content::EqualNames))
{
    for (char character = '0'; character <= 'z'; ++character)
        m_IsPlain[static_cast<unsigned char>(character)] =
            isLetter(character) || isDigit(character) || character == '_';
    for (const char character : std::string_view("./|-"))
        m_IsPlain[static_cast<unsigned char>(character)] = isAllowed(character, options);
    TakenNames taken(m_MustDiffer ? alignment.rowCount() : 0);
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        const std::string_view name = alignment.name(row);
        std::string held;
        if (!isPlain(name)) {
            held = replaced(std::string(trimmed(cleanText(name))), options);
            if (held != name && !held.empty())
                note(Replaced, name, row);
            if (std::string own = fitted(held, row); own != name)
                m_Changed[row] = std::move(own);
        }
        if (m_MustDiffer && !take(row, taken)) {
            note(Numbered, isPlain(name) ? name : held, row);
            number(row, taken);
        }
    }
    m_Numbers = {};
}

bool FittedNames::isPlain(std::string_view name) const noexcept
{
    if (name.empty() || (m_Longest != 0 && name.size() > m_Longest))
        return false;
    const char first = name.front();
    if (first == '/' || (m_Format == FileFormat::Clustal && isClustalWord(name)))
        return false;
    return std::all_of(name.begin(), name.end(), [this](char character) {
        return m_IsPlain[static_cast<unsigned char>(character)];
    });
}

std::string FittedNames::fitted(std::string_view name, std::size_t row)
{
    std::string held(name);
    if (held.empty() && !holds(m_Format, Content::EmptyNames)) {
        note(Unnamed, held, row);
        held = "row_" + std::to_string(row + 1);
    }
    if (m_Longest != 0 && held.size() > m_Longest) {
        note(Cut, name, row);
        held = cut(held, m_Longest);
    }
    return held;
}

bool FittedNames::take(std::size_t row, TakenNames &taken) const
{
    return taken.take((*this)[row], row, [this](std::size_t other) { return (*this)[other]; });
}

// From 2 on.
void FittedNames::number(std::size_t row, TakenNames &taken)
{
    const std::string name((*this)[row]);
    std::size_t &last = m_Numbers.try_emplace(name, 1).first->second;
    do {
        const std::string ending = '_' + std::to_string(++last);
        m_Changed[row] =
            (m_Longest == 0 ? name : cut(name, m_Longest - std::min(m_Longest, ending.size()))) +
            ending;
    } while (!take(row, taken));
}

std::string FittedNames::cut(const std::string &name, std::size_t length) const
{
    const std::string held = name.substr(0, length);
    return std::string(trimmed(held));
}

void FittedNames::note(Kind kind, std::string_view before, std::size_t row)
{
    Change &change = m_Changes[kind];
    if (change.count++ == 0) {
        change.first = row;
        change.before = before;
    }
}

std::vector<std::string> FittedNames::changes() const
{
    std::vector<std::string> sentences;
    for (const Kind kind : {Unnamed, Replaced, Cut, Numbered}) {
        if (m_Changes[kind].count > 0)
            sentences.push_back(sentence(kind));
    }
    return sentences;
}

std::string FittedNames::sentence(Kind kind) const
{
    const Change &change = m_Changes[kind];
    const bool isOne = change.count == 1;
    const std::string count =
        std::to_string(change.count) + " of " + std::to_string(m_Source.rowCount());
    const std::string after = shown((*this)[change.first]) + '.';
    const std::string example = ": " + shown(change.before) + " becomes " + after;
    switch (kind) {
    case Unnamed:
        return count + " rows " +
               (isOne ? "has no name and gets one: " : "have no name and get one: ") + after;
    case Replaced:
        return count + " names " + (isOne ? "has" : "have") + " characters that " +
               fileOf(m_Format) + " cannot hold there" + example;
    case Cut:
        return count + " names " + (isOne ? "is" : "are") + " longer than " +
               std::to_string(m_Longest) + " characters and " + (isOne ? "is" : "are") + " cut" +
               example;
    default:
        return count + " names would be the same as " +
               (isOne ? "another one and gets" : "others and get") + " a number" + example;
    }
}

} // namespace TAMBO::formats
