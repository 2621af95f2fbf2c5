// SPDX-License-Identifier: GPL-3.0-or-later
// Reads every source's includes and holds them against the rule who may include whom. The build's
// include paths catch most breaches; this catches a path written out, too.
#include "ProjectSources.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace IncludeRuleTest {

namespace fs = std::filesystem;
using ProjectSources::Include;
using ProjectSources::includesOf;
using ProjectSources::linesOf;
using ProjectSources::sourcesIn;

enum External : unsigned {
    Std = 1,
    System = 2,
    Qt = 4,
    Gemmi = 8,
    Zlib = 16,
    Poppler = 32,
    Json = 64,
    Sqlite = 128
};

struct Rule
{
    std::set<std::string> folders;
    unsigned external;
};

// Folders are named by their path from the root; "include" names the plug-in kit. Who may include a
// folder may include the rooms in it, too.
const std::map<std::string, Rule> kRules = {
    {"include", {{}, Std | Qt}},
    {"canvas", {{}, Std | Qt}},
    {"pages", {{}, Std | Qt | Poppler}},
    {"plugins/companion/columns", {{"include"}, Std}},
    {"plugins/editor/residues", {{"include"}, Std | Qt}},
    {"plugins/editor/dialogs", {{"include", "plugins/editor/residues"}, Std | Qt}},
    {"plugins/editor/grid",
     {{"include", "canvas", "plugins/editor/residues", "plugins/editor/dialogs"}, Std | Qt}},
    {"plugins/editor/printing",
     {{"include", "canvas", "pages", "plugins/editor/residues", "plugins/editor/dialogs",
       "plugins/editor/grid"},
      Std | Qt}},
    {"plugins/editor/modelling", {{"include"}, Std | Qt}},
    {"plugins/editor/window",
     {{"include", "canvas", "plugins/editor/residues", "plugins/editor/dialogs",
       "plugins/editor/grid", "plugins/editor/printing", "plugins/editor/modelling"},
      Std | Qt}},
    {"plugins/companion/reading", {{"include"}, Std | Qt}},
    {"plugins/companion/finding", {{"include", "plugins/companion/reading"}, Std | Qt}},
    {"plugins/companion/gaps", {{"include", "plugins/companion/reading"}, Std | Qt}},
    {"plugins/companion/marks", {{"include", "plugins/companion/reading"}, Std | Qt}},
    {"plugins/companion/coloring",
     {{"include", "plugins/companion/columns", "plugins/companion/reading"}, Std | Qt}},
    {"plugins/companion/selecting",
     {{"include", "plugins/companion/columns", "plugins/companion/reading"}, Std | Qt}},
    {"plugins/companion/rows",
     {{"include", "plugins/companion/columns", "plugins/companion/reading",
       "plugins/companion/selecting"},
      Std | Qt}},
    {"plugins/companion/redundancy",
     {{"include", "plugins/companion/columns", "plugins/companion/reading",
       "plugins/companion/rows", "plugins/companion/selecting"},
      Std | Qt}},
    {"plugins/companion/access", {{"include", "plugins/companion/reading"}, Std | Qt}},
    {"plugins/companion/compare", {{"include", "plugins/companion/reading"}, Std | Qt}},
    {"plugins/companion/cursor",
     {{"include", "plugins/companion/reading", "plugins/companion/gaps"}, Std | Qt}},
    {"plugins/companion/overview", {{"include"}, Std | Qt}},
    {"plugins/companion/pairs", {{"include", "plugins/companion/columns"}, Std | Qt}},
    {"plugins/companion/tracks",
     {{"include", "plugins/companion/columns", "plugins/companion/reading"}, Std | Qt}},
    {"plugins/companion/tree",
     {{"include", "plugins/companion/columns", "plugins/companion/reading"}, Std | Qt | System}},
    {"plugins/companion/blocks",
     {{"include", "plugins/companion/columns", "plugins/companion/reading",
       "plugins/companion/tracks"},
      Std | Qt}},
    {"plugins/companion/wrapped",
     {{"include", "plugins/companion/reading", "plugins/companion/finding",
       "plugins/companion/blocks"},
      Std | Qt}},
    {"plugins/companion/output",
     {{"include", "plugins/companion/columns", "plugins/companion/reading",
       "plugins/companion/tracks", "plugins/companion/blocks"},
      Std | Qt}},
    {"plugins/companion/guide",
     {{"include", "plugins/companion/columns", "plugins/companion/reading",
       "plugins/companion/blocks", "plugins/companion/wrapped"},
      Std | Qt}},
    {"plugins/companion/refit", {{"include", "plugins/companion/reading"}, Std | Qt}},
    {"plugins/companion/window",
     {{"include",
       "plugins/companion/reading",
       "plugins/companion/access",
       "plugins/companion/cursor",
       "plugins/companion/columns",
       "plugins/companion/coloring",
       "plugins/companion/finding",
       "plugins/companion/overview",
       "plugins/companion/pairs",
       "plugins/companion/selecting",
       "plugins/companion/tracks",
       "plugins/companion/tree",
       "plugins/companion/wrapped",
       "plugins/companion/marks",
       "plugins/companion/output",
       "plugins/companion/redundancy",
       "plugins/companion/rows",
       "plugins/companion/guide",
       "plugins/companion/refit",
       "plugins/companion/compare"},
      Std | Qt}},
    {"plugins/structures/molecule", {{}, Std}},
    {"plugins/structures/shapes", {{"plugins/structures/molecule"}, Std}},
    {"plugins/structures/render",
     {{"plugins/structures/molecule", "plugins/structures/shapes"}, Std | Qt}},
    {"plugins/structures/objects",
     {{"include", "plugins/structures/molecule", "plugins/structures/shapes",
       "plugins/structures/render"},
      Std}},
    {"plugins/structures/measures",
     {{"include", "plugins/structures/molecule", "plugins/structures/shapes",
       "plugins/structures/render", "plugins/structures/objects"},
      Std | Qt}},
    {"plugins/structures/command",
     {{"include", "plugins/structures/molecule", "plugins/structures/shapes",
       "plugins/structures/render", "plugins/structures/objects"},
      Std | Qt}},
    {"plugins/structures/window",
     {{"include", "plugins/structures/molecule", "plugins/structures/shapes",
       "plugins/structures/render", "plugins/structures/objects", "plugins/structures/measures"},
      Std | Qt}},
    {"host/base", {{}, Std}},
    {"host/model/records", {{"include", "host/base"}, Std | System}},
    {"host/model/change", {{"include", "host/base"}, Std}},
    {"host/model/objects", {{"include", "host/base", "host/model/change"}, Std}},
    {"host/model/residues",
     {{"include", "host/base", "host/model/records", "host/model/change", "host/model/objects"},
      Std}},
    {"host/model/sequence",
     {{"include", "host/base", "host/model/records", "host/model/change", "host/model/objects",
       "host/model/residues"},
      Std}},
    {"host/model/structure",
     {{"include", "host/base", "host/model/records", "host/model/change", "host/model/objects",
       "host/model/residues", "host/model/sequence"},
      Std}},
    {"host/model/alignment",
     {{"include", "host/base", "host/model/records", "host/model/change", "host/model/objects",
       "host/model/residues", "host/model/sequence", "host/model/structure"},
      Std}},
    {"host/model/details",
     {{"include", "host/base", "host/model/records", "host/model/change", "host/model/objects",
       "host/model/residues", "host/model/sequence", "host/model/structure",
       "host/model/alignment"},
      Std}},
    {"host/model/making",
     {{"include", "host/base", "host/model/records", "host/model/change", "host/model/objects",
       "host/model/residues", "host/model/sequence", "host/model/structure",
       "host/model/alignment"},
      Std}},
    {"host/model/storing",
     {{"include", "host/base", "host/model/records", "host/model/change", "host/model/objects",
       "host/model/residues", "host/model/sequence", "host/model/structure",
       "host/model/alignment"},
      Std}},
    {"host/formats/text", {{"host/base"}, Std | System | Zlib}},
    {"host/formats/files", {{"host/base", "host/formats/text"}, Std | System | Zlib}},
    {"host/formats/table", {{"host/base", "host/model", "host/formats/text"}, Std}},
    {"host/formats/rows", {{"host/base", "host/model", "host/formats/text"}, Std | System}},
    {"host/formats/molecules",
     {{"host/base", "host/model", "host/formats/text", "host/formats/table"}, Std | Gemmi}},
    {"host/formats/readers",
     {{"host/base", "host/model", "host/formats/text", "host/formats/table", "host/formats/rows"},
      Std}},
    {"host/formats/writers",
     {{"host/base", "host/model", "host/formats/text", "host/formats/table", "host/formats/rows"},
      Std}},
    {"host/formats",
     {{"host/base", "host/model", "host/formats/text", "host/formats/files", "host/formats/table",
       "host/formats/rows", "host/formats/molecules", "host/formats/readers",
       "host/formats/writers"},
      Std}},
    {"host/history", {{"include", "host/base", "host/model"}, Std}},
    {"host/models", {{"include", "host/base", "host/model", "host/formats"}, Std}},
    {"host/sessions/store", {{"host/base"}, Std | Sqlite}},
    {"host/sessions/live",
     {{"include", "host/base", "host/model", "host/history", "host/sessions/store"}, Std}},
    {"host/sessions/file",
     {{"include", "host/base", "host/model", "host/formats", "host/history", "host/sessions/store",
       "host/sessions/live"},
      Std}},
    {"host/realign", {{"include", "host/base", "host/model"}, Std | System | Qt}},
    {"host/scripting", {{"host/base"}, Std | System}},
    {"host/services/settings", {{"include", "host/base"}, Std | System | Qt}},
    {"host/services/log",
     {{"include", "host/base", "host/model", "host/services/settings"}, Std | Qt}},
    {"host/services/colors", {{"include", "host/base", "host/services/settings"}, Std | Qt}},
    {"host/services/search", {{"include", "host/base", "host/model"}, Std | System | Qt}},
    {"host/services/plugins",
     {{"include", "host/base", "host/model", "host/services/settings", "host/services/log"},
      Std | System | Qt}},
    {"host/services/help", {{"include", "host/services/settings"}, Std | Qt}},
    {"host/services/widgets",
     {{"include", "host/base", "host/model", "host/services/settings"}, Std | System | Qt}},
    {"host/services",
     {{"include", "host/base", "host/model", "host/services/settings", "host/services/log",
       "host/services/colors", "host/services/search", "host/services/plugins",
       "host/services/widgets"},
      Std | Qt}},
    {"host/app/handover", {{}, Std | System | Qt}},
    {"host/app/objects",
     {{"include", "host/base", "host/model", "host/formats", "host/history", "host/services",
       "host/services/settings", "host/services/log", "host/services/colors",
       "host/services/search", "host/services/plugins", "host/services/widgets",
       "host/app/writing"},
      Std | System | Qt}},
    {"host/app/writing",
     {{"include", "host/base", "host/model", "host/formats", "host/services/settings",
       "host/services/log", "host/services/widgets"},
      Std | System | Qt}},
    {"host/app/opening",
     {{"include", "host/base", "host/model", "host/models", "host/formats",
       "host/services/settings", "host/services/log", "host/services/colors",
       "host/services/search", "host/services/plugins", "host/services/widgets",
       "host/app/objects"},
      Std | System | Qt}},
    {"host/app/sessions",
     {{"include", "host/base", "host/model", "host/history", "host/sessions/store",
       "host/sessions/live", "host/sessions/file", "host/formats", "host/services/settings",
       "host/services/log", "host/services/plugins", "host/services/widgets", "host/app/objects",
       "host/app/writing"},
      Std | System | Qt}},
    {"host/app/panels",
     {{"include", "host/base", "host/model", "host/history", "host/services/settings",
       "host/services/log", "host/services/colors", "host/services/search", "host/services/plugins",
       "host/services/widgets", "host/app/objects"},
      Std | System | Qt}},
    {"host/app/tools",
     {{"include", "host/base", "host/model", "host/realign", "host/services/settings",
       "host/services/log", "host/services/colors", "host/services/search", "host/services/help",
       "host/services/plugins", "host/services/widgets", "host/app/objects"},
      Std | System | Qt}},
    {"host/app/scripting",
     {{"include", "host/base", "host/model", "host/history", "host/scripting",
       "host/services/settings", "host/services/log", "host/services/widgets"},
      Std | Qt}},
    {"host/app/families",
     {{"include", "host/base", "host/model", "host/models", "families", "host/services/settings",
       "host/services/log", "host/services/colors", "host/services/search", "host/services/plugins",
       "host/services/widgets", "host/app/objects", "host/app/opening", "host/app/tools"},
      Std | System | Qt}},
    {"host/app/commandline",
     {{"include",
       "host/base",
       "host/model",
       "pages",
       "host/formats",
       "host/services/settings",
       "host/services/log",
       "host/services/colors",
       "host/services/search",
       "host/services/plugins",
       "host/services/widgets",
       "host/history",
       "host/sessions/store",
       "host/sessions/file",
       "host/app/objects",
       "host/app/opening",
       "host/app/tools",
       "host/app/writing",
       "host/app/families",
       "families",
       "families/running"},
      Std | System | Qt | Poppler | Json}},
    {"host/app/workbench",
     {{"include",
       "host/base",
       "host/model",
       "host/formats",
       "host/history",
       "host/realign",
       "host/services",
       "host/services/settings",
       "host/services/log",
       "host/services/colors",
       "host/services/search",
       "host/services/plugins",
       "host/services/widgets",
       "host/app/objects",
       "host/app/families",
       "host/app/opening",
       "host/app/panels",
       "host/app/scripting",
       "host/app/sessions",
       "host/app/tools",
       "host/app/writing",
       "host/sessions/store",
       "host/sessions/live",
       "host/sessions/file"},
      Std | System | Qt}},
    {"host/app",
     {{"include", "host/base", "host/model", "host/formats", "host/history", "host/realign",
       "host/services", "host/services/settings", "host/services/log", "host/services/colors",
       "host/services/search", "host/services/plugins", "host/services/widgets",
       "host/app/commandline", "host/app/handover", "host/app/tools", "host/app/workbench"},
      Std | System | Qt}},
    {"python/bindings",
     {{"include", "host/base", "host/model", "host/models", "host/formats", "host/history",
       "host/sessions/store", "host/sessions/file", "plugins/companion/columns"},
      Std | System}},
    {"python/embedding",
     {{"include", "host/base", "host/model", "host/scripting", "python/bindings"}, Std | System}},
    {"families",
     {{"host/base", "host/model", "host/formats", "modelling/record"}, Std | System | Json}},
    {"families/running",
     {{"host/base", "host/formats", "modelling/record", "families"}, Std | System}},
    {"modelling/record", {{"host/base", "host/formats"}, Std | System | Json}},
    {"modelling",
     {{"host/base", "host/model", "host/formats", "modelling/record"}, Std | System | Gemmi}},
};

bool mayInclude(const Rule &rule, const fs::path &home)
{
    for (fs::path folder = home; !folder.empty(); folder = folder.parent_path())
        if (rule.folders.contains(folder.string()))
            return true;
    return false;
}

// Headers of the kit that need the toolkit; the layers without it must not use them.
const std::regex kQtInclude(R"(^#include <Q)");

// Without those of its rooms, which have rules of their own.
std::vector<fs::path> sourcesOfFolder(const std::string &folder)
{
    std::vector<fs::path> found = sourcesIn(fs::path(SOURCE_DIR) / folder);
    std::erase_if(found, [&](const fs::path &file) {
        return file.parent_path() != fs::path(SOURCE_DIR) / folder;
    });
    return found;
}

unsigned kindOf(const std::string &name)
{
    if (name.starts_with("gemmi/"))
        return Gemmi;
    if (name.starts_with("nlohmann/"))
        return Json;
    if (name == "zlib.h")
        return Zlib;
    if (name == "sqlite3.h")
        return Sqlite;
    if (name.starts_with("poppler") || name.starts_with("cairo"))
        return Poppler;
    if (name.starts_with("Q") || name.starts_with("qt"))
        return Qt;
    return name.ends_with(".h") ? System : Std;
}

class IncludeRule : public testing::TestWithParam<std::string>
{
protected:
    // The folders, of those with a rule, in which a quoted name leads to a file.
    static std::set<std::string> homesOf(const Include &include)
    {
        const fs::path root = SOURCE_DIR;
        const auto folderOf = [&](const fs::path &file) {
            return fs::relative(fs::weakly_canonical(file).parent_path(), root).string();
        };
        const fs::path beside = include.file.parent_path() / include.name;
        if (fs::exists(beside))
            return {folderOf(beside)};
        std::set<std::string> homes;
        for (const auto &[folder, rule] : kRules)
            for (const fs::path &base : {root / folder, (root / folder).parent_path(), root})
                if (fs::exists(base / include.name) && folderOf(base / include.name) == folder)
                    homes.insert(folder);
        return homes;
    }
};

TEST_P(IncludeRule, AFolderIncludesOnlyWhatItMay)
{
    const std::string folder = GetParam();
    const Rule &rule = kRules.at(folder);
    for (const fs::path &file : sourcesOfFolder(folder)) {
        for (const Include &include : includesOf(file)) {
            const std::string place =
                include.file.string() + ":" + std::to_string(include.line) + ": " + include.name;
            if (include.angled) {
                EXPECT_TRUE(rule.external & kindOf(include.name)) << place;
                continue;
            }
            if (include.name.ends_with(".moc"))
                continue;
            const std::set<std::string> homes = homesOf(include);
            EXPECT_FALSE(homes.empty()) << place << " is no header of the project";
            const bool allowed = std::ranges::any_of(homes, [&](const std::string &home) {
                return home == folder || mayInclude(rule, home);
            });
            EXPECT_TRUE(homes.empty() || allowed) << place;
        }
    }
}

TEST_P(IncludeRule, AFolderWithoutTheToolkitUsesNoHeaderThatNeedsIt)
{
    const std::string folder = GetParam();
    if (kRules.at(folder).external & Qt)
        return;
    const fs::path kit = fs::path(SOURCE_DIR) / "include";
    for (const fs::path &file : sourcesOfFolder(folder))
        for (const Include &include : includesOf(file)) {
            if (include.angled || !fs::exists(kit / include.name))
                continue;
            for (const std::string &line : linesOf(kit / include.name))
                EXPECT_FALSE(std::regex_search(line, kQtInclude))
                    << file << " includes " << include.name << ", which needs the toolkit";
        }
}

std::vector<std::string> folders()
{
    std::vector<std::string> names;
    for (const auto &[folder, rule] : kRules)
        names.push_back(folder);
    return names;
}

INSTANTIATE_TEST_SUITE_P(Folders, IncludeRule, testing::ValuesIn(folders()), [](const auto &info) {
    std::string name = info.param;
    std::ranges::replace(name, '/', '_');
    return name;
});

TEST(Sources, EveryFolderWithCodeHasARule)
{
    for (const std::string top :
         {"canvas", "families", "host", "include", "modelling", "pages", "plugins", "python"})
        for (const fs::path &file : sourcesIn(fs::path(SOURCE_DIR) / top)) {
            const std::string folder =
                fs::relative(file.parent_path(), fs::path(SOURCE_DIR)).string();
            EXPECT_TRUE(kRules.contains(folder)) << file;
        }
}

TEST(Sources, EachOpensWithItsLicence)
{
    for (const std::string top : {"bench", "canvas", "families", "host", "include", "modelling",
                                  "pages", "plugins", "python", "tests"})
        for (const fs::path &file : sourcesIn(fs::path(SOURCE_DIR) / top)) {
            const std::vector<std::string> lines = linesOf(file);
            EXPECT_TRUE(!lines.empty() &&
                        lines.front() == "// SPDX-License-Identifier: GPL-3.0-or-later")
                << file;
        }
}

TEST(Sources, HeadersAreIncludedOnce)
{
    for (const std::string top :
         {"canvas", "host", "include", "modelling", "pages", "plugins", "python", "tests"})
        for (const fs::path &file : sourcesIn(fs::path(SOURCE_DIR) / top)) {
            if (file.extension() != ".h")
                continue;
            const std::vector<std::string> lines = linesOf(file);
            EXPECT_TRUE(std::ranges::find(lines, "#pragma once") != lines.end()) << file;
        }
}

TEST(Sources, NoFolderHoldsMoreThanFortyEight)
{
    std::map<fs::path, int> counts;
    for (const std::string top : {"bench", "canvas", "families", "host", "include", "modelling",
                                  "pages", "plugins", "python", "tests"})
        for (const fs::path &file : sourcesIn(fs::path(SOURCE_DIR) / top))
            ++counts[file.parent_path()];
    EXPECT_FALSE(counts.empty());
    // Plug-ins include headers of the kit by their names alone, so that they stand side by side.
    const fs::path kit = fs::path(SOURCE_DIR) / "include";
    for (const auto &[folder, count] : counts)
        EXPECT_LE(count, folder == kit ? 64 : 48) << folder;
}

TEST(Sources, NoneIsLongerThanSixHundredLines)
{
    for (const std::string top :
         {"canvas", "families", "host", "include", "modelling", "pages", "plugins", "python"})
        for (const fs::path &file : sourcesIn(fs::path(SOURCE_DIR) / top))
            EXPECT_LE(linesOf(file).size(), 600u) << file;
}

} // namespace IncludeRuleTest
