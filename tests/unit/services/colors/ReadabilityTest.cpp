// SPDX-License-Identifier: GPL-3.0-or-later
#include "Readability.h"

#include "support/Contrast.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QRegularExpression>
#include <QStyleFactory>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace ReadabilityTest {

class Readability : public testing::Test
{
protected:
    ~Readability() override
    {
        QApplication::setPalette(QPalette());
        QApplication::setStyle(QStyleFactory::create("Fusion"));
    }
};

QImage imageOf(const QIcon &icon, QIcon::Mode mode)
{
    return icon.pixmap(QSize(16, 16), mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

QIcon drawnIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    QPainter(&pixmap).fillRect(0, 0, 8, 16, Qt::blue);
    return QIcon(pixmap);
}

TEST_F(Readability, BlackOnWhiteIsAsFarApartAsCanBe)
{
    EXPECT_NEAR(contrastOf(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrastOf(Qt::green, Qt::white), 1.37, 0.01);
    EXPECT_NEAR(contrastOf(QColor(0, 0, 0, 0), Qt::white), 1, 0.01);
}

TEST_F(Readability, IconsKeepTheirColorsWhenSelected)
{
    const QIcon drawn = drawnIcon();
    ASSERT_NE(imageOf(drawn, QIcon::Selected), imageOf(drawn, QIcon::Normal)) << "the toolkit's";
    TAMBO::services::makeReadable();
    const QIcon fresh = drawnIcon();
    EXPECT_EQ(imageOf(fresh, QIcon::Selected), imageOf(fresh, QIcon::Normal));
    EXPECT_NE(imageOf(fresh, QIcon::Disabled), imageOf(fresh, QIcon::Normal));
    const QIcon file(QStringLiteral(SOURCE_DIR "/share/icons/kind-alignment.svg"));
    ASSERT_FALSE(imageOf(file, QIcon::Normal).isNull());
    EXPECT_EQ(imageOf(file, QIcon::Selected), imageOf(file, QIcon::Normal));
}

TEST_F(Readability, QuietTextsCanBeReadOnAllGrounds)
{
    const auto expectAll = [] {
        const QPalette palette = QApplication::palette();
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
            for (const QPalette::ColorRole ground :
                 {QPalette::Base, QPalette::AlternateBase, QPalette::Window})
                EXPECT_GE(contrastOf(palette.color(group, QPalette::PlaceholderText),
                                     palette.color(group, ground)),
                          kReadableContrast)
                    << group << ' ' << ground;
    };
    TAMBO::services::makeReadable();
    expectAll();
    const QColor base = QApplication::palette().color(QPalette::Base);
    QPalette dark;
    dark.setColor(QPalette::Text, QColor(0xee, 0xee, 0xee));
    for (const auto role : {QPalette::Base, QPalette::AlternateBase, QPalette::Window})
        dark.setColor(role, QColor(0x2b, 0x2b, 0x2b));
    QApplication::setPalette(dark);
    const QPalette before = QApplication::palette();
    EXPECT_NE(before.color(QPalette::Base), base);
    TAMBO::services::makeReadable();
    QColor quiet = QApplication::palette().color(QPalette::PlaceholderText);
    EXPECT_GE(contrastOf(quiet, before.color(QPalette::Base)), kReadableContrast);
}

TEST_F(Readability, SelectedLinesCanBeReadInAnyGroupAndKeepTheirHue)
{
    const std::vector<std::pair<QColor, QColor>> lines = {
        // Of the toolkit, of desktops, and dark text on a color that is dark, too.
        {QColor(48, 140, 198), Qt::white},
        {QColor(61, 174, 233), Qt::white},
        {QColor(42, 130, 218), QColor(0xee, 0xee, 0xee)},
        {QColor(90, 120, 60), Qt::black},
        {QColor(128, 128, 128), Qt::white}};
    const auto groups = {QPalette::Active, QPalette::Inactive};
    for (const auto &[ground, text] : lines) {
        QPalette palette;
        for (const QPalette::ColorGroup group : groups) {
            palette.setColor(group, QPalette::Highlight, ground);
            palette.setColor(group, QPalette::HighlightedText, text);
        }
        QApplication::setPalette(palette);
        TAMBO::services::makeReadable();
        const QPalette made = QApplication::palette();
        for (const QPalette::ColorGroup group : groups) {
            const QColor now = made.color(group, QPalette::Highlight);
            EXPECT_EQ(made.color(group, QPalette::HighlightedText), text);
            EXPECT_GE(contrastOf(text, now), kReadableContrast) << now.name().toStdString();
            if (ground.hslSaturation() > 0)
                EXPECT_NEAR(now.hslHue(), ground.hslHue(), 3) << now.name().toStdString();
        }
    }
}

TEST_F(Readability, AGroundOnWhichTheTextCanBeReadStaysAsItIs)
{
    const QColor dark(20, 60, 120);
    EXPECT_EQ(TAMBO::services::readableGround(Qt::white, dark), dark);
    EXPECT_NE(TAMBO::services::readableGround(Qt::white, QColor(48, 140, 198)), dark);
    const QColor gray(119, 119, 119);
    EXPECT_GE(contrastOf(gray, TAMBO::services::readableGround(gray, Qt::white)), 4.4);
}

TEST_F(Readability, SelectedLinesOfTheToolkitsOwnLookCanBeRead)
{
    TAMBO::services::makeReadable();
    const QPalette palette = QApplication::palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        EXPECT_GE(contrastOf(palette.color(group, QPalette::HighlightedText),
                             palette.color(group, QPalette::Highlight)),
                  kReadableContrast);
}

TEST_F(Readability, HelpPagesCanBeRead)
{
    QFile file(QStringLiteral(SOURCE_DIR "/share/help/style.css"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    static const QRegularExpression colors(QStringLiteral("[ {;]color: *(#[0-9a-f]+)"));
    int found = 0;
    for (auto match = colors.globalMatch(text); match.hasNext(); ++found) {
        const QString color = match.next().captured(1);
        EXPECT_GE(contrastOf(QColor(color), Qt::white), kReadableContrast) << color.toStdString();
    }
    EXPECT_GE(found, 5);
}

} // namespace ReadabilityTest
