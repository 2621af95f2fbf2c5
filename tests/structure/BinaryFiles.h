// SPDX-License-Identifier: GPL-3.0-or-later
// What binutils read from built files.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace BinaryFiles {

// The lines that a command prints.
inline std::vector<std::string> outputOf(const std::string &command)
{
    std::vector<std::string> lines;
    FILE *pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return lines;
    std::array<char, 8192> buffer{};
    while (std::fgets(buffer.data(), buffer.size(), pipe) != nullptr) {
        std::string line = buffer.data();
        if (line.ends_with('\n'))
            line.pop_back();
        lines.push_back(line);
    }
    EXPECT_EQ(pclose(pipe), 0) << command;
    return lines;
}

} // namespace BinaryFiles
