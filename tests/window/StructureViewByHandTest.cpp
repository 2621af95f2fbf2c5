// SPDX-License-Identifier: GPL-3.0-or-later
// The structure view beside the editor, as a user sees both.
#include "WindowFixture.h"
#include "support/WaitUntil.h"

namespace StructureViewByHandTest {

class FirstScreen : public WindowFixture, public testing::WithParamInterface<QSize>
{
protected:
    FirstScreen() : WindowFixture(GetParam()) { }

    // Within the frame; that of the window manager is narrower than what is kept free for it.
    QRect placeOf(const QString &title) { return m_Screen.geometryOf(window(title)); }
};

TEST_P(FirstScreen, HasTheEditorAndTheViewBesideEachOther)
{
    start({"--tool", "Structure View", example()});
    const QRect view = placeOf("Structure View");
    const QRect editor = placeOf("Alignment Editor");
    const QRect workbench = placeOf("Tambo");
    // Title bars are on it, too.
    const QRect screen = QRect(QPoint(0, 0), GetParam()).adjusted(0, 15, 0, 0);
    for (const QRect &place : {view, editor, workbench}) {
        EXPECT_TRUE(screen.contains(place))
            << place.x() << ' ' << place.y() << ' ' << place.width() << ' ' << place.height();
        EXPECT_GE(place.width(), 400);
        EXPECT_GE(place.height(), 300);
    }
    EXPECT_FALSE(view.intersects(editor));
    EXPECT_FALSE(view.intersects(workbench));
    EXPECT_FALSE(editor.intersects(workbench));
}

INSTANTIATE_TEST_SUITE_P(Of, FirstScreen, testing::Values(QSize(1280, 800), QSize(1600, 1000)),
                         [](const auto &info) {
                             return std::to_string(info.param.width()) + "By" +
                                    std::to_string(info.param.height());
                         });

class PictureOfWindows : public WindowFixture
{
};

TEST_F(PictureOfWindows, HasTheToolsOfTheCall)
{
    const QString without = m_Folder.filePath("without.png");
    start({"--picture", without, example()});
    EXPECT_EQ(waitForEnd(), 0);
    const QString with = m_Folder.filePath("with.png");
    start({"--picture", with, "--tool", "Structure View", example()});
    EXPECT_EQ(waitForEnd(), 0);
    EXPECT_GT(QImage(with).width(), QImage(without).width() + 400);
}

class StartPageByHand : public WindowFixture
{
};

TEST_F(StartPageByHand, TheExampleOpensInTheEditorAndInTheStructureView)
{
    start({});
    m_Screen.pressKey(window("Tambo"), "alt+x");
    const QString editor = window("Alignment Editor");
    grid(editor, "IVGGYECRKNSA");
    const QRect view = m_Screen.geometryOf(window("Structure View"));
    EXPECT_FALSE(view.intersects(m_Screen.geometryOf(editor)));
}

} // namespace StructureViewByHandTest
