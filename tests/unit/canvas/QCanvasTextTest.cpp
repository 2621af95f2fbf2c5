// SPDX-License-Identifier: GPL-3.0-or-later
#include "QCanvasText.h"

#include "QCanvas.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace QCanvasTextTest {

constexpr const char *kText = "Sequence  O";

QFont testFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(14);
    return font;
}

int textWidth(const QString &text)
{
    return QFontMetrics(testFont()).horizontalAdvance(text);
}

// What of the image is not white.
QRect inked(const QImage &image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != QColor(Qt::white))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

QRect inkOf(QCanvasText &item)
{
    QImage image(400, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    item.draw(painter);
    painter.end();
    return inked(image);
}

TEST(QCanvasText, StartsBlackAtTheUpperLeftWithoutFlags)
{
    const QCanvasText item(QString::fromLatin1(kText), testFont(), nullptr);
    EXPECT_EQ(item.text(), QString::fromLatin1(kText));
    EXPECT_EQ(item.font(), testFont());
    EXPECT_EQ(item.color(), QColor(Qt::black));
    EXPECT_EQ(item.textFlags(), 0);
    EXPECT_EQ(item.rtti(), QCanvasText::RTTI);
    EXPECT_EQ(item.boundingRect().topLeft(), QPoint(0, 0));
    EXPECT_EQ(item.boundingRect().width(), textWidth(item.text()));
}

TEST(QCanvasText, RightEdgeStandsAtXWithAlignRight)
{
    QCanvasText item(QString::fromLatin1(kText), testFont(), nullptr);
    item.setTextFlags(Qt::AlignRight);
    item.move(200, 30);
    EXPECT_EQ(item.boundingRect(), QRect(200 - textWidth(item.text()), 30, textWidth(item.text()),
                                         QFontMetrics(testFont()).height()));
    EXPECT_NEAR(inkOf(item).right(), 200, 2);
}

TEST(QCanvasText, CentreStandsAtXWithAlignHCenter)
{
    QCanvasText item(QStringLiteral("O"), testFont(), nullptr);
    item.setTextFlags(Qt::AlignHCenter);
    item.move(200, 30);
    EXPECT_NEAR(item.boundingRect().center().x(), 200, 1);
    EXPECT_EQ(item.boundingRect().top(), 30);
    EXPECT_NEAR(inkOf(item).center().x(), 200, 1);
}

TEST(QCanvasText, LowerEdgeStandsAtYWithAlignBottom)
{
    QCanvasText item(QStringLiteral("O"), testFont(), nullptr);
    item.setTextFlags(Qt::AlignBottom);
    item.move(200, 50);
    EXPECT_EQ(item.boundingRect().bottom(), 49);
    item.setTextFlags(Qt::AlignVCenter);
    EXPECT_NEAR(item.boundingRect().center().y(), 50, 1);
}

TEST(QCanvasText, InkLiesWithinTheBoundingRectangle)
{
    QCanvasText item(QStringLiteral("HQgAd"), testFont(), nullptr);
    item.move(100, 30);
    const QRect ink = inkOf(item);
    EXPECT_FALSE(ink.isEmpty());
    EXPECT_TRUE(item.boundingRect().adjusted(-1, 0, 1, 0).contains(ink));
}

TEST(QCanvasText, IsDrawnInItsColour)
{
    QCanvasText item(QStringLiteral("\u2588"), testFont(), nullptr);
    item.setColor(Qt::green);
    item.move(10, 10);
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    item.draw(painter);
    painter.end();
    EXPECT_EQ(image.pixelColor(item.boundingRect().center()), QColor(Qt::green));
}

TEST(QCanvasText, NewTextMovesItsEdgesNotItsPlace)
{
    QCanvas canvas(400, 100);
    auto *item = new QCanvasText(QStringLiteral("long enough"), testFont(), &canvas);
    item->setTextFlags(Qt::AlignRight);
    item->move(200, 30);
    item->show();
    const int width = textWidth(item->text());
    EXPECT_EQ(canvas.collisions(QPoint(200 - width, 35)).size(), 1);
    item->setText(QStringLiteral("x"));
    EXPECT_TRUE(canvas.collisions(QPoint(200 - width, 35)).isEmpty());
    EXPECT_EQ(canvas.collisions(QPoint(199, 35)).size(), 1);
    EXPECT_TRUE(canvas.collisions(QPoint(200, 35)).isEmpty());
}

TEST(QCanvasText, EmptyTextCoversAndDrawsNothing)
{
    QCanvas canvas(400, 100);
    auto *item = new QCanvasText(QString(), testFont(), &canvas);
    item->move(200, 30);
    item->show();
    EXPECT_TRUE(canvas.collisions(QRect(0, 0, 400, 100)).isEmpty());
    EXPECT_TRUE(inkOf(*item).isEmpty());
}

class Renamed : public QCanvasText
{
public:
    using QCanvasText::QCanvasText;
    void draw(QPainter &painter) override
    {
        setText(QStringLiteral("given while drawing"));
        QCanvasText::draw(painter);
    }
};

TEST(QCanvasText, TextThatIsSetWhileDrawingIsDrawnAtOnce)
{
    QCanvas canvas(400, 100);
    auto *item = new Renamed(QString(), testFont(), &canvas);
    item->move(10, 30);
    item->show();
    QImage image(canvas.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    canvas.drawArea(canvas.rect(), &painter);
    painter.end();
    EXPECT_GT(inked(image).width(), 60);
    EXPECT_EQ(canvas.collisions(QPoint(60, 35)).size(), 1);
}

TEST(QCanvasText, SeveralLinesStandBelowOneAnother)
{
    QCanvasText item(QStringLiteral("one\ntwo"), testFont(), nullptr);
    EXPECT_GE(item.boundingRect().height(), 2 * QFontMetrics(testFont()).height());
    item.move(5, 5);
    EXPECT_GT(inkOf(item).height(), QFontMetrics(testFont()).height());
}

} // namespace QCanvasTextTest
