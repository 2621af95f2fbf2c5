// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Samples.h"

#include <cstdint>
#include <vector>

namespace structures {

// The line around what has a mark.
class Outline
{
public:
    // samples has perAxis x perAxis points for each pixel; marks are by pick.
    void find(const Samples &samples, int perAxis, const std::vector<std::uint8_t> &marks,
              std::uint8_t mark);
    // Half-open; empty where nothing has the mark.
    struct Rows
    {
        int begin = 0;
        int end = 0;
    };
    // Of pixels, that the line may be in.
    [[nodiscard]] Rows rows() const noexcept;
    // In a row of pixels. color: 0xRRGGBB.
    void paint(std::uint32_t color, int row, std::uint32_t *pixels) const;
    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return m_Shares.capacity() + m_Rows.capacity() * sizeof(Samples::Stretch);
    }

private:
    [[nodiscard]] const std::uint8_t *sharesAt(int x, int y) const noexcept
    {
        return &m_Shares[std::size_t(y) * std::size_t(m_Width) + std::size_t(x)];
    }

    int m_Width = 0;
    int m_Height = 0;
    // How much of each pixel has the mark, of 255.
    std::vector<std::uint8_t> m_Shares;
    // Where in each row such pixels are. No rows: nothing has the mark.
    std::vector<Samples::Stretch> m_Rows;
};

} // namespace structures
