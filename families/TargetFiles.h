// SPDX-License-Identifier: GPL-3.0-or-later
// Names of rows as names of files that every disk, shell and workflow takes.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace TAMBO::families {

// Letters, digits, '.', '_' and '-', and neither hidden nor an option.
[[nodiscard]] bool isFileWord(std::string_view name);

class TargetFiles
{
public:
    // One that was given in an earlier run.
    void take(const std::string &file);
    // Of the row, without an ending: its name when that will do. No two are the same, also where
    // capitals count as small letters.
    [[nodiscard]] std::string add(const std::string &row);

private:
    std::unordered_set<std::string> m_Taken;
    // The last number that each has got.
    std::unordered_map<std::string, int> m_Numbers;
};

} // namespace TAMBO::families
