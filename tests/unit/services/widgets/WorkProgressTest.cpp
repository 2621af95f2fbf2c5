// SPDX-License-Identifier: GPL-3.0-or-later
#include "WorkProgress.h"

#include "Hooks.h"
#include "LongWork.h"
#include "ProgressBox.h"

#include <QApplication>
#include <QMainWindow>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace WorkProgressTest {

using TAMBO::LongWork;
using TAMBO::services::ProgressBox;
using TAMBO::services::WorkProgress;

class WorkProgressTest : public testing::Test
{
protected:
    WorkProgressTest()
    {
        m_Progress.setClock([this] { return m_Now; });
        m_Window.show();
    }
    ~WorkProgressTest() override { TAMBO::modelHooks() = {}; }

    // Of the dialog that is shown, if any.
    static ProgressBox *box()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *found = qobject_cast<ProgressBox *>(widget))
                return found;
        }
        return nullptr;
    }
    // Work of so many stretches, each of which takes so long; how many of them were done.
    std::size_t work(std::size_t stretches, qint64 milliseconds, LongWork::Kind kind,
                     const std::function<void(std::size_t)> &each = {})
    {
        LongWork work("Coloring", stretches * LongWork::kStride, kind);
        std::size_t done = 0;
        for (; done < stretches * LongWork::kStride && work.goesOn(); ++done) {
            if (done % LongWork::kStride != 0)
                continue;
            m_Now += milliseconds;
            if (each)
                each(done / LongWork::kStride);
        }
        return done / LongWork::kStride;
    }

    qint64 m_Now = 1000;
    QMainWindow m_Window;
    WorkProgress m_Progress{[this] { return &m_Window; }};
};

TEST_F(WorkProgressTest, ShortWorkIsNotShownAndNoEventIsLookedAt)
{
    bool hasLooked = false;
    QTimer::singleShot(0, &m_Window, [&] { hasLooked = true; });
    EXPECT_EQ(work(3, 100, LongWork::Kind::Reading), 3U);
    EXPECT_EQ(box(), nullptr);
    EXPECT_FALSE(hasLooked);
}

TEST_F(WorkProgressTest, LongWorkShowsHowFarItIsOverTheWindowInUse)
{
    std::vector<double> shares;
    work(10, 100, LongWork::Kind::Reading, [&](std::size_t) {
        const ProgressBox *const shown = box();
        if (shown == nullptr)
            return;
        EXPECT_TRUE(m_Progress.isShown());
        EXPECT_TRUE(shown->isVisible());
        EXPECT_EQ(shown->parentWidget(), &m_Window);
        EXPECT_EQ(shown->windowModality(), Qt::ApplicationModal);
        EXPECT_EQ(shown->text(), "Coloring");
        shares.push_back(shown->fraction());
    });
    EXPECT_EQ(shares, std::vector<double>({0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9}));
    EXPECT_EQ(box(), nullptr);
    EXPECT_FALSE(m_Progress.isShown());
}

TEST_F(WorkProgressTest, OtherWindowsDoNotPaintMeanwhile)
{
    work(10, 100, LongWork::Kind::Reading, [&](std::size_t) {
        if (const ProgressBox *const shown = box()) {
            EXPECT_FALSE(m_Window.updatesEnabled());
            EXPECT_TRUE(shown->updatesEnabled());
        }
    });
    EXPECT_TRUE(m_Window.updatesEnabled());
}

TEST_F(WorkProgressTest, CancelGivesTheWorkUpAtTheNextLook)
{
    EXPECT_EQ(work(20, 100, LongWork::Kind::Reading,
                   [&](std::size_t) {
                       if (ProgressBox *const shown = box())
                           QTimer::singleShot(
                               0, shown, [shown] { shown->findChild<QPushButton *>()->click(); });
                   }),
              4U);
    EXPECT_EQ(box(), nullptr);
    EXPECT_EQ(work(2, 1, LongWork::Kind::Reading), 2U) << "the next one is not cancelled";
}

TEST_F(WorkProgressTest, EscapeAndTheFrameCancelToo)
{
    const auto stoppedBy = [&](const std::function<void(ProgressBox &)> &act) {
        return work(20, 100, LongWork::Kind::Reading, [&](std::size_t) {
            if (ProgressBox *const shown = box())
                act(*shown);
        });
    };
    EXPECT_EQ(stoppedBy([](ProgressBox &shown) { QTest::keyClick(&shown, Qt::Key_Escape); }), 4U);
    EXPECT_EQ(stoppedBy([](ProgressBox &shown) { shown.close(); }), 4U);
}

TEST_F(WorkProgressTest, WorkThatHasToComeToItsEndHasNoButtonAndStays)
{
    EXPECT_EQ(work(10, 100, LongWork::Kind::Fixed,
                   [&](std::size_t) {
                       ProgressBox *const shown = box();
                       if (shown == nullptr)
                           return;
                       EXPECT_FALSE(shown->findChild<QPushButton *>()->isVisible());
                       shown->close();
                       EXPECT_TRUE(shown->isVisible());
                   }),
              10U);
}

TEST_F(WorkProgressTest, EventsAreNotLookedAtMoreOftenThanNeeded)
{
    int looks = 0;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] { ++looks; });
    tick.start(0);
    work(1000, 1, LongWork::Kind::Reading);
    EXPECT_GT(looks, 0);
    EXPECT_LE(looks, (1000 - WorkProgress::kPatience) / WorkProgress::kBetweenLooks + 1);
}

TEST_F(WorkProgressTest, WorkBegunByAnEventMeanwhileIsNotShownByItself)
{
    bool hasRun = false;
    work(10, 100, LongWork::Kind::Reading, [&](std::size_t) {
        if (box() == nullptr || hasRun)
            return;
        hasRun = true;
        QTimer::singleShot(0, box(),
                           [this] { EXPECT_EQ(work(10, 100, LongWork::Kind::Reading), 10U); });
    });
    EXPECT_TRUE(hasRun);
    EXPECT_EQ(box(), nullptr);
}

} // namespace WorkProgressTest
