// SPDX-License-Identifier: GPL-3.0-or-later
// The documentation shows code that is compiled, and leads to files that exist.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace DocumentationTest {

namespace fs = std::filesystem;

const fs::path kRoot = SOURCE_DIR;

std::string textOf(const fs::path &file)
{
    std::ifstream stream(file);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<fs::path> pages()
{
    std::vector<fs::path> found;
    for (const fs::path &folder : {kRoot, kRoot / "docs"})
        for (const auto &entry : fs::directory_iterator(folder))
            if (entry.path().extension() == ".md")
                found.push_back(entry.path());
    return found;
}

// Those are taken out, built and loaded; what names no file would not be.
TEST(PluginInterface, EachBlockOfCodeNamesTheFileThatItStandsIn)
{
    const std::string page = textOf(kRoot / "docs/plugin-interface.md");
    const std::regex opening("\n```(\\w+)([^\n]*)\n");
    int blocks = 0;
    for (std::sregex_iterator block(page.begin(), page.end(), opening), end; block != end;
         ++block) {
        ++blocks;
        const std::string name = (*block)[2].str();
        ASSERT_FALSE(name.empty()) << block->str();
        EXPECT_TRUE(fs::exists(kRoot / "examples/plugins" / name.substr(1))) << name;
    }
    EXPECT_GT(blocks, 0);
}

TEST(Pages, LinkToFilesThatExist)
{
    static const std::regex link(R"(\]\(([^)#]+)[^)]*\))");
    for (const fs::path &page : pages()) {
        const std::string text = textOf(page);
        for (std::sregex_iterator next(text.begin(), text.end(), link), end; next != end; ++next) {
            const std::string target = (*next)[1];
            if (target.starts_with("http"))
                continue;
            EXPECT_TRUE(fs::exists(page.parent_path() / target)) << page << ": " << target;
        }
    }
}

// Pages of plug-ins are found by their names, and have the style of the others and pictures of the
// documentation beside them.
TEST(HelpPages, LeadToPagesAndPicturesThatExist)
{
    std::vector<fs::path> found;
    for (const char *const folder :
         {"share/help", "plugins/companion/help", "plugins/structures/help"})
        for (const auto &entry : fs::directory_iterator(kRoot / folder))
            if (entry.path().extension() == ".html")
                found.push_back(entry.path());
    static const std::regex reference(R"((?:href|src)="([^"#]+)[^"]*")");
    for (const fs::path &page : found) {
        const std::string text = textOf(page);
        for (std::sregex_iterator next(text.begin(), text.end(), reference), end; next != end;
             ++next) {
            const fs::path target = (*next)[1].str();
            if (target.string().starts_with("http"))
                continue;
            bool isThere = std::ranges::any_of(found, [&](const fs::path &other) {
                return other.filename() == target.filename();
            });
            for (const fs::path &folder :
                 {page.parent_path(), kRoot / "share/help", kRoot / "docs/pictures"})
                isThere = isThere || fs::exists(folder / target);
            EXPECT_TRUE(isThere) << page << ": " << target;
        }
    }
    EXPECT_GT(found.size(), 10U);
}

// What the tour has in bold is what the user chooses or presses: a menu, and entries of menus.
TEST(Tour, NamesWhatTheProgramHas)
{
    std::string program = textOf(kRoot / "share/defaults.ini");
    for (const char *const top : {"host", "plugins"})
        for (const auto &entry : fs::recursive_directory_iterator(kRoot / top))
            if (entry.path().extension() == ".cpp" || entry.path().filename() == "CMakeLists.txt")
                program += textOf(entry.path());
    std::erase(program, '&');
    // Of the toolkit.
    program += "\"OK\"";

    static const std::regex bold(R"(\*\*([^*]+)\*\*)");
    const std::string page = textOf(kRoot / "docs/tour.md");
    int names = 0;
    for (std::sregex_iterator next(page.begin(), page.end(), bold), end; next != end; ++next) {
        std::istringstream parts((*next)[1]);
        for (std::string name; std::getline(parts >> std::ws, name, ',');) {
            ++names;
            EXPECT_TRUE(program.find('"' + name + '"') != std::string::npos ||
                        program.find('|' + name + '|') != std::string::npos)
                << name;
        }
    }
    EXPECT_GT(names, 20);
}

} // namespace DocumentationTest
