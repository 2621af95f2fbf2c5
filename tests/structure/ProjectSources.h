// SPDX-License-Identifier: GPL-3.0-or-later
// The project's sources, and what they include.
#pragma once

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace ProjectSources {

namespace fs = std::filesystem;

// Where product code stands.
inline const std::vector<std::string> kTops = {"canvas",    "families", "host",    "include",
                                               "modelling", "pages",    "plugins", "python"};

struct Include
{
    fs::path file;
    int line;
    std::string name;
    bool angled;
};

inline std::vector<std::string> linesOf(const fs::path &file)
{
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

inline std::vector<fs::path> sourcesIn(const fs::path &folder)
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

inline std::vector<Include> includesOf(const fs::path &file)
{
    static const std::regex pattern(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    std::vector<Include> found;
    int number = 0;
    for (const std::string &line : linesOf(file)) {
        ++number;
        std::smatch match;
        // What the build makes of a header of the same folder is nobody else's.
        if (std::regex_search(line, match, pattern) && !match.str(2).starts_with("moc_"))
            found.push_back({file, number, match[2], match[1] == "<"});
    }
    return found;
}

} // namespace ProjectSources
