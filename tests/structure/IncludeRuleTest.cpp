// SPDX-License-Identifier: GPL-3.0-or-later
// Reads every source's includes and holds them against the rule who may include whom. The build's
// include paths catch most breaches; this catches a path written out, too.
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

enum External : unsigned { Std = 1, System = 2, Qt = 4, Gemmi = 8, Zlib = 16, Poppler = 32 };

struct Rule
{
    std::set<std::string> folders;
    unsigned external;
};

// Folders are named by their path from the root; "include" names the plug-in kit.
const std::map<std::string, Rule> kRules = {
    {"include", {{}, Std | Qt}},
    {"canvas", {{}, Std | Qt}},
    {"pages", {{}, Std | Qt | Poppler}},
    {"plugin", {{"include", "canvas", "pages"}, Std | Qt}},
    {"host/base", {{}, Std}},
    {"host/model", {{"include", "host/base"}, Std}},
    {"host/formats", {{"include", "host/base", "host/model"}, Std | System | Gemmi | Zlib}},
    {"host/history", {{"include", "host/base", "host/model"}, Std}},
    {"host/realign", {{"include", "host/base", "host/model"}, Std | System | Qt}},
    {"host/services", {{"include", "host/base", "host/model"}, Std | System | Qt}},
    {"host/app",
     {{"include", "host/base", "host/model", "host/formats", "host/history", "host/realign",
       "host/services", "pages"},
      Std | System | Qt | Poppler}},
    {"modelling", {{"host/base", "host/model", "host/formats"}, Std | System | Gemmi}},
};

// Headers of the kit that need the toolkit; the layers without it must not use them.
const std::regex kQtInclude(R"(^#include <Q)");

struct Include
{
    fs::path file;
    int line;
    std::string name;
    bool angled;
};

std::vector<std::string> linesOf(const fs::path &file)
{
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<fs::path> sourcesIn(const fs::path &folder)
{
    std::vector<fs::path> found;
    if (!fs::exists(folder))
        return found;
    for (const auto &entry : fs::recursive_directory_iterator(folder)) {
        const std::string extension = entry.path().extension().string();
        if (entry.is_regular_file() && (extension == ".h" || extension == ".cpp"))
            found.push_back(entry.path());
    }
    return found;
}

std::vector<Include> includesOf(const fs::path &file)
{
    static const std::regex pattern(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    std::vector<Include> found;
    int number = 0;
    for (const std::string &line : linesOf(file)) {
        ++number;
        std::smatch match;
        if (std::regex_search(line, match, pattern))
            found.push_back({file, number, match[2], match[1] == "<"});
    }
    return found;
}

unsigned kindOf(const std::string &name)
{
    if (name.starts_with("gemmi/"))
        return Gemmi;
    if (name == "zlib.h")
        return Zlib;
    if (name.starts_with("poppler"))
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
        std::set<std::string> homes;
        for (const auto &[folder, rule] : kRules) {
            const fs::path beside = fs::weakly_canonical(include.file.parent_path() / include.name);
            const std::string relative = fs::relative(beside, root).string();
            if (fs::exists(beside) && relative.starts_with(folder + "/"))
                return {folder};
            for (const fs::path &base : {root / folder, (root / folder).parent_path(), root})
                if (fs::exists(base / include.name) &&
                    fs::relative(fs::weakly_canonical(base / include.name), root)
                        .string()
                        .starts_with(folder + "/"))
                    homes.insert(folder);
        }
        return homes;
    }
};

TEST_P(IncludeRule, AFolderIncludesOnlyWhatItMay)
{
    const std::string folder = GetParam();
    const Rule &rule = kRules.at(folder);
    for (const fs::path &file : sourcesIn(fs::path(SOURCE_DIR) / folder)) {
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
                return home == folder || rule.folders.contains(home);
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
    for (const fs::path &file : sourcesIn(fs::path(SOURCE_DIR) / folder))
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
    for (const std::string top : {"canvas", "host", "include", "modelling", "pages", "plugin"})
        for (const fs::path &file : sourcesIn(fs::path(SOURCE_DIR) / top)) {
            const std::string folder =
                fs::relative(file.parent_path(), fs::path(SOURCE_DIR)).string();
            EXPECT_TRUE(kRules.contains(folder)) << file;
        }
}

TEST(Sources, EachOpensWithItsLicence)
{
    for (const std::string top :
         {"bench", "canvas", "host", "include", "modelling", "pages", "plugin", "tests"})
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
         {"canvas", "host", "include", "modelling", "pages", "plugin", "tests"})
        for (const fs::path &file : sourcesIn(fs::path(SOURCE_DIR) / top)) {
            if (file.extension() != ".h")
                continue;
            const std::vector<std::string> lines = linesOf(file);
            EXPECT_TRUE(std::ranges::find(lines, "#pragma once") != lines.end()) << file;
        }
}

TEST(Sources, NoneIsLongerThanSixHundredLines)
{
    for (const std::string top : {"canvas", "host", "include", "modelling", "pages", "plugin"})
        for (const fs::path &file : sourcesIn(fs::path(SOURCE_DIR) / top))
            EXPECT_LE(linesOf(file).size(), 600u) << file;
}

} // namespace IncludeRuleTest
