// SPDX-License-Identifier: GPL-3.0-or-later
#include "Renderer.h"

#include "Parallel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace RendererTest {

using namespace structures;

// Spheres of half an Angstrom at random places within 20 Angstrom of the origin.
Shapes randomSpheres(int count, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> place(-20, 20);
    Shapes shapes;
    for (int i = 0; i < count; ++i)
        shapes.spheres.push_back(
            {{place(random), place(random), place(random)}, 0.5F, Pick(i) + 1});
    return shapes;
}

// A square plate of two triangles, seen from the front, and a sphere and a stick.
Shapes oneOfEach()
{
    Shapes shapes;
    shapes.mesh.vertices = {{{-8, -8, -3}, {0, 0, 1}},
                            {{8, -8, -3}, {0, 0, 1}},
                            {{8, 8, -3}, {0, 0, 1}},
                            {{-8, 8, -3}, {0, 0, 1}}};
    shapes.mesh.triangles = {{{0, 1, 2}, 1}, {{0, 2, 3}, 1}};
    shapes.coarseMesh = shapes.mesh;
    shapes.spheres = {{{-4, 0, 2}, 2, 2}};
    shapes.sticks = {{{2, -6, 1}, {2, 6, 1}, 0.8F, 3, 4}};
    return shapes;
}

Palette paletteOf(std::size_t picks)
{
    Palette palette;
    palette.colors.resize(picks + 1);
    palette.marks.resize(picks + 1);
    for (std::size_t i = 1; i <= picks; ++i)
        palette.colors[i] = std::uint32_t(i * 2654435761U) & 0xffffffU;
    return palette;
}

struct Picture
{
    explicit Picture(const Shapes &shown) : shapes(shown), part{&shapes, 0, {}}
    {
        request.parts = {&part, 1};
        request.bounds = {{}, 36};
        request.camera.height = 44;
        request.size = {320, 240};
    }
    Picture(const Picture &) = delete;
    Picture &operator=(const Picture &) = delete;

    Shapes shapes;
    ScenePart part;
    PictureRequest request;
};

// Written down once more, without any of the code that is tested: where a point is in the picture.
std::pair<double, double> projected(const Camera &camera, Vec3 point, double width, double height)
{
    const std::array<float, 4> q = camera.rotation.numbers();
    const double w = double(q[0]);
    const double x = double(q[1]);
    const double y = double(q[2]);
    const double z = double(q[3]);
    const double px = double(point.x - camera.target.x);
    const double py = double(point.y - camera.target.y);
    const double pz = double(point.z - camera.target.z);
    // q p q*, by two vector products.
    const double tx = 2 * (y * pz - z * py);
    const double ty = 2 * (z * px - x * pz);
    const double tz = 2 * (x * py - y * px);
    const double vx = px + w * tx + y * tz - z * ty;
    const double vy = py + w * ty + z * tx - x * tz;
    const double vz = pz + w * tz + x * ty - y * tx;
    double scale = height / double(camera.height);
    if (camera.isPerspective) {
        const double eye = double(camera.height) / (2 * std::tan(0.26));
        scale *= eye / (eye - vz);
    }
    return {width / 2 + vx * scale, height / 2 - vy * scale};
}

class RendererCameras : public testing::TestWithParam<bool>
{
};

TEST_P(RendererCameras, ASphereIsFoundUnderItsProjectedCentre)
{
    Picture picture(randomSpheres(60, 7));
    picture.request.camera.isPerspective = GetParam();
    picture.request.camera.target = {1, -2, 3};
    const Palette palette = paletteOf(60);
    Renderer renderer;
    int seen = 0;
    for (int turn = 0; turn < 12; ++turn) {
        picture.request.camera.rotation =
            Rotation::about({0.3F, 1, 0.2F}, 0.5F * float(turn)) * Rotation::about({1, 0, 0}, 0.4F);
        ASSERT_TRUE(renderer.draw(picture.request, palette));
        const Projection projection(picture.request.camera, 320, 240);
        for (const Sphere &sphere : picture.shapes.spheres) {
            const auto [x, y] = projected(picture.request.camera, sphere.centre, 320, 240);
            const Pick pick = renderer.pickAt(int(std::floor(x)), int(std::floor(y)));
            if (x < 0 || y < 0 || x >= 320 || y >= 240) {
                EXPECT_EQ(pick, 0U);
                continue;
            }
            ASSERT_NE(pick, 0U);
            // Another one may be before it.
            if (pick == sphere.pick) {
                ++seen;
            } else {
                EXPECT_GT(projection.toView(picture.shapes.spheres[pick - 1].centre).z,
                          projection.toView(sphere.centre).z);
            }
        }
    }
    EXPECT_GT(seen, 400);
}

INSTANTIATE_TEST_SUITE_P(StraightAndPerspective, RendererCameras, testing::Bool(),
                         [](const auto &info) { return info.param ? "Perspective" : "Straight"; });

TEST(Renderer, WhatIsNearestIsSeen)
{
    Picture picture(oneOfEach());
    Renderer renderer;
    ASSERT_TRUE(renderer.draw(picture.request, paletteOf(4)));
    const float scale = 240.0F / 44;
    const auto at = [&](float x, float y) {
        return renderer.pickAt(int(160 + x * scale), int(120 - y * scale));
    };
    EXPECT_EQ(at(-4, 0), 2U);
    EXPECT_EQ(at(2, -3), 3U);
    EXPECT_EQ(at(2, 3), 4U);
    EXPECT_EQ(at(6, 6), 1U);
    EXPECT_EQ(at(12, 0), 0U);
}

TEST(Renderer, ThePlateIsFilledWithoutAHole)
{
    Picture picture(oneOfEach());
    picture.shapes.spheres.clear();
    picture.shapes.sticks.clear();
    Renderer renderer;
    for (int turn = 0; turn < 20; ++turn) {
        picture.request.camera.rotation = Rotation::about({0, 0, 1}, 0.17F * float(turn));
        ASSERT_TRUE(renderer.draw(picture.request, paletteOf(4)));
        const float scale = 240.0F / 44;
        for (int y = int(120 - 7 * scale / 1.42F); y < int(120 + 7 * scale / 1.42F); ++y)
            for (int x = int(160 - 7 * scale / 1.42F); x < int(160 + 7 * scale / 1.42F); ++x)
                ASSERT_EQ(renderer.pickAt(x, y), 1U) << turn << ": " << x << ", " << y;
    }
}

TEST(Renderer, StripsMakeTheSamePictureAsTheWhole)
{
    for (const int perAxis : {1, 2}) {
        Picture picture(randomSpheres(300, 3));
        picture.request.perAxis = perAxis;
        Palette palette = paletteOf(300);
        for (std::size_t i = 1; i < 40; ++i)
            palette.marks[i] = Palette::kSelected;
        Renderer whole;
        // For some hundred rows.
        Renderer strips(std::size_t(320) * 130 * std::size_t(10 * perAxis * perAxis + 11));
        ASSERT_TRUE(whole.draw(picture.request, palette));
        ASSERT_TRUE(strips.draw(picture.request, palette));
        EXPECT_LT(strips.bytes(), whole.bytes());
        EXPECT_EQ(whole.picks(), strips.picks());
        EXPECT_EQ(whole.image(), strips.image());
        EXPECT_FALSE(strips.recolor(palette));
    }
}

TEST(Renderer, OtherColorsMakeTheSamePictureAsDrawingAnew)
{
    for (const int perAxis : {1, 2}) {
        Picture picture(oneOfEach());
        picture.request.perAxis = perAxis;
        Renderer renderer;
        ASSERT_TRUE(renderer.draw(picture.request, paletteOf(4)));
        const QImage before = renderer.image().copy();
        Palette other = paletteOf(4);
        other.colors[2] = 0x00ff00;
        other.marks[3] = Palette::kPointed;
        ASSERT_TRUE(renderer.recolor(other));
        const QImage recolored = renderer.image().copy();
        EXPECT_NE(recolored, before);
        ASSERT_TRUE(renderer.draw(picture.request, other));
        EXPECT_EQ(renderer.image(), recolored);
    }
}

TEST(Renderer, AnOutlineIsAroundWhatIsSelectedAndNotOnIt)
{
    Picture picture(oneOfEach());
    Palette palette = paletteOf(4);
    Renderer renderer;
    ASSERT_TRUE(renderer.draw(picture.request, palette));
    const QImage plain = renderer.image().copy();
    palette.marks[2] = Palette::kSelected;
    ASSERT_TRUE(renderer.recolor(palette));
    int outside = 0;
    for (int y = 0; y < 240; ++y)
        for (int x = 0; x < 320; ++x) {
            if (renderer.pickAt(x, y) == 2) {
                EXPECT_EQ(renderer.image().pixel(x, y), plain.pixel(x, y));
            } else {
                outside +=
                    int((renderer.image().pixel(x, y) & 0xffffffU) == palette.selectedOutline);
            }
        }
    EXPECT_GT(outside, 50);
}

TEST(Renderer, TheSameRequestGivesTheSameBytes)
{
    Picture picture(randomSpheres(200, 11));
    picture.request.perAxis = 2;
    Renderer first;
    Renderer second;
    ASSERT_TRUE(first.draw(picture.request, paletteOf(200)));
    ASSERT_TRUE(second.draw(picture.request, paletteOf(200)));
    EXPECT_EQ(first.image(), second.image());
    ASSERT_TRUE(first.draw(picture.request, paletteOf(200)));
    EXPECT_EQ(first.image(), second.image());
}

TEST(Renderer, AnyNumberOfThreadsMakesTheSamePicture)
{
    Shapes shapes = randomSpheres(300, 5);
    const Shapes others = oneOfEach();
    shapes.mesh = others.mesh;
    shapes.sticks = others.sticks;
    Picture picture(shapes);
    Palette palette = paletteOf(300);
    palette.marks[7] = Palette::kSelected;
    for (const int perAxis : {1, 2}) {
        picture.request.perAxis = perAxis;
        s_MostThreads = 1;
        Renderer alone;
        ASSERT_TRUE(alone.draw(picture.request, palette));
        for (const unsigned threads : {2U, 3U, 7U}) {
            s_MostThreads = threads;
            Renderer together;
            ASSERT_TRUE(together.draw(picture.request, palette));
            EXPECT_EQ(together.image(), alone.image()) << threads;
            EXPECT_EQ(together.picks(), alone.picks()) << threads;
        }
        s_MostThreads = 0;
    }
}

TEST(Renderer, PointingPaintsTheSameAsPaintingAll)
{
    for (const int perAxis : {1, 2}) {
        Picture picture(randomSpheres(300, 9));
        picture.request.perAxis = perAxis;
        Palette palette = paletteOf(300);
        palette.marks[3] = palette.marks[4] = Palette::kSelected;
        Renderer pointing;
        Renderer painting;
        ASSERT_TRUE(pointing.draw(picture.request, palette));
        ASSERT_TRUE(painting.draw(picture.request, palette));
        for (const std::size_t pick : {17U, 80U, 3U, 0U, 250U}) {
            for (std::uint8_t &marks : palette.marks)
                marks = std::uint8_t(marks & ~Palette::kPointed);
            if (pick != 0)
                palette.marks[pick] = std::uint8_t(palette.marks[pick] | Palette::kPointed);
            ASSERT_TRUE(pointing.repoint(palette));
            ASSERT_TRUE(painting.recolor(palette));
            EXPECT_EQ(pointing.image(), painting.image()) << pick;
        }
    }
}

TEST(Renderer, ATransparentPictureHasNothingButShapes)
{
    Picture picture(oneOfEach());
    picture.request.look.isTransparent = true;
    Renderer renderer;
    ASSERT_TRUE(renderer.draw(picture.request, paletteOf(4)));
    EXPECT_EQ(qAlpha(renderer.image().pixel(2, 2)), 0);
    EXPECT_EQ(qAlpha(renderer.image().pixel(160, 120)), 255);
}

TEST(Renderer, ASlabShowsWhatIsInIt)
{
    Picture picture(oneOfEach());
    // The plate lies behind, and the front half of the sphere before it.
    picture.request.camera.slabFront = 2;
    picture.request.camera.slabBack = 2;
    Renderer renderer;
    ASSERT_TRUE(renderer.draw(picture.request, paletteOf(4)));
    const float scale = 240.0F / 44;
    EXPECT_EQ(renderer.pickAt(int(160 + 6 * scale), int(120 - 6 * scale)), 0U);
    EXPECT_EQ(renderer.pickAt(int(160 - 4 * scale), 120), 2U);
}

TEST(Renderer, NoShapesGiveTheGround)
{
    Picture picture(Shapes{});
    picture.request.look.background = 0x123456;
    Renderer renderer;
    ASSERT_TRUE(renderer.draw(picture.request, paletteOf(0)));
    EXPECT_EQ(renderer.image().pixel(160, 120), 0xff123456U);
    EXPECT_EQ(renderer.pickAt(160, 120), 0U);
    EXPECT_EQ(renderer.pickAt(-1, 0), 0U);
    EXPECT_EQ(renderer.pickAt(0, 240), 0U);
}

TEST(Renderer, PlacesThatAreNoNumbersOrFarAwayAreSurvived)
{
    Shapes shapes = oneOfEach();
    const float none = std::numeric_limits<float>::quiet_NaN();
    shapes.spheres.push_back({{none, 0, 0}, 1, 2});
    shapes.spheres.push_back({{1e30F, -1e30F, 1e30F}, 1e20F, 2});
    shapes.sticks.push_back({{none, none, none}, {0, 0, 0}, 1, 3, 4});
    shapes.sticks.push_back({{1e30F, 0, 0}, {-1e30F, 0, 0}, 1, 3, 4});
    shapes.mesh.vertices.push_back({{none, 1, 2}, {0, 0, 1}});
    shapes.mesh.vertices.push_back({{1e35F, -1e35F, 1e35F}, {0, 0, 1}});
    shapes.mesh.triangles.push_back({{0, 1, 4}, 1});
    shapes.mesh.triangles.push_back({{0, 1, 5}, 1});
    for (const bool isPerspective : {false, true}) {
        Picture picture(shapes);
        picture.request.camera.isPerspective = isPerspective;
        Renderer renderer;
        EXPECT_TRUE(renderer.draw(picture.request, paletteOf(4)));
    }
}

TEST(Renderer, APictureThatIsStoppedLeavesTheOneBefore)
{
    Picture picture(oneOfEach());
    Renderer renderer;
    ASSERT_TRUE(renderer.draw(picture.request, paletteOf(4)));
    const QImage before = renderer.image().copy();
    const std::atomic<bool> stop = true;
    picture.request.stop = &stop;
    picture.request.camera.height = 20;
    EXPECT_FALSE(renderer.draw(picture.request, paletteOf(4)));
    EXPECT_EQ(renderer.image(), before);
}

// Of any size, with all that is noted of what is selected and pointed at.
TEST(Renderer, LargePicturesNeedNoMoreThanTheirShare)
{
    constexpr std::size_t kMost = std::size_t(20) << 20;
    Picture picture(oneOfEach());
    Palette palette = paletteOf(4);
    palette.marks[2] = Palette::kSelected;
    palette.marks[3] = Palette::kPointed;
    Renderer renderer(kMost);
    for (const QSize &size : {QSize(700, 500), QSize(1280, 800), QSize(2500, 1800), QSize(60, 9000),
                              QSize(9000, 60), QSize(1280, 800)})
        for (const int perAxis : {1, 2}) {
            picture.request.size = size;
            picture.request.perAxis = perAxis;
            ASSERT_TRUE(renderer.draw(picture.request, palette));
            EXPECT_LE(renderer.bytes(), kMost) << size.width() << ", " << perAxis;
            EXPECT_EQ(renderer.pickAt(size.width() / 2 - int(4 * float(size.height()) / 44),
                                      size.height() / 2),
                      size.width() < size.height() ? 0U : 2U);
        }
}

} // namespace RendererTest
