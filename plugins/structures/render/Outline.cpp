// SPDX-License-Identifier: GPL-3.0-or-later
#include "Outline.h"

#include "Lighting.h"
#include "RowWork.h"

#include <QRgb>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace structures {

namespace {

// Pixels.
constexpr int kOutline = 2;

} // namespace

void Outline::find(const Samples &samples, int perAxis, const std::vector<std::uint8_t> &marks,
                   std::uint8_t mark)
{
    m_Width = samples.width() / perAxis;
    m_Height = samples.height() / perAxis;
    m_Rows.clear();
    // All of them, without a look at each whether it is the last one.
    std::uint8_t any = 0;
    for (const std::uint8_t own : marks)
        any |= own;
    if ((any & mark) == 0)
        return;
    resizeExactly(m_Rows, std::size_t(m_Height));
    resizeExactly(m_Shares, std::size_t(m_Width) * std::size_t(m_Height));
    const std::uint8_t *const all = marks.data();
    const int full = perAxis * perAxis;
    byRows(m_Height, [&](int y) {
        const Samples::Stretch pixels = pixelStretch(samples, perAxis, y);
        Samples::Stretch stretch{m_Width, 0};
        std::uint8_t *const shares = &m_Shares[std::size_t(y) * std::size_t(m_Width)];
        std::fill(shares, shares + m_Width, std::uint8_t(0));
        for (int x = pixels.begin; x < pixels.end; ++x) {
            const std::size_t at = samples.at(x * perAxis, y * perAxis);
            int count = 0;
            for (int sy = 0; sy < perAxis; ++sy)
                for (int sx = 0; sx < perAxis; ++sx)
                    count += int((all[samples.picks[at + samples.at(sx, sy)]] & mark) != 0);
            if (count > 0) {
                shares[x] = std::uint8_t(255 * count / full);
                stretch.begin = std::min(stretch.begin, x);
                stretch.end = x + 1;
            }
        }
        m_Rows[std::size_t(y)] = stretch;
    });
}

Outline::Rows Outline::rows() const noexcept
{
    Rows range{m_Height, 0};
    for (std::size_t y = 0; y < m_Rows.size(); ++y)
        if (m_Rows[y].begin < m_Rows[y].end)
            range = {std::min(range.begin, int(y)), int(y) + 1};
    if (range.begin >= range.end)
        return {};
    return {std::max(0, range.begin - kOutline), std::min(m_Height, range.end + kOutline)};
}

void Outline::paint(std::uint32_t color, int row, std::uint32_t *pixels) const
{
    if (m_Rows.empty())
        return;
    const int top = std::max(0, row - kOutline);
    const int bottom = std::min(m_Height - 1, row + kOutline);
    int begin = m_Width;
    int end = 0;
    for (int y = top; y <= bottom; ++y) {
        begin = std::min(begin, m_Rows[std::size_t(y)].begin);
        end = std::max(end, m_Rows[std::size_t(y)].end);
    }
    if (begin >= end)
        return;
    begin = std::max(0, begin - kOutline);
    end = std::min(m_Width, end + kOutline);

    // The most of each column, with two rows on either side and with one: both together make a disc
    // rather than a square. Beside them nothing is.
    static_assert(kOutline == 2);
    const std::size_t count = std::size_t(end - begin) + 2 * kOutline;
    RowMemory &memory = rowMemory(count);
    std::uint8_t *const five = memory.bytes[0].data();
    std::uint8_t *const three = memory.bytes[1].data();
    std::fill(five, five + count, std::uint8_t(0));
    std::fill(three, three + count, std::uint8_t(0));
    for (int y = top; y <= bottom; ++y) {
        const std::uint8_t *const shares = sharesAt(begin, y);
        for (int i = 0; i < end - begin; ++i)
            five[i + kOutline] = std::max(five[i + kOutline], shares[i]);
        if (std::abs(y - row) < kOutline)
            for (int i = 0; i < end - begin; ++i)
                three[i + kOutline] = std::max(three[i + kOutline], shares[i]);
    }
    const Rgb line = rgbOf(color);
    const std::uint8_t *const shares = sharesAt(begin, row);
    for (int i = 0; i < end - begin; ++i) {
        const std::uint8_t most =
            std::max({five[i + 1], five[i + 2], five[i + 3], three[i], three[i + 4]});
        const std::uint8_t own = shares[i];
        if (most <= own)
            continue;
        const float part = float(most - own) / 255;
        const QRgb before = pixels[begin + i];
        const auto drawn = [part](int value, float wanted) {
            return int(std::lrint(float(value) + (wanted - float(value)) * part));
        };
        pixels[begin + i] = qRgba(drawn(qRed(before), line.red), drawn(qGreen(before), line.green),
                                  drawn(qBlue(before), line.blue), drawn(qAlpha(before), 255));
    }
}

} // namespace structures
