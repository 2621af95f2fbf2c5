// SPDX-License-Identifier: GPL-3.0-or-later
#include "NexusSymbols.h"

#include "Text.h"

#include <algorithm>

namespace TAMBO::formats {

namespace {

char &entry(NexusTable &table, char symbol)
{
    return table[static_cast<unsigned char>(symbol)];
}

} // namespace

bool NexusSymbols::addEquates(std::string_view text)
{
    const auto take = [&text]() -> char {
        text = trimmed(text);
        const char next = text.empty() ? '\0' : text.front();
        text.remove_prefix(text.empty() ? 0 : 1);
        return next;
    };
    while (const char symbol = take()) {
        if (take() != '=')
            return false;
        std::string states(1, take());
        if (states == "(" || states == "{") {
            const std::size_t end = text.find(states == "(" ? ')' : '}');
            if (end == std::string_view::npos)
                return false;
            states = text.substr(0, end);
            text.remove_prefix(end + 1);
        }
        if (states.empty() || states.front() == '\0')
            return false;
        equates.emplace_back(symbol, states);
    }
    return true;
}

NexusTable NexusSymbols::table() const
{
    NexusTable table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        const char character = static_cast<char>(i);
        if (character == '\n')
            continue;
        if (isLetter(character) || character == '-' || character == '*')
            table[i] = character;
        else if (isBlank(character))
            table[i] = ' ';
    }
    entry(table, '_') = entry(table, '~') = '-';
    entry(table, '?') = 'X';
    const auto set = [&](char symbol, char meaning) {
        entry(table, symbol) = meaning;
        if (!respectsCase && isLetter(symbol)) {
            entry(table, smallLetter(symbol)) = meaning;
            entry(table, capitalLetter(symbol)) = meaning;
        }
    };
    // A letter that stands for several residues says so itself.
    for (const auto &[symbol, states] : equates) {
        if (states.size() == 1 && (isLetter(states.front()) || entry(table, states.front()) == '-'))
            entry(table, symbol) = entry(table, states.front());
        else if (!isLetter(symbol))
            entry(table, symbol) = 'X';
    }
    if (missing && *missing != '-')
        set(*missing, 'X');
    if (gap)
        set(*gap, '-');
    if (match)
        set(*match, kSameAsFirstRow);
    return table;
}

} // namespace TAMBO::formats
