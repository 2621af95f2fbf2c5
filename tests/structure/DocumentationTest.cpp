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

// What stands between ```language and the next ```.
std::vector<std::string> snippets(const std::string &page, const std::string &language)
{
    std::vector<std::string> found;
    const std::string opening = "\n```" + language + "\n";
    for (std::size_t at = page.find(opening); at != std::string::npos;) {
        const std::size_t begin = at + opening.size();
        const std::size_t end = page.find("\n```", begin);
        found.push_back(page.substr(begin, end + 1 - begin));
        at = page.find(opening, end);
    }
    return found;
}

TEST(PluginInterface, ShowsOnlyCodeThatIsBuiltAndLoaded)
{
    std::string sources;
    for (const auto &entry : fs::directory_iterator(kRoot / "tests/kit/project"))
        sources += textOf(entry.path());
    const std::string page = textOf(kRoot / "docs/plugin-interface.md");
    for (const std::string language : {"cpp", "cmake"}) {
        const std::vector<std::string> shown = snippets(page, language);
        EXPECT_FALSE(shown.empty()) << language;
        for (const std::string &snippet : shown)
            EXPECT_TRUE(sources.find(snippet) != std::string::npos) << snippet;
    }
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
