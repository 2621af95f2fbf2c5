// SPDX-License-Identifier: GPL-3.0-or-later
#include "EmptiedWindows.h"

#include "AppFixture.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "ShownObjects.h"
#include "Subscriber.h"

#include <algorithm>

namespace EmptiedWindowsTest {

using namespace TAMBO;
using app::EmptiedWindows;

// Shows an alignment until that is gone, as an editor does.
class Viewer : public QWidget, private Subscriber
{
public:
    Viewer() { show(); }
    void view(Alignment *alignment)
    {
        m_Shown = alignment;
        ShownObjects::Set(this, alignment);
    }
    [[nodiscard]] Alignment *shown() const { return m_Shown; }

private:
    void commUpdate() override { }
    void commAdd() override { }
    void commDelete() override
    {
        Space &space = *Space::instance();
        if (std::find(space.begin(), space.end(), m_Shown) == space.end())
            view(nullptr);
    }

    Alignment *m_Shown = nullptr;
};

class EmptiedWindowsTest : public RecordedFixture
{
protected:
    EmptiedWindowsTest()
    {
        modelHooks().changed = [this] { m_Emptied.follow(m_History.isAsTravelled()); };
    }
    static void destroy(Compound &object)
    {
        const DataDelete<Space> guard(nullptr, Space::instance());
        DataMaker::Destroy(&object);
    }

    int m_Calls = 0;
    EmptiedWindows m_Emptied{[this](QWidget &window, Alignment &alignment) {
        ++m_Calls;
        dynamic_cast<Viewer &>(window).view(&alignment);
    }};
    Viewer m_One;
};

TEST_F(EmptiedWindowsTest, UndoOfADeletionShowsTheAlignmentAgain)
{
    Alignment &family = alignment("x", {"AC"});
    m_One.view(&family);
    destroy(family);
    EXPECT_EQ(m_One.shown(), nullptr);
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(m_One.shown(), &family);
    ASSERT_TRUE(m_History.redo());
    EXPECT_EQ(m_One.shown(), nullptr);
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(m_One.shown(), &family);
    EXPECT_EQ(m_Calls, 2);
}

TEST_F(EmptiedWindowsTest, RedoOfAnOpeningShowsTheAlignmentAgain)
{
    Alignment &family = alignment("x", {"AC"});
    m_One.view(&family);
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(m_One.shown(), nullptr);
    ASSERT_TRUE(m_History.redo());
    EXPECT_EQ(m_One.shown(), &family);
}

TEST_F(EmptiedWindowsTest, EachWindowGetsItsOwnBack)
{
    Alignment &a = alignment("a", {"AC"});
    Alignment &b = alignment("b", {"AC"});
    Viewer two;
    Viewer three;
    m_One.view(&a);
    two.view(&b);
    three.view(&a);
    {
        const DataDelete<Space> guard(nullptr, Space::instance());
        DataMaker::Destroy(&a);
        DataMaker::Destroy(&b);
    }
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(m_One.shown(), &a);
    EXPECT_EQ(two.shown(), &b);
    EXPECT_EQ(three.shown(), &a);
}

TEST_F(EmptiedWindowsTest, AWindowEmptiedInTheMidstOfTheDeletionGetsItBackToo)
{
    Alignment &family = alignment("x", {"AC"});
    m_One.view(&family);
    {
        const DataDelete<Space> guard(nullptr, Space::instance());
        m_One.view(nullptr);
        DataMaker::Destroy(&family);
    }
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(m_One.shown(), &family);
}

TEST_F(EmptiedWindowsTest, AWindowEmptiedByHandStaysEmpty)
{
    Alignment &family = alignment("x", {"AC"});
    m_One.view(&family);
    m_One.view(nullptr);
    destroy(family);
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(m_One.shown(), nullptr);
    EXPECT_EQ(m_Calls, 0);
}

TEST_F(EmptiedWindowsTest, AWindowThatIsEmptiedWithoutADeletionStaysEmpty)
{
    Alignment &family = alignment("x", {"AC"});
    m_One.view(&family);
    {
        const DataPoint<Space> guard(nullptr, Space::instance());
        m_One.view(nullptr);
    }
    destroy(family);
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(m_One.shown(), nullptr);
}

TEST_F(EmptiedWindowsTest, AWindowThatShowsSomethingElseKeepsIt)
{
    Alignment &family = alignment("x", {"AC"});
    Alignment &other = alignment("y", {"AC"});
    m_One.view(&family);
    destroy(family);
    m_One.view(&other);
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(m_One.shown(), &other);
    // Not even once it is empty again.
    m_One.view(nullptr);
    ASSERT_TRUE(m_History.redo());
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(m_One.shown(), nullptr);
}

TEST_F(EmptiedWindowsTest, AWindowThatWasClosedStaysClosed)
{
    Alignment &family = alignment("x", {"AC"});
    m_One.view(&family);
    auto gone = std::make_unique<Viewer>();
    gone->view(&family);
    destroy(family);
    gone.reset();
    m_One.close();
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(m_Calls, 0);
}

TEST_F(EmptiedWindowsTest, OnlyUndoAndRedoBringSomethingBack)
{
    Alignment &family = alignment("x", {"AC"});
    m_One.view(&family);
    ObjectSpace &all = space();
    modelHooks().changed = nullptr;
    // Taken out and put in by nobody's undo, as if a new object stood at the old one's address.
    std::unique_ptr<Compound> taken;
    {
        const DataDelete<Space> guard(nullptr, Space::instance());
        taken = all.takeObject(all.objectCount() - 1);
        m_One.view(nullptr);
    }
    m_Emptied.follow(false);
    all.insertObject(all.objectCount(), std::move(taken));
    m_Emptied.follow(false);
    EXPECT_EQ(m_Calls, 0);
    m_Emptied.follow(true);
    EXPECT_EQ(m_Calls, 0) << "it was forgotten";
    m_History.clear();
}

TEST_F(EmptiedWindowsTest, AWindowThatGoesIsForgotten)
{
    Alignment &family = alignment("x", {"AC"});
    auto window = std::make_unique<QWidget>();
    const QWidget *address = window.get();
    ShownObjects::Set(window.get(), &family);
    EXPECT_EQ(ShownObjects::Of(address), &family);
    window.reset();
    EXPECT_EQ(ShownObjects::Of(address), nullptr);
}

} // namespace EmptiedWindowsTest
