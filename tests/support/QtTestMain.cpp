// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ExpectMessage.h"

#include <QApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    installTestMessageHandler();
    return RUN_ALL_TESTS();
}
