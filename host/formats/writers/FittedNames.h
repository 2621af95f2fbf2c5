// SPDX-License-Identifier: GPL-3.0-or-later
// The names of rows as a format can hold them, and in words what had to be changed.
#pragma once

#include "AlignmentSource.h"
#include "TakenNames.h"
#include "WriteOptions.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace TAMBO::formats {

// Of PHYLIP, where names are not followed by a blank.
constexpr std::size_t kShortPhylipName = 10;

class FittedNames
{
public:
    // The alignment outlives this.
    FittedNames(const AlignmentSource &alignment, const WriteOptions &options);

    [[nodiscard]] std::string_view operator[](std::size_t row) const
    {
        if (m_Changed.empty())
            return m_Source.name(row);
        const auto changed = m_Changed.find(row);
        return changed == m_Changed.end() ? m_Source.name(row) : changed->second;
    }
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

    // Whether the name can stay as it is but for its length, without a closer look.
    [[nodiscard]] bool isPlain(std::string_view name) const noexcept;
    [[nodiscard]] std::string fitted(std::string_view name, std::size_t row);
    [[nodiscard]] bool take(std::size_t row, TakenNames &taken) const;
    void number(std::size_t row, TakenNames &taken);
    [[nodiscard]] std::string cut(const std::string &name, std::size_t length) const;
    void note(Kind kind, std::string_view before, std::size_t row);
    [[nodiscard]] std::string sentence(Kind kind) const;

    const AlignmentSource &m_Source;
    FileFormat m_Format;
    // 0 for names of any length.
    std::size_t m_Longest;
    bool m_MustDiffer;
    // What can stand in a name anywhere.
    std::array<bool, 256> m_IsPlain{};
    // The rows whose names had to be changed.
    std::unordered_map<std::size_t, std::string> m_Changed;
    // The number given last to one of the name.
    std::unordered_map<std::string, std::size_t> m_Numbers;
    std::array<Change, KindCount> m_Changes;
};

} // namespace TAMBO::formats
