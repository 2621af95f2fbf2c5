// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of HelpViewer.
#include "HelpViewer.h"

#include "HelpWindow.h"

#include <QApplication>

#include <gtest/gtest.h>

using TAMBO::services::HelpWindow;

namespace HelpViewerContractTest {

QList<HelpWindow *> helpWindows()
{
    QList<HelpWindow *> windows;
    for (QWidget *window : QApplication::topLevelWidgets())
        if (auto *help = qobject_cast<HelpWindow *>(window))
            windows.append(help);
    return windows;
}

TEST(HelpViewerContract, ShowsTheDocumentInOneWindow)
{
    HelpViewer::Show("editor.html");
    ASSERT_EQ(helpWindows().size(), 1);
    EXPECT_TRUE(helpWindows().first()->isVisible());
    EXPECT_EQ(helpWindows().first()->document().fileName(), "editor.html");
    HelpViewer::Show("");
    ASSERT_EQ(helpWindows().size(), 1);
    EXPECT_EQ(helpWindows().first()->document().fileName(), "index.html");
}

TEST(HelpViewerContract, OpensAgainAfterItWasClosed)
{
    HelpViewer::Show("editor.html");
    helpWindows().first()->close(false);
    EXPECT_TRUE(helpWindows().isEmpty());
    HelpViewer::Show("nosuch.html");
    ASSERT_EQ(helpWindows().size(), 1);
    EXPECT_EQ(helpWindows().first()->document().fileName(), "index.html");
}

} // namespace HelpViewerContractTest
