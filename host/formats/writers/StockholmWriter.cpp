// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "CellText.h"
#include "FittedAnnotation.h"
#include "Text.h"
#include "TextBuffer.h"

#include <algorithm>
#include <utility>

namespace TAMBO::formats {

namespace {

void appendRemark(TextBuffer &text, std::string_view start, const Annotation &said)
{
    text.append(start);
    text.append(said.tag);
    text.append(' ');
    text.append(said.text);
    text.append('\n');
}

void appendLine(TextBuffer &text, std::string_view start, std::size_t place, std::string_view rest)
{
    text.appendPadded(start, std::max(place, characterCount(start) + 1));
    text.append(rest);
    text.append('\n');
}

// The longest of what stands before the columns, and a blank.
std::size_t placeOfColumns(const FittedAlignment &alignment,
                           const std::vector<Annotation> &columnLines)
{
    std::size_t longest = 0;
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        const std::size_t name = characterCount(alignment.name(row));
        longest = std::max(longest, name);
        for (const Annotation &said : alignment.row(row).residueAnnotations)
            longest = std::max(longest, 6 + name + characterCount(said.tag));
    }
    for (const Annotation &said : columnLines)
        longest = std::max(longest, 5 + characterCount(said.tag));
    return longest + 1;
}

} // namespace

// Each row is in one piece, as databases have it.
void writeStockholm(const FittedAlignment &alignment, TextSink &sink)
{
    TextBuffer text(sink);
    text.append("# STOCKHOLM 1.0\n");
    for (const Annotation &said : alignment.remarks())
        appendRemark(text, "#=GF ", said);
    for (std::size_t row = 0; row < alignment.rowCount() && text.isOpen(); ++row) {
        if (!alignment.hasRemarks(row))
            continue;
        const std::string start = "#=GS " + std::string(alignment.name(row)) + ' ';
        if (std::string description = alignment.description(row); !description.empty())
            appendRemark(text, start, {"DE", std::move(description)});
        for (const Annotation &said : alignment.remarksOn(row))
            appendRemark(text, start, said);
    }
    text.append('\n');
    const std::vector<Annotation> columnLines =
        fittedLines(alignment.whole().columnAnnotations, alignment.width());
    const std::size_t place = placeOfColumns(alignment, columnLines);
    for (std::size_t row = 0; row < alignment.rowCount() && text.isOpen(); ++row) {
        const std::string_view name = alignment.name(row);
        CellText cells(alignment.cells(row));
        text.appendPadded(name, place);
        text.append(cells, alignment.width(), '-');
        text.append('\n');
        if (alignment.row(row).residueAnnotations.empty())
            continue;
        const std::string start = "#=GR " + std::string(name) + ' ';
        for (const Annotation &said :
             fittedLines(alignment.row(row).residueAnnotations, alignment.cells(row)))
            appendLine(text, start + said.tag, place, said.text);
    }
    for (const Annotation &said : columnLines)
        appendLine(text, "#=GC " + said.tag, place, said.text);
    text.append("//\n");
    text.flush();
}

} // namespace TAMBO::formats
