// SPDX-License-Identifier: GPL-3.0-or-later
// The names of rows in one block, with a number each to find them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

class NameList
{
public:
    [[nodiscard]] std::size_t size() const noexcept { return m_Ends.size(); }
    [[nodiscard]] std::string_view operator[](std::size_t index) const noexcept
    {
        const std::size_t begin = index == 0 ? 0 : m_Ends[index - 1];
        return std::string_view(m_Text).substr(begin, m_Ends[index] - begin);
    }
    void add(std::string_view name)
    {
        m_Text += name;
        m_Ends.push_back(m_Text.size());
    }

private:
    std::string m_Text;
    std::vector<std::size_t> m_Ends;
};

} // namespace TAMBO::formats
