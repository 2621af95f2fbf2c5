// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyResults.h"
#include "FamilyBench.h"
#include "FolderLock.h"
#include "ProcessLife.h"

#include <gmock/gmock.h>

#include <chrono>
#include <ctime>
#include <sys/wait.h>
#include <unistd.h>

namespace FamilyResultsTest {

namespace fs = std::filesystem;
using namespace TAMBO;
using namespace TAMBO::families;
using kestram::JobRecord;
using kestram::JobState;
using testing::ElementsAre;
using testing::HasSubstr;

class FamilyResults : public FamilyBench
{
protected:
    FamilyResults()
    {
        EXPECT_TRUE(prepare());
        m_Folder.emplace(FamilyFolder::open(family()).value());
    }
    [[nodiscard]] const FamilyFolder &folder() const { return *m_Folder; }
    void record(const std::string &file, const JobRecord &record) const
    {
        EXPECT_TRUE(kestram::writeJobRecord(family() / "runs" / (file + ".json"), record));
    }
    [[nodiscard]] TargetState stateOf(std::size_t index,
                                      FolderWork work = FolderWork::AsLocked) const
    {
        return resultsOf(folder(), work)[index].state;
    }

private:
    std::optional<FamilyFolder> m_Folder;
};

JobRecord runningRecord()
{
    JobRecord record;
    record.host = hostName();
    record.process = getpid();
    record.started = double(std::time(nullptr));
    return record;
}

TEST_F(FamilyResults, ATargetThatHasNotRunIsNamedWithWhatIsKnownOfThePair)
{
    const auto rows = resultsOf(folder());
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].state, TargetState::NotRun);
    EXPECT_THAT(resultTexts(rows[0]),
                ElementsAre("a", "t1", "not run", "9", "NA", "88.9", "NA", "NA", "NA", "NA", "NA",
                            "NA", "NA", "NA", "NA", "NA", "NA", "NA"));
    EXPECT_EQ(resultTitles().size(), resultTexts(rows[0]).size());
}

TEST_F(FamilyResults, ALineHasWhatTheRecordSays)
{
    write("family/models/a.pdb", "ATOM\n");
    JobRecord made = runningRecord();
    made.state = JobState::Ok;
    made.host = "node7";
    made.job = "12_3";
    made.seconds = 9.04;
    made.exitStatus = 0;
    made.message = "done\tand\ndone";
    made.engine = "ProMod3 3.2.1";
    made.residues = 9;
    made.modelled = 8;
    made.gaps = 1;
    made.caRms = 0.3712;
    made.caCount = 8;
    made.backboneScore = -0.12345;
    record("a", made);
    ASSERT_TRUE(writeResults(folder()));
    const std::string table = read("family/results.tsv");
    EXPECT_THAT(table, HasSubstr("target\ttemplate\tstate\tresidues\tmodelled\tidentity_percent\t"
                                 "coverage_percent\tgaps_rebuilt\tca_rms\tca_count\t"
                                 "backbone_score\tseconds\thost\tjob\texit_status\tlast_line\t"
                                 "engine\tmodel\n"));
    EXPECT_THAT(table, HasSubstr("a\tt1\tok\t9\t8\t88.9\t88.9\t1\t0.37\t8\t-0.123\t9.0\tnode7\t"
                                 "12_3\t0\tdone and done\tProMod3 3.2.1\tmodels/a.pdb\n"));
}

TEST_F(FamilyResults, FailedAndKilledAreWhatTheRecordSays)
{
    JobRecord made = runningRecord();
    made.state = JobState::Failed;
    made.exitStatus = 4;
    record("a", made);
    made.state = JobState::Killed;
    record("b", made);
    EXPECT_EQ(stateOf(0), TargetState::Failed);
    EXPECT_EQ(stateOf(1), TargetState::Killed);
    EXPECT_EQ(stateOf(2), TargetState::NotRun);
}

TEST_F(FamilyResults, OneThatRunsHereIsRunningAsLongAsItsProcessIsThere)
{
    record("a", runningRecord());
    EXPECT_EQ(stateOf(0), TargetState::Running);
    JobRecord ended = runningRecord();
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    ended.process = child;
    record("b", ended);
    // Not waited for yet.
    siginfo_t info{};
    ASSERT_EQ(waitid(P_PID, id_t(child), &info, WEXITED | WNOWAIT), 0);
    EXPECT_EQ(stateOf(1), TargetState::Killed);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(stateOf(1), TargetState::Killed);
}

TEST_F(FamilyResults, AProcessThatBeganAtAnotherTimeThanTheRunIsAnotherOne)
{
    for (const double away : {-100'000.0, 100'000.0}) {
        JobRecord other = runningRecord();
        other.started += away;
        record("a", other);
        EXPECT_EQ(stateOf(0), TargetState::Killed) << away;
    }
}

TEST_F(FamilyResults, ANumberThatIsNoneOfAProcessRunsNothing)
{
    // As signed 32-bit numbers they would be all processes, and the group of this one.
    for (const long number : {0xffff'ffffL, 0x1'0000'0000L, 0L}) {
        JobRecord wrong = runningRecord();
        wrong.process = number;
        record("a", wrong);
        EXPECT_EQ(stateOf(0), TargetState::Killed) << number;
    }
}

TEST_F(FamilyResults, OneOfAnotherComputerRunsAsLongAsItIsHeardOf)
{
    JobRecord far = runningRecord();
    far.host = "node7.elsewhere";
    record("a", far);
    EXPECT_EQ(stateOf(0), TargetState::Running);
    EXPECT_EQ(stateOf(0, FolderWork::HasEnded), TargetState::Killed);
}

TEST_F(FamilyResults, OneOfAnotherComputerThatWasNotHeardOfRunsAsLongAsTheFolderIsAtWork)
{
    JobRecord far = runningRecord();
    far.host = "node7.elsewhere";
    record("a", far);
    const auto silence =
        std::chrono::duration_cast<fs::file_time_type::duration>(std::chrono::minutes(6));
    const fs::path file = family() / "runs" / "a.json";
    fs::last_write_time(file, fs::last_write_time(file) - silence);
    EXPECT_EQ(stateOf(0), TargetState::Killed);
    EXPECT_EQ(stateOf(0, FolderWork::GoesOn), TargetState::Running);
    const auto lock = FolderLock::take(family());
    EXPECT_EQ(stateOf(0), TargetState::Running);
    EXPECT_EQ(stateOf(0, FolderWork::HasEnded), TargetState::Killed);
}

TEST_F(FamilyResults, AModelThatIsThereIsOkWhateverTheRecordSays)
{
    write("family/models/a.pdb", "ATOM\n");
    EXPECT_EQ(stateOf(0), TargetState::Ok);
    JobRecord killed = runningRecord();
    killed.process = 0;
    record("a", killed);
    EXPECT_EQ(stateOf(0), TargetState::Ok);
}

TEST_F(FamilyResults, AModelWhoseJobIsAboutToSayItsEndIsRunning)
{
    write("family/models/a.pdb", "ATOM\n");
    record("a", runningRecord());
    EXPECT_EQ(stateOf(0), TargetState::Running);
}

TEST_F(FamilyResults, AModelThatWasTakenAwayIsNotRun)
{
    JobRecord made = runningRecord();
    made.state = JobState::Ok;
    made.modelled = 9;
    record("a", made);
    EXPECT_EQ(stateOf(0), TargetState::NotRun);
    EXPECT_EQ(resultTexts(resultsOf(folder())[0])[4], "NA");
}

TEST_F(FamilyResults, ARecordThatWasCutIsNotKnownAndSaysWhy)
{
    record("a", runningRecord());
    const std::string whole = read("family/runs/a.json");
    for (std::size_t size = 0; size + 2 < whole.size(); size += 5) {
        write("family/runs/a.json", whole.substr(0, size));
        const ResultRow row = resultsOf(folder())[0];
        EXPECT_EQ(row.state, TargetState::NotRun) << size;
        EXPECT_THAT(resultTexts(row)[15], HasSubstr("a.json: is no record of a modelling job"));
    }
    fs::remove(family() / "runs/a.json");
    fs::create_directory(family() / "runs/a.json");
    EXPECT_EQ(stateOf(0), TargetState::NotRun);
}

TEST_F(FamilyResults, OneWithoutACommonColumnHasFailedAndSaysWhy)
{
    Family family = smallFamily();
    family.rows[0].text = "ACDEF-----";
    family.rows[4].text = "------AAAA";
    const auto plan = planModels(family, {"t1", {"c"}});
    const auto prepared =
        prepareFamily(family, plan.value(), templatesOf(family), this->family(), settings);
    ASSERT_TRUE(prepared);
    const ResultRow row = resultOf(prepared.value().folder, prepared.value().asked[0]);
    EXPECT_EQ(row.state, TargetState::Failed);
    EXPECT_EQ(resultTexts(row)[15], "no column is shared with t1");
}

TEST_F(FamilyResults, AFolderThatHasLostItsFoldersStillGivesATable)
{
    for (const char *name : {"runs", "models", "inputs", "templates"})
        fs::remove_all(family() / name);
    ASSERT_TRUE(writeResults(folder()));
    EXPECT_THAT(read("family/results.tsv"), HasSubstr("a\tt1\tnot run"));
}

} // namespace FamilyResultsTest
