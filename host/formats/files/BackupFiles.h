// SPDX-License-Identifier: GPL-3.0-or-later
// The last versions of a file, kept beside it: of "x.ali", "x.ali.1.bak~" is what it was before it
// was last replaced, 2 and 3 are older.
#pragma once

#include <filesystem>
#include <utility>
#include <vector>

namespace TAMBO::formats {

class BackupFiles
{
public:
    static constexpr int kMost = 3;

    explicit BackupFiles(std::filesystem::path file);
    // What is not to be kept is as it was before.
    ~BackupFiles();
    BackupFiles(const BackupFiles &) = delete;
    BackupFiles &operator=(const BackupFiles &) = delete;

    // From 1 to kMost.
    [[nodiscard]] static std::filesystem::path nameOf(const std::filesystem::path &file,
                                                      int number);

    // The file as it is becomes the newest version; it stays where it is. Of a file that is going
    // to be replaced, which is not written any more, another link will do. The error, 0 for none.
    [[nodiscard]] int add(bool isReplaced);
    // The oldest one goes.
    void keep();

private:
    [[nodiscard]] int copy(const std::filesystem::path &to) const;
    [[nodiscard]] int move(const std::filesystem::path &from, const std::filesystem::path &to);
    void takeBack();

    std::filesystem::path m_File;
    // What was renamed, from what to what.
    std::vector<std::pair<std::filesystem::path, std::filesystem::path>> m_Moves;
    // Names that are not to stay: the newest version before it has its name, the oldest one after
    // it has lost it.
    std::filesystem::path m_Newest;
    std::filesystem::path m_Oldest;
};

} // namespace TAMBO::formats
