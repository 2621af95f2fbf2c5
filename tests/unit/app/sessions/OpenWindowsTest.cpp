// SPDX-License-Identifier: GPL-3.0-or-later
// Windows that show alignments open again as they were.
#include "OpenWindows.h"

#include "ValueBytes.h"
#include "ValuesFixture.h"
#include "Viewer.h"
#include "WindowState.h"
#include "support/WaitUntil.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QToolBar>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace OpenWindowsTest {

using namespace TAMBO;
using app::OpenWindows;
using app::placeInSight;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kName = "windows";

class OpenWindowsTest : public ValuesFixture
{
protected:
    OpenWindowsTest() { m_Values.add(m_Windows); }

    Viewer &open(Alignment *shown)
    {
        Viewer &made = *m_Viewers.emplace_back(std::make_unique<Viewer>(shown));
        if (m_HasDock) {
            auto *const dock = new QDockWidget("Dock", made.mainWindow());
            dock->setObjectName("Dock");
            made.mainWindow()->addDockWidget(Qt::RightDockWidgetArea, dock);
            dock->hide();
        }
        if (m_HasFixedBar) {
            QToolBar *const bar = made.mainWindow()->addToolBar("Fixed");
            bar->setObjectName("Fixed");
            bar->setMovable(false);
            bar->hide();
        }
        return made;
    }
    Viewer &viewerOf(const QWidget &window)
    {
        const auto found = std::ranges::find_if(
            m_Viewers, [&](const auto &viewer) { return viewer->mainWindow() == &window; });
        return **found;
    }
    // As the next run of the program finds it.
    std::vector<std::string> closeAndLoad()
    {
        const std::string kept = stored(kName);
        m_Viewers.clear();
        return load({{kName, kept}});
    }
    [[nodiscard]] std::vector<std::string> shown() const
    {
        std::vector<std::string> names;
        for (const auto &viewer : m_Viewers)
            names.push_back(viewer->m_Shown == nullptr ? "" : viewer->m_Shown->Name());
        return names;
    }

    std::vector<std::unique_ptr<Viewer>> m_Viewers;
    bool m_HasDock = false;
    bool m_HasFixedBar = false;
    bool m_CanOpen = true;
    bool m_IsViewer = true;
    OpenWindows m_Windows{
        {[this](Alignment &alignment) -> QWidget * {
             return m_CanOpen ? open(&alignment).mainWindow() : nullptr;
         },
         [this](QWidget &window, Alignment &alignment) { viewerOf(window).m_Shown = &alignment; },
         [this](const QWidget &) { return m_IsViewer; }}};
    Alignment &m_First = alignment("first", {"AC-D", "A-CD"});
    Alignment &m_Second = alignment("second", {"AC-D", "A-CD"});
};

TEST_F(OpenWindowsTest, EachOpensAgainAsItWas)
{
    Viewer &before = open(&m_First);
    before.m_Cell = QSize(3, 5);
    before.m_Scrolled = QPoint(3 * 700 + 1, 5 * 20);
    before.m_NameWidth = 200;
    before.mainWindow()->addToolBar(Qt::LeftToolBarArea, before.m_Bar);
    before.m_Bar->hide();
    before.mainWindow()->setGeometry(70, 80, 333, 222);
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    ASSERT_THAT(shown(), ElementsAre("first"));
    const Viewer &after = *m_Viewers[0];
    EXPECT_EQ(after.m_Cell, QSize(3, 5));
    EXPECT_EQ(after.m_Scrolled, QPoint(3 * 700 + 1, 5 * 20));
    EXPECT_EQ(after.m_NameWidth, 200);
    EXPECT_EQ(after.mainWindow()->geometry(), QRect(70, 80, 333, 222));
    EXPECT_EQ(after.mainWindow()->toolBarArea(after.m_Bar), Qt::LeftToolBarArea);
    EXPECT_TRUE(after.m_Bar->isHidden());
}

// A search or a comparison does not go on in the next run.
TEST_F(OpenWindowsTest, BarsThatCannotBeMovedStayAsTheirWindowHasThem)
{
    m_HasFixedBar = true;
    open(&m_First).mainWindow()->findChild<QToolBar *>("Fixed")->show();
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    ASSERT_THAT(shown(), ElementsAre("first"));
    EXPECT_TRUE(m_Viewers[0]->mainWindow()->findChild<QToolBar *>("Fixed")->isHidden());
}

TEST_F(OpenWindowsTest, WhatAWindowChoosesItselfIsLeftToIt)
{
    open(&m_First).m_Scrolled = QPoint(80, 160);
    const std::string kept = stored(kName);
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    EXPECT_EQ(m_Viewers[0]->m_Cell, Viewer::kOwnCell);
    EXPECT_EQ(m_Viewers[0]->m_NameWidth, 8 * Viewer::kOwnCell.width());
    EXPECT_EQ(m_Viewers[0]->m_Scrolled, QPoint(80, 160));
    EXPECT_FALSE(m_Viewers[0]->m_Bar->isHidden());
    EXPECT_EQ(stored(kName), kept);
}

// Of another screen of the same system, too.
QFont chosen()
{
    QFont font("DejaVu Sans Mono", 23, QFont::Bold, true);
    font.setStyleName("Bold Oblique");
    font.setUnderline(true);
    return font;
}

TEST_F(OpenWindowsTest, AChosenFontIsChosenAgain)
{
    open(&m_First).m_Font = chosen();
    open(&m_Second).m_Font = QFont("DejaVu Sans");
    m_Viewers[1]->m_Font->setPixelSize(17);
    open(&m_Second);
    const std::string kept = stored(kName);
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    ASSERT_EQ(m_Viewers.size(), 3U);
    EXPECT_EQ(m_Viewers[0]->m_Font, chosen());
    EXPECT_EQ(m_Viewers[1]->m_Font->family(), "DejaVu Sans");
    EXPECT_EQ(m_Viewers[1]->m_Font->pixelSize(), 17);
    EXPECT_FALSE(m_Viewers[2]->m_Font);
    EXPECT_EQ(stored(kName), kept);
}

TEST_F(OpenWindowsTest, DocksAreWhereTheyWere)
{
    m_HasDock = true;
    QMainWindow &before = *open(&m_First).mainWindow();
    open(&m_Second);
    before.setGeometry(70, 80, 600, 500);
    auto *const dock = before.findChild<QDockWidget *>("Dock");
    before.addDockWidget(Qt::BottomDockWidgetArea, dock);
    dock->show();
    QCoreApplication::processEvents();
    before.resizeDocks({dock}, {170}, Qt::Vertical);
    QCoreApplication::processEvents();
    const int height = dock->height();
    ASSERT_GT(height, 150);
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    ASSERT_EQ(m_Viewers.size(), 2U);
    QCoreApplication::processEvents();
    QMainWindow &after = *m_Viewers[0]->mainWindow();
    const auto *const again = after.findChild<QDockWidget *>("Dock");
    EXPECT_EQ(after.dockWidgetArea(const_cast<QDockWidget *>(again)), Qt::BottomDockWidgetArea);
    EXPECT_FALSE(again->isHidden());
    EXPECT_EQ(again->height(), height);
    EXPECT_TRUE(m_Viewers[1]->mainWindow()->findChild<QDockWidget *>("Dock")->isHidden());
}

TEST_F(OpenWindowsTest, DocksThatAreNotThereAreLeftOut)
{
    m_HasDock = true;
    open(&m_First).mainWindow()->findChild<QDockWidget *>("Dock")->show();
    const std::string kept = stored(kName);
    m_Viewers.clear();
    m_HasDock = false;
    EXPECT_THAT(load({{kName, kept}}), IsEmpty());
    EXPECT_THAT(shown(), ElementsAre("first"));
}

TEST_F(OpenWindowsTest, ValuesFromBeforeDocksWereKeptAreStillTaken)
{
    open(&m_First).m_Cell = QSize(3, 5);
    std::string kept = stored(kName);
    m_Viewers.clear();
    ASSERT_EQ(kept.front(), '\3');
    kept.front() = '\2';
    kept.pop_back();
    EXPECT_THAT(load({{kName, kept}}), IsEmpty());
    ASSERT_THAT(shown(), ElementsAre("first"));
    EXPECT_EQ(m_Viewers[0]->m_Cell, QSize(3, 5));
}

TEST_F(OpenWindowsTest, ValuesFromBeforeFontsWereKeptAreStillTaken)
{
    // Of a window without a chosen font and without docks: a byte each that says so, at the end.
    open(&m_First).m_Cell = QSize(3, 5);
    std::string kept = stored(kName);
    m_Viewers.clear();
    ASSERT_EQ(kept.front(), '\3');
    kept.front() = '\1';
    kept.resize(kept.size() - 2);
    EXPECT_THAT(load({{kName, kept}}), IsEmpty());
    ASSERT_THAT(shown(), ElementsAre("first"));
    EXPECT_EQ(m_Viewers[0]->m_Cell, QSize(3, 5));
    kept.front() = '\4';
    EXPECT_THAT(load({{kName, kept}}), ElementsAre(HasSubstr("form is unknown")));
}

TEST_F(OpenWindowsTest, AFontThatNobodyCanChooseOpensNothing)
{
    for (const double points : {0.5, 513.0, std::nan(""), -1e300}) {
        open(&m_First).m_Font = chosen();
        ValueWriter before;
        before.real(chosen().pointSizeF());
        ValueWriter after;
        after.real(points);
        std::string kept = stored(kName);
        const std::size_t place = kept.rfind(before.bytes());
        ASSERT_NE(place, std::string::npos);
        kept.replace(place, after.size(), after.bytes());
        m_Viewers.clear();
        EXPECT_THAT(load({{kName, kept}}), ElementsAre(HasSubstr("font"))) << points;
        EXPECT_THAT(shown(), IsEmpty());
    }
}

TEST_F(OpenWindowsTest, AMaximisedWindowIsMaximisedAndKnowsItsOtherSize)
{
    open(&m_First).mainWindow()->showMaximized();
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    QMainWindow &after = *m_Viewers[0]->mainWindow();
    EXPECT_TRUE(after.isMaximized());
    EXPECT_EQ(after.normalGeometry(), Viewer::kPlace);
}

TEST_F(OpenWindowsTest, AMinimisedWindowStaysSo)
{
    open(&m_First).mainWindow()->showMinimized();
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    EXPECT_TRUE(m_Viewers[0]->mainWindow()->isMinimized());
}

TEST_F(OpenWindowsTest, SeveralComeInTheirOrderAndTheLastUsedIsOnTop)
{
    open(&m_First);
    open(&m_Second);
    open(&m_First);
    m_Viewers[1]->activated();
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    EXPECT_THAT(shown(), ElementsAre("first", "second", "first"));
    waitUntil([&] { return m_Viewers[1]->mainWindow()->isActiveWindow(); });
}

TEST_F(OpenWindowsTest, OnesWithoutAnAlignmentAreNotKept)
{
    open(nullptr);
    EXPECT_EQ(stored(kName), "");
    open(&m_Second);
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    EXPECT_THAT(shown(), ElementsAre("second"));
}

TEST_F(OpenWindowsTest, OnesThatCannotBeAskedToShowAnAlignmentAreNotKept)
{
    open(&m_First);
    m_IsViewer = false;
    EXPECT_EQ(stored(kName), "");
}

TEST_F(OpenWindowsTest, AnEmptyWindowIsUsedBeforeANewOne)
{
    open(&m_First);
    open(&m_Second);
    const std::string kept = stored(kName);
    m_Viewers.clear();
    const Viewer &empty = open(nullptr);
    EXPECT_THAT(load({{kName, kept}}), IsEmpty());
    EXPECT_EQ(empty.m_Shown, &m_First);
    EXPECT_THAT(shown(), ElementsAre("first", "second"));
}

TEST_F(OpenWindowsTest, WindowsOfAlignmentsThatAreGoneAreLeftOut)
{
    open(&m_First);
    open(&m_Second);
    const std::string kept = stored(kName);
    m_Viewers.clear();
    space().reset();
    alignment("third", {"AC"});
    EXPECT_THAT(load({{kName, kept}}), IsEmpty());
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_TRUE(m_Windows.areLoaded());
}

TEST_F(OpenWindowsTest, WithoutAViewerWhatIsKeptStays)
{
    open(&m_First);
    const std::string kept = stored(kName);
    m_CanOpen = false;
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_EQ(stored(kName), kept);
    m_CanOpen = true;
    EXPECT_THAT(load({{kName, kept}}), IsEmpty());
    EXPECT_THAT(shown(), ElementsAre("first"));
}

TEST_F(OpenWindowsTest, ThatAllWereClosedIsKeptToo)
{
    open(&m_First);
    EXPECT_NE(stored(kName), "");
    m_Viewers.clear();
    EXPECT_THAT(closeAndLoad(), IsEmpty());
    EXPECT_TRUE(m_Windows.areLoaded());
    EXPECT_THAT(shown(), IsEmpty());
    load({});
    EXPECT_FALSE(m_Windows.areLoaded());
    EXPECT_EQ(stored(kName), "");
}

TEST_F(OpenWindowsTest, DamagedBytesOpenNothing)
{
    open(&m_First).m_Font = chosen();
    open(&m_Second);
    const std::string kept = stored(kName);
    m_Viewers.clear();
    ObjectIndex objects;
    objects.addTree(space());
    for (std::size_t size = 0; size < kept.size(); ++size)
        EXPECT_FALSE(m_Windows.load(std::string_view(kept).substr(0, size), objects)) << size;
    EXPECT_FALSE(m_Windows.load(kept + 'x', objects));
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_THAT(load({{kName, "nonsense"}}), ElementsAre(HasSubstr("\"windows\"")));
    EXPECT_TRUE(m_Windows.load(kept, objects));
    EXPECT_THAT(shown(), ElementsAre("first", "second"));
}

// Any byte may be another one: nothing worse than another window comes of it.
TEST_F(OpenWindowsTest, NoByteDoesHarm)
{
    open(&m_First).m_Font = chosen();
    std::string kept = stored(kName);
    ObjectIndex objects;
    objects.addTree(space());
    for (char &byte : kept) {
        const char before = byte;
        for (const int other : {0x00, 0x7f, 0x80, 0xff}) {
            byte = char(other);
            m_Viewers.clear();
            const Result<void> done = m_Windows.load(kept, objects);
            EXPECT_LE(m_Viewers.size(), done ? 1U : 0U);
        }
        byte = before;
    }
}

struct PlaceInSight
{
    const char *title;
    QRect place;
    QRect expected;
};

class PlacesInSight : public testing::TestWithParam<PlaceInSight>
{
};

TEST_P(PlacesInSight, AreAsNearAsCanBe)
{
    const std::vector<QRect> rooms = {QRect(0, 0, 1000, 800), QRect(1000, 0, 500, 600)};
    EXPECT_EQ(placeInSight(GetParam().place, rooms), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    OpenWindows, PlacesInSight,
    testing::Values(
        PlaceInSight{"OneThatIsInSightStays", {10, 40, 300, 200}, {10, 40, 300, 200}},
        PlaceInSight{"OneOnTwoScreensStays", {900, 100, 300, 200}, {900, 100, 300, 200}},
        PlaceInSight{"OneBeyondTheRightEdgeComesBack", {1400, 50, 300, 200}, {1196, 50, 300, 200}},
        PlaceInSight{"OneFarAwayComesToAScreen", {9000, 9000, 300, 200}, {696, 596, 300, 200}},
        PlaceInSight{"OneAboveTheScreenShowsItsFrame", {50, -500, 300, 200}, {50, 32, 300, 200}},
        PlaceInSight{"OneThatIsTooLargeShrinks", {50, 50, 5000, 5000}, {4, 32, 992, 764}}),
    [](const auto &info) { return std::string(info.param.title); });

TEST(OpenWindows, WithoutAScreenAPlaceStays)
{
    EXPECT_EQ(placeInSight({5, 6, 7, 8}, {}), QRect(5, 6, 7, 8));
}

} // namespace OpenWindowsTest
