// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of PluginManager: the four calls of the alignment editor.
#include "PluginManager.h"

#include "Compound.h"
#include "PluginRoutes.h"
#include "support/FakeCompound.h"

#include <QString>

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

using namespace TAMBO::services;
using Outcome = PluginManager::Outcome;

namespace PluginManagerContractTest {

struct SaveRequest
{
    QString path;
    TAMBO::Compound *alignment;
};

class PluginManagerContract : public ::testing::Test
{
protected:
    void TearDown() override
    {
        PluginRoutes &routes = PluginRoutes::instance();
        routes.removeCommand("Parse", "PIR", "SaveALI");
        routes.removeCommand("Parse", "PDB", "ReadPDB");
        routes.removeExecute("Data", "OpenFile", "open");
        routes.removeExecute("Calculate", "Alignment", "Malign");
    }

    PluginRoutes::Handler record()
    {
        return [this](const PluginCall &call) {
            m_Call = call;
            ++m_Calls;
            return true;
        };
    }

    PluginCall m_Call;
    int m_Calls = 0;
};

TEST_F(PluginManagerContract, SavingHandsOverAWritableRecord)
{
    FakeCompound alignment("a", "alignment");
    SaveRequest request{"/tmp/a.ali", &alignment};
    PluginRoutes::instance().registerCommand("Parse", "PIR", "SaveALI", record());
    EXPECT_EQ(PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                     static_cast<void *>(&request)),
              Outcome::Done);
    ASSERT_EQ(m_Calls, 1);
    EXPECT_EQ(m_Call.caller, "KALMO");
    EXPECT_EQ(m_Call.text, "Save PIR");
    EXPECT_EQ(m_Call.readOnlyData, nullptr);
    ASSERT_EQ(m_Call.data, &request);
    EXPECT_EQ(static_cast<const SaveRequest *>(m_Call.data)->path, "/tmp/a.ali");
}

TEST_F(PluginManagerContract, ReadingAModelHandsOverAReadOnlyText)
{
    const char *path = "/tmp/model.pdb";
    PluginRoutes::instance().registerCommand("Parse", "PDB", "ReadPDB", record());
    EXPECT_EQ(PluginManager::Command("Parse", "PDB", "KALMO", "Read PDB stream", "ReadPDB",
                                     static_cast<const void *>(path)),
              Outcome::Done);
    ASSERT_EQ(m_Calls, 1);
    EXPECT_EQ(m_Call.text, "Read PDB stream");
    EXPECT_EQ(m_Call.data, nullptr);
    ASSERT_EQ(m_Call.readOnlyData, path);
    EXPECT_STREQ(static_cast<const char *>(m_Call.readOnlyData), "/tmp/model.pdb");
}

TEST_F(PluginManagerContract, OpeningAFileHandsOverNothing)
{
    PluginRoutes::instance().registerExecute("Data", "OpenFile", "open", record());
    EXPECT_EQ(PluginManager::Execute("Data", "OpenFile", "SequenceEditor", "open"), Outcome::Done);
    ASSERT_EQ(m_Calls, 1);
    EXPECT_EQ(m_Call.caller, "SequenceEditor");
    EXPECT_EQ(m_Call.data, nullptr);
    EXPECT_EQ(m_Call.readOnlyData, nullptr);
}

TEST_F(PluginManagerContract, RealigningHandsOverTheAlignment)
{
    FakeCompound alignment("a", "alignment");
    PluginRoutes::instance().registerExecute("Calculate", "Alignment", "Malign", record());
    EXPECT_EQ(PluginManager::Execute("Calculate", "Alignment", "KALMO", "Malign", &alignment),
              Outcome::Done);
    ASSERT_EQ(m_Calls, 1);
    EXPECT_EQ(m_Call.caller, "KALMO");
    EXPECT_EQ(m_Call.data, &alignment);
}

TEST_F(PluginManagerContract, ANoServiceANoCommandAndAFailureAreDifferentAnswers)
{
    EXPECT_EQ(PluginManager::Execute("Calculate", "Alignment", "KALMO", "Malign"),
              Outcome::NoService);
    PluginRoutes::instance().registerExecute("Calculate", "Alignment", "Malign",
                                             [](const PluginCall &) { return false; });
    EXPECT_EQ(PluginManager::Execute("Calculate", "Alignment", "KALMO", "Other"),
              Outcome::NoCommand);
    EXPECT_EQ(PluginManager::Execute("Calculate", "Alignment", "KALMO", "Malign"), Outcome::Failed);
}

TEST_F(PluginManagerContract, NothingIsThrownAtTheCaller)
{
    PluginRoutes::instance().registerExecute(
        "Calculate", "Alignment", "Malign",
        [](const PluginCall &) -> bool { throw std::runtime_error("boom"); });
    EXPECT_NO_THROW(EXPECT_EQ(PluginManager::Execute("Calculate", "Alignment", "KALMO", "Malign"),
                              Outcome::Failed));
}

} // namespace PluginManagerContractTest
