// SPDX-License-Identifier: GPL-3.0-or-later
// Models colored by the engine's score of their residues, and its track.
#include "guide/GuidedFamily.h"

#include "Commands.h"
#include "LineTrack.h"
#include "support/LogLines.h"

#include "AlignmentDetails.h"
#include "DataPoint.h"
#include "PluginValues.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QToolBar>

#include <algorithm>

namespace ModelScoreTest {

class ScoresOfModels : public GuidedFamily
{
protected:
    // The second row is a model: its residues have the scores 0 to 23, but for the third.
    TAMBO::Alignment &scored()
    {
        TAMBO::Alignment &shown = family(3);
        std::string value;
        for (std::size_t i = 0; i < kResidues; ++i)
            value += (i == 0 ? "" : " ") + (i == 2 ? std::string("-") : std::to_string(i));
        {
            const DataPointBase guard(nullptr, Publisher::Update);
            PluginValues::Set(shown.GetSeq(1)->Parent(), "kestram", "residue-scores", value);
        }
        history.clear();
        return shown;
    }
    void run(const QString &text)
    {
        const auto &all = companion::commands();
        const auto command = std::ranges::find(all, text, &companion::Command::text);
        ASSERT_NE(command, all.end());
        command->run(*m_Companion);
    }
    unsigned colorAt(unsigned long row, unsigned long col) const
    {
        std::vector<TAMBO::AlignmentCell> cells;
        m_Shown->readRow(row, col, col + 1, cells);
        return cells.front().color.rgb() & 0xffffffU;
    }
    QStringList legend() const
    {
        QStringList texts;
        const auto *const bar = m_Window->findChild<QToolBar *>("Legend");
        for (const QLabel *label : bar->findChildren<QLabel *>())
            if (!label->text().isEmpty())
                texts << label->text();
        return bar->isHidden() ? QStringList() : texts;
    }
};

TEST_F(ScoresOfModels, ColorsAreFifthsOfTheModelAndALineSaysWhatTheyDoNotMean)
{
    look(scored());
    const unsigned before = colorAt(1, 2);
    const unsigned other = colorAt(0, 0);
    run("&Color by Model Score");
    EXPECT_EQ(colorAt(1, 0), 0x67a9cfU);
    EXPECT_EQ(colorAt(1, 25), 0xef8a62U) << "behind the two gaps";
    EXPECT_EQ(colorAt(1, 2), before) << "without a score";
    EXPECT_EQ(colorAt(0, 0), other) << "of another row";
    EXPECT_TRUE(legend().join(' ').contains("No confidence. Do not compare models by it"))
        << qPrintable(legend().join('\n'));
    EXPECT_TRUE(legend().contains("lowest: fits best"));
    EXPECT_EQ(history.size(), 1U);
    EXPECT_EQ(history.undoLabel().substr(0, 20), "Color by model score");
    history.undo();
    EXPECT_NE(colorAt(1, 0), 0x67a9cfU);
}

TEST_F(ScoresOfModels, WithoutAModelALineSaysSo)
{
    look(family(3));
    const LogLines log;
    run("&Color by Model Score");
    EXPECT_EQ(log.texts(), QStringList("No row shows a model whose score is known: Kestram and "
                                       "Models of a Family build such."));
    EXPECT_EQ(history.size(), 0U);
    EXPECT_EQ(legend(), QStringList());
}

TEST_F(ScoresOfModels, TheCommandIsGreyWithTheReasonWhileThereAreNone)
{
    TAMBO::Alignment &shown = family(3);
    look(shown);
    QMenu menu;
    companion::fillMenu(menu, [this] { return m_Companion.get(); });
    const auto find = [&menu] {
        for (QAction *const action : menu.actions())
            if (action->text() == "&Color by Model Score")
                return action;
        return static_cast<QAction *>(nullptr);
    };
    QAction *const action = find();
    ASSERT_NE(action, nullptr);
    EXPECT_TRUE(menu.toolTipsVisible());
    emit menu.aboutToShow();
    EXPECT_FALSE(action->isEnabled());
    EXPECT_EQ(action->toolTip(), "No row shows a model whose score is known: Kestram and Models of "
                                 "a Family build such.");
    emit menu.aboutToHide();
    TAMBO::Compound *const model = shown.GetSeq(1)->Parent();
    {
        const DataPointBase guard(nullptr, Publisher::Update);
        PluginValues::Set(model, "kestram", "residue-scores", "1 2 3");
    }
    emit menu.aboutToShow();
    EXPECT_TRUE(action->isEnabled());
    EXPECT_EQ(action->toolTip(),
              "Color the residues of models by the modelling engine's score of them");
    emit menu.aboutToHide();
    // A model that no row of the alignment shows.
    {
        const DataPointBase guard(nullptr, Publisher::Update);
        shown.removeRow(1);
    }
    emit menu.aboutToShow();
    EXPECT_FALSE(action->isEnabled());
}

TEST_F(ScoresOfModels, TheTrackHasATenthForEachResidueAndTheNumberInWords)
{
    const TAMBO::Alignment &shown = scored();
    const auto tracks = companion::lineTracks(shown, {0, 1});
    ASSERT_EQ(tracks.size(), 3U);
    const companion::LineTrack &track = tracks[2];
    EXPECT_EQ(track.name, "m1_A score");
    EXPECT_TRUE(track.isScore);
    EXPECT_TRUE(companion::isOnAtFirst(track));
    EXPECT_EQ(companion::lineTitle(track), "Model score of rows");
    EXPECT_TRUE(track.meaning.contains("It is no confidence"));
    const std::string text = companion::lineText(shown, track, 0, shown.width());
    EXPECT_EQ(text.substr(0, 4), "00 0");
    EXPECT_EQ(text.substr(kGap - 1, 4), "6  7");
    EXPECT_EQ(text.substr(25), "9  ");
    EXPECT_EQ(companion::lineText(shown, track, 25, 26), "9");
    EXPECT_EQ(companion::columnValue(shown, track, 25),
              "m1_A score: 23.00, 10 of 10, from the lowest of its model");
    EXPECT_EQ(companion::columnValue(shown, track, 2), "m1_A score: nothing");
    EXPECT_DOUBLE_EQ(companion::lineShare(track, '9'), 1);
    EXPECT_DOUBLE_EQ(companion::lineShare(track, '0'), 0.1);
}

TEST_F(ScoresOfModels, TheTrackStaysWithItsResiduesWhenColumnsAreRemoved)
{
    TAMBO::Alignment &shown = scored();
    const auto tracks = companion::lineTracks(shown, {1});
    const companion::LineTrack &track = tracks.back();
    const std::string before = companion::lineText(shown, track, 0, shown.width());
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        std::vector<bool> removed(shown.width(), false);
        std::fill(removed.begin(), removed.begin() + 4, true);
        ASSERT_TRUE(guard->removeColumns(removed));
    }
    EXPECT_EQ(companion::lineText(shown, track, 0, shown.width()), before.substr(4));
    EXPECT_EQ(companion::columnValue(shown, track, 21),
              "m1_A score: 23.00, 10 of 10, from the lowest of its model");
}

} // namespace ModelScoreTest
