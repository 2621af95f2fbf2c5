// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeasurePainting.h"

#include "MadeStructure.h"
#include "unit/model/ModelFixture.h"

#include <QPainter>

namespace MeasurePaintingTest {

using namespace structures;

class MeasurePaintingOfModel : public ModelFixture
{
protected:
    MeasurePaintingOfModel()
    {
        m_Camera = cameraOnAll({}, m_Scene.picture()->bounds, m_Size);
        measure({2, 20});
    }

    void measure(const std::vector<std::uint32_t> &residues)
    {
        const ViewedStructure &shown = *m_Scene.structures().front();
        Measure measure;
        for (const std::uint32_t residue : residues)
            measure.atoms.push_back(
                addressOf(shown, shown.molecule().residues[residue].tracePoint));
        ASSERT_TRUE(m_Measures.add(measure));
        m_Measures.follow(m_Scene);
    }
    [[nodiscard]] QImage painted(QRgb ground, const Look &look, double scale = 1) const
    {
        QImage image(m_Size * scale, QImage::Format_ARGB32_Premultiplied);
        image.fill(ground);
        QPainter painter(&image);
        MeasurePainting(m_Measures, m_Camera, image.size(), look, scale).paint(painter);
        return image;
    }
    // Of the pixels of a label: how far they are from the ground at most, in steps of lightness.
    [[nodiscard]] static int contrast(const QImage &image, const QRect &rect)
    {
        int least = 255;
        int most = 0;
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            for (int x = rect.left(); x <= rect.right(); ++x) {
                const int grey = qGray(image.pixel(x, y));
                least = std::min(least, grey);
                most = std::max(most, grey);
            }
        return most - least;
    }

    const QSize m_Size{640, 480};
    TAMBO::Compound *m_Structure = MadeStructure::make("1abc");
    StructureScene m_Scene{[] {}};
    Measures m_Measures;
    Camera m_Camera;
};

TEST_F(MeasurePaintingOfModel, TheLabelIsBesideTheMiddleOfItsLine)
{
    const MeasurePainting painting(m_Measures, m_Camera, m_Size, {});
    ASSERT_EQ(painting.labels().size(), 1U);
    const Projection projection(m_Camera, 640, 480);
    const std::vector<Vec3> &places = m_Measures.placesOf(0);
    const Vec3 middle =
        projection.toPicture(projection.toView((places.front() + places.back()) * 0.5F));
    const QPointF way =
        painting.labels().front().rect.center() - QPointF(double(middle.x), double(middle.y));
    EXPECT_LT(std::hypot(way.x(), way.y()), 60);
    EXPECT_EQ(painting.measureAt(painting.labels().front().rect.center()), 0U);
    EXPECT_FALSE(painting.measureAt({1, 1}));
}

TEST_F(MeasurePaintingOfModel, FollowsTheCamera)
{
    const QRectF before = MeasurePainting(m_Measures, m_Camera, m_Size, {}).labels().front().rect;
    Camera moved = m_Camera;
    const float angstrom = m_Camera.height / 480;
    moved.target.x -= 100 * angstrom;
    const QRectF after = MeasurePainting(m_Measures, moved, m_Size, {}).labels().front().rect;
    EXPECT_NEAR(after.left() - before.left(), 100, 0.5);
    EXPECT_NEAR(after.top(), before.top(), 0.5);
}

TEST_F(MeasurePaintingOfModel, IsHiddenWhenAnEndIsCutAway)
{
    Camera slab = m_Camera;
    slab.slabFront = slab.slabBack = 5;
    EXPECT_TRUE(MeasurePainting(m_Measures, slab, m_Size, {}).labels().empty());
    slab.slabFront = slab.slabBack = 1000;
    EXPECT_EQ(MeasurePainting(m_Measures, slab, m_Size, {}).labels().size(), 1U);
}

TEST_F(MeasurePaintingOfModel, LabelsAreReadableOnAnyGround)
{
    measure({2, 11, 20});
    measure({1, 8, 15, 22});
    const MeasurePainting painting(m_Measures, m_Camera, m_Size, {});
    ASSERT_EQ(painting.labels().size(), 3U);
    Look dark;
    dark.background = kDarkGround;
    for (const QRgb ground : {0xffffffffU, 0xff000000U, 0xff808080U, 0xffd03030U, 0xff3f8fd0U})
        for (const Look &look : {Look(), dark}) {
            const QImage image = painted(ground, look);
            for (const MeasurePainting::Label &label : painting.labels())
                EXPECT_GT(contrast(image, label.rect.toRect() & image.rect()), 180)
                    << std::hex << ground << ' ' << look.background;
        }
}

TEST_F(MeasurePaintingOfModel, ALargerPictureHasLargerLetters)
{
    const QRectF small = MeasurePainting(m_Measures, m_Camera, m_Size, {}).labels().front().rect;
    const QRectF large =
        MeasurePainting(m_Measures, m_Camera, m_Size * 3, {}, 3).labels().front().rect;
    EXPECT_NEAR(large.height(), 3 * small.height(), 4);
    EXPECT_NEAR(large.center().x(), 3 * small.center().x(), 10);
}

TEST_F(MeasurePaintingOfModel, TheChosenLabelLooksOtherwise)
{
    QImage image = painted(0xffffffffU, {});
    const QImage plain = image.copy();
    QPainter painter(&image);
    const MeasurePainting painting(m_Measures, m_Camera, m_Size, {});
    painting.paintChosen(painter, 1);
    EXPECT_EQ(image, plain);
    painting.paintChosen(painter, 0);
    EXPECT_NE(image, plain);
}

} // namespace MeasurePaintingTest
