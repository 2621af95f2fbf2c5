// SPDX-License-Identifier: GPL-3.0-or-later
// The view on screens of other scales: run once for each, which QT_SCALE_FACTOR names.
#include "OpenView.h"

#include "DataPoint.h"
#include "Space.h"

#include <QImage>
#include <QLabel>
#include <QMouseEvent>
#include <QStatusBar>
#include <QTest>

#include <optional>

namespace ScaledViewTest {

using namespace structures;

// Neither that of other residues nor of outlines.
constexpr std::uint32_t kOwnColor = 0x00d000;
constexpr std::uint32_t kOtherColor = 0x808080;

class ScaledView : public OpenView
{
protected:
    ScaledView() { lookFromTheSide(); }

    static double scale() { return qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble(); }
    // The residue has a color of its own.
    void color(std::size_t residue)
    {
        {
            DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
            for (std::size_t i = 0; i < 24; ++i)
                m_Structure->Child(0)->Child(i)->SetColor(
                    Color(i == residue ? kOwnColor : kOtherColor));
        }
        QCoreApplication::processEvents();
        waitForPicture();
    }
    // Where the picture has nothing but this color around, in its own pixels: light and shadow
    // leave it its hue.
    [[nodiscard]] std::optional<QPoint> middleOfOwnColor()
    {
        const QImage picture = view().picture();
        const auto isOwn = [&picture](int x, int y) {
            const QRgb pixel = picture.pixel(x, y);
            return qGreen(pixel) > qRed(pixel) + 40 && qGreen(pixel) > qBlue(pixel) + 40;
        };
        constexpr int kAround = 2;
        for (int y = kAround; y < picture.height() - kAround; ++y)
            for (int x = kAround; x < picture.width() - kAround; ++x) {
                bool isInside = true;
                for (int dy = -kAround; dy <= kAround && isInside; ++dy)
                    for (int dx = -kAround; dx <= kAround && isInside; ++dx)
                        isInside = isOwn(x + dx, y + dy);
                if (isInside)
                    return QPoint(x, y);
            }
        return std::nullopt;
    }
};

TEST_F(ScaledView, HasThePixelsOfTheScreen)
{
    ASSERT_EQ(view().devicePixelRatioF(), scale());
    EXPECT_EQ(view().picture().size(), (QSizeF(view().size()) * scale()).toSize());
}

TEST_F(ScaledView, NamesAndSelectsTheResidueThatIsSeenUnderThePointer)
{
    const auto *const label = m_Window->statusBar()->findChild<QLabel *>();
    for (const std::size_t residue : {1U, 12U, 22U}) {
        TAMBO::Compound *const object = m_Structure->Child(0)->Child(residue);
        color(residue);
        const std::optional<QPoint> pixel = middleOfOwnColor();
        ASSERT_TRUE(pixel) << residue;
        const QPoint place = (QPointF(*pixel) / scale()).toPoint();
        // The pointer itself stays on the screen, which is smaller at a larger scale.
        QMouseEvent move(QEvent::MouseMove, place, view().mapToGlobal(place), Qt::NoButton,
                         Qt::NoButton, {});
        QCoreApplication::sendEvent(&view(), &move);
        const QString name = "1abc, chain A, " + QString::fromStdString(object->Name());
        EXPECT_EQ(label->text(), name);
        QTest::mouseClick(&view(), Qt::LeftButton, {}, place);
        EXPECT_EQ(selected(), std::vector<std::size_t>({residue}));
    }
}

} // namespace ScaledViewTest
