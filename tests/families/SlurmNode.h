// SPDX-License-Identifier: GPL-3.0-or-later
// A cluster of one node with Slurm, of this test alone; it ends with the test, however that ends.
#pragma once

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

class SlurmNode
{
public:
    // Its files go into the folder, which is made.
    explicit SlurmNode(std::filesystem::path folder);
    ~SlurmNode();
    SlurmNode(const SlurmNode &) = delete;
    SlurmNode &operator=(const SlurmNode &) = delete;

    [[nodiscard]] bool isReady() const noexcept { return m_IsReady; }
    // What it and its daemons said.
    [[nodiscard]] std::string logs() const;
    // Slurm's commands of this process, and of those that it starts, are about this one from now
    // on.
    void use() const;
    [[nodiscard]] pid_t process() const noexcept { return m_Process; }
    // The processes of its three daemons.
    [[nodiscard]] std::vector<pid_t> daemons() const;
    // As the end of this does.
    void stop();

private:
    std::filesystem::path m_Folder;
    pid_t m_Process = -1;
    // Where its standard input comes from: it lives while this is open.
    int m_Input = -1;
    bool m_IsReady = false;
};
