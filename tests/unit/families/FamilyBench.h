// SPDX-License-Identifier: GPL-3.0-or-later
// A small family, its templates' coordinates, and a folder on the disk that goes with the test.
#pragma once

#include "FamilyPreparing.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
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
