// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of PluginManager: the four calls of the alignment editor.
#include "PluginManager.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "PluginRoutes.h"
#include "WorkbenchCommands.h"
#include "support/FakeCompound.h"

#include <QString>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <type_traits>

using namespace TAMBO::services;
using Outcome = PluginManager::Outcome;

namespace PluginManagerContractTest {

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
        routes.removeExecute("Calculate", "Alignment", "RealignAll");
        routes.removeExecute("Calculate", "Alignment", "AlignRows");
        routes.removeExecute("Calculate", "Alignment", "AddSequences");
        routes.removeExecute("Calculate", "Alignment", "AddFiles");
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
    const std::unique_ptr<TAMBO::Alignment> alignment = TAMBO::AlignmentTable::make("a", {});
    TAMBO::SaveRequest request{"/tmp/a.ali", alignment.get()};
    PluginRoutes::instance().registerCommand("Parse", "PIR", "SaveALI", record());
    EXPECT_EQ(PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                     static_cast<void *>(&request)),
              Outcome::Done);
    ASSERT_EQ(m_Calls, 1);
    EXPECT_EQ(m_Call.caller, "KALMO");
    EXPECT_EQ(m_Call.text, "Save PIR");
    EXPECT_EQ(m_Call.readOnlyData, nullptr);
    ASSERT_EQ(m_Call.data, &request);
    const auto *handed = static_cast<const TAMBO::SaveRequest *>(m_Call.data);
    EXPECT_EQ(handed->path, "/tmp/a.ali");
    EXPECT_EQ(handed->alignment, alignment.get());
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

// Plug-ins that were compiled before hand the record over as it stands in memory.
static_assert(std::is_standard_layout_v<TAMBO::SaveRequest>);
static_assert(offsetof(TAMBO::SaveRequest, path) == 0);
static_assert(offsetof(TAMBO::SaveRequest, alignment) == sizeof(QString));
static_assert(sizeof(TAMBO::SaveRequest) == sizeof(QString) + sizeof(void *));

TEST_F(PluginManagerContract, TheTypedCallsHandOverWhatTheNamesAskFor)
{
    const std::unique_ptr<TAMBO::Alignment> alignment = TAMBO::AlignmentTable::make("a", {});
    QString saved;
    TAMBO::Alignment *savedAlignment = nullptr;
    QByteArray readPath;
    PluginRoutes &routes = PluginRoutes::instance();
    routes.registerCommand("Parse", "PIR", "SaveALI", [&](const PluginCall &call) {
        const auto *request = static_cast<const TAMBO::SaveRequest *>(call.data);
        saved = request->path;
        savedAlignment = request->alignment;
        return call.caller == "Mine" && call.text == "Keep it";
    });
    routes.registerCommand("Parse", "PDB", "ReadPDB", [&](const PluginCall &call) {
        readPath = static_cast<const char *>(call.readOnlyData);
        return call.data == nullptr && call.text == "Read it";
    });
    routes.registerExecute("Data", "OpenFile", "open", record());
    using TAMBO::WorkbenchCommands;
    EXPECT_EQ(WorkbenchCommands::saveAlignment("Mine", "Keep it", *alignment, "/tmp/a.ali"),
              Outcome::Done);
    EXPECT_EQ(saved, "/tmp/a.ali");
    EXPECT_EQ(savedAlignment, alignment.get());
    EXPECT_EQ(
        WorkbenchCommands::readStructure("Mine", "Read it", QString::fromUtf8("/tmp/\xc3\xa4.pdb")),
        Outcome::Done);
    EXPECT_EQ(readPath, "/tmp/\xe4.pdb");
    EXPECT_EQ(WorkbenchCommands::openFile("Mine"), Outcome::Done);
    EXPECT_EQ(m_Call.data, nullptr);
    bool isChosen = false;
    EXPECT_EQ(WorkbenchCommands::openFile("Mine", &isChosen), Outcome::Done);
    EXPECT_EQ(m_Call.data, &isChosen);
    routes.registerExecute("Calculate", "Alignment", "Malign", record());
    EXPECT_EQ(WorkbenchCommands::realign("Mine", *alignment), Outcome::Done);
    EXPECT_EQ(m_Call.data, alignment.get());
    TAMBO::RealignRequest all{alignment.get(), {}};
    routes.registerExecute("Calculate", "Alignment", "RealignAll", record());
    EXPECT_EQ(WorkbenchCommands::realignAll("Mine", all), Outcome::Done);
    EXPECT_EQ(m_Call.data, &all);
    TAMBO::AlignRowsRequest rows{alignment.get(), {1, 2}, true, {}};
    routes.registerExecute("Calculate", "Alignment", "AlignRows", record());
    EXPECT_EQ(WorkbenchCommands::alignRows("Mine", rows), Outcome::Done);
    EXPECT_EQ(m_Call.data, &rows);
    TAMBO::AddSequencesRequest sequences{alignment.get(), {}, {}};
    routes.registerExecute("Calculate", "Alignment", "AddSequences", record());
    EXPECT_EQ(WorkbenchCommands::addSequences("Mine", sequences), Outcome::Done);
    EXPECT_EQ(m_Call.data, &sequences);
    TAMBO::AddFilesRequest files{alignment.get(), {}};
    routes.registerExecute("Calculate", "Alignment", "AddFiles", record());
    EXPECT_EQ(WorkbenchCommands::addFiles("Mine", files), Outcome::Done);
    EXPECT_EQ(m_Call.data, &files);
    m_Call = {};
    routes.registerExecute("Data", "Alignment", "show", record());
    EXPECT_EQ(WorkbenchCommands::showAlignment("Mine", *alignment), Outcome::Done);
    EXPECT_EQ(m_Call.data, alignment.get());
    m_Call = {};
    routes.registerExecute("Data", "Alignment", "export", record());
    EXPECT_EQ(WorkbenchCommands::exportAlignment("Mine", *alignment), Outcome::Done);
    EXPECT_EQ(m_Call.data, alignment.get());
    m_Call = {};
    routes.registerExecute("Data", "Alignment", "saveAs", record());
    EXPECT_EQ(WorkbenchCommands::saveAlignmentAs("Mine", *alignment), Outcome::Done);
    EXPECT_EQ(m_Call.data, alignment.get());
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
