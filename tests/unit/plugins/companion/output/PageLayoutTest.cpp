// SPDX-License-Identifier: GPL-3.0-or-later
#include "PagesFixture.h"

namespace PageLayoutTest {

using companion::Page;
using companion::PageOrder;
using companion::PagePart;
using companion::PagePlan;
using companion::PageRun;
using companion::Track;

class PagesOfAlignment : public PagesFixture
{
protected:
    // What a part needs, rows and tracks included.
    static double bottomOf(const PagePlan &plan, const PagePart &part)
    {
        return plan.layout.tracksTop(part) + (part.hasTracks ? plan.measures.tracksHeight : 0);
    }
};

// Whatever the sizes: each row is there once, from its first to its last column.
TEST_F(PagesOfAlignment, BlocksTogetherGiveBackEveryRow)
{
    std::size_t split = 0;
    std::size_t several = 0;
    for (int i = 0; i < 150; ++i) {
        const TAMBO::Alignment &shown = randomRows(upTo(60), upTo(150));
        PageOrder order = orderOfAll(shown);
        order.paper = QSizeF(double(200 + m_Random() % 700), double(200 + m_Random() % 700));
        order.fontSize = double(4 + m_Random() % 10);
        order.mostColumns = m_Random() % 3 == 0 ? upTo(80) : 0;
        order.hasBreaks = m_Random() % 5 != 0;
        order.hasNames = m_Random() % 4 != 0;
        order.hasRuler = m_Random() % 4 != 0;
        order.hasNumbers = m_Random() % 4 != 0;
        if (m_Random() % 2 == 0)
            order.tracks = {Track::Conservation, Track::Occupancy};
        order.colBegin = m_Random() % order.colEnd;
        std::erase_if(order.rows, [this](unsigned long) { return m_Random() % 6 == 0; });
        const PagePlan plan(order, shown);
        if (!plan.layout.obstacle().isEmpty()) {
            EXPECT_EQ(plan.layout.pages(), 0U);
            continue;
        }
        const Recording found = recorded(shown, plan);
        ASSERT_EQ(found.pages, plan.layout.pages());
        std::vector<std::string> rows(order.rows.size());
        for (const Recording::Line &line : found.lines) {
            rows.at(line.place) += line.letters;
            EXPECT_EQ(line.name, order.hasNames ? shown.GetSeqName(order.rows[line.place]) : "");
        }
        for (std::size_t place = 0; place < rows.size(); ++place)
            ASSERT_EQ(rows[place], shown.GetSequence(order.rows[place], false)
                                       .substr(order.colBegin, order.colEnd - order.colBegin));
        EXPECT_EQ(found.unknownColumns, 0U);
        for (std::size_t number = 0; number < plan.layout.pages(); ++number) {
            const Page page = plan.layout.page(number);
            double bottom = order.margin + plan.measures.titleHeight - 1e-6;
            EXPECT_FALSE(page.parts.empty());
            for (const PagePart &part : page.parts) {
                EXPECT_GE(part.top, bottom);
                EXPECT_LT(part.rowBegin, part.rowEnd);
                bottom = bottomOf(plan, part);
                split += part.rowBegin > 0;
            }
            EXPECT_LE(bottom, page.size.height() - order.margin + 1e-6);
            several += page.parts.size() > 1;
        }
    }
    // The cases that matter were among them.
    EXPECT_GT(split, 20U);
    EXPECT_GT(several, 20U);
}

TEST_F(PagesOfAlignment, RowsBeyondAPageStandOnTheNextOnesWithTheirNames)
{
    const TAMBO::Alignment &shown = large(200, 30);
    PageOrder order = orderOfAll(shown);
    order.tracks = {Track::Conservation};
    const PagePlan plan(order, shown);
    const Recording found = recorded(shown, plan);
    EXPECT_EQ(found.pages, 3U);
    EXPECT_EQ(found.lines.size(), 200U);
    EXPECT_EQ(found.lines.back().page, 2U);
    EXPECT_EQ(found.lines.back().name, "s199");
    EXPECT_EQ(found.trackParts, 1U);
    EXPECT_FALSE(found.parts[0].hasTracks);
    EXPECT_TRUE(found.parts[2].hasTracks);
}

TEST_F(PagesOfAlignment, SeveralBlocksShareAPageAndNoneIsSplitThatHasRoom)
{
    const TAMBO::Alignment &shown = large(20, 400);
    const PagePlan plan(orderOfAll(shown), shown);
    for (const PagePart &part : recorded(shown, plan).parts) {
        EXPECT_EQ(part.rowBegin, 0U);
        EXPECT_EQ(part.rowEnd, 20U);
    }
    EXPECT_GT(plan.layout.page(0).parts.size(), 1U);
}

TEST_F(PagesOfAlignment, WithoutBreaksThereIsOneSheetAsHighAsNeeded)
{
    const TAMBO::Alignment &shown = large(120, 400);
    PageOrder order = orderOfAll(shown);
    order.hasBreaks = false;
    const PagePlan plan(order, shown);
    EXPECT_EQ(plan.layout.pages(), 1U);
    const Page page = plan.layout.page(0);
    EXPECT_NEAR(bottomOf(plan, page.parts.back()), page.size.height() - order.margin, 1e-6);
    EXPECT_GT(page.size.height(), order.paper.height());
}

TEST_F(PagesOfAlignment, FewerColumnsAreTakenWhenTheUserWantsFewer)
{
    const TAMBO::Alignment &shown = large(3, 100);
    PageOrder order = orderOfAll(shown);
    order.mostColumns = 40;
    EXPECT_EQ(PagePlan(order, shown).layout.columnsOfBlock(), 40U);
    order.mostColumns = 100'000;
    EXPECT_LT(PagePlan(order, shown).layout.columnsOfBlock(), 100'000U);
}

TEST_F(PagesOfAlignment, WhatHasNoRoomIsTold)
{
    const TAMBO::Alignment &shown = large(3, 100);
    const auto obstacle = [&shown](PageOrder order) {
        return PagePlan(std::move(order), shown).layout.obstacle().toStdString();
    };
    PageOrder order = orderOfAll(shown);
    EXPECT_EQ(obstacle(order), "");
    order.paper = {120, 842};
    order.fontSize = 40;
    EXPECT_EQ(obstacle(order), "Not a single column has room beside the names. Choose a smaller "
                               "font or larger paper.");
    order.paper = {2000, 200};
    EXPECT_EQ(obstacle(order), "Not a single row has room on the page. Choose a smaller font or "
                               "larger paper.");
    order = orderOfAll(shown);
    order.rows.clear();
    EXPECT_EQ(obstacle(order), "No rows are chosen.");
    order = orderOfAll(shown);
    order.colBegin = order.colEnd;
    EXPECT_EQ(obstacle(order), "No columns are chosen.");
}

TEST_F(PagesOfAlignment, AnyPageIsKnownAtOnceOfAMillionColumns)
{
    const TAMBO::Alignment &shown = large(3, 10);
    PageOrder order = orderOfAll(shown);
    order.colEnd = 1'000'000'000;
    const PagePlan plan(order, shown);
    const Page last = plan.layout.page(plan.layout.pages() - 1);
    EXPECT_EQ(last.parts.back().colEnd, 1'000'000'000U);
}

TEST_F(PagesOfAlignment, APartOfTheWorkIsOneRowAtMost)
{
    const TAMBO::Alignment &shown = large(30, 100);
    const PagePlan plan(orderOfAll(shown), shown);
    RecordedPages pages;
    PageRun run(shown, plan, pages, 0, plan.layout.pages());
    std::size_t before = 0;
    double done = 0;
    while (run.goOn(kNoTime)) {
        EXPECT_LE(pages.all.lines.size(), before + 1);
        before = pages.all.lines.size();
        EXPECT_GE(run.done(), done);
        done = run.done();
    }
    EXPECT_EQ(run.done(), 1);
}

TEST_F(PagesOfAlignment, OfAllPagesSomeCanBeTaken)
{
    const TAMBO::Alignment &shown = large(200, 30);
    const PagePlan plan(orderOfAll(shown), shown);
    RecordedPages pages;
    PageRun run(shown, plan, pages, 1, 2);
    while (run.goOn(kSomeTime)) {
    }
    EXPECT_EQ(pages.all.pages, 1U);
    EXPECT_EQ(pages.all.lines.front().page, 1U);
}

} // namespace PageLayoutTest
