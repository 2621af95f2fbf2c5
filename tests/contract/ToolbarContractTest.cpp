// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of Toolbar and WidgetFactory.
#include "Toolbar.h"
#include "WidgetFactory.h"

#include "ToolWindow.h"
#include "support/LogLines.h"
#include "support/ScopedSettings.h"

#include <QAction>
#include <QComboBox>
#include <QListWidget>
#include <QTest>
#include <QToolButton>

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace ToolbarContractTest {

QList<QToolButton *> buttonsOf(const Toolbar &bar)
{
    QList<QToolButton *> buttons;
    for (QAction *action : bar.actions())
        if (auto *button = qobject_cast<QToolButton *>(bar.widgetForAction(action)))
            buttons.append(button);
    return buttons;
}

TEST(ToolbarContract, HasTheButtonsOfTheWindowsSection)
{
    const ScopedSettings settings("[ToolWindow]\nTools1 = 9|font.svg|Font|Choose a font;-;"
                                  "11||Realign\n");
    ZEP::ToolWindow window;
    const auto *bar = new Toolbar("Tools1", &window, "My tools", Qt::LeftToolBarArea, &window,
                                  SLOT(ButtonPressed(int, int, bool)));
    EXPECT_EQ(bar->windowTitle(), "My tools");
    EXPECT_EQ(window.toolBarArea(bar), Qt::LeftToolBarArea);
    EXPECT_EQ(bar->parent(), &window);
    EXPECT_EQ(bar->actions().size(), 3);
    const auto buttons = buttonsOf(*bar);
    ASSERT_EQ(buttons.size(), 2);
    EXPECT_EQ(buttons[0]->toolTip(), "Choose a font");
    EXPECT_EQ(buttons[0]->accessibleName(), "Font");
    EXPECT_FALSE(buttons[0]->icon().isNull());
    EXPECT_FALSE(buttons[0]->icon().pixmap(24, 24).isNull());
    EXPECT_EQ(buttons[1]->text(), "Realign");
}

TEST(ToolbarContract, PressingAButtonCallsTheSlotWithItsNumber)
{
    const ScopedSettings settings("[ToolWindow]\nTools1 = 9||Font;11||Realign\n");
    ZEP::ToolWindow window;
    const auto *bar = new Toolbar("Tools1", &window, "My tools", Qt::TopToolBarArea, &window,
                                  SLOT(ButtonPressed(int, int, bool)));
    window.show();
    for (QToolButton *button : buttonsOf(*bar))
        QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_THAT(window.presses(), ElementsAre(Press{9, 0, false}, Press{11, 0, false}));
}

TEST(ToolbarContract, TheSlotMayBeNamedWithoutTheToolkitsMark)
{
    const ScopedSettings settings("[ToolWindow]\nTools1 = 9||Font\n");
    ZEP::ToolWindow window;
    auto *bar = new Toolbar("Tools1", &window, "My tools", Qt::TopToolBarArea, &window,
                            "ButtonPressed( int, int, bool )");
    buttonsOf(*bar).first()->click();
    EXPECT_THAT(window.presses(), ElementsAre(Press{9, 0, false}));
}

TEST(ToolbarContract, AToggleButtonTellsItsState)
{
    const ScopedSettings settings("[ToolWindow]\nTools1 = 4||Grid||toggle\n");
    ZEP::ToolWindow window;
    auto *bar = new Toolbar("Tools1", &window, "My tools", Qt::TopToolBarArea, &window,
                            SLOT(ButtonPressed(int, int, bool)));
    QToolButton *button = buttonsOf(*bar).first();
    button->click();
    button->click();
    EXPECT_THAT(window.presses(), ElementsAre(Press{4, 0, true}, Press{4, 0, false}));
}

TEST(ToolbarContract, WithoutASettingItIsEmptyAndThereIsNoMessage)
{
    const ScopedSettings settings("");
    const LogLines log;
    ZEP::ToolWindow window;
    const auto *bar = new Toolbar("Tools7", &window, "None", Qt::TopToolBarArea, &window,
                                  SLOT(ButtonPressed(int, int, bool)));
    EXPECT_TRUE(bar->actions().isEmpty());
    EXPECT_EQ(log.count(), 0);
}

TEST(ToolbarContract, AButtonThatCannotBeReadIsOneLogLine)
{
    const ScopedSettings settings("[ToolWindow]\nTools1 = font|a.svg;9||Font\n");
    const LogLines log;
    ZEP::ToolWindow window;
    const auto *bar = new Toolbar("Tools1", &window, "My tools", Qt::TopToolBarArea, &window,
                                  SLOT(ButtonPressed(int, int, bool)));
    EXPECT_EQ(buttonsOf(*bar).size(), 1);
    EXPECT_EQ(log.texts(), QStringList("A button is left out of the tool bar My tools: "
                                       "\"font|a.svg\" does not start with a number"));
}

TEST(ToolbarContract, AMissingIconFileLeavesTheText)
{
    const ScopedSettings settings("[ToolWindow]\nTools1 = 9|nosuch.svg|Font\n");
    ZEP::ToolWindow window;
    const auto *bar = new Toolbar("Tools1", &window, "My tools", Qt::TopToolBarArea, &window,
                                  SLOT(ButtonPressed(int, int, bool)));
    const auto buttons = buttonsOf(*bar);
    ASSERT_EQ(buttons.size(), 1);
    EXPECT_EQ(buttons.first()->text(), "Font");
    EXPECT_TRUE(buttons.first()->icon().isNull());
}

TEST(WidgetFactoryContract, ControlsAreChildrenOfTheirParent)
{
    QWidget parent;
    const QListWidget *list = WidgetFactory::CreateListbox(&parent);
    const QComboBox *fixed = WidgetFactory::CreateComboBox(&parent, false);
    const QComboBox *editable = WidgetFactory::CreateComboBox(&parent, true);
    EXPECT_EQ(list->parent(), &parent);
    EXPECT_EQ(fixed->parent(), &parent);
    EXPECT_FALSE(fixed->isEditable());
    EXPECT_TRUE(editable->isEditable());
}

} // namespace ToolbarContractTest
