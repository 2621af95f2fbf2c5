// SPDX-License-Identifier: GPL-3.0-or-later
// The documentation shows code that is compiled, and leads to files that exist.
#include <gtest/gtest.h>

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

} // namespace DocumentationTest
