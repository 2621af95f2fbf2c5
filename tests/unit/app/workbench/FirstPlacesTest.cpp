// SPDX-License-Identifier: GPL-3.0-or-later
// Where windows stand at the very first start.
#include "FirstPlaces.h"

#include <QScreen>
#include <QWidget>

#include <gtest/gtest.h>

namespace FirstPlacesTest {

using TAMBO::app::FirstPlaces;
using TAMBO::app::freestPlace;
using TAMBO::app::placeBeside;
using TAMBO::app::sharesBeside;
using TAMBO::app::workbenchPlace;

TEST(FirstPlaces, WorkbenchAndEditorStandBesideEachOtherOnACommonScreen)
{
    for (const QSize &size : {QSize(1920, 1080), QSize(1680, 1050), QSize(2560, 1440)}) {
        const QRect room(QPoint(0, 0), size);
        const QRect workbench = workbenchPlace(room);
        EXPECT_TRUE(room.contains(workbench));
        const QRect editor(0, 0, std::min(size.width() * 6 / 10, 1200) + 8, 680);
        const std::optional<QPoint> place = placeBeside(editor, workbench, room);
        ASSERT_TRUE(place.has_value());
        const QRect placed(*place, editor.size());
        EXPECT_TRUE(room.contains(placed));
        EXPECT_FALSE(placed.intersects(workbench));
    }
}

TEST(FirstPlaces, ASmallScreenIsNotLeft)
{
    const QRect room(0, 0, 400, 300);
    const QRect workbench = workbenchPlace(room);
    EXPECT_LE(workbench.width(), room.width());
    EXPECT_LE(workbench.height(), room.height());
}

TEST(FirstPlaces, WithoutRoomAtTheRightTheLeftIsTaken)
{
    const QRect room(0, 0, 1000, 800);
    const std::optional<QPoint> place =
        placeBeside(QRect(0, 0, 300, 200), QRect(500, 50, 450, 700), room);
    ASSERT_TRUE(place.has_value());
    EXPECT_LT(place->x() + 300, 500);
    EXPECT_EQ(place->y(), 50);
}

TEST(FirstPlaces, WithoutAnyRoomTheWindowManagerDecides)
{
    const QRect room(0, 0, 1000, 800);
    EXPECT_FALSE(placeBeside(QRect(0, 0, 600, 200), QRect(250, 50, 500, 700), room).has_value());
}

TEST(FirstPlaces, APanelOfTheDesktopIsLeftFree)
{
    const QRect room(60, 30, 1860, 1050);
    EXPECT_TRUE(room.contains(workbenchPlace(room)));
}

TEST(FirstPlaces, AnEditorStandsBesideAWorkbenchThatIsStillToCome)
{
    const QWidget probe;
    const QRect room = probe.screen()->availableGeometry();
    const QRect workbench(room.topLeft() + QPoint(10, 30), QSize(100, 200));
    FirstPlaces places;
    places.expectWorkbench(workbench);
    QWidget editor;
    editor.resize(room.width() / 2, room.height() / 2);
    editor.show();
    EXPECT_GT(editor.pos().x(), workbench.right());
    EXPECT_EQ(editor.pos().y(), workbench.top());
}

TEST(FirstPlaces, WithoutAWorkbenchTheWindowManagerDecides)
{
    const FirstPlaces places;
    QWidget editor;
    editor.resize(200, 100);
    editor.show();
    EXPECT_FALSE(editor.testAttribute(Qt::WA_Moved));
}

TEST(FirstPlaces, AnEditorAndAToolShareTheRoomBesideTheWorkbench)
{
    for (const QSize &size :
         {QSize(1280, 800), QSize(1600, 1000), QSize(1920, 1080), QSize(2560, 1440)}) {
        const QRect room(QPoint(0, 0), size);
        const QRect workbench = workbenchPlace(room);
        const std::vector<QRect> shares = sharesBeside(workbench, room, 2);
        ASSERT_EQ(shares.size(), 2U);
        EXPECT_FALSE(shares[0].intersects(shares[1]));
        for (const QRect &share : shares) {
            EXPECT_TRUE(room.contains(share)) << size.width();
            EXPECT_FALSE(share.intersects(workbench)) << size.width();
            EXPECT_GE(share.width(), 760);
            EXPECT_GE(share.height(), 400);
        }
    }
}

TEST(FirstPlaces, OnASmallScreenTheyShareAllOfIt)
{
    const QRect room(0, 0, 800, 600);
    const std::vector<QRect> shares = sharesBeside(workbenchPlace(room), room, 2);
    ASSERT_EQ(shares.size(), 2U);
    EXPECT_FALSE(shares[0].intersects(shares[1]));
    EXPECT_EQ(shares[0].united(shares[1]), room);
}

TEST(FirstPlaces, WindowsThatComeTogetherStandOnNoOther)
{
    FirstPlaces places;
    const QWidget probe;
    const QRect room = probe.screen()->availableGeometry();
    places.expectWorkbench(QRect(room.topLeft(), QSize(10, 200)));
    places.shareRoom(2);
    QWidget first;
    first.setWindowTitle("first");
    first.show();
    QWidget second;
    second.setWindowTitle("second");
    second.show();
    EXPECT_FALSE(first.frameGeometry().intersects(second.frameGeometry()));
    EXPECT_TRUE(room.contains(first.frameGeometry()));
    EXPECT_TRUE(room.contains(second.frameGeometry()));
    places.shareRoom(0);
    QWidget later;
    later.resize(100, 50);
    later.show();
    EXPECT_EQ(later.size(), QSize(100, 50));
}

TEST(FirstPlaces, AToolThatComesLaterStandsWhereItCoversNoOther)
{
    const QRect room(0, 0, 2560, 1440);
    const QRect workbench(16, 32, 640, 860);
    const QRect editor(668, 32, 1200, 632);
    const QRect place = freestPlace(QRect(0, 0, 908, 700), 300, {workbench, editor}, room);
    EXPECT_EQ(place.size(), QSize(908, 700));
    EXPECT_TRUE(room.contains(place));
    EXPECT_FALSE(place.intersects(workbench));
    EXPECT_FALSE(place.intersects(editor));
}

TEST(FirstPlaces, AToolIsLoweredSoThatItCoversNoOther)
{
    const QRect room(0, 0, 1600, 1000);
    const QRect workbench(16, 32, 528, 860);
    const QRect editor(556, 32, 968, 632);
    const QRect place = freestPlace(QRect(0, 0, 908, 716), 300, {workbench, editor}, room);
    EXPECT_EQ(place.width(), 908);
    EXPECT_LT(place.height(), 716);
    EXPECT_GE(place.height(), 300);
    EXPECT_TRUE(room.contains(place));
    EXPECT_FALSE(place.intersects(workbench));
    EXPECT_FALSE(place.intersects(editor));
}

TEST(FirstPlaces, WhereAllIsTakenAToolCoversAsLittleAsCanBeAndKeepsItsSize)
{
    const QRect room(0, 0, 1000, 800);
    const QRect workbench(0, 0, 300, 800);
    const QRect editor(300, 0, 600, 600);
    const QRect place = freestPlace(QRect(0, 0, 500, 500), 300, {workbench, editor}, room);
    EXPECT_EQ(place, QRect(500, 300, 500, 500));
}

TEST(FirstPlaces, AToolBesideAnEditorDoesNotCoverIt)
{
    const QWidget probe;
    const QRect room = probe.screen()->availableGeometry();
    FirstPlaces places;
    places.expectWorkbench(QRect(room.topLeft(), QSize(10, 200)));
    QWidget editor;
    editor.setWindowTitle("editor");
    editor.resize(room.width() * 6 / 10, room.height() * 4 / 10);
    editor.show();
    QWidget tool;
    tool.setWindowTitle("tool");
    tool.resize(room.width() * 6 / 10, room.height() * 9 / 10);
    tool.show();
    EXPECT_FALSE(editor.frameGeometry().intersects(tool.frameGeometry()));
    EXPECT_TRUE(room.contains(tool.frameGeometry()));
    EXPECT_GE(tool.height(), 280);
}

TEST(FirstPlaces, AToolOfAFixedSizeIsNotLowered)
{
    const QWidget probe;
    const QRect room = probe.screen()->availableGeometry();
    FirstPlaces places;
    places.expectWorkbench(QRect(room.topLeft(), QSize(10, 200)));
    QWidget editor;
    editor.setWindowTitle("editor");
    editor.resize(room.width() * 6 / 10, room.height() * 4 / 10);
    editor.show();
    QWidget tool;
    tool.setWindowTitle("tool");
    tool.setFixedSize(room.width() * 6 / 10, room.height() * 9 / 10);
    tool.show();
    EXPECT_EQ(tool.size(), QSize(room.width() * 6 / 10, room.height() * 9 / 10));
}

} // namespace FirstPlacesTest
