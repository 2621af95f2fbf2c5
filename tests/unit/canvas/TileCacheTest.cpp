// SPDX-License-Identifier: GPL-3.0-or-later
#include "TileCache.h"

#include "LetterLattice.h"

#include <QImage>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace TileCacheTest {

constexpr QRgb kYellow = 0xffffff00;

QImage imageOf(const QRgb *pixels, const QSize &size)
{
    return QImage(reinterpret_cast<const uchar *>(pixels), size.width(), size.height(),
                  size.width() * 4, QImage::Format_RGB32)
        .copy();
}

int inkOf(const QImage &image, QRgb background)
{
    int ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ink += image.pixel(x, y) != background ? 1 : 0;
    }
    return ink;
}

TEST(TileCache, TileIsDrawnAtTheDevicesResolution)
{
    LetterLattice letters;
    letters.m_Font.setPixelSize(14);
    TileCache cache;
    cache.begin(letters.font());
    std::vector<int> ink;
    for (const double scale : {1.0, 1.25, 2.0}) {
        const QSize size(static_cast<int>(std::lround(16 * scale)),
                         static_cast<int>(std::lround(20 * scale)));
        const QImage image =
            imageOf(cache.tile({'W', kYellow}, cache.formatNumber({size, scale}), letters), size);
        // The edge is all background, the middle holds the letter.
        for (int x = 0; x < size.width(); ++x) {
            EXPECT_EQ(image.pixel(x, 0), kYellow);
            EXPECT_EQ(image.pixel(x, size.height() - 1), kYellow);
        }
        ink.push_back(inkOf(image, kYellow));
    }
    EXPECT_GT(ink[0], 20);
    EXPECT_GT(ink[1], ink[0]);
    EXPECT_GT(ink[2], 2 * ink[0]);
}

TEST(TileCache, EachLookIsDrawnOnce)
{
    LetterLattice letters;
    TileCache cache;
    for (int pass = 0; pass < 3; ++pass) {
        cache.begin(letters.font());
        const unsigned int format = cache.formatNumber({QSize(10, 12), 1});
        for (const char letter : {'A', 'C', 'D'}) {
            for (const QRgb color : {kYellow, 0xffff0000U})
                EXPECT_NE(cache.tile({letter, color}, format, letters), nullptr);
        }
    }
    EXPECT_EQ(letters.m_Drawn, 6);
    EXPECT_EQ(cache.count(), 6U);
    EXPECT_EQ(cache.bytes(), 6U * 10 * 12 * 4);
}

TEST(TileCache, LooksAndFormatsHaveTilesOfTheirOwn)
{
    LetterLattice letters;
    TileCache cache;
    cache.begin(letters.font());
    const unsigned int small = cache.formatNumber({QSize(10, 12), 1});
    const unsigned int wide = cache.formatNumber({QSize(11, 12), 1});
    const unsigned int sharp = cache.formatNumber({QSize(11, 12), 1.25});
    EXPECT_NE(small, wide);
    EXPECT_NE(wide, sharp);
    const QRgb *tile = cache.tile({'A', kYellow}, small, letters);
    EXPECT_EQ(cache.tile({'A', kYellow}, small, letters), tile);
    EXPECT_NE(cache.tile({'C', kYellow}, small, letters), tile);
    EXPECT_NE(cache.tile({'A', 0xff00ff00U}, small, letters), tile);
    EXPECT_NE(cache.tile({'A', kYellow}, wide, letters), tile);
    EXPECT_NE(cache.tile({'A', kYellow}, sharp, letters),
              cache.tile({'A', kYellow}, wide, letters));
}

TEST(TileCache, AnotherFontBringsNewTiles)
{
    LetterLattice letters;
    TileCache cache;
    cache.begin(letters.font());
    (void)cache.tile({'A', kYellow}, cache.formatNumber({QSize(30, 40), 1}), letters);
    letters.m_Font.setPixelSize(30);
    cache.begin(letters.font());
    EXPECT_EQ(cache.count(), 0U);
    (void)cache.tile({'A', kYellow}, cache.formatNumber({QSize(30, 40), 1}), letters);
    EXPECT_EQ(letters.m_Drawn, 2);
}

TEST(TileCache, ManyLooksKeepTheirTilesApart)
{
    LetterLattice letters;
    TileCache cache;
    cache.begin(letters.font());
    const unsigned int format = cache.formatNumber({QSize(3, 3), 1});
    std::vector<const QRgb *> tiles;
    for (unsigned int i = 0; i < 2000; ++i)
        tiles.push_back(cache.tile({' ', 0xff000000U | (i * 7919)}, format, letters));
    for (unsigned int i = 0; i < 2000; ++i) {
        EXPECT_EQ(cache.tile({' ', 0xff000000U | (i * 7919)}, format, letters), tiles[i]);
        EXPECT_EQ(tiles[i][4], 0xff000000U | (i * 7919));
    }
    EXPECT_EQ(cache.count(), 2000U);
}

TEST(TileCache, StartsAnewWhenItHasGrownBeyondItsLimit)
{
    LetterLattice letters;
    TileCache cache;
    cache.begin(letters.font());
    const unsigned int format = cache.formatNumber({QSize(512, 512), 1});
    unsigned int color = 0;
    while (cache.bytes() <= TileCache::kByteLimit)
        (void)cache.tile({' ', 0xff000000U | ++color}, format, letters);
    EXPECT_LE(cache.bytes(), TileCache::kByteLimit + (1U << 20));
    cache.begin(letters.font());
    EXPECT_EQ(cache.bytes(), 0U);
}

} // namespace TileCacheTest
