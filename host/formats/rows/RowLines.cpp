// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowLines.h"

#include "CellReader.h"

namespace TAMBO::formats {

RowLines::Entry &RowLines::add(RowLine::Kind kind, std::uint64_t number, std::string_view word,
                               std::string_view rest)
{
    Entry &entry = m_Entries.emplace_back();
    entry.kind = kind;
    entry.number = number;
    entry.wordSize = word.size();
    entry.restSize = rest.size();
    m_Text.append(word).append(rest);
    return entry;
}

void RowLines::addRow(TextReader &reader, std::string_view name)
{
    Entry &entry = add(RowLine::Kind::Row, reader.line(), name, {});
    entry.end = readCells(reader, m_Builder);
    const GappedView cells = m_Builder.cells();
    entry.letters = cells.letters.size();
    entry.width = cells.width;
    entry.stops = m_Builder.stops();
    m_Letters.append(cells.letters);
    m_Words.insert(m_Words.end(), cells.occupancy.begin(), cells.occupancy.end());
    m_Builder.begin();
    if (entry.end < '0' || entry.end > '9')
        return;
    const std::string rest = reader.restOfLine();
    entry.restSize = rest.size();
    m_Text += rest;
}

} // namespace TAMBO::formats
