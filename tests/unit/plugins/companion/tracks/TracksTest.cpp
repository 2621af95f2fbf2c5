// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tracks.h"

#include "ColumnScores.h"
#include "Commands.h"
#include "Companion.h"
#include "TrackPainting.h"
#include "support/ScopedSettings.h"
#include "window/AlignmentWindowFixture.h"

#include "WorkbenchValues.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <memory>

namespace TracksTest {

using companion::Companion;
using companion::kTracks;
using companion::Track;
using companion::TrackCanvas;
using companion::TrackColumn;
using TAMBO::WindowArea;

// In milliseconds.
constexpr int kLongest = 60'000;

class TracksOfAWindow : public AlignmentWindowFixture
{
protected:
    TracksOfAWindow()
    {
        WorkbenchValues::Remove("companion", "cell-width");
        forgetSwitches();
    }
    // Before the window.
    ~TracksOfAWindow() override
    {
        m_Companion.reset();
        forgetSwitches();
    }

    static void forgetSwitches()
    {
        WorkbenchValues::Remove("companion", "tracks-off");
        WorkbenchValues::Remove("companion", "tracks-on");
        WorkbenchValues::Remove("companion", "dock-Tracks");
        WorkbenchValues::Remove("companion", "dock-Overview");
    }
    void look(TAMBO::Alignment &shown, const QSize &size = {700, 600})
    {
        m_Window = &show(shown, size);
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<Companion>(*m_Served);
    }
    void lookWithTracks(TAMBO::Alignment &shown, const QSize &size = {700, 600})
    {
        look(shown, size);
        m_Companion->tracks().toggle();
        settle();
    }
    TrackCanvas &canvas() { return m_Companion->tracks().canvas(); }
    std::size_t computed() { return canvas().columns().computed(); }
    std::pair<unsigned long, unsigned long> inSight() const
    {
        const TAMBO::CellBlock cells = m_Served->visibleCells();
        return {cells.colBegin, cells.colEnd};
    }
    // All that has happened has been told, and everything in sight is computed.
    void settle()
    {
        QCoreApplication::processEvents();
        while (canvas().isComputing())
            QCoreApplication::processEvents();
    }
    static void settle(Companion &companion)
    {
        QCoreApplication::processEvents();
        while (companion.tracks().canvas().isComputing())
            QCoreApplication::processEvents();
    }
    void scrollTo(int x)
    {
        m_Served->scrollTo({x, 0});
        settle();
    }
    void setCellSize(const QSize &size)
    {
        m_Served->setCellSize(size);
        settle();
    }
    // Where the left edge of a cell is in the canvas, as the screen has them.
    int cellLeft(unsigned long col)
    {
        const QWidget *const cells = m_Served->areaWidget(WindowArea::Cells);
        return canvas()
            .mapFromGlobal(cells->mapToGlobal(m_Served->cellRect({0, col}).topLeft()))
            .x();
    }
    void expectRight(const TAMBO::Alignment &alignment)
    {
        for (auto [col, end] = inSight(); col < end; ++col) {
            std::vector<char> letters;
            alignment.readColumn(col, letters);
            const companion::ColumnCounts counts(letters);
            const TrackColumn *const found = canvas().columns().at(col);
            ASSERT_NE(found, nullptr) << col;
            EXPECT_EQ(found->counts, counts) << col;
            EXPECT_EQ(found->conservation, companion::conservation(counts)) << col;
            EXPECT_EQ(found->occupancy, companion::occupancy(counts)) << col;
            EXPECT_EQ(found->logo, companion::logo(counts)) << col;
        }
    }
    QString toolTip(Track track, unsigned long col)
    {
        return toolTipAt(&canvas(), canvas().columnRect(track, col).center());
    }
    void expectNoToolTip(const QPoint &place)
    {
        // One from before goes after a while only.
        ASSERT_TRUE(QTest::qWaitFor([] { return QToolTip::text().isEmpty(); }, kLongest));
        EXPECT_EQ(toolTipAt(&canvas(), place), "");
    }
    static bool hasColor(const QImage &image, const QRect &place, const QColor &color)
    {
        for (int y = place.top(); y <= place.bottom(); ++y)
            for (int x = place.left(); x <= place.right(); ++x)
                if (image.valid(x, y) && image.pixelColor(x, y) == color)
                    return true;
        return false;
    }

    ZEP::KALMO2 *m_Window = nullptr;
    TAMBO::AlignmentWindow *m_Served = nullptr;
    std::unique_ptr<Companion> m_Companion;
};

TEST_F(TracksOfAWindow, AreOutOfSightUntilTheyAreAskedForAndComputeNothing)
{
    look(large());
    EXPECT_TRUE(m_Companion->tracks().isHidden());
    scrollTo(500);
    EXPECT_EQ(computed(), 0U);
    const auto command = std::ranges::find(companion::commands(), QStringLiteral("&Tracks"),
                                           &companion::Command::text);
    ASSERT_NE(command, companion::commands().end());
    command->run(*m_Companion);
    settle();
    EXPECT_FALSE(m_Companion->tracks().isHidden());
    const std::size_t before = computed();
    EXPECT_GT(before, 0U);
    command->run(*m_Companion);
    EXPECT_TRUE(m_Companion->tracks().isHidden());
    scrollTo(0);
    setCellSize({4, 8});
    EXPECT_EQ(computed(), before);
}

TEST_F(TracksOfAWindow, AnEditThatCameWhileTheyWereOutOfSightShows)
{
    TAMBO::Alignment &shown = large();
    lookWithTracks(shown);
    m_Companion->tracks().toggle();
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &shown);
        shown.removeRow(0);
    }
    settle();
    m_Companion->tracks().toggle();
    settle();
    expectRight(shown);
}

TEST_F(TracksOfAWindow, BarsStandExactlyBelowTheirCellsAtAnySizeAndPlace)
{
    // In every fifth column alone there is something.
    std::string text;
    for (int col = 0; col < 2000; ++col)
        text += col % 5 == 0 ? 'W' : '-';
    lookWithTracks(alignment({text, text, text}));
    for (const int width : {1, 2, 3, 5, 8, 13, 21}) {
        setCellSize({width, 2 * width});
        for (const int x : {0, 7, 333, 1'000'000}) {
            scrollTo(x);
            const QImage picture = pictureOf(&canvas());
            for (const Track track : {Track::Conservation, Track::Occupancy}) {
                for (auto [col, end] = inSight(); col < end; ++col) {
                    const QRect place = canvas().columnRect(track, col);
                    ASSERT_EQ(place.left(), cellLeft(col));
                    ASSERT_EQ(place.width(), width);
                    // The first pixel of the cell, as far as it is in sight.
                    if (place.left() < cellLeft(0) + m_Served->scrollPosition().x())
                        continue;
                    ASSERT_EQ(picture.pixelColor(place.left(), place.bottom()) ==
                                  companion::trackColor(track),
                              col % 5 == 0)
                        << "column " << col << ", " << width << " pixels, from " << x;
                }
            }
        }
    }
}

TEST_F(TracksOfAWindow, StayBelowTheirCellsWhenNamesGetAnotherWidth)
{
    lookWithTracks(large());
    for (const int width : {60, 200, 130}) {
        m_Served->setNameWidth(width);
        settle();
        // The window lays itself out anew, and tells of it afterwards.
        const auto areKnown = [this] {
            return canvas().columns().at(inSight().second - 1) != nullptr;
        };
        EXPECT_TRUE(QTest::qWaitFor(areKnown, kLongest)) << width;
        const unsigned long col = inSight().first;
        EXPECT_EQ(canvas().columnRect(Track::Logo, col).left(), cellLeft(col));
        expectRight(*m_Served->alignment());
    }
}

TEST_F(TracksOfAWindow, ValuesAreThoseOfTheColumnsInSight)
{
    TAMBO::Alignment &shown = large();
    lookWithTracks(shown);
    expectRight(shown);
    scrollTo(2000);
    expectRight(shown);
    setCellSize({2, 4});
    expectRight(shown);
}

TEST_F(TracksOfAWindow, AnEditShows)
{
    TAMBO::Alignment &shown = large();
    lookWithTracks(shown);
    const QImage before = pictureOf(&canvas());
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &shown);
        for (unsigned long row = 0; row < 60; ++row)
            shown.insertGap(row, 3);
    }
    settle();
    expectRight(shown);
    EXPECT_NE(pictureOf(&canvas()), before);
}

TEST_F(TracksOfAWindow, AMovedGapCountsNothingAnewAndColumnsOutOfSightStay)
{
    TAMBO::Alignment &shown = large(2000, 400);
    lookWithTracks(shown);
    scrollTo(1000);
    scrollTo(0);
    const std::size_t before = computed();
    const std::size_t rows = canvas().columns().rowsRead();
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &shown);
        shown.insertGap(30, 3);
    }
    settle();
    EXPECT_EQ(computed(), before);
    EXPECT_EQ(canvas().columns().rowsRead(), rows);
    expectRight(shown);
    scrollTo(1000);
    EXPECT_EQ(computed(), before);
    expectRight(shown);
    history.undo();
    settle();
    EXPECT_EQ(computed(), before);
    expectRight(shown);
}

TEST_F(TracksOfAWindow, OnlyColumnsInSightAreComputedAndOfThemOnlyNewOnes)
{
    lookWithTracks(large());
    const auto [begin, end] = inSight();
    // One more may have been in sight before the dock had its place.
    EXPECT_LE(computed(), end - begin + 1);
    const std::size_t before = computed();
    scrollTo(5 * m_Served->cellSize().width());
    EXPECT_LE(computed() - before, 5U + 1U);
    EXPECT_GE(computed() - before, 4U);
    const std::size_t there = computed();
    scrollTo(0);
    EXPECT_EQ(computed(), there);
}

TEST_F(TracksOfAWindow, ScrollingAndZoomingWithAllTracksComputesEachColumnOnce)
{
    constexpr unsigned long kRows = 1500;
    constexpr unsigned long kColumns = 1200;
    lookWithTracks(large(kRows, kColumns));
    for (const Track track : kTracks)
        canvas().setOn(track, true);
    settle();
    std::vector<bool> wasSeen(kColumns);
    std::size_t passes = 0;
    const auto look = [&] {
        std::size_t fresh = 0;
        for (auto [col, end] = inSight(); col < end; ++col) {
            fresh += wasSeen[col] ? 0 : 1;
            wasSeen[col] = true;
        }
        return fresh;
    };
    look();
    std::size_t before = computed();
    std::size_t rows = canvas().columns().rowsRead();
    std::size_t spreads = canvas().columns().spreads();
    for (const int width : {12, 6, 9, 7, 20}) {
        setCellSize({width, 2 * width});
        for (const int x : {0, 70, 140, 700, 650, 3000, 0}) {
            scrollTo(x);
            const std::size_t fresh = look();
            // A column may have been in sight between two of these places.
            EXPECT_LE(computed() - before, fresh + 1) << width << ", " << x;
            EXPECT_LE(canvas().columns().spreads() - spreads, fresh + 1);
            // Fresh columns on both sides are two runs of them.
            passes = fresh == 0 ? 1 : fresh / companion::TrackColumns::kAtOnce + 3;
            EXPECT_LE(canvas().columns().rowsRead() - rows, passes * kRows);
            before = computed();
            rows = canvas().columns().rowsRead();
            spreads = canvas().columns().spreads();
        }
    }
}

TEST_F(TracksOfAWindow, OfManyRowsAllIsThereInTheEnd)
{
    TAMBO::Alignment &shown = large(20'000, 100);
    lookWithTracks(shown);
    expectRight(shown);
}

TEST_F(TracksOfAWindow, AToolTipTellsColumnAndValue)
{
    lookWithTracks(alignment({"DC-W", "D--W", "D--F"}));
    EXPECT_EQ(toolTip(Track::Occupancy, 1), "Column 2 of 4\nOccupancy: 0.33, 1 of 3 rows");
    EXPECT_EQ(toolTip(Track::Occupancy, 0), "Column 1 of 4\nOccupancy: 1.00, 3 of 3 rows");
    EXPECT_EQ(toolTip(Track::Conservation, 2), "Column 3 of 4\nConservation: 0.00");
    EXPECT_EQ(toolTip(Track::Logo, 2), "Column 3 of 4\nLogo: 0 bits");
    EXPECT_EQ(toolTip(Track::Logo, 0),
              "Column 1 of 4\nLogo: 0 bits; fewer than 4 amino acids tell nothing");
    // Beyond the last column there is none, and beside the names is what the track means.
    expectNoToolTip(canvas().columnRect(Track::Occupancy, 4).center());
    const int y = canvas().columnRect(Track::Occupancy, 0).center().y();
    EXPECT_EQ(toolTipAt(&canvas(), {5, y}), companion::trackMeaning(Track::Occupancy));
}

TEST_F(TracksOfAWindow, TheToolTipOfALogoNamesTheLettersFromAbove)
{
    Texts rows(30, "W");
    std::fill(rows.begin(), rows.begin() + 10, "F");
    lookWithTracks(alignment(rows));
    // log2(20) - (0.9183 + 19 / (2 ln(2) 30)) = 2.9468
    EXPECT_EQ(toolTip(Track::Logo, 0), "Column 1 of 1\nLogo: 2.95 bits: W 1.96, F 0.98");
}

TEST_F(TracksOfAWindow, LettersOfALogoAreAsHighAsTheirBits)
{
    lookWithTracks(alignment(Texts(100, "D")));
    setCellSize({20, 30});
    const QRect place = canvas().columnRect(Track::Logo, 0);
    const QImage picture = pictureOf(&canvas());
    const double share = canvas().columns().at(0)->bits / companion::kMostBits;
    EXPECT_GT(share, 0.9);
    EXPECT_LT(share, 1.0);
    const int top = place.bottom() + 1 - int(share * place.height());
    const QColor red = companion::logoColor('D');
    EXPECT_FALSE(hasColor(picture, QRect(place.topLeft(), QPoint(place.right(), top - 2)), red));
    EXPECT_TRUE(hasColor(picture, QRect(QPoint(place.left(), top), place.bottomRight()), red));
    EXPECT_TRUE(hasColor(picture, QRect(place.bottomLeft(), place.bottomRight()), red));
}

TEST_F(TracksOfAWindow, EachCanBeSwitchedOffAndOnAndStaysSoInTheNextWindow)
{
    lookWithTracks(large());
    QMenu menu;
    m_Companion->tracks().fillMenu(menu);
    ASSERT_GE(menu.actions().size(), qsizetype(kTracks.size()));
    EXPECT_EQ(menu.actions()[1]->text(), "Occupancy");
    EXPECT_TRUE(menu.actions()[1]->isChecked());
    menu.actions()[1]->trigger();
    settle();
    EXPECT_TRUE(canvas().columnRect(Track::Occupancy, 0).isEmpty());
    EXPECT_FALSE(canvas().columnRect(Track::Conservation, 0).isEmpty());
    const QColor color = companion::trackColor(Track::Occupancy);
    EXPECT_FALSE(hasColor(pictureOf(&canvas()), canvas().rect(), color));

    ZEP::KALMO2 &next = show(*m_Served->alignment(), {700, 600});
    {
        Companion other(served(next));
        EXPECT_FALSE(other.tracks().canvas().isOn(Track::Occupancy));
        EXPECT_TRUE(other.tracks().canvas().isOn(Track::Logo));
    }
    menu.actions()[1]->trigger();
    settle();
    EXPECT_TRUE(hasColor(pictureOf(&canvas()), canvas().rect(), color));
}

TEST_F(TracksOfAWindow, DistancesAreOffAtFirstAndStayOnInTheNextWindow)
{
    lookWithTracks(large());
    EXPECT_FALSE(canvas().isOn(Track::Distance));
    EXPECT_EQ(canvas().columns().spreads(), 0U);
    canvas().setOn(Track::Distance, true);
    settle();
    EXPECT_GT(canvas().columns().spreads(), 0U);
    EXPECT_EQ(toolTip(Track::Distance, 0),
              "Column 1 of 400\nCA distance: none; no row has coordinates here");
    ZEP::KALMO2 &next = show(*m_Served->alignment(), {700, 600});
    Companion other(served(next));
    EXPECT_TRUE(other.tracks().canvas().isOn(Track::Distance));
}

TEST_F(TracksOfAWindow, NothingIsComputedWhenAllAreOff)
{
    lookWithTracks(large());
    for (const Track track : kTracks)
        canvas().setOn(track, false);
    const std::size_t before = computed();
    scrollTo(1500);
    EXPECT_EQ(computed(), before);
    expectNoToolTip(canvas().rect().center());
    // Says how they come back.
    EXPECT_TRUE(hasColor(pictureOf(&canvas()), canvas().rect(), Qt::black));
    canvas().setOn(Track::Logo, true);
    settle();
    expectRight(*m_Served->alignment());
}

TEST_F(TracksOfAWindow, NothingIsComputedOfMoreColumnsThanCanBeToldApart)
{
    look(alignment({std::string(4600, 'A')}), {5000, 500});
    setCellSize({1, 1});
    m_Companion->tracks().toggle();
    settle();
    ASSERT_GT(inSight().second - inSight().first, TrackCanvas::kMostShown);
    EXPECT_EQ(computed(), 0U);
    expectNoToolTip(canvas().columnRect(Track::Occupancy, 2000).center());
    setCellSize({2, 4});
    expectRight(*m_Served->alignment());
}

TEST_F(TracksOfAWindow, OfAnEmptyWindowAreEmptyAndFillWithTheAlignment)
{
    m_Window = &open();
    m_Window->resize(700, 600);
    m_Window->show();
    m_Served = &served(*m_Window);
    m_Companion = std::make_unique<Companion>(*m_Served);
    m_Companion->tracks().toggle();
    settle();
    EXPECT_FALSE(hasColor(pictureOf(&canvas()), canvas().rect(), Qt::black));
    expectNoToolTip(canvas().rect().center());
    TAMBO::Alignment &shown = large();
    {
        const MessageRecorder quiet;
        m_Window->Populate(&shown);
    }
    settle();
    EXPECT_GT(computed(), 0U);
    expectRight(shown);
}

TEST_F(TracksOfAWindow, AreAsWideAsTheWindowWithTheOverviewBelow)
{
    lookWithTracks(large());
    m_Companion->overview().toggle();
    settle();
    EXPECT_TRUE(canvas().isVisible());
    EXPECT_TRUE(m_Companion->overview().isVisible());
    EXPECT_LE(m_Companion->tracks().geometry().bottom(), m_Companion->overview().geometry().top());
    EXPECT_GE(canvas().width(), m_Window->centralWidget()->width());
    const auto [begin, end] = inSight();
    EXPECT_EQ(canvas().columnRect(Track::Logo, begin).left(), cellLeft(begin));
    EXPECT_GE(canvas().width(), cellLeft(begin) + m_Served->visibleSize().width());
    EXPECT_LT(begin, end);
}

TEST_F(TracksOfAWindow, HaveTheHeightThatTheyAskForWhenTheyAreShownAndFollowTheUser)
{
    lookWithTracks(large());
    EXPECT_EQ(canvas().height(), canvas().sizeHint().height());
    m_Window->resizeDocks({&m_Companion->tracks()}, {300}, Qt::Vertical);
    settle();
    const int chosen = canvas().height();
    EXPECT_GT(chosen, canvas().sizeHint().height());
    m_Companion->tracks().toggle();
    m_Companion->tracks().toggle();
    settle();
    EXPECT_EQ(canvas().height(), chosen);
}

TEST_F(TracksOfAWindow, TheNextWindowHasTheDocksThatTheLastOneHad)
{
    TAMBO::Alignment &shown = large();
    lookWithTracks(shown);
    m_Window->addDockWidget(Qt::TopDockWidgetArea, &m_Companion->tracks());
    m_Window->resizeDocks({&m_Companion->tracks()}, {260}, Qt::Vertical);
    settle();
    const int height = m_Companion->tracks().height();
    m_Companion.reset();
    {
        ZEP::KALMO2 &next = show(shown, {700, 600});
        Companion other(served(next));
        settle(other);
        EXPECT_FALSE(other.tracks().isHidden());
        EXPECT_TRUE(other.overview().isHidden());
        EXPECT_EQ(next.dockWidgetArea(&other.tracks()), Qt::TopDockWidgetArea);
        EXPECT_EQ(other.tracks().height(), height);
        EXPECT_GT(other.tracks().canvas().columns().computed(), 0U);
        other.tracks().toggle();
        other.overview().toggle();
        settle(other);
    }
    ZEP::KALMO2 &last = show(shown, {700, 600});
    Companion other(served(last));
    EXPECT_TRUE(other.tracks().isHidden());
    EXPECT_FALSE(other.overview().isHidden());
}

TEST_F(TracksOfAWindow, NeverAskForAWiderWindow)
{
    look(large());
    const int before = m_Window->minimumSizeHint().width();
    m_Companion->tracks().toggle();
    settle();
    EXPECT_EQ(m_Window->minimumSizeHint().width(), before);
}

} // namespace TracksTest
