// SPDX-License-Identifier: GPL-3.0-or-later
// The folder of a family as it is before its models are made, with the files that users get, and
// programs that stand in for the adapter and the workbench. All of it lies below a folder with a
// blank in its name.
//
// The adapter's takes the same words, keeps a record with state and job, and copies the alignment
// to the model; the workbench's lists the records' states.
#pragma once

#include "Command.h"

#include <filesystem>
#include <string>
#include <vector>

class PreparedFolder
{
public:
    explicit PreparedFolder(const std::vector<std::string> &files);
    ~PreparedFolder();
    PreparedFolder(const PreparedFolder &) = delete;
    PreparedFolder &operator=(const PreparedFolder &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const noexcept { return m_Folder; }
    [[nodiscard]] Finished run(const std::string &command) const
    {
        return ::run(command, m_Folder);
    }

    // What the adapter cannot read.
    void removeInput(const std::string &file) const;
    void restoreInput(const std::string &file) const;
    // The adapter goes on with it when it is let go.
    void hold(const std::string &file) const;
    void letGo(const std::string &file) const;

    [[nodiscard]] bool isRunning(const std::string &file) const;
    // Names of files, in order, each behind a blank.
    [[nodiscard]] std::string models() const;
    // How often the adapter has begun.
    [[nodiscard]] std::size_t startsOf(const std::string &file) const;
    // Lines "FILE STATE".
    [[nodiscard]] std::string table() const;
    // What the adapter said.
    [[nodiscard]] std::string logOf(const std::string &file) const;

private:
    std::filesystem::path m_Root;
    std::filesystem::path m_Folder;
};
