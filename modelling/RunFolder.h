// SPDX-License-Identifier: GPL-3.0-or-later
// The folder that the engine works in, for one run, removed when the object goes.
#pragma once

#include "FileDescriptor.h"
#include "Result.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

namespace kestram {

class RunFolder
{
public:
    // Longer than it takes to put the run of a killed adapter in order.
    static constexpr std::chrono::seconds kPatience{20};

    // A new one with a name of its own.
    [[nodiscard]] static TAMBO::Result<std::unique_ptr<RunFolder>>
    make(const std::filesystem::path &parent);
    // Beside the model that is to be built, under its name: what another run has left there goes.
    // While one still works there it waits, and gives up in the end.
    [[nodiscard]] static TAMBO::Result<std::unique_ptr<RunFolder>>
    makeFor(const std::filesystem::path &model, std::chrono::milliseconds patience = kPatience);

    ~RunFolder();
    RunFolder(const RunFolder &) = delete;
    RunFolder &operator=(const RunFolder &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const noexcept { return m_Path; }
    // A file in it.
    [[nodiscard]] TAMBO::Result<void> write(const std::string &name, const std::string &text) const;
    // At once; a process of another program may do it as well.
    void remove() const;

private:
    explicit RunFolder(std::filesystem::path path) : m_Path(std::move(path)) { }
    // False while another run has it.
    [[nodiscard]] TAMBO::Result<bool> lock();

    std::filesystem::path m_Path;
    // Says that somebody works there. It stands beside the folder: a file server would keep what is
    // open and removed in it, which then could not be removed itself.
    std::filesystem::path m_LockPath;
    TAMBO::formats::FileDescriptor m_Lock;
};

} // namespace kestram
