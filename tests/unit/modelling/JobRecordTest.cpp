// SPDX-License-Identifier: GPL-3.0-or-later
#include "JobRecord.h"

#include "ModellingFolder.h"

#include <cmath>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace JobRecordTest {

namespace fs = std::filesystem;
using kestram::JobRecord;
using kestram::JobState;
using kestram::readJobRecord;
using kestram::writeJobRecord;
using testing::HasSubstr;

using JobRecordTest = ModellingFolder;

JobRecord fullRecord()
{
    JobRecord record;
    record.state = JobState::Killed;
    record.target = "P1 \"x\"\n";
    record.templateName = "6e07B";
    record.host = "node7";
    record.job = "17_3";
    record.process = 4242;
    record.started = 1763895600.25;
    record.seconds = 9.5;
    record.exitStatus = 143;
    record.message = "kestram: promod was ended by signal 15";
    record.engine = "ProMod3 3.2.1, OpenStructure 2.3.1";
    record.residues = 100;
    record.modelled = 98;
    record.gaps = 2;
    record.caRms = 0.0625;
    record.caCount = 90;
    record.backboneScore = -1.5;
    record.residueScores = {{2, -0.5}, {3, 0.25}};
    return record;
}

void expectSame(const JobRecord &one, const JobRecord &other)
{
    EXPECT_EQ(one.state, other.state);
    EXPECT_EQ(one.target, other.target);
    EXPECT_EQ(one.templateName, other.templateName);
    EXPECT_EQ(one.host, other.host);
    EXPECT_EQ(one.job, other.job);
    EXPECT_EQ(one.process, other.process);
    EXPECT_EQ(one.started, other.started);
    EXPECT_EQ(one.seconds, other.seconds);
    EXPECT_EQ(one.exitStatus, other.exitStatus);
    EXPECT_EQ(one.message, other.message);
    EXPECT_EQ(one.engine, other.engine);
    EXPECT_EQ(one.residues, other.residues);
    EXPECT_EQ(one.modelled, other.modelled);
    EXPECT_EQ(one.gaps, other.gaps);
    EXPECT_EQ(one.caRms, other.caRms);
    EXPECT_EQ(one.caCount, other.caCount);
    EXPECT_EQ(one.backboneScore, other.backboneScore);
    EXPECT_EQ(one.residueScores, other.residueScores);
}

TEST_F(JobRecordTest, WhatIsWrittenIsRead)
{
    for (const JobRecord &record : {fullRecord(), JobRecord()}) {
        ASSERT_TRUE(writeJobRecord(path() / "r.json", record));
        const auto read = readJobRecord(path() / "r.json");
        ASSERT_TRUE(read) << read.error().message();
        expectSame(read.value(), record);
    }
}

TEST_F(JobRecordTest, TheScoresOfResiduesMayBeLeftOut)
{
    JobRecord record = fullRecord();
    ASSERT_TRUE(writeJobRecord(path() / "x.json", record));
    const auto read = readJobRecord(path() / "x.json", kestram::RecordParts::WithoutScores);
    ASSERT_TRUE(read) << read.error().message();
    EXPECT_TRUE(read.value().residueScores.empty());
    record.residueScores.clear();
    expectSame(read.value(), record);
}

TEST_F(JobRecordTest, EveryStateHasATextOfItsOwn)
{
    std::string all;
    for (const JobState state :
         {JobState::Running, JobState::Ok, JobState::Failed, JobState::Killed}) {
        all += std::string(kestram::textOf(state)) + ' ';
        ASSERT_TRUE(writeJobRecord(path() / "r.json", {.state = state}));
        EXPECT_EQ(readJobRecord(path() / "r.json").value().state, state);
    }
    EXPECT_EQ(all, "running ok failed killed ");
}

TEST_F(JobRecordTest, ANewRecordTakesThePlaceOfTheOldOneAndLeavesNothingBesideIt)
{
    fs::create_directory(path() / "runs");
    for (const double seconds : {1.0, 2.0}) {
        ASSERT_TRUE(writeJobRecord(path() / "runs/r.json", {.seconds = seconds}));
        EXPECT_EQ(readJobRecord(path() / "runs/r.json").value().seconds, seconds);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(path() / "runs"), fs::directory_iterator()), 1);
}

TEST_F(JobRecordTest, WhatIsNoTextOrNoNumberIsWrittenAllTheSame)
{
    JobRecord record = fullRecord();
    record.target = "a\xff"
                    "b";
    record.caRms = NAN;
    ASSERT_TRUE(writeJobRecord(path() / "r.json", record));
    const auto read = readJobRecord(path() / "r.json");
    ASSERT_TRUE(read) << read.error().message();
    EXPECT_EQ(read.value().target, "a\uFFFDb");
    EXPECT_EQ(read.value().caRms, std::nullopt);
}

TEST_F(JobRecordTest, FieldsOfANewerProgramArePassedOverAndMissingOnesLeftOut)
{
    const auto read =
        readJobRecord(write("r.json", R"({"state": "ok", "moon": {"phase": [1]}, "gaps": null})"));
    ASSERT_TRUE(read) << read.error().message();
    EXPECT_EQ(read.value().state, JobState::Ok);
    EXPECT_EQ(read.value().gaps, std::nullopt);
    EXPECT_EQ(read.value().exitStatus, std::nullopt);
}

TEST_F(JobRecordTest, ARecordThatIsCutAnywhereIsAFailure)
{
    ASSERT_TRUE(writeJobRecord(path() / "r.json", fullRecord()));
    const std::string text = read("r.json");
    // Without its last line break it is whole.
    for (std::size_t size = 0; size + 1 < text.size(); ++size) {
        const auto cut = readJobRecord(write("cut.json", text.substr(0, size)));
        ASSERT_FALSE(cut) << size;
        EXPECT_THAT(cut.error().message(), HasSubstr("cut.json: is no record of a modelling job"));
    }
}

struct BadRecord
{
    const char *name;
    std::string text;
    const char *cause;
};

class WhatIsNoRecord : public JobRecordTest, public testing::WithParamInterface<BadRecord>
{
};

TEST_P(WhatIsNoRecord, IsAFailureThatNamesFileAndCause)
{
    const auto read = readJobRecord(write("r.json", GetParam().text));
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().kind, TAMBO::FailureKind::BadInput);
    EXPECT_THAT(read.error().message(), testing::StartsWith("r.json: is no record"));
    EXPECT_THAT(read.error().message(), HasSubstr(GetParam().cause));
}

std::string field(const std::string &text)
{
    return R"({"state": "ok", )" + text + '}';
}

INSTANTIATE_TEST_SUITE_P(
    Texts, WhatIsNoRecord,
    testing::Values(
        BadRecord{"Empty", "", "from byte 1 on"},
        BadRecord{"ListAtTheTop", "[1]", "does not begin with {"},
        BadRecord{"NoState", R"({"target": "x"})", "\"state\" is not running, ok"},
        BadRecord{"UnknownState", R"({"state": "well"})", "\"state\" is not running, ok"},
        BadRecord{"StateThatIsANumber", R"({"state": 1})", "\"state\" is not a text"},
        BadRecord{"NumberForAName", field(R"("target": 1)"), "\"target\" is not a text"},
        BadRecord{"NegativeCount", field(R"("residues": -1)"), "\"residues\" is not a count"},
        BadRecord{"BrokenCount", field(R"("gaps": 1.5)"), "\"gaps\" is not a count"},
        BadRecord{"HugeProcess", field(R"("process": 18446744073709551615)"), "\"process\""},
        BadRecord{"HugeStatus", field(R"("exit_status": 4294967296)"), "\"exit_status\""},
        BadRecord{"TextForANumber", field(R"("seconds": "9")"), "\"seconds\" is not a number"},
        BadRecord{"HugeNumber", field(R"("ca_rms": 1e999)"), "r.json"},
        BadRecord{"ScoresThatAreNoList", field(R"("residue_scores": 1)"), "is not a list"},
        BadRecord{"ScoreThatIsNoPair", field(R"("residue_scores": [[1, 2, 3]])"), "is not pairs"},
        BadRecord{"ScoreOfNoLetter", field(R"("residue_scores": [[-1, 2]])"), "is not a count"},
        BadRecord{"NoText", std::string("{\"state\": \"ok\", \"job\": \"\xff\"}"), "from byte"},
        BadRecord{"DeeplyNested", std::string(1'000'000, '['), "from byte"}),
    [](const auto &made) { return std::string(made.param.name); });

TEST_F(JobRecordTest, WhatIsNoPlainFileIsAFailureAtOnce)
{
    const auto missing = readJobRecord(path() / "none.json");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().kind, TAMBO::FailureKind::NotFound);
    EXPECT_EQ(missing.error().message(), "none.json: is not there");
    EXPECT_FALSE(readJobRecord(path()));
    ASSERT_EQ(mkfifo((path() / "pipe.json").c_str(), 0600), 0);
    EXPECT_FALSE(readJobRecord(path() / "pipe.json"));
    write("huge.json", "");
    fs::resize_file(path() / "huge.json", std::uintmax_t{1} << 32U);
    EXPECT_FALSE(readJobRecord(path() / "huge.json"));
}

TEST_F(JobRecordTest, ARecordThatCannotBeWrittenSaysSo)
{
    const auto written = writeJobRecord(path() / "none" / "r.json", {});
    ASSERT_FALSE(written);
    EXPECT_THAT(written.error().message(), HasSubstr("r.json: cannot be written"));
}

} // namespace JobRecordTest
