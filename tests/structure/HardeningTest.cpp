// SPDX-License-Identifier: GPL-3.0-or-later
// The programs that users run, and what they open, guard their memory.
#include "BinaryFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

namespace HardeningTest {

namespace fs = std::filesystem;
using BinaryFiles::outputOf;

bool hasLine(const std::vector<std::string> &lines, const std::string &pattern)
{
    return std::ranges::any_of(lines, [expression = std::regex(pattern)](const std::string &line) {
        return std::regex_search(line, expression);
    });
}

// What users run: the programs, and all that they open.
std::vector<std::string> installedFiles()
{
    std::vector<std::string> files = {WORKBENCH_FILE, ADAPTER_FILE};
    for (const char *const folder : {BUILD_DIR "/lib/tambo/plugins", BUILD_DIR "/lib/tambo/parts"})
        for (const auto &entry : fs::directory_iterator(folder))
            if (entry.is_regular_file() &&
                entry.path().filename().string().find(".so") != std::string::npos)
                files.push_back(entry.path().string());
    return files;
}

TEST(Hardening, WhatIsOpenedOfUsersFilesGuardsItsMemory)
{
    const std::vector<std::string> files = installedFiles();
    EXPECT_GE(files.size(), 7U);
    for (const std::string &file : files) {
        const std::vector<std::string> segments = outputOf("readelf -lW '" + file + "'");
        EXPECT_TRUE(hasLine(segments, "GNU_RELRO")) << file;
        EXPECT_TRUE(hasLine(segments, "GNU_STACK.* RW ")) << file;
        const std::vector<std::string> dynamic = outputOf("readelf -dW '" + file + "'");
        EXPECT_TRUE(hasLine(dynamic, "BIND_NOW|\\bNOW\\b")) << file;
        const bool isProgram = file.find(".so") == std::string::npos;
        EXPECT_TRUE(!isProgram || hasLine(dynamic, "\\bPIE\\b")) << file;
        const std::vector<std::string> names = outputOf("nm -D --undefined-only '" + file + "'");
        EXPECT_TRUE(hasLine(names, "__stack_chk_fail")) << file;
    }
}

TEST(Hardening, CopiesAreCheckedInThePrograms)
{
    for (const char *const file : {WORKBENCH_FILE, CORE_FILE, ADAPTER_FILE}) {
        const std::vector<std::string> names =
            outputOf("nm -D --undefined-only '" + std::string(file) + "'");
        EXPECT_TRUE(hasLine(names, "__[a-z]+_chk")) << file;
    }
}

} // namespace HardeningTest
