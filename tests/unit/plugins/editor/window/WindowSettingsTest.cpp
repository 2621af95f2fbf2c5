// SPDX-License-Identifier: GPL-3.0-or-later
// What the window takes from the settings: icon, help page and tool bars.
#include "WindowFixture.h"

#include "HelpWindow.h"
#include "Toolbar.h"

#include <QAction>
#include <QIcon>
#include <QMessageBox>
#include <QStatusBar>

namespace WindowSettingsTest {

class WindowSettings : public WindowFixture
{
protected:
    static std::vector<Toolbar *> toolbars(const ZEP::KALMO2 &window)
    {
        const QList<Toolbar *> found = window.findChildren<Toolbar *>();
        return {found.begin(), found.end()};
    }
    static QUrl helpPage()
    {
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *help = qobject_cast<TAMBO::services::HelpWindow *>(widget))
                return help->document();
        return {};
    }
};

TEST_F(WindowSettings, NoneAtAllOpensAPlainWindowWithoutAWord)
{
    setSettings("");
    const MessageRecorder messages;
    const LogLines log;
    ZEP::KALMO2 &window = open();
    window.show();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(toolbars(window).empty());
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_EQ(log.texts(), QStringList());
}

TEST_F(WindowSettings, TheWindowHasItsCaptionAndIconText)
{
    const ZEP::KALMO2 &window = open();
    EXPECT_EQ(window.windowTitle(), "Alignment Editor");
    EXPECT_EQ(window.windowIconText(), "Editor");
    EXPECT_EQ(window.size(), QSize(500, 150));
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.parentWidget(), nullptr);
    EXPECT_TRUE(window.objectName().isEmpty());
}

TEST_F(WindowSettings, TheStatusBarIsThereAndEmpty)
{
    const ZEP::KALMO2 &window = open(alignment({"AC"}));
    EXPECT_NE(window.findChild<QStatusBar *>(), nullptr);
    EXPECT_TRUE(window.findChild<QStatusBar *>()->currentMessage().isEmpty());
}

TEST_F(WindowSettings, TheIconComesFromTheIconDirectory)
{
    setSettings("[KALMO2]\nIcon = editor.svg\n");
    const ZEP::KALMO2 &window = open();
    EXPECT_EQ(window.windowIcon().pixmap(32).toImage(),
              QIcon(QPixmap(SOURCE_DIR "/share/icons/editor.svg")).pixmap(32).toImage());
    EXPECT_FALSE(window.windowIcon().isNull());
}

TEST_F(WindowSettings, AMissingIconFileIsNoMatter)
{
    setSettings("[KALMO2]\nIcon = nowhere.png\n");
    const MessageRecorder messages;
    const ZEP::KALMO2 &window = open();
    EXPECT_TRUE(window.windowIcon().isNull());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(WindowSettings, HelpShowsThePageOfTheSettings)
{
    setSettings("[KALMO2]\nHelp = editor.html\n");
    ZEP::KALMO2 &window = open();
    window.showHelp();
    EXPECT_EQ(helpPage().fileName(), "editor.html");
    setSettings("");
    window.showHelp();
    EXPECT_NE(helpPage().fileName(), "editor.html") << "the contents, for an empty name";
}

TEST_F(WindowSettings, AToolbarHasItsTitleSideAndButtons)
{
    setSettings("[KALMO2]\nToolbarName1 = Alignment\nToolbarLocation1 = Left\n"
                "Tools1 = 0||Nothing\n");
    const ZEP::KALMO2 &window = open();
    ASSERT_EQ(toolbars(window).size(), 1U);
    Toolbar *toolbar = toolbars(window).front();
    EXPECT_EQ(toolbar->windowTitle(), "Alignment");
    EXPECT_EQ(window.toolBarArea(toolbar), Qt::LeftToolBarArea);
    ASSERT_EQ(toolbar->actions().size(), 1);
    const ExpectMessage unused(QtDebugMsg, "Unused button.");
    toolbar->actions().front()->trigger();
}

TEST_F(WindowSettings, EverySideIsKnownByItsExactName)
{
    const std::vector<std::pair<QByteArray, Qt::ToolBarArea>> sides = {
        {"Top", Qt::TopToolBarArea},    {"Bottom", Qt::BottomToolBarArea},
        {"Left", Qt::LeftToolBarArea},  {"Right", Qt::RightToolBarArea},
        {"left", Qt::TopToolBarArea},   {"Nowhere", Qt::TopToolBarArea},
        {"bottom", Qt::TopToolBarArea},
    };
    for (const auto &[name, area] : sides) {
        setSettings("[KALMO2]\nToolbarName1 = One\nToolbarLocation1 = " + name + "\n");
        const ZEP::KALMO2 &window = open();
        ASSERT_EQ(toolbars(window).size(), 1U) << name.toStdString();
        EXPECT_EQ(window.toolBarArea(toolbars(window).front()), area) << name.toStdString();
    }
}

TEST_F(WindowSettings, TopAndUnknownSidesFollowTheToolbarBefore)
{
    setSettings("[KALMO2]\nToolbarName1 = One\nToolbarLocation1 = Left\n"
                "ToolbarName2 = Two\nToolbarLocation2 = Top\n"
                "ToolbarName3 = Three\nToolbarLocation3 = Right\n"
                "ToolbarName4 = Four\nToolbarLocation4 = Nowhere\n");
    const ZEP::KALMO2 &window = open();
    std::vector<Qt::ToolBarArea> areas;
    for (Toolbar *toolbar : toolbars(window))
        areas.push_back(window.toolBarArea(toolbar));
    EXPECT_EQ(areas, (std::vector<Qt::ToolBarArea>{Qt::LeftToolBarArea, Qt::LeftToolBarArea,
                                                   Qt::RightToolBarArea, Qt::RightToolBarArea}));
}

TEST_F(WindowSettings, AGapInTheNumbersEndsTheToolbars)
{
    setSettings("[KALMO2]\nToolbarName1 = One\nToolbarLocation1 = Top\n"
                "ToolbarName3 = Three\nToolbarLocation3 = Top\n");
    EXPECT_EQ(toolbars(open()).size(), 1U);
}

TEST_F(WindowSettings, AToolbarNeedsBothNameAndSide)
{
    setSettings("[KALMO2]\nToolbarName1 = One\n");
    EXPECT_TRUE(toolbars(open()).empty());
    setSettings("[KALMO2]\nToolbarLocation1 = Left\n");
    EXPECT_TRUE(toolbars(open()).empty());
}

TEST_F(WindowSettings, TheShippedToolbarHasItsButtons)
{
    TAMBO::services::ConfigStore::setInstance(nullptr);
    const ZEP::KALMO2 &window = open();
    ASSERT_EQ(toolbars(window).size(), 1U);
    QStringList numbers;
    for (const QAction *action : toolbars(window).front()->actions())
        if (!action->isSeparator())
            numbers.append(action->objectName().section('.', 1));
    EXPECT_EQ(numbers, (QStringList{"2", "3", "4", "6", "7", "8", "9", "11"}));
}

TEST_F(WindowSettings, AboutHasItsText)
{
    ZEP::KALMO2 &window = open();
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        const auto *box = qobject_cast<QMessageBox *>(&dialog);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text(), "An alternative way.\n");
        EXPECT_EQ(box->parentWidget(), &window);
    });
    window.about();
    EXPECT_EQ(dialogs.titles(), QStringList{"KALMO2 2001"});
}

} // namespace WindowSettingsTest
