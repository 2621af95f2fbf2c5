// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeasureTool.h"

#include "MadeExtras.h"
#include "OpenView.h"
#include "unit/model/AlignmentFixture.h"

#include "DataAdder.h"
#include "DataDelete.h"
#include "Space.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

namespace MeasureToolTest {

using namespace structures;

class MeasuringInAWindow : public OpenView
{
protected:
    MeasuringInAWindow() { lookFromTheSide(); }

    MeasureTool &tool() { return m_Window->measuring(); }
    void click(const QPoint &place, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(&view(), Qt::LeftButton, keys, place);
    }
    void clickResidues(const std::vector<std::uint32_t> &residues)
    {
        for (const std::uint32_t residue : residues)
            click(placeOfResidue(residue));
    }
    QPoint labelPlace(std::size_t index = 0)
    {
        return tool().labels().at(index).rect.center().toPoint();
    }
    [[nodiscard]] bool hasSelected() const { return !selected().empty(); }
    [[nodiscard]] QString prompt() const
    {
        for (const QLabel *label : m_Window->statusBar()->findChildren<QLabel *>())
            if (!label->isHidden() && label->text().contains("click"))
                return label->text();
        return {};
    }

    StepStack m_History;
};

TEST_F(MeasuringInAWindow, TwoClicksMeasureADistanceAndTheNextTwoAnother)
{
    QTest::keyClick(m_Window, Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(prompt(), "Distance: click atom 1 of 2. Escape ends");
    clickResidues({3});
    EXPECT_EQ(prompt(), "Distance: click atom 2 of 2. Escape ends");
    EXPECT_TRUE(tool().labels().empty());
    clickResidues({20});
    ASSERT_EQ(tool().labels().size(), 1U);
    // 17 rises of 1.5, and a chord of 260 degrees.
    EXPECT_EQ(tool().labels().front().text, QString::fromUtf8("25.74 Å"));
    clickResidues({1, 12});
    EXPECT_EQ(tool().labels().size(), 2U);
    EXPECT_FALSE(hasSelected());
}

TEST_F(MeasuringInAWindow, AnglesTakeThreeAtomsAndTorsionsFour)
{
    QTest::keyClick(m_Window, Qt::Key_3, Qt::ControlModifier);
    clickResidues({2});
    EXPECT_EQ(prompt(), "Angle: click atom 2 of 3, the vertex. Escape ends");
    clickResidues({3, 4});
    QTest::keyClick(m_Window, Qt::Key_4, Qt::ControlModifier);
    EXPECT_EQ(prompt(), "Torsion: click atom 1 of 4. Escape ends");
    clickResidues({0, 1, 2, 3});
    ASSERT_EQ(tool().labels().size(), 2U);
    EXPECT_EQ(tool().labels()[0].text, QString::fromUtf8("90.4°"));
    EXPECT_EQ(tool().labels()[1].text, QString::fromUtf8("50.0°"));
}

TEST_F(MeasuringInAWindow, EscapeEndsItAndThenSelectsNothingAgain)
{
    const QPoint five = placeOfResidue(5);
    click(five);
    ASSERT_TRUE(hasSelected());
    QTest::keyClick(m_Window, Qt::Key_2, Qt::ControlModifier);
    click(placeOfResidue(9));
    QTest::keyClick(m_Window, Qt::Key_Escape);
    EXPECT_EQ(tool().atomsWanted(), 0U);
    EXPECT_EQ(prompt(), "");
    EXPECT_TRUE(hasSelected());
    QTest::keyClick(m_Window, Qt::Key_Escape);
    EXPECT_FALSE(hasSelected());
    click(five);
    EXPECT_TRUE(hasSelected());
    EXPECT_TRUE(tool().measures().all().empty());
}

TEST_F(MeasuringInAWindow, TheSameCommandAgainEndsIt)
{
    QTest::keyClick(m_Window, Qt::Key_2, Qt::ControlModifier);
    QTest::keyClick(m_Window, Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(tool().atomsWanted(), 0U);
}

TEST_F(MeasuringInAWindow, TheGroundAndTheSameAtomAgainAreNoAtoms)
{
    tool().begin(2);
    clickResidues({3});
    click({1, 1});
    clickResidues({3});
    EXPECT_EQ(prompt(), "Distance: click atom 2 of 2. Escape ends");
    EXPECT_TRUE(tool().measures().all().empty());
}

TEST_F(MeasuringInAWindow, WatersAreClickedAsAtomsAre)
{
    {
        DataAdder<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        MadeExtras::make("wet");
    }
    ASSERT_TRUE(waitUntil([this] { return m_Window->scene().structures().size() == 2; }));
    QTest::keyClick(m_Window, Qt::Key_8);
    waitForPicture();
    const ViewedStructure &wet = *m_Window->scene().structures()[1];
    const auto clickWater = [&](std::uint32_t water) {
        click(placeOfPick(m_Window->scene().firstPickOf(wet) + pickOfWater(wet.molecule(), water)));
    };
    tool().begin(2);
    clickWater(0);
    clickWater(0);
    EXPECT_TRUE(tool().labels().empty());
    clickWater(1);
    ASSERT_EQ(tool().labels().size(), 1U);
    EXPECT_EQ(tool().labels().front().text, QString::fromUtf8("4.00 Å"));
    // They come back with the view.
    m_Window->restore(m_Window->state());
    ASSERT_EQ(tool().labels().size(), 1U);
    QTest::keyClick(m_Window, Qt::Key_8);
    EXPECT_TRUE(waitUntil([this] { return tool().labels().empty(); }));
}

TEST_F(MeasuringInAWindow, AClickedLabelIsRemovedByDelete)
{
    tool().begin(2);
    clickResidues({3, 20, 1, 12});
    tool().end();
    ASSERT_EQ(tool().labels().size(), 2U);
    const Measure second = tool().measures().all()[1];
    QTest::keyClick(m_Window, Qt::Key_Delete);
    EXPECT_EQ(tool().measures().all().size(), 2U);
    click(labelPlace(0));
    EXPECT_TRUE(tool().hasChosen());
    EXPECT_FALSE(hasSelected());
    QTest::keyClick(m_Window, Qt::Key_Delete);
    ASSERT_EQ(tool().measures().all().size(), 1U);
    EXPECT_EQ(tool().measures().all()[0], second);
    EXPECT_FALSE(tool().hasChosen());
}

TEST_F(MeasuringInAWindow, AClickElsewhereLeavesTheLabelAlone)
{
    tool().begin(2);
    clickResidues({3, 20});
    tool().end();
    click(labelPlace());
    click({1, 1});
    EXPECT_FALSE(tool().hasChosen());
    QTest::keyClick(m_Window, Qt::Key_Delete);
    EXPECT_EQ(tool().measures().all().size(), 1U);
}

TEST_F(MeasuringInAWindow, TheMenuOfALabelRemovesItOrAll)
{
    tool().begin(2);
    clickResidues({3, 20, 1, 12});
    tool().end();
    const auto chooseFromMenu = [this](const QString &text) {
        QTimer::singleShot(0, m_Window, [text] {
            auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction *const action : menu->actions())
                if (action->text() == text)
                    menu->setActiveAction(action);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        const QPoint place = labelPlace();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, view().mapToGlobal(place));
        QCoreApplication::sendEvent(&view(), &event);
    };
    chooseFromMenu("Remove");
    EXPECT_EQ(tool().measures().all().size(), 1U);
    chooseFromMenu("Remove All");
    EXPECT_TRUE(tool().measures().all().empty());
}

TEST_F(MeasuringInAWindow, VanishesWithTheStructureAndComesBackByUndo)
{
    tool().begin(2);
    clickResidues({3, 20});
    clickResidues({7});
    {
        DataDelete<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(m_Structure);
    }
    ASSERT_TRUE(waitUntil([this] { return tool().labels().empty(); }));
    // What was picked has gone as well.
    EXPECT_EQ(prompt(), "Distance: click atom 1 of 2. Escape ends");
    m_History.undo();
    ASSERT_TRUE(waitUntil([this] { return tool().labels().size() == 1; }));
}

TEST_F(MeasuringInAWindow, ACopiedPictureHasThem)
{
    const auto copied = [this] {
        for (QAction *const action : m_Window->findChildren<QAction *>())
            if (action->text() == "&Copy Picture")
                action->trigger();
        return QGuiApplication::clipboard()->image();
    };
    const QImage plain = copied();
    tool().begin(2);
    clickResidues({3, 20});
    const QImage measured = copied();
    ASSERT_EQ(measured.size(), plain.size());
    const QRect label = tool().labels().front().rect.toRect();
    EXPECT_NE(measured.copy(label), plain.copy(label));
    // What is chosen or picked is for the screen alone.
    clickResidues({8});
    click(labelPlace());
    ASSERT_TRUE(tool().hasChosen());
    EXPECT_EQ(copied(), measured);
}

} // namespace MeasureToolTest
