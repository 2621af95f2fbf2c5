// SPDX-License-Identifier: GPL-3.0-or-later
// The names of rows as a format can hold them, and in words what had to be changed.
#pragma once

#include "Records.h"
#include "WriteOptions.h"

#include <array>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace TAMBO::formats {

// Of PHYLIP, where names are not followed by a blank.
constexpr std::size_t kShortPhylipName = 10;

class FittedNames
{
public:
    FittedNames(const AlignmentRecord &alignment, const WriteOptions &options);

    [[nodiscard]] const std::string &operator[](std::size_t row) const { return m_Names[row]; }
    // One sentence for each kind of change, with the first name that it befell.
    [[nodiscard]] std::vector<std::string> changes() const;

private:
    enum Kind { Unnamed, Replaced, Cut, Numbered, KindCount };
    struct Change
    {
        std::size_t count = 0;
        // The row that is shown.
        std::size_t first = 0;
        std::string before;
    };

    [[nodiscard]] std::string fitted(const std::string &name, std::size_t row);
    [[nodiscard]] std::string unique(const std::string &name);
    [[nodiscard]] std::string cut(const std::string &name, std::size_t length) const;
    void note(Kind kind, const std::string &before, std::size_t row);
    [[nodiscard]] std::string sentence(Kind kind) const;

    FileFormat m_Format;
    // 0 for names of any length.
    std::size_t m_Longest;
    bool m_MustDiffer;
    std::vector<std::string> m_Names;
    std::unordered_set<std::string> m_Taken;
    // The number given last to one of the name.
    std::unordered_map<std::string, std::size_t> m_Numbers;
    std::array<Change, KindCount> m_Changes;
};

} // namespace TAMBO::formats
