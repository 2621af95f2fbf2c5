// SPDX-License-Identifier: GPL-3.0-or-later
// Looks at a family's folder again and again for what has changed: of ten thousand targets it reads
// the records that are new. Used by one thread, which may be slow: the folder may lie elsewhere.
#pragma once

#include "FamilyFolder.h"
#include "FamilyResults.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace TAMBO::app {

class ResultsLook
{
public:
    struct News
    {
        // Somebody is at work in the folder.
        bool isAtWork = false;
        // Its list of targets has changed, so that what follows is about all of them.
        bool isOtherList = false;
        // When it is new.
        std::shared_ptr<const families::FamilyFolder> folder;
        // By their places in it, ascending.
        std::vector<std::pair<std::size_t, families::ResultRow>> rows;
        std::optional<Failure> failure;
    };

    explicit ResultsLook(std::filesystem::path path) : m_Path(std::move(path)) { }

    // At the first time of all targets.
    [[nodiscard]] News look();

private:
    // What tells that a file is another one.
    struct Stamp
    {
        std::int64_t time = 0;
        std::uint64_t size = 0;
        std::uint64_t inode = 0;
        friend bool operator==(const Stamp &, const Stamp &) = default;
    };
    using Stamps = std::unordered_map<std::string, Stamp>;

    [[nodiscard]] static Stamp stampOf(const std::filesystem::path &file);
    [[nodiscard]] static Stamps stampsIn(const std::filesystem::path &folder);
    void readList(News &news);
    void noteChanges(const Stamps &before, const Stamps &now, std::vector<bool> &isChanged) const;

    std::filesystem::path m_Path;
    std::shared_ptr<const families::FamilyFolder> m_Folder;
    Stamp m_List;
    bool m_WasAtWork = false;
    // Of the files in runs and models.
    Stamps m_Records;
    Stamps m_Models;
    // The places of targets by the names of their files.
    std::unordered_map<std::string, std::size_t> m_Places;
    // They may end without a word.
    std::vector<bool> m_IsRunning;
};

} // namespace TAMBO::app
