// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ExpectMessage.h"

#include <QApplication>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    // Every run starts without any file of a user, and leaves none behind.
    const QTemporaryDir userDirectory;
    qputenv("TAMBO_USER_DIR", QFile::encodeName(userDirectory.path()));
    // Nor any plug-in that was installed on the machine.
    qputenv("TAMBO_SYSTEM_PLUGIN_DIRS", "");
    // The build runs the programs too, to learn their cases, and may have no screen.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    installTestMessageHandler();
    return RUN_ALL_TESTS();
}
