// SPDX-License-Identifier: GPL-3.0-or-later
#include "InfoCommand.h"

#include "FileReader.h"
#include "JsonText.h"

#include <algorithm>
#include <ostream>

namespace TAMBO::app {

namespace {

void writeSequences(JsonText &json, const AlignmentRecord &record)
{
    for (const RowRecord &row : record.rows) {
        json.beginObject();
        json.key("name");
        json.value(row.name);
        json.key("letters");
        json.value(std::uint64_t(row.sequence.letters.size()));
        json.endObject();
    }
}

void writeAlignment(JsonText &json, const AlignmentRecord &record)
{
    json.beginObject();
    json.key("name");
    json.value(record.name);
    json.key("rows");
    json.value(std::uint64_t(record.rows.size()));
    json.key("columns");
    json.value(record.rows.empty() ? std::uint64_t{0} : record.rows.front().sequence.width);
    json.key("sequences");
    json.beginArray();
    writeSequences(json, record);
    json.endArray();
    json.endObject();
}

// A calcium ion is called CA too.
bool hasCentralCarbon(const ResidueRecord &residue)
{
    return std::ranges::any_of(residue.atoms, [](const AtomRecord &atom) {
        return atom.name == "CA" && (atom.element.empty() || atom.element == "C");
    });
}

// Numbered from the first to the last residue with a place in space; a chain that has none (a
// nucleic acid, ligands) from its first to its last.
void writeChain(JsonText &json, const ChainRecord &chain)
{
    const auto &residues = chain.residues;
    auto first = std::ranges::find_if(residues, hasCentralCarbon);
    auto last = std::find_if(residues.rbegin(), residues.rend(), hasCentralCarbon);
    if (first == residues.end()) {
        first = residues.begin();
        last = residues.rbegin();
    }
    json.beginObject();
    json.key("name");
    json.value(chain.name);
    json.key("residues");
    json.value(std::uint64_t(residues.size()));
    json.key("residues_with_ca");
    json.value(std::uint64_t(std::ranges::count_if(residues, hasCentralCarbon)));
    json.key("first");
    json.value(residues.empty() ? std::string() : first->number.getValue());
    json.key("last");
    json.value(residues.empty() ? std::string() : last->number.getValue());
    json.endObject();
}

void writeStructure(JsonText &json, const StructureRecord &record)
{
    json.beginObject();
    json.key("name");
    json.value(record.name);
    json.key("models");
    json.value(std::uint64_t(record.models));
    json.key("chains");
    json.beginArray();
    for (const ChainRecord &chain : record.chains)
        writeChain(json, chain);
    json.endArray();
    json.endObject();
}

void writeContents(JsonText &json, const FileContents &contents)
{
    json.key("format");
    json.value(contents.format);
    json.key("alignments");
    json.beginArray();
    for (const AlignmentRecord &record : contents.alignments) {
        if (record.isAligned)
            writeAlignment(json, record);
    }
    json.endArray();
    json.key("structures");
    json.beginArray();
    for (const StructureRecord &record : contents.structures)
        writeStructure(json, record);
    json.endArray();
    if (std::ranges::all_of(contents.alignments, &AlignmentRecord::isAligned))
        return;
    json.key("sequences");
    json.beginArray();
    for (const AlignmentRecord &record : contents.alignments) {
        if (!record.isAligned)
            writeSequences(json, record);
    }
    json.endArray();
}

} // namespace

int runInfo(const std::vector<std::string> &files, std::ostream &out, std::ostream &err)
{
    int status = 0;
    for (const std::string &file : files) {
        const Result<FileContents> result = readFile(file);
        JsonText json;
        json.beginObject();
        json.key("file");
        json.value(file);
        if (result) {
            writeContents(json, result.value());
        } else {
            json.key("error");
            json.value(result.error().message());
            err << "tambo: " << result.error().message() << '\n';
            status = 1;
        }
        json.endObject();
        out << json.text() << '\n' << std::flush;
    }
    if (!out) {
        err << "tambo: cannot write to the standard output\n";
        status = 1;
    }
    return status;
}

} // namespace TAMBO::app
