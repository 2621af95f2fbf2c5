// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of a part of an alignment file that gives rows line by line: what takes time is done,
// the cells are out of the text, and no more is known of a line than it says itself.
#pragma once

#include "Bits.h"
#include "GappedView.h"
#include "RowBuilder.h"
#include "TextReader.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

struct RowLine
{
    enum class Kind { Blank, Row, Text };

    Kind kind = Kind::Blank;
    // In the file, counted from 1.
    std::uint64_t number = 0;
    // The first word, a row's name.
    std::string_view word;
    // What else a text says; of a row the rest of the line if a digit ended the cells.
    std::string_view rest;
    // Of a row, as readCells() reads it.
    GappedView cells;
    std::uint64_t stops = 0;
    char end = '\n';
};

class RowLines
{
public:
    void addBlank(std::uint64_t number) { add(RowLine::Kind::Blank, number, {}, {}); }
    void addText(std::uint64_t number, std::string_view word, std::string_view rest)
    {
        add(RowLine::Kind::Text, number, word, rest);
    }
    // With the name and the cells that come next in the reader's line.
    void addRow(TextReader &reader, std::string_view name);

    // No lines, but the room that they had.
    void clear() noexcept
    {
        m_Entries.clear();
        m_Text.clear();
        m_Letters.clear();
        m_Words.clear();
    }

    // Calls visit(line) for one line after the other, until it says false.
    template <typename Visit> void forEach(Visit visit) const
    {
        std::size_t text = 0;
        std::size_t letters = 0;
        std::size_t words = 0;
        for (const Entry &entry : m_Entries) {
            const std::size_t rest = text + entry.wordSize;
            const std::size_t wordCount = bits::wordsFor(entry.width);
            const RowLine line{entry.kind,
                               entry.number,
                               std::string_view(m_Text).substr(text, entry.wordSize),
                               std::string_view(m_Text).substr(rest, entry.restSize),
                               {std::string_view(m_Letters).substr(letters, entry.letters),
                                std::span(m_Words).subspan(words, wordCount), entry.width},
                               entry.stops,
                               entry.end};
            if (!visit(line))
                return;
            text = rest + entry.restSize;
            letters += entry.letters;
            words += wordCount;
        }
    }

private:
    struct Entry
    {
        RowLine::Kind kind = RowLine::Kind::Blank;
        char end = '\n';
        std::uint64_t number = 0;
        std::size_t wordSize = 0;
        std::size_t restSize = 0;
        std::size_t letters = 0;
        std::uint64_t width = 0;
        std::uint64_t stops = 0;
    };

    Entry &add(RowLine::Kind kind, std::uint64_t number, std::string_view word,
               std::string_view rest);

    std::vector<Entry> m_Entries;
    // Of all lines, one behind the other.
    std::string m_Text;
    std::string m_Letters;
    std::vector<std::uint64_t> m_Words;
    RowBuilder m_Builder;
};

} // namespace TAMBO::formats
