// SPDX-License-Identifier: GPL-3.0-or-later
#include "TileCache.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kFirstSlots = 256;
// More formats than screens and zoom steps can ask for at a time.
constexpr std::size_t kMostFormats = 64;

std::uint64_t keyOf(const CellLook &look, unsigned int format) noexcept
{
    return (std::uint64_t(format) << 32) |
           (std::uint64_t(static_cast<unsigned char>(look.letter)) << 24) |
           (look.background & 0xffffffU);
}

std::size_t hashOf(std::uint64_t key) noexcept
{
    key *= 0x9e3779b97f4a7c15U;
    return static_cast<std::size_t>(key >> 32);
}

} // namespace

TileCache::TileCache() : m_Slots(kFirstSlots) { }

TileCache::~TileCache() = default;

void TileCache::begin(const QFont &font)
{
    if (font == m_Font && m_Bytes <= kByteLimit && m_Formats.size() <= kMostFormats)
        return;
    clear();
    m_Font = font;
}

unsigned int TileCache::formatNumber(const TileFormat &format)
{
    auto found = std::ranges::find(m_Formats, format);
    if (found == m_Formats.end())
        found = m_Formats.insert(found, format);
    return static_cast<unsigned int>(found - m_Formats.begin());
}

const QRgb *TileCache::tile(const CellLook &look, unsigned int format, const LatticeSource &source)
{
    const std::uint64_t key = keyOf(look, format);
    Slot *slot = &slotOf(key);
    if (slot->pixels == nullptr) {
        if (2 * (m_Count + 1) > m_Slots.size()) {
            grow();
            slot = &slotOf(key);
        }
        slot->key = key;
        slot->pixels = drawTile(look, m_Formats[format], source);
        ++m_Count;
    }
    return slot->pixels.get();
}

void TileCache::clear()
{
    m_Formats.clear();
    m_Slots.clear();
    m_Slots.resize(kFirstSlots);
    m_Count = 0;
    m_Bytes = 0;
}

void TileCache::grow()
{
    std::vector<Slot> old(2 * m_Slots.size());
    old.swap(m_Slots);
    for (Slot &slot : old) {
        if (slot.pixels != nullptr)
            slotOf(slot.key) = std::move(slot);
    }
}

// The slot of the key, or the free one where it belongs.
TileCache::Slot &TileCache::slotOf(std::uint64_t key) noexcept
{
    std::size_t at = hashOf(key);
    for (;; ++at) {
        Slot &slot = m_Slots[at & (m_Slots.size() - 1)];
        if (slot.pixels == nullptr || slot.key == key)
            return slot;
    }
}

std::unique_ptr<QRgb[]> TileCache::drawTile(const CellLook &look, const TileFormat &format,
                                            const LatticeSource &source)
{
    const int width = format.size.width();
    const int height = format.size.height();
    const std::size_t pixelCount =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    auto pixels = std::make_unique<QRgb[]>(pixelCount);
    QImage image(reinterpret_cast<uchar *>(pixels.get()), width, height,
                 width * static_cast<int>(sizeof(QRgb)), QImage::Format_RGB32);
    image.setDevicePixelRatio(format.scale);
    image.fill(look.background);
    QPainter painter(&image);
    painter.setFont(m_Font);
    source.drawCell(painter, QRectF(0, 0, width / format.scale, height / format.scale), look);
    painter.end();
    m_Bytes += pixelCount * sizeof(QRgb);
    return pixels;
}
