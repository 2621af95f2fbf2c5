// SPDX-License-Identifier: GPL-3.0-or-later
// A set of numbers, most of which follow one another: a million that were given in a row are one
// range.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TAMBO {

class NumberSet
{
public:
    // In any order, and several times for all that matters.
    explicit NumberSet(std::vector<std::uint32_t> numbers)
    {
        std::ranges::sort(numbers);
        for (const std::uint32_t number : numbers) {
            if (!m_Ranges.empty() && number - m_Ranges.back().last <= 1)
                m_Ranges.back().last = number;
            else
                m_Ranges.push_back({number, number});
        }
    }

    [[nodiscard]] bool contains(std::uint32_t number) const noexcept
    {
        const auto behind = std::ranges::upper_bound(m_Ranges, number, {}, &Range::first);
        return behind != m_Ranges.begin() && number <= (behind - 1)->last;
    }
    // Numbers between which none is missing count as one.
    [[nodiscard]] std::size_t rangeCount() const noexcept { return m_Ranges.size(); }

private:
    struct Range
    {
        std::uint32_t first;
        std::uint32_t last;
    };

    std::vector<Range> m_Ranges;
};

} // namespace TAMBO
