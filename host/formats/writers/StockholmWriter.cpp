// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "CellText.h"
#include "FittedAnnotation.h"
#include "FormatText.h"

#include <algorithm>

namespace TAMBO::formats {

namespace {

void writeLine(TextSink &sink, std::string text, std::size_t place, const std::string &rest)
{
    padTo(text, std::max(place, characterCount(text) + 1));
    text += rest;
    text += '\n';
    sink.write(text);
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
    sink.write("# STOCKHOLM 1.0\n");
    for (const Annotation &said : fittedRemarks(alignment.record().annotations))
        sink.write("#=GF " + said.tag + ' ' + said.text + '\n');
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        const std::string start = "#=GS " + alignment.name(row) + ' ';
        if (const std::string description = alignment.description(row); !description.empty())
            sink.write(start + "DE " + description + '\n');
        for (const Annotation &said : alignment.remarksOn(row))
            sink.write(start + said.tag + ' ' + said.text + '\n');
    }
    sink.write("\n");
    const std::vector<Annotation> columnLines =
        fittedLines(alignment.record().columnAnnotations, alignment.width());
    const std::size_t place = placeOfColumns(alignment, columnLines);
    std::string cells;
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        const std::string &name = alignment.name(row);
        cells.clear();
        CellText(alignment.cells(row)).append(alignment.width(), '-', cells);
        writeLine(sink, name, place, cells);
        for (const Annotation &said :
             fittedLines(alignment.row(row).residueAnnotations, alignment.cells(row)))
            writeLine(sink, "#=GR " + name + ' ' + said.tag, place, said.text);
    }
    for (const Annotation &said : columnLines)
        writeLine(sink, "#=GC " + said.tag, place, said.text);
    sink.write("//\n");
}

} // namespace TAMBO::formats
