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

// Those that are still to be broken. None may grow, and one that is broken goes out of the list.
const std::set<Names> kKnownCircles = {
    {"host/model/AlignmentEdits",   "host/model/AlignmentRow",
     "host/model/AlignmentTable",   "host/model/Atom",
     "host/model/CarriedColumns",   "host/model/ChangeScope",
     "host/model/ChangeSession",    "host/model/ColorEdit",
     "host/model/ColumnLetters",    "host/model/ColumnProfiles",
     "host/model/CompoundState",    "host/model/Element",
     "host/model/Footprint",        "host/model/NamedCompound",
     "host/model/NumberEdit",       "host/model/ObjectContainer",
     "host/model/ObjectOperations", "host/model/ObjectSpace",
     "host/model/ObjectsEdit",      "host/model/Peptide",
     "host/model/ResidueGroup",     "host/model/ResidueHandle",
     "host/model/ResidueHandles",   "host/model/SelectedColumns",
     "host/model/Structure",        "host/model/StructureContents",
     "host/model/SubscriberList",   "host/model/TieEdit"},
};

TEST(Circles, AreFound)
{
    const Graph graph = {{"a", {"b"}}, {"b", {"c"}}, {"c", {"a", "d"}}, {"d", {}}, {"e", {"a"}}};
    EXPECT_EQ(circlesIn(graph), (std::set<Names>{{"a", "b", "c"}}));
    EXPECT_TRUE(circlesIn({{"a", {"b"}}, {"b", {}}}).empty());
}

TEST(Circles, AreNone)
{
    const std::set<Names> circles = circlesIn(unitsWithTheirIncludes());
    const auto isWithin = [](const Names &known) {
        return [&](const Names &circle) { return std::ranges::includes(known, circle); };
    };
    for (const Names &circle : circles)
        EXPECT_TRUE(std::ranges::any_of(
            kKnownCircles, [&](const Names &known) { return isWithin(known)(circle); }))
            << testing::PrintToString(circle) << " include each other";
    for (const Names &known : kKnownCircles)
        EXPECT_TRUE(std::ranges::any_of(circles, isWithin(known)))
            << testing::PrintToString(known) << " are no circle any more; take them off the list";
}

} // namespace ArchitectureTest
