// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyPreparing.h"

#include "AlignmentWriters.h"
#include "ContentHash.h"
#include "FileReader.h"
#include "FolderFiles.h"
#include "FolderLock.h"
#include "FormatText.h"
#include "MovedTemplate.h"
#include "StructureWriter.h"
#include "TargetFiles.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

namespace TAMBO::families {

namespace {

namespace fs = std::filesystem;

// Hidden, so that it is none of the templates.
constexpr const char *kTriedName = ".tried.pdb";

std::string quotedName(const std::string &name)
{
    return formats::shown(std::string_view(name));
}

// Which of the rows of its name each is, from 1.
std::vector<std::size_t> copiesOf(const Family &family)
{
    std::unordered_map<std::string, std::size_t> counts;
    std::vector<std::size_t> copies;
    copies.reserve(family.rows.size());
    for (const FamilyRow &row : family.rows)
        copies.push_back(++counts[row.name]);
    return copies;
}

RowRecord rowOf(const FamilyRow &row, const std::string &text)
{
    RowRecord record;
    record.name = formats::cleanText(row.name);
    record.sequence.append(text);
    return record;
}

// The two rows without the columns in which neither has a letter: what changes in other columns of
// the family is no change of the pair.
std::string pairText(const FamilyRow &templateRow, const FamilyRow &target)
{
    std::string above;
    std::string below;
    const std::size_t width = std::min(templateRow.text.size(), target.text.size());
    for (std::size_t col = 0; col < width; ++col) {
        if (templateRow.text[col] == '-' && target.text[col] == '-')
            continue;
        above += templateRow.text[col];
        below += target.text[col];
    }
    AlignmentRecord pair;
    pair.name = "pair";
    pair.rows = {rowOf(templateRow, above), rowOf(target, below)};
    formats::StringSink sink;
    WriteOptions options;
    options.format = FileFormat::Pir;
    formats::writePir(formats::FittedAlignment(pair, options), sink);
    return sink.text();
}

std::string hashOf(const std::string &text)
{
    ContentHash hash;
    hash.add(text);
    std::array<char, 24> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx",
                  static_cast<unsigned long long>(hash.value()));
    return digits.data();
}

// Empty when there is none, or it cannot be read.
std::string oldText(const fs::path &file)
{
    Result<std::string> text = readText(file);
    return text ? std::move(text).value() : std::string();
}

bool canBeBuilt(const FamilyTarget &target)
{
    return target.aligned > 0;
}

// What the workflow and the batch system are to do.
Result<void> ask(const FamilyFolder &folder, const std::vector<FamilyTarget> &targets,
                 const FamilySettings &settings)
{
    nlohmann::ordered_json config = {{"kestram", settings.kestram.string()},
                                     {"tambo", settings.tambo.string()},
                                     {"memory_mb", settings.megabytes},
                                     {"run", nlohmann::ordered_json::array()},
                                     {"templates", nlohmann::ordered_json::object()}};
    std::string list;
    nlohmann::json templates = nlohmann::json::object();
    for (const FamilyTarget &target : targets) {
        if (!canBeBuilt(target))
            continue;
        config["run"].push_back(target.file);
        templates[target.file] = target.templateFile;
        list += target.file + '\t' + target.templateFile + '\n';
    }
    config["templates"] = templates;
    constexpr auto kReplace = nlohmann::ordered_json::error_handler_t::replace;
    if (Result<void> placed =
            placeText(folder.path() / "config.json", config.dump(1, ' ', false, kReplace) + '\n');
        !placed)
        return placed;
    return placeText(folder.path() / "list.tsv", list);
}

class Preparing
{
public:
    Preparing(const Family &family, const std::vector<PlannedModel> &plan,
              const TemplateSource &templates, const FamilySettings &settings, FamilyFolder folder)
        : m_Family(family),
          m_Plan(plan),
          m_Source(templates),
          m_Settings(settings),
          m_Copies(copiesOf(family)),
          m_Targets(folder.targets()),
          m_Done{std::move(folder), {}, {}, {}, {}}
    {
        for (std::size_t i = 0; i < m_Targets.size(); ++i) {
            const FamilyTarget &target = m_Targets[i];
            m_Known[{target.name, target.copy}] = i;
            m_Files.take(target.file);
            if (m_TemplateNames.insert({target.templateName, target.templateFile}).second)
                m_TemplateFiles.take(target.templateFile);
        }
    }

    [[nodiscard]] Result<PreparedFamily> run()
    {
        for (const auto step : {&Preparing::makeFolders, &Preparing::writeTemplates,
                                &Preparing::writeInputs, &Preparing::copyWorkflow}) {
            if (const Result<void> done = (this->*step)(); !done)
                return done.error();
        }
        if (const Result<void> asked = ask(m_Done.folder, m_Done.asked, m_Settings); !asked)
            return asked.error();
        m_Done.folder.setTargets(m_Targets);
        if (const Result<void> saved = m_Done.folder.save(); !saved)
            return saved.error();
        return std::move(m_Done);
    }

private:
    [[nodiscard]] Result<void> makeFolders()
    {
        for (const char *name : {"inputs", "templates", "models", "runs"}) {
            if (Result<void> made = makeFolder(m_Done.folder.path() / name); !made)
                return made;
        }
        // Whoever is killed from here on finds the folder as one of this family.
        return m_Done.folder.save();
    }

    // A second row of a name gets one of its own.
    [[nodiscard]] std::string templateName(std::size_t row) const
    {
        const std::string name = formats::cleanText(m_Family.rows[row].name);
        return m_Copies[row] == 1 ? name : name + " (" + std::to_string(m_Copies[row]) + ')';
    }

    [[nodiscard]] Result<void> writeTemplates()
    {
        std::set<std::size_t> rows;
        for (const PlannedModel &model : m_Plan) {
            if (model.aligned > 0)
                rows.insert(model.templateRow);
        }
        for (const std::size_t row : rows) {
            if (Result<void> written = writeTemplate(row); !written)
                return written;
        }
        return {};
    }
    const std::string &templateFile(std::size_t row)
    {
        const std::string name = templateName(row);
        const auto known = m_TemplateNames.find(name);
        if (known != m_TemplateNames.end())
            return known->second;
        const std::string &file = m_TemplateNames[name] = m_TemplateFiles.add(name);
        if (file != name)
            m_Done.mapped.push_back(quotedName(name) + " has the file templates/" + file + ".pdb");
        return file;
    }
    [[nodiscard]] Result<void> writeTemplate(std::size_t row)
    {
        Result<StructureRecord> record = m_Source(row);
        if (!record)
            return record.error();
        FamilyTarget any;
        any.templateFile = templateFile(row);
        const fs::path file = m_Done.folder.templateOf(any);
        std::string text;
        try {
            text = formats::structureText(record.value(), FileFormat::Pdb);
        } catch (const std::exception &error) {
            return Failure{FailureKind::Refused,
                           std::string("cannot be written: ") + error.what(),
                           {templateName(row)}};
        }
        const std::string old = oldText(file);
        if (old == text)
            return {};
        if (isOnlyMoved(old, text)) {
            m_Done.remarks.push_back(quotedName(templateName(row)) +
                                     " was moved as a whole; the models on it stay as they are");
            return {};
        }
        // Before anything is taken back for it.
        const fs::path tried = m_Done.folder.path() / "templates" / kTriedName;
        Result<void> checked = placeText(tried, text);
        if (checked)
            checked = checkTemplate(tried, record.value());
        static_cast<void>(removeFile(tried));
        if (!checked)
            return checked;
        for (const FamilyTarget &target : m_Targets) {
            if (target.templateFile != any.templateFile)
                continue;
            if (Result<void> gone = takeBack(target); !gone)
                return gone;
        }
        return placeText(file, text);
    }
    // A file that says something else would be found out by each job alone.
    [[nodiscard]] static Result<void> checkTemplate(const fs::path &file,
                                                    const StructureRecord &record)
    {
        const Result<FileContents> contents = readFile(file);
        if (!contents)
            return contents.error();
        if (contents.value().structures.empty())
            return Failure{FailureKind::System, "has lost its structure", {file.string()}};
        const Result<void> same =
            formats::checkSame(record, contents.value().structures.front(), FileFormat::Pdb);
        if (!same)
            return Failure{FailureKind::Refused,
                           "cannot be a template, because a PDB file of it says something else: " +
                               same.error().cause,
                           {record.name}};
        return {};
    }

    // Model and record are not of what they are going to be of.
    [[nodiscard]] Result<void> takeBack(const FamilyTarget &target)
    {
        const FamilyFolder &folder = m_Done.folder;
        std::error_code error;
        if (fs::exists(folder.modelOf(target), error))
            m_Done.changed.push_back(quotedName(target.name) +
                                     " has changed, or its template; its model is gone");
        for (const fs::path &file :
             {folder.modelOf(target), folder.recordOf(target), folder.logOf(target)}) {
            if (Result<void> removed = removeFile(file); !removed)
                return removed;
        }
        return {};
    }

    [[nodiscard]] Result<void> writeInputs()
    {
        for (const PlannedModel &model : m_Plan) {
            const FamilyTarget target = targetOf(model);
            if (Result<void> written = writeInput(model, target); !written)
                return written;
            m_Done.asked.push_back(target);
        }
        return {};
    }
    [[nodiscard]] FamilyTarget &entryOf(const PlannedModel &model)
    {
        const std::string name = formats::cleanText(m_Family.rows[model.target].name);
        const auto [known, isNew] =
            m_Known.insert({{name, m_Copies[model.target]}, m_Targets.size()});
        if (!isNew)
            return m_Targets[known->second];
        FamilyTarget &target = m_Targets.emplace_back();
        target.name = name;
        target.copy = m_Copies[model.target];
        target.file = m_Files.add(name);
        if (target.file != name)
            m_Done.mapped.push_back(quotedName(name) + " has the files " + target.file);
        return target;
    }
    [[nodiscard]] FamilyTarget targetOf(const PlannedModel &model)
    {
        FamilyTarget &target = entryOf(model);
        // Rows of one name and one sequence may have structures of their own, which the input does
        // not tell apart.
        if (!target.templateFile.empty() && target.templateFile != templateFile(model.templateRow))
            static_cast<void>(removeFile(m_Done.folder.inputOf(target)));
        target.templateName = templateName(model.templateRow);
        target.templateFile = templateFile(model.templateRow);
        target.residues = model.residues;
        target.identical = model.identical;
        target.aligned = model.aligned;
        return target;
    }
    [[nodiscard]] Result<void> writeInput(const PlannedModel &model, const FamilyTarget &target)
    {
        const fs::path file = m_Done.folder.inputOf(target);
        if (!canBeBuilt(target)) {
            m_Done.remarks.push_back(quotedName(target.name) + " shares no column with " +
                                     quotedName(target.templateName) +
                                     ", so no model of it can be built");
            if (Result<void> gone = takeBack(target); !gone)
                return gone;
            return removeFile(file);
        }
        const std::string text =
            pairText(m_Family.rows[model.templateRow], m_Family.rows[model.target]);
        if (oldText(file) == text)
            return {};
        if (Result<void> gone = takeBack(target); !gone)
            return gone;
        return placeText(file, text);
    }

    [[nodiscard]] Result<void> copyWorkflow()
    {
        if (m_Settings.workflow.empty())
            return {};
        std::error_code error;
        for (fs::recursive_directory_iterator entry(m_Settings.workflow, error), end;
             !error && entry != end; entry.increment(error)) {
            if (!entry->is_regular_file())
                continue;
            if (Result<void> copied = copy(entry->path()); !copied)
                return copied;
        }
        if (error)
            return Failure{FailureKind::System,
                           "cannot be read: " + error.message(),
                           {m_Settings.workflow.string()}};
        return {};
    }
    [[nodiscard]] Result<void> copy(const fs::path &from)
    {
        const std::string name = from.lexically_relative(m_Settings.workflow).generic_string();
        const Result<std::string> text = readText(from);
        if (!text)
            return text.error();
        const fs::path to = m_Done.folder.path() / name;
        const std::string hash = hashOf(text.value());
        std::string &known = m_Done.folder.copies()[name];
        std::error_code error;
        if (fs::exists(to, error)) {
            const std::string there = hashOf(oldText(to));
            if (there != hash && there != known) {
                m_Done.remarks.push_back(name + " stays as you have changed it");
                return {};
            }
            known = hash;
            if (there == hash)
                return {};
        }
        known = hash;
        if (Result<void> made = makeFolder(to.parent_path()); !made)
            return made;
        const bool isProgram =
            (fs::status(from, error).permissions() & fs::perms::owner_exec) != fs::perms::none;
        return placeText(to, text.value(), isProgram);
    }

    const Family &m_Family;
    const std::vector<PlannedModel> &m_Plan;
    const TemplateSource &m_Source;
    const FamilySettings &m_Settings;
    std::vector<std::size_t> m_Copies;
    std::vector<FamilyTarget> m_Targets;
    // By name and copy.
    std::map<std::pair<std::string, std::size_t>, std::size_t> m_Known;
    TargetFiles m_Files;
    TargetFiles m_TemplateFiles;
    // The file of each.
    std::map<std::string, std::string> m_TemplateNames;
    PreparedFamily m_Done;
};

// Two families may have one name. Those of a file that is still there, and of which the folder has
// no target, are another one.
bool isOfAnotherFile(const FamilyFolder &folder, const Family &family,
                     const std::vector<PlannedModel> &plan)
{
    std::error_code error;
    if (folder.source().empty() || family.source.empty() || folder.targets().empty() ||
        !fs::exists(folder.source(), error) ||
        fs::equivalent(folder.source(), family.source, error))
        return false;
    std::set<std::string> names;
    for (const FamilyTarget &target : folder.targets())
        names.insert(target.name);
    return std::ranges::none_of(plan, [&](const PlannedModel &model) {
        return names.contains(formats::cleanText(family.rows[model.target].name));
    });
}

// The lock of a call that has come to nothing, or of this one, is no contents.
bool isFree(const fs::path &folder, std::error_code &error)
{
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().filename() != FolderLock::kName)
            return false;
    }
    return true;
}

// Of a folder that may be used: what stands in it, or nothing.
Result<FamilyFolder> lookAt(const Family &family, const std::vector<PlannedModel> &plan,
                            const fs::path &path)
{
    const std::string name = formats::cleanText(family.name);
    std::error_code error;
    if (fs::exists(path, error) && !fs::is_directory(path, error))
        return Failure{FailureKind::Refused, "is a file where a folder is needed", {path.string()}};
    Result<FamilyFolder> known = FamilyFolder::open(path);
    if (known) {
        const FamilyFolder &folder = known.value();
        const bool isOther = isOfAnotherFile(folder, family, plan);
        if (folder.name() == name && !isOther)
            return known;
        return Failure{FailureKind::Refused,
                       "is the folder of another family, " + quotedName(folder.name()) +
                           (isOther ? " of " + folder.source().string() : ""),
                       {path.string()}};
    }
    if (known.error().kind != FailureKind::NotFound)
        return known;
    const bool isUsed = fs::exists(path, error) && !isFree(path, error);
    if (error)
        return Failure{FailureKind::System, "cannot be read: " + error.message(), {path.string()}};
    if (isUsed)
        return Failure{FailureKind::Refused,
                       "holds something else than models of a family; name a new folder",
                       {path.string()}};
    return FamilyFolder(path, name, family.source);
}

} // namespace

Result<PreparedFamily> prepareFamily(const Family &family, const std::vector<PlannedModel> &plan,
                                     const TemplateSource &templates, const fs::path &path,
                                     const FamilySettings &settings)
{
    Result<FamilyFolder> folder = lookAt(family, plan, path);
    if (!folder)
        return folder.error();
    std::error_code error;
    const bool isNew = !fs::exists(path, error);
    if (const Result<void> made = makeFolder(path); !made)
        return made.error();
    Result<PreparedFamily> prepared = [&]() -> Result<PreparedFamily> {
        const Result<FolderLock> lock = FolderLock::take(path);
        if (!lock)
            return lock.error();
        // Somebody else may have made it one since, and then it is not this call's to remove.
        folder = lookAt(family, plan, path);
        if (!folder)
            return folder.error();
        const bool isOurs = isNew && !fs::exists(folder->listFile(), error);
        Result<PreparedFamily> made =
            Preparing(family, plan, templates, settings, std::move(folder).value()).run();
        if (!made && isOurs)
            fs::remove_all(path, error);
        return made;
    }();
    return prepared;
}

Result<void> askForAll(const FamilyFolder &folder, const FamilySettings &settings)
{
    return ask(folder, folder.targets(), settings);
}

} // namespace TAMBO::families
