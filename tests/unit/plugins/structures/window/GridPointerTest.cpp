// SPDX-License-Identifier: GPL-3.0-or-later
#include "GridPointer.h"

#include "MadeStructure.h"
#include "StructureWindow.h"
#include "contract/FakeAlignmentWindow.h"
#include "support/ScopedSettings.h"
#include "support/WaitUntil.h"
#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "DataPoint.h"

#include <QLabel>
#include <QMouseEvent>
#include <QStatusBar>
#include <QTest>

#include <memory>

#include <algorithm>

namespace GridPointerTest {

using namespace structures;

class PointingInAGrid : public ModelFixture
{
protected:
    PointingInAGrid()
    {
        TAMBO::Compound *const bare = TAMBO::DataMaker::makeSequence("bare", "ACDEFGHIKL");
        TAMBO::Compound *const chain = m_Structure->Child(0);
        m_Grid->m_Alignment = TAMBO::DataMaker::makeAlignment("both", {bare, chain});
        m_Grid->m_Rows = 2;
        m_Grid->m_Columns = 24;
        m_Grid->m_Visible = {400, 90};
    }

    // Cells are ten pixels wide and twenty high.
    void moveTo(const QPoint &place, Qt::MouseButtons buttons = Qt::NoButton)
    {
        QMouseEvent event(QEvent::MouseMove, place, place, Qt::NoButton, buttons, {});
        EXPECT_FALSE(m_Grid->offer(TAMBO::WindowArea::Cells, event));
    }
    void leave()
    {
        QEvent event(QEvent::Leave);
        EXPECT_FALSE(m_Grid->offer(TAMBO::WindowArea::Cells, event));
    }

    ScopedSettings m_Settings{""};
    TAMBO::Compound *m_Structure = MadeStructure::make("1abc");
    std::unique_ptr<FakeAlignmentWindow> m_Grid = std::make_unique<FakeAlignmentWindow>();
};

class GridPointerOverCells : public PointingInAGrid
{
protected:
    using Pointed = std::pair<TAMBO::Compound *, std::uint32_t>;

    GridPointerOverCells()
    {
        QObject::connect(&m_Pointer, &GridPointer::pointed, &m_Pointer,
                         [this](TAMBO::Compound *chain, std::uint32_t child) {
                             m_Heard.emplace_back(chain, child);
                         });
    }

    GridPointer m_Pointer;
    std::vector<Pointed> m_Heard;
};

TEST_F(GridPointerOverCells, ACellOfAChainIsItsResidueAndHeardOfOnce)
{
    moveTo({75, 30});
    moveTo({78, 25});
    moveTo({81, 25});
    TAMBO::Compound *const chain = m_Structure->Child(0);
    EXPECT_EQ(m_Heard, (std::vector<Pointed>{{chain, 7}, {chain, 8}}));
}

TEST_F(GridPointerOverCells, ResiduesInRemovedColumnsAreCountedToo)
{
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, m_Grid->m_Alignment);
        ASSERT_TRUE(guard->removeColumns({true, false, true, true}));
    }
    moveTo({75, 30});
    TAMBO::Compound *const chain = m_Structure->Child(0);
    EXPECT_EQ(m_Heard, (std::vector<Pointed>{{chain, 10}}));
}

TEST_F(GridPointerOverCells, NothingIsPointedAtWithoutAStructureOrACell)
{
    moveTo({75, 10});
    EXPECT_TRUE(m_Heard.empty());
    moveTo({75, 30});
    moveTo({75, 10});
    moveTo({75, 30});
    moveTo({75, 200});
    moveTo({75, 30});
    leave();
    ASSERT_EQ(m_Heard.size(), 6U);
    for (std::size_t i = 1; i < m_Heard.size(); i += 2)
        EXPECT_EQ(m_Heard[i].first, nullptr);
}

TEST_F(GridPointerOverCells, AGapIsNoResidue)
{
    m_Grid->m_Columns = 30;
    moveTo({255, 30});
    EXPECT_TRUE(m_Heard.empty());
}

TEST_F(GridPointerOverCells, WhoDragsPointsAtNothing)
{
    moveTo({75, 30});
    moveTo({95, 30}, Qt::LeftButton);
    ASSERT_EQ(m_Heard.size(), 2U);
    EXPECT_EQ(m_Heard.back().first, nullptr);
}

TEST_F(GridPointerOverCells, HearsAWindowThatIsOpenedLaterAndOneThatGoes)
{
    TAMBO::Alignment *const alignment = m_Grid->m_Alignment;
    m_Grid = std::make_unique<FakeAlignmentWindow>();
    m_Grid->m_Alignment = alignment;
    m_Grid->m_Rows = 2;
    moveTo({75, 30});
    EXPECT_EQ(m_Heard.size(), 1U);
    m_Grid.reset();
    ASSERT_EQ(m_Heard.size(), 2U);
    EXPECT_EQ(m_Heard.back().first, nullptr);
}

class StructureWindowBesideAGrid : public PointingInAGrid
{
protected:
    StructureWindowBesideAGrid()
    {
        StructureWindow::open();
        m_Window = StructureWindow::opened().back();
        m_Window->resize(700, 500);
        QCoreApplication::processEvents();
        waitUntil([this] { return view().isComplete(); });
    }
    ~StructureWindowBesideAGrid() override { m_Window->close(false); }

    StructureView &view() { return m_Window->view(); }
    [[nodiscard]] bool names(const QString &text) const
    {
        for (const QLabel *label : m_Window->statusBar()->findChildren<QLabel *>())
            if (label->text() == text)
                return true;
        return false;
    }

    void click(std::uint32_t residue, Qt::KeyboardModifiers modifiers = {})
    {
        const Pick wanted =
            pickOfResidue(m_Window->scene().structures().front()->molecule(), residue);
        for (int y = 0; y < view().height(); ++y)
            for (int x = 0; x < view().width(); ++x)
                if (view().pickAt({x, y}) == wanted)
                    return QTest::mouseClick(&view(), Qt::LeftButton, modifiers, {x, y});
        FAIL() << "residue " << residue << " is not to be seen";
    }
    // Of the row with the structure.
    [[nodiscard]] bool isInSight(unsigned long column) const
    {
        return QRect(QPoint(), m_Grid->m_Visible).contains(m_Grid->cellRect({1, column}));
    }

    StructureWindow *m_Window = nullptr;
};

TEST_F(StructureWindowBesideAGrid, AClickOnAResidueBringsItsCellIntoSight)
{
    m_Grid->m_Visible = {95, 90};
    ASSERT_FALSE(isInSight(20));
    click(20);
    EXPECT_TRUE(isInSight(20));
    click(0);
    EXPECT_TRUE(isInSight(0));
    click(20, Qt::ShiftModifier);
    EXPECT_TRUE(isInSight(20));
}

TEST_F(StructureWindowBesideAGrid, NothingIsScrolledForACellInSightAndForOneThatIsTakenAway)
{
    click(20);
    EXPECT_EQ(m_Grid->m_Scrolled, QPoint());
    m_Grid->m_Visible = {95, 90};
    click(20, Qt::ControlModifier);
    EXPECT_EQ(m_Grid->m_Scrolled, QPoint());
}

TEST_F(StructureWindowBesideAGrid, TheResidueOfTheCellHasAnOutlineAndIsNamed)
{
    const QImage plain = view().picture().copy();
    moveTo({125, 30});
    EXPECT_NE(view().picture(), plain);
    EXPECT_TRUE(names("1abc, chain A, " +
                      QString::fromStdString(m_Structure->Child(0)->Child(12)->Name())));
    leave();
    EXPECT_EQ(view().picture(), plain);
    EXPECT_TRUE(names(""));
}

TEST_F(StructureWindowBesideAGrid, TheOutlineIsThereHoweverTheResidueIsDrawn)
{
    for (const auto &structure : m_Window->scene().structures())
        structure->setStyle(Style::Spheres);
    m_Window->setColoring(Coloring::Chain);
    view().setScene(m_Window->scene().picture());
    QCoreApplication::processEvents();
    waitUntil([this] { return view().isComplete(); });
    const QImage plain = view().picture().copy();
    moveTo({235, 30});
    EXPECT_NE(view().picture(), plain);
}

TEST_F(StructureWindowBesideAGrid, AWindowThatOpensUnderThePointerNamesWhatIsThere)
{
    QPoint place;
    for (int x = 0; x < view().width() && place.isNull(); ++x)
        for (int y = 0; y < view().height() && place.isNull(); ++y)
            if (view().pickAt({x, y}) != 0)
                place = {x, y};
    QEnterEvent event(place, place, view().mapToGlobal(place));
    QCoreApplication::sendEvent(&view(), &event);
    const QList<QLabel *> labels = m_Window->statusBar()->findChildren<QLabel *>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
        return label->text().startsWith("1abc, chain ");
    }));
}

} // namespace GridPointerTest
