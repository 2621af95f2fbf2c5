// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services.h"

#include "ConfigStore.h"
#include "Hooks.h"
#include "SelectionColor.h"
#include "support/ExpectMessage.h"
#include "support/LogLines.h"
#include "support/ScopedSettings.h"

#include <gtest/gtest.h>

namespace ServicesTest {

TEST(Services, TheModelsMessagesGoToTheLog)
{
    const ScopedSettings settings("[General]\nSelectionColor = #00ff00\n");
    TAMBO::services::installServices();
    const LogLines log;
    TAMBO::modelHooks().log("hello", TAMBO::LogSeverity::Info);
    EXPECT_EQ(log.texts(), QStringList("hello"));
    TAMBO::modelHooks().log = {};
    TAMBO::setSelectionColor(Color(0xffff00));
    installTestMessageHandler();
}

} // namespace ServicesTest
