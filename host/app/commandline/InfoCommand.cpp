// SPDX-License-Identifier: GPL-3.0-or-later
#include "InfoCommand.h"

#include "ExitStatus.h"
#include "FileReader.h"
#include "SessionFile.h"
#include "SessionReport.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ostream>
#include <utility>

namespace TAMBO::app {

namespace {

using Json = nlohmann::ordered_json;

void addSequences(Json &list, const AlignmentRecord &record)
{
    for (const RowRecord &row : record.rows)
        list.push_back({{"name", row.name}, {"letters", row.sequence.letters.size()}});
}

Json describe(const AlignmentRecord &record)
{
    Json sequences = Json::array();
    addSequences(sequences, record);
    return {{"name", record.name},
            {"rows", record.rows.size()},
            {"columns", record.rows.empty() ? 0 : record.rows.front().sequence.width},
            {"sequences", std::move(sequences)}};
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
Json describe(const ChainRecord &chain)
{
    const auto &residues = chain.residues;
    auto first = std::ranges::find_if(residues, hasCentralCarbon);
    auto last = std::find_if(residues.rbegin(), residues.rend(), hasCentralCarbon);
    if (first == residues.end()) {
        first = residues.begin();
        last = residues.rbegin();
    }
    return {{"name", chain.name},
            {"residues", residues.size()},
            {"residues_with_ca", std::ranges::count_if(residues, hasCentralCarbon)},
            {"first", residues.empty() ? std::string() : first->number.getValue()},
            {"last", residues.empty() ? std::string() : last->number.getValue()}};
}

Json describe(const StructureRecord &record)
{
    Json chains = Json::array();
    for (const ChainRecord &chain : record.chains)
        chains.push_back(describe(chain));
    return {{"name", record.name}, {"models", record.models}, {"chains", std::move(chains)}};
}

void addContents(Json &json, const FileContents &contents)
{
    json["format"] = contents.format;
    Json &alignments = json["alignments"] = Json::array();
    Json sequences = Json::array();
    for (const AlignmentRecord &record : contents.alignments) {
        if (record.isAligned)
            alignments.push_back(describe(record));
        else
            addSequences(sequences, record);
    }
    Json &structures = json["structures"] = Json::array();
    for (const StructureRecord &record : contents.structures)
        structures.push_back(describe(record));
    if (!std::ranges::all_of(contents.alignments, &AlignmentRecord::isAligned))
        json["sequences"] = std::move(sequences);
}

Result<void> describeFile(const std::string &file, Json &json)
{
    const Result<FileContents> contents = readFile(file);
    if (!contents)
        return contents.error();
    addContents(json, contents.value());
    return {};
}

// Bytes that are no UTF-8 become the replacement character.
std::string textOf(const Json &json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

int runInfo(const std::vector<std::string> &files, std::ostream &out, std::ostream &err)
{
    int status = 0;
    for (const std::string &file : files) {
        Json json = {{"file", file}};
        const Result<void> result =
            sessions::isSessionFile(file) ? describeSession(file, json) : describeFile(file, json);
        if (!result) {
            json["error"] = result.error().message();
            status = complain(err, result.error(), kBadInput);
        }
        out << textOf(json) << '\n' << std::flush;
    }
    return out ? status : complain(err, unwrittenOutput(), kBadInput);
}

} // namespace TAMBO::app
