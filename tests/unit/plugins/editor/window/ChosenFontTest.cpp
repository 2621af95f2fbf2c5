// SPDX-License-Identifier: GPL-3.0-or-later
// The font that a window was given, as other plug-ins and sessions see it.
#include "AlignmentWindowFixture.h"

#include <QFontDialog>

using TAMBO::AlignmentWindow;

namespace ChosenFontTest {

class ChosenFont : public AlignmentWindowFixture
{
protected:
    ChosenFont() : shown(large()), window(show(shown, {900, 500})), seen(served(window)) { }

    TAMBO::Alignment &shown;
    ZEP::KALMO2 &window;
    AlignmentWindow &seen;
};

TEST_F(ChosenFont, TheFontThatTheWindowBeganWithIsNotAChosenOne)
{
    const QFont first("DejaVu Sans Mono", 19);
    EXPECT_FALSE(seen.chosenFont());
    seen.setChosenFont(first);
    EXPECT_EQ(seen.chosenFont(), first);
    const MessageRecorder quiet;
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        EXPECT_EQ(dynamic_cast<QFontDialog &>(dialog).currentFont().pointSize(), 19);
        dialog.reject();
    });
    window.ChangeFont();
    EXPECT_EQ(seen.chosenFont(), first);
}

TEST_F(ChosenFont, AFontThatIsGivenLooksAsOneThatTheUserChose)
{
    QFont chosen;
    const MessageRecorder quiet;
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        auto &fonts = dynamic_cast<QFontDialog &>(dialog);
        fonts.setCurrentFont(QFont("DejaVu Sans", 22));
        fonts.accept();
        chosen = fonts.selectedFont();
    });
    window.ChangeFont();
    ASSERT_TRUE(seen.chosenFont());
    ZEP::KALMO2 &other = show(shown, window.size());
    served(other).setChosenFont(*seen.chosenFont());
    EXPECT_EQ(served(other).ownCellSize(), seen.ownCellSize());
    EXPECT_EQ(picture(other), picture(window));
}

TEST_F(ChosenFont, WhatIsSeenFirstStaysSoInAnotherFont)
{
    seen.scrollTo({20 * seen.cellSize().width(), 10 * seen.cellSize().height()});
    seen.setChosenFont(QFont("DejaVu Sans Mono", 17));
    EXPECT_EQ(seen.scrollPosition(),
              QPoint(20 * seen.ownCellSize().width(), 10 * seen.ownCellSize().height()));
    EXPECT_EQ(seen.cellSize(), seen.ownCellSize());
}

} // namespace ChosenFontTest
