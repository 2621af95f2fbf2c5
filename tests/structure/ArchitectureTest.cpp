// SPDX-License-Identifier: GPL-3.0-or-later
// The page on the architecture names what is there, and nothing is wound up in itself.
#include "ProjectSources.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace ArchitectureTest {

using ProjectSources::fs::path;
using Names = std::set<std::string>;

const path kRoot = SOURCE_DIR;

std::vector<path> productSources()
{
    std::vector<path> found;
    for (const std::string &top : ProjectSources::kTops) {
        const std::vector<path> sources = ProjectSources::sourcesIn(kRoot / top);
        found.insert(found.end(), sources.begin(), sources.end());
    }
    return found;
}

std::string folderOf(const path &source)
{
    return source.parent_path().lexically_relative(kRoot).generic_string();
}

// ---- The page

// The folders in the first columns of its tables.
Names foldersOnThePage()
{
    static const std::regex row(R"(^\| `([\w/]+)` \|)");
    Names folders;
    for (const std::string &line : ProjectSources::linesOf(kRoot / "docs/architecture.md")) {
        std::smatch match;
        if (!std::regex_search(line, match, row))
            continue;
        EXPECT_TRUE(folders.insert(match[1]).second) << match[1] << " stands there twice";
    }
    return folders;
}

TEST(ArchitecturePage, NamesTheFoldersWithCodeAndNoOthers)
{
    Names folders;
    for (const path &source : productSources())
        folders.insert(folderOf(source));
    EXPECT_GT(folders.size(), 10U);
    EXPECT_EQ(foldersOnThePage(), folders);
}

// ---- Colors

// Of texts a case of the room computes whether they can be read, so they have names of their own.
// Gray is for lines and balls, yellow for the selection.
TEST(ProductSources, TheToolkitsNamedColorsAreForNoTextButBlackAndWhite)
{
    static const std::regex pen(
        R"(setPen\([^;]*Qt::(\w*(gray|green|red|blue|yellow|cyan|magenta))\b)", std::regex::icase);
    for (const char *folder : {"host", "plugins/companion", "plugins/structures"}) {
        for (const path &source : ProjectSources::sourcesIn(kRoot / folder)) {
            // Frames of colored squares, and names in the words of the editor.
            const std::string name = source.filename().string();
            if (name == "LegendBar.cpp" || name == "NameColumn.cpp")
                continue;
            for (const std::string &line : ProjectSources::linesOf(source)) {
                std::smatch match;
                EXPECT_FALSE(std::regex_search(line, match, pen)) << source << ": " << line;
            }
        }
    }
}

// ---- Circles

// A header and the source of the same name are one unit: "host/model/Peptide". The rooms of a
// folder are not parted, so that a circle through several of them is found as well.
std::string unitOf(const path &source)
{
    const path folder = folderOf(source);
    const bool isNested = *folder.begin() == "host" || *folder.begin() == "plugins";
    path frame = *folder.begin();
    if (isNested)
        frame /= *std::next(folder.begin());
    return (frame / source.stem()).generic_string();
}

using Graph = std::map<std::string, Names>;

Graph unitsWithTheirIncludes()
{
    std::map<std::string, path> homes;
    for (const path &source : productSources())
        homes.emplace(source.filename().string(), source);
    Graph graph;
    for (const path &source : productSources()) {
        Names &included = graph[unitOf(source)];
        for (const ProjectSources::Include &include : ProjectSources::includesOf(source)) {
            const auto home = homes.find(path(include.name).filename().string());
            if (!include.angled && home != homes.end() && unitOf(home->second) != unitOf(source))
                included.insert(unitOf(home->second));
        }
    }
    return graph;
}

Names reachedFrom(const Graph &graph, const std::string &start)
{
    Names reached;
    std::vector<std::string> waiting{start};
    while (!waiting.empty()) {
        const std::string unit = waiting.back();
        waiting.pop_back();
        for (const std::string &next : graph.at(unit))
            if (reached.insert(next).second)
                waiting.push_back(next);
    }
    return reached;
}

// Units that all include each other, straight or through others.
std::set<Names> circlesIn(const Graph &graph)
{
    std::map<std::string, Names> reached;
    for (const auto &[unit, included] : graph)
        reached.emplace(unit, reachedFrom(graph, unit));
    std::set<Names> circles;
    for (const auto &[unit, others] : reached) {
        Names circle;
        for (const std::string &other : others)
            if (reached.at(other).contains(unit))
                circle.insert(other);
        if (circle.size() > 1)
            circles.insert(circle);
    }
    return circles;
}

TEST(Circles, AreFound)
{
    const Graph graph = {{"a", {"b"}}, {"b", {"c"}}, {"c", {"a", "d"}}, {"d", {}}, {"e", {"a"}}};
    EXPECT_EQ(circlesIn(graph), (std::set<Names>{{"a", "b", "c"}}));
    EXPECT_TRUE(circlesIn({{"a", {"b"}}, {"b", {}}}).empty());
}

TEST(Circles, AreNone)
{
    for (const Names &circle : circlesIn(unitsWithTheirIncludes()))
        ADD_FAILURE() << testing::PrintToString(circle) << " include each other";
}

} // namespace ArchitectureTest
