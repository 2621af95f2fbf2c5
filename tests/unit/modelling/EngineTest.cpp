// SPDX-License-Identifier: GPL-3.0-or-later
#include "Engine.h"

#include "ModellingFolder.h"

#include <gmock/gmock.h>

namespace EngineTest {

using testing::HasSubstr;

using EngineTest = ModellingFolder;

TEST_F(EngineTest, TheFirstProgramOnTheSearchPathIsTaken)
{
    installEngine("exit 0");
    auto engine = kestram::findEngine();
    ASSERT_TRUE(engine.has_value());
    EXPECT_EQ(engine.value(), path() / "bin" / "promod");
}

TEST_F(EngineTest, AMissingEngineSaysWhatToInstall)
{
    removeEngine();
    const auto missing = kestram::findEngine();
    ASSERT_FALSE(missing.has_value());
    EXPECT_THAT(missing.error().message(), HasSubstr("ProMod3"));
    EXPECT_THAT(missing.error().message(), HasSubstr("install the package promod3"));
    write("bin/promod", "no program");
    EXPECT_FALSE(kestram::findEngine().has_value()) << "a file that cannot be started";
}

} // namespace EngineTest
