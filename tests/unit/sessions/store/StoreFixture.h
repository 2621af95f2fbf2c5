// SPDX-License-Identifier: GPL-3.0-or-later
// A folder for stores, and short ways to write and to read them.
#pragma once

#include "StoreFile.h"
#include "StoreReader.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

class StoreFixture : public testing::Test
{
protected:
    using StoreReader = TAMBO::sessions::StoreReader;
    using StoreFile = TAMBO::sessions::StoreFile;

    StoreFixture()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "storeXXXXXX").string();
        m_Folder = mkdtemp(pattern.data());
    }
    ~StoreFixture() override { std::filesystem::remove_all(m_Folder); }

    [[nodiscard]] std::filesystem::path file(const std::string &name = "work.session") const
    {
        return m_Folder / name;
    }

    static TAMBO::sessions::Record record(const std::string &content)
    {
        return {7, 1'700'000'000'123, "move gap in A", content};
    }

    // All that a store holds, one line for each, or what is wrong with it.
    static std::vector<std::string>
    contentOf(const std::filesystem::path &file,
              StoreReader::Kind kind = StoreReader::Kind::LeftBehind)
    {
        auto opened = StoreReader::open(file, kind);
        if (!opened)
            return {"failure: " + opened.error().cause};
        StoreReader &reader = *opened.value();
        std::vector<std::string> lines;
        const auto note = [&](const TAMBO::Result<void> &done) {
            if (!done)
                lines.push_back("failure: " + done.error().cause);
        };
        note(reader.forEachPart([&](std::uint32_t kind, std::string_view content) {
            lines.push_back("part " + std::to_string(kind) + ' ' + std::string(content));
            return TAMBO::Result<void>();
        }));
        note(reader.forEachRecord([&](const StoreReader::SeenRecord &record) {
            lines.push_back("record " + std::to_string(record.kind) + ' ' +
                            std::string(record.content));
            return TAMBO::Result<void>();
        }));
        note(reader.forEachValue([&](std::string_view name, std::string_view content) {
            lines.push_back("value " + std::string(name) + ' ' + std::string(content));
            return TAMBO::Result<void>();
        }));
        return lines;
    }

    using Lines = std::vector<std::string>;

private:
    std::filesystem::path m_Folder;
};
