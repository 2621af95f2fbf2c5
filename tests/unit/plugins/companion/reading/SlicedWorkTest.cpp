// SPDX-License-Identifier: GPL-3.0-or-later
#include "SlicedWork.h"

#include <QCoreApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

namespace SlicedWorkTest {

using companion::finish;
using companion::paceOfFinishing;

class SlicedWorks : public testing::Test
{
protected:
    ~SlicedWorks() override { paceOfFinishing() = m_Pace; }

    bool work()
    {
        return finish(
            {[this](auto) { return ++m_Done < kAll; }, [this] { return m_Done * 100 / kAll; }},
            "Counting…", m_Over.get());
    }
    [[nodiscard]] QProgressDialog *shown() const { return m_Over->findChild<QProgressDialog *>(); }

    static constexpr int kAll = 50;
    companion::Pace m_Pace = paceOfFinishing();
    std::unique_ptr<QWidget> m_Over = std::make_unique<QWidget>();
    int m_Done = 0;
};

TEST_F(SlicedWorks, ShortWorkShowsNothing)
{
    paceOfFinishing().withoutProgress = std::chrono::hours(1);
    QTimer::singleShot(0, m_Over.get(), [this] { m_Done = -kAll; });
    EXPECT_TRUE(work());
    EXPECT_EQ(m_Done, kAll);
    EXPECT_EQ(shown(), nullptr);
}

TEST_F(SlicedWorks, LongWorkSaysWhatItIsAndHowFarAndGoesOnToTheEnd)
{
    paceOfFinishing().withoutProgress = std::chrono::milliseconds(0);
    int looks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        ASSERT_NE(shown(), nullptr);
        EXPECT_EQ(shown()->labelText(), "Counting…");
        EXPECT_TRUE(shown()->isModal());
        EXPECT_LE(shown()->value(), m_Done * 100 / kAll);
        ++looks;
    });
    timer.start(0);
    EXPECT_TRUE(work());
    EXPECT_EQ(m_Done, kAll);
    EXPECT_GT(looks, 1);
    EXPECT_EQ(shown(), nullptr);
}

TEST_F(SlicedWorks, ThatIsCancelledEndsThere)
{
    paceOfFinishing().withoutProgress = std::chrono::milliseconds(0);
    QTimer::singleShot(0, m_Over.get(), [this] { shown()->findChild<QPushButton *>()->click(); });
    EXPECT_FALSE(work());
    EXPECT_LT(m_Done, kAll);
    EXPECT_EQ(shown(), nullptr);
}

TEST_F(SlicedWorks, EndsWithTheWidgetThatItIsOver)
{
    paceOfFinishing().withoutProgress = std::chrono::milliseconds(0);
    QTimer::singleShot(0, QCoreApplication::instance(), [this] { m_Over.reset(); });
    EXPECT_FALSE(work());
    EXPECT_LT(m_Done, kAll);
}

} // namespace SlicedWorkTest
