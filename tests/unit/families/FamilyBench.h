// SPDX-License-Identifier: GPL-3.0-or-later
// A small family, its templates' coordinates, and a folder on the disk that goes with the test.
#pragma once

#include "FamilyPreparing.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <vector>

class FamilyBench : public testing::Test
{
protected:
    FamilyBench();
    ~FamilyBench() override;

    // Two rows with a structure, t1 and t2, and three without: a, b, and c.
    static TAMBO::families::Family smallFamily();
    // N, CA and C of each letter.
    static TAMBO::StructureRecord structureOf(const TAMBO::families::FamilyRow &row);
    static TAMBO::families::TemplateSource templatesOf(const TAMBO::families::Family &family);
    // Into the folder called "family", with the plan of the order.
    [[nodiscard]] TAMBO::Result<TAMBO::families::PreparedFamily>
    prepare(const TAMBO::families::Family &family = smallFamily(),
            const TAMBO::families::ModelsOrder &order = {}) const;

    [[nodiscard]] std::filesystem::path family() const { return m_Path / "family"; }
    [[nodiscard]] const std::filesystem::path &path() const noexcept { return m_Path; }
    // Under path().
    void write(const std::string &name, const std::string &text) const;
    [[nodiscard]] std::string read(const std::string &name) const;
    [[nodiscard]] bool isThere(const std::string &name) const;

    TAMBO::families::FamilySettings settings;

private:
    std::filesystem::path m_Path;
};

// For as long as it lives, no file may grow beyond so many bytes.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes) : m_Handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_Before);
        const rlimit limit{bytes, m_Before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_Before);
        std::signal(SIGXFSZ, m_Handler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    void (*m_Handler)(int);
    rlimit m_Before{};
};
