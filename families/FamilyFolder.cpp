// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyFolder.h"

#include "FolderFiles.h"
#include "TargetFiles.h"

#include <nlohmann/json.hpp>

#include <limits>
#include <stdexcept>
#include <unordered_set>
#include <utility>

namespace TAMBO::families {

namespace {

namespace fs = std::filesystem;
using ListJson = nlohmann::ordered_json;

constexpr int kListVersion = 1;

std::string lineOf(const ListJson &json)
{
    // A name of a row may be in any encoding.
    return json.dump(-1, ' ', false, ListJson::error_handler_t::replace);
}

ListJson jsonOf(const FamilyTarget &target)
{
    ListJson json = {{"name", target.name},
                     {"file", target.file},
                     {"template", target.templateName},
                     {"template_file", target.templateFile},
                     {"residues", target.residues},
                     {"identical", target.identical},
                     {"aligned", target.aligned}};
    if (target.copy > 1)
        json["copy"] = target.copy;
    return json;
}

// What is wrong is thrown, and told by open().
std::string textIn(const ListJson &json, const char *field)
{
    const auto found = json.find(field);
    if (found == json.end() || !found->is_string())
        throw std::invalid_argument(std::string("\"") + field + "\" is not a text");
    return found->get<std::string>();
}

std::string fileIn(const ListJson &json, const char *field)
{
    std::string file = textIn(json, field);
    if (!isFileWord(file))
        throw std::invalid_argument(std::string("\"") + field + "\" is no name of a file here");
    return file;
}

std::size_t countIn(const ListJson &json, const char *field)
{
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
    const auto found = json.find(field);
    if (found == json.end() || !found->is_number_unsigned() || found->get<std::uint64_t>() > kMost)
        throw std::invalid_argument(std::string("\"") + field + "\" is not a count");
    return found->get<std::size_t>();
}

FamilyTarget targetOf(const ListJson &json)
{
    FamilyTarget target;
    target.name = textIn(json, "name");
    target.file = fileIn(json, "file");
    target.templateName = textIn(json, "template");
    target.templateFile = fileIn(json, "template_file");
    target.residues = countIn(json, "residues");
    target.identical = countIn(json, "identical");
    target.aligned = countIn(json, "aligned");
    if (json.contains("copy"))
        target.copy = countIn(json, "copy");
    return target;
}

std::vector<FamilyTarget> targetsOf(const ListJson &json)
{
    std::vector<FamilyTarget> targets;
    std::unordered_set<std::string> files;
    const auto list = json.find("targets");
    if (list == json.end() || !list->is_array())
        throw std::invalid_argument("\"targets\" is not a list");
    for (const ListJson &entry : *list) {
        targets.push_back(targetOf(entry));
        if (!files.insert(targets.back().file).second)
            throw std::invalid_argument("two targets have the file " + targets.back().file);
    }
    return targets;
}

} // namespace

Result<FamilyFolder> FamilyFolder::open(const fs::path &path)
{
    const fs::path file = path / kListName;
    const Result<std::string> text = readText(file);
    if (!text && text.error().kind == FailureKind::NotFound)
        return Failure{FailureKind::NotFound,
                       "holds no models of a family (there is no " + std::string(kListName) + ")",
                       {path.string()}};
    if (!text)
        return text.error();
    const auto bad = [&file](const std::string &cause) {
        return Failure{FailureKind::BadInput, "is damaged: " + cause, {file.string()}};
    };
    try {
        const ListJson json = ListJson::parse(text.value());
        if (!json.is_object())
            return bad("it does not begin with {");
        if (countIn(json, "format") != kListVersion)
            return Failure{FailureKind::BadInput,
                           "is of another version of Tambo, which is needed to read it",
                           {file.string()}};
        FamilyFolder folder(path, textIn(json, "family"), textIn(json, "source"));
        folder.m_Targets = targetsOf(json);
        if (const auto copies = json.find("copies"); copies != json.end() && copies->is_object()) {
            for (const auto &[name, hash] : copies->items())
                if (hash.is_string())
                    folder.m_Copies[name] = hash.get<std::string>();
        }
        return folder;
    } catch (const ListJson::parse_error &error) {
        return bad("it cannot be understood from byte " + std::to_string(error.byte) + " on");
    } catch (const std::exception &error) {
        return bad(error.what());
    }
}

Result<void> FamilyFolder::save() const
{
    std::string text = "{\n\"format\": " + std::to_string(kListVersion) +
                       ",\n\"family\": " + lineOf(m_Name) +
                       ",\n\"source\": " + lineOf(m_Source.string()) +
                       ",\n\"copies\": " + lineOf(m_Copies) + ",\n\"targets\": [";
    const char *separator = "\n";
    for (const FamilyTarget &target : m_Targets) {
        text += separator + lineOf(jsonOf(target));
        separator = ",\n";
    }
    return placeText(listFile(), text + "\n]\n}\n");
}

fs::path FamilyFolder::inputOf(const FamilyTarget &target) const
{
    return m_Path / "inputs" / (target.file + ".ali");
}

fs::path FamilyFolder::templateOf(const FamilyTarget &target) const
{
    return m_Path / "templates" / (target.templateFile + ".pdb");
}

fs::path FamilyFolder::modelOf(const FamilyTarget &target) const
{
    return m_Path / "models" / (target.file + ".pdb");
}

fs::path FamilyFolder::recordOf(const FamilyTarget &target) const
{
    return m_Path / "runs" / (target.file + ".json");
}

fs::path FamilyFolder::logOf(const FamilyTarget &target) const
{
    return m_Path / "runs" / (target.file + ".log");
}

} // namespace TAMBO::families
