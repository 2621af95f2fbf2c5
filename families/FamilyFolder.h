// SPDX-License-Identifier: GPL-3.0-or-later
// A folder in which the models of a family are built: which targets it has, and where their files
// are. It may be moved.
#pragma once

#include "Result.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace TAMBO::families {

struct FamilyTarget
{
    // Of the rows.
    std::string name;
    // Of its files, without endings.
    std::string file;
    std::string templateName;
    std::string templateFile;
    // Of the target, and of the pair.
    std::size_t residues = 0;
    std::size_t identical = 0;
    std::size_t aligned = 0;
    // Which of the rows of that name it is, from 1.
    std::size_t copy = 1;
};

class FamilyFolder
{
public:
    static constexpr const char *kListName = "family.json";
    static constexpr const char *kTableName = "results.tsv";

    // Of a folder without a family the failure is NotFound.
    [[nodiscard]] static Result<FamilyFolder> open(const std::filesystem::path &path);
    // One that does not stand on the disk yet.
    FamilyFolder(std::filesystem::path path, std::string name, std::filesystem::path source)
        : m_Path(std::move(path)), m_Name(std::move(name)), m_Source(std::move(source))
    { }

    [[nodiscard]] const std::filesystem::path &path() const noexcept { return m_Path; }
    // Of the family, and where it was read from.
    [[nodiscard]] const std::string &name() const noexcept { return m_Name; }
    [[nodiscard]] const std::filesystem::path &source() const noexcept { return m_Source; }
    // All that were ever asked for, in that order.
    [[nodiscard]] const std::vector<FamilyTarget> &targets() const noexcept { return m_Targets; }

    [[nodiscard]] std::filesystem::path inputOf(const FamilyTarget &target) const;
    [[nodiscard]] std::filesystem::path templateOf(const FamilyTarget &target) const;
    [[nodiscard]] std::filesystem::path modelOf(const FamilyTarget &target) const;
    [[nodiscard]] std::filesystem::path recordOf(const FamilyTarget &target) const;
    [[nodiscard]] std::filesystem::path logOf(const FamilyTarget &target) const;
    [[nodiscard]] std::filesystem::path listFile() const { return m_Path / kListName; }
    [[nodiscard]] std::filesystem::path tableFile() const { return m_Path / kTableName; }

    // ---- For who prepares it

    void setTargets(std::vector<FamilyTarget> targets) { m_Targets = std::move(targets); }
    // A number for the contents of each file that was copied into the folder, by which it is known
    // whether the user has changed it.
    [[nodiscard]] std::map<std::string, std::string> &copies() noexcept { return m_Copies; }
    [[nodiscard]] Result<void> save() const;

private:
    std::filesystem::path m_Path;
    std::string m_Name;
    std::filesystem::path m_Source;
    std::vector<FamilyTarget> m_Targets;
    std::map<std::string, std::string> m_Copies;
};

} // namespace TAMBO::families
