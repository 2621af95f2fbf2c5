// SPDX-License-Identifier: GPL-3.0-or-later
// Ready-drawn cells. Painting a cell is a copy of its tile instead of the layout of a text.
#pragma once

#include "LatticeSource.h"

#include <QSize>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

// Size in pixels of the device, and how many of them one pixel of the canvas takes.
struct TileFormat
{
    QSize size;
    double scale = 1;

    friend bool operator==(const TileFormat &, const TileFormat &) = default;
};

class TileCache
{
public:
    static constexpr std::size_t kByteLimit = 32U << 20;

    TileCache();
    ~TileCache();
    TileCache(const TileCache &) = delete;
    TileCache &operator=(const TileCache &) = delete;

    // To be called before a pass of painting. Forgets all tiles when the font is another one, or
    // when they take more than the limit.
    void begin(const QFont &font);
    // The number by which tile() knows the format; good until the next begin().
    [[nodiscard]] unsigned int formatNumber(const TileFormat &format);
    // The pixels row by row without padding; good until the next begin(). The size must not be
    // empty.
    [[nodiscard]] const QRgb *tile(const CellLook &look, unsigned int format,
                                   const LatticeSource &source);

    [[nodiscard]] std::size_t count() const noexcept { return m_Count; }
    [[nodiscard]] std::size_t bytes() const noexcept { return m_Bytes; }

private:
    struct Slot
    {
        std::uint64_t key = 0;
        std::unique_ptr<QRgb[]> pixels;
    };

    void clear();
    void grow();
    [[nodiscard]] Slot &slotOf(std::uint64_t key) noexcept;
    [[nodiscard]] std::unique_ptr<QRgb[]> drawTile(const CellLook &look, const TileFormat &format,
                                                   const LatticeSource &source);

    QFont m_Font;
    std::vector<TileFormat> m_Formats;
    // Open addressing, at most half full.
    std::vector<Slot> m_Slots;
    std::size_t m_Count = 0;
    std::size_t m_Bytes = 0;
};
