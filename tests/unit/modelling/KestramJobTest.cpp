// SPDX-License-Identifier: GPL-3.0-or-later
// A model built into a file, with a record of how it went.
#include "Engine.h"
#include "EngineRun.h"
#include "JobRecord.h"

#include "ModellingFolder.h"

#include <gmock/gmock.h>

#include <chrono>

namespace KestramJobTest {

namespace fs = std::filesystem;
using kestram::JobRecord;
using kestram::JobState;
using testing::HasSubstr;

class KestramJob : public ModellingFolder
{
protected:
    KestramJob()
    {
        fs::create_directory(path() / "models");
        fs::create_directory(path() / "runs");
        write("seq.ali", pir("ACDEF-H", "ACD-FGH"));
        write("str.pdb", pdb("ACDEFH"));
        write("built.pdb", pdb("ACDFGH") + "END\n");
    }
    // That gives the model of the test; command comes before.
    void installGoodEngine(const std::string &command = ":")
    {
        installEngine(command + "; cp '" + (path() / "built.pdb").string() + "' model.pdb");
    }
    [[nodiscard]] Finished job(const std::string &environment = {}) const
    {
        return kestram("--job runs/P1.json models/P1.pdb seq.ali str.pdb", environment);
    }
    [[nodiscard]] JobRecord record(const std::string &name = "runs/P1.json") const
    {
        const auto record = kestram::readJobRecord(path() / name);
        EXPECT_TRUE(record) << record.error().message();
        return record ? record.value() : JobRecord();
    }
    [[nodiscard]] std::size_t filesIn(const char *folder) const
    {
        return std::size_t(
            std::distance(fs::directory_iterator(path() / folder), fs::directory_iterator()));
    }
};

TEST_F(KestramJob, TheModelGoesIntoItsFileAndWhatIsKnownOfItIntoTheRecord)
{
    installGoodEngine("printf 'engine ProMod3 1, OpenStructure 2\\nresidue 1 0.5\\nscore -2\\n' "
                      "> report.txt");
    const double before = double(std::chrono::duration_cast<std::chrono::seconds>(
                                     std::chrono::system_clock::now().time_since_epoch())
                                     .count());
    const Finished run = job();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(read("models/P1.pdb"), read("built.pdb"));
    const JobRecord known = record();
    EXPECT_EQ(known.state, JobState::Ok);
    EXPECT_EQ(known.target, "wanted");
    EXPECT_EQ(known.templateName, "known");
    EXPECT_FALSE(known.host.empty());
    EXPECT_EQ(known.job, "");
    EXPECT_GE(known.started, before);
    EXPECT_GT(known.seconds, 0);
    EXPECT_LT(known.seconds, 3600);
    EXPECT_EQ(known.exitStatus, 0);
    EXPECT_EQ(known.message, "");
    EXPECT_EQ(known.engine, "ProMod3 1, OpenStructure 2");
    EXPECT_EQ(known.residues, 6U);
    EXPECT_EQ(known.modelled, 6U);
    EXPECT_EQ(known.gaps, 2U);
    EXPECT_EQ(known.caCount, 5U);
    EXPECT_TRUE(known.caRms.has_value());
    EXPECT_EQ(known.backboneScore, -2);
    EXPECT_THAT(known.residueScores, testing::ElementsAre(std::pair(1U, 0.5)));
}

TEST_F(KestramJob, NothingElseIsLeftBehind)
{
    fs::create_directories(path() / "models/.P1.work/of a run before");
    installGoodEngine();
    EXPECT_EQ(job().status, 0);
    installEngine("exit 3");
    EXPECT_EQ(job().status, 4);
    EXPECT_EQ(filesIn("models"), 1U);
    EXPECT_EQ(filesIn("runs"), 1U);
    EXPECT_EQ(filesIn("tmp"), 0U);
}

TEST_F(KestramJob, TheEngineRunsBesideTheModelByAScriptOfOurs)
{
    installGoodEngine("pwd; echo \"$@\"; cat alignment.fasta; head -c 7 job.py; ls ../..");
    EXPECT_THAT(job("KESTRAM_RUN=env").errors,
                testing::StartsWith(
                    (path() / "models/.P1.work").string() +
                    "\njob.py -f alignment.fasta -p template.pdb -o model.pdb\n>target\nACD-FGH\n"
                    ">template.A\nACDEF-H\n# SPDX-"));
}

TEST_F(KestramJob, TheRecordSaysThatItRunsWhileItDoes)
{
    installGoodEngine("cp ../../runs/P1.json ../../seen.json; ls .. > ../../beside; echo $PPID");
    ASSERT_EQ(job().status, 0);
    const JobRecord seen = record("seen.json");
    EXPECT_EQ(seen.state, JobState::Running);
    EXPECT_EQ(seen.target, "wanted");
    EXPECT_EQ(seen.process, record().process);
    EXPECT_GT(seen.process, 0);
    EXPECT_EQ(seen.exitStatus, std::nullopt);
    EXPECT_EQ(seen.caRms, std::nullopt);
    EXPECT_EQ(read("beside"), "") << "a model that is not complete";
}

TEST_F(KestramJob, TheJobOfTheBatchSystemIsToldAsUsersKnowIt)
{
    installGoodEngine();
    ASSERT_EQ(job("SLURM_JOB_ID=17").status, 0);
    EXPECT_EQ(record().job, "17");
    ASSERT_EQ(job("SLURM_JOB_ID=18 SLURM_ARRAY_JOB_ID=17 SLURM_ARRAY_TASK_ID=3").status, 0);
    EXPECT_EQ(record().job, "17_3");
}

TEST_F(KestramJob, AModelWithoutAScoreIsAModel)
{
    installGoodEngine("printf 'failure RuntimeError: no weights\\n' > report.txt");
    const Finished run = job();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "kestram: the model has no score: RuntimeError: no weights\n");
    EXPECT_EQ(record().state, JobState::Ok);
    EXPECT_EQ(record().backboneScore, std::nullopt);
    EXPECT_EQ(record().message, "the model has no score: RuntimeError: no weights");
    EXPECT_EQ(read("models/P1.pdb"), read("built.pdb"));
}

TEST_F(KestramJob, RemarksOnTheInputAreTheLastLineWhenNothingElseIsSaid)
{
    write("seq.ali", pir("ACDEFH", "ACXFGH"));
    installGoodEngine("echo 'score 1' > report.txt");
    ASSERT_EQ(job().status, 0);
    EXPECT_THAT(record().message, HasSubstr("'X' is modelled as 'A'"));
}

struct BadJob
{
    const char *name;
    const char *engine;
    const char *alignment;
    const char *environment;
    int status;
    const char *says;
};

class JobThatFails : public KestramJob, public testing::WithParamInterface<BadJob>
{
};

TEST_P(JobThatFails, SaysWhyAndLeavesTheModelOfBefore)
{
    write("models/P1.pdb", "of before");
    write("other.ali", pir("ACWEFH", "ACDEFH"));
    installEngine(GetParam().engine);
    const Finished run = kestram(std::string("--job runs/P1.json models/P1.pdb ") +
                                     GetParam().alignment + " str.pdb",
                                 GetParam().environment);
    EXPECT_EQ(run.status, GetParam().status);
    EXPECT_THAT(run.errors, HasSubstr(GetParam().says));
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(read("models/P1.pdb"), "of before");
    EXPECT_EQ(filesIn("models"), 1U);
    EXPECT_EQ(record().state, JobState::Failed);
    EXPECT_EQ(record().exitStatus, GetParam().status);
    EXPECT_THAT(record().message, HasSubstr(GetParam().says));
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, JobThatFails,
    testing::Values(
        BadJob{"MissingAlignment", ":", "none.ali", "", 1, "none.ali"},
        BadJob{"RowThatIsNotOfTheStructure", ":", "other.ali", "", 1, "\"known\", column 3: 'W'"},
        BadJob{"NoEngine", ":", "seq.ali", "PATH=/none", 3, "install the package promod3"},
        BadJob{"EngineThatFails", "exit 3", "seq.ali", "", 4, "promod failed with status 3"},
        BadJob{"EngineThatSaysWhy", "echo 'failure no loop fits' > report.txt; exit 3", "seq.ali",
               "", 4, "promod failed with status 3: no loop fits"},
        BadJob{"EngineThatCrashes", "kill -s SEGV $$", "seq.ali", "", 4, "ended by signal 11"},
        BadJob{"NoModel", ":", "seq.ali", "", 4, "gave no model"},
        BadJob{"HalfAModel", "printf 'ATOM  1  N' > model.pdb", "seq.ali", "", 4,
               "breaks off; is the disk full?"},
        BadJob{"NoStructure", "printf 'ATOM  the model\\nEND\\n' > model.pdb", "seq.ali", "", 4,
               "model.pdb"},
        BadJob{"FullDiskForTheEngine", "head -c 100000 /dev/zero > model.pdb", "seq.ali",
               "ulimit -f 20 &&", 4, "promod"},
        BadJob{"FullDiskForItsInput", ":", "seq.ali", "ulimit -f 3 &&", 4,
               "job.py: cannot be written: File too large"}),
    [](const auto &made) { return std::string(made.param.name); });

TEST_F(KestramJob, WithoutARecordNothingIsBuilt)
{
    installGoodEngine();
    fs::remove(path() / "runs");
    Finished run = job();
    EXPECT_EQ(run.status, 4);
    EXPECT_EQ(run.errors, "kestram: P1.json: cannot be written: No such file or directory\n");
    fs::create_directory(path() / "runs");
    fs::create_symlink("/dev/full", path() / "runs/P1.json");
    run = job();
    EXPECT_EQ(run.status, 4);
    EXPECT_EQ(run.errors, "kestram: P1.json: cannot be written: No space left on device\n");
    EXPECT_EQ(filesIn("models"), 0U);
}

TEST_F(KestramJob, AModelThatNoRecordTellsOfIsNotPutInPlace)
{
    installGoodEngine("rm -r ../../runs");
    const Finished run = job();
    EXPECT_EQ(run.status, 4);
    EXPECT_THAT(run.errors, HasSubstr("P1.json: cannot be written"));
    EXPECT_EQ(filesIn("models"), 0U);
}

TEST_F(KestramJob, FilesAreNotReadAndWritten)
{
    installGoodEngine();
    const std::string before = read("str.pdb");
    fs::create_symlink("str.pdb", path() / "link.pdb");
    for (const char *files : {"r.json str.pdb seq.ali str.pdb", "seq.ali m.pdb seq.ali str.pdb",
                              "r.json ./str.pdb seq.ali str.pdb", "m.pdb m.pdb seq.ali str.pdb",
                              "r.json link.pdb seq.ali str.pdb", "r.json models seq.ali str.pdb"}) {
        const Finished run = kestram(std::string("--job ") + files);
        EXPECT_EQ(run.status, 2) << files;
        EXPECT_THAT(run.errors, testing::StartsWith("kestram: ")) << files;
    }
    EXPECT_EQ(read("str.pdb"), before);
    EXPECT_FALSE(fs::exists(path() / "r.json"));
}

TEST_F(KestramJob, AWrongCallPrintsTheUsage)
{
    for (const char *arguments : {"--job", "--job r.json m.pdb seq.ali", "--job a b c d e",
                                  "--jobs r.json m.pdb seq.ali str.pdb"}) {
        const Finished run = kestram(arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_THAT(run.errors, HasSubstr("kestram --job RECORD MODEL ALIGNMENT STRUCTURE"));
    }
}

TEST_F(KestramJob, ThatIsLongSaysByTheTimeOfItsRecordThatItGoesOn)
{
    write("long.json", "{}");
    const fs::path record = path() / "long.json";
    const fs::file_time_type before = fs::last_write_time(record) - std::chrono::hours(1);
    fs::last_write_time(record, before);
    write("heard", "");
    fs::last_write_time(path() / "heard", before);
    installEngine("left=600; while [ $left -gt 0 ] && ! [ '" + record.string() + "' -nt '" +
                  (path() / "heard").string() + "' ]; do left=$((left - 1)); sleep 0.1; done");
    const auto engine = kestram::findEngine();
    ASSERT_TRUE(engine);
    kestram::EngineRun::Plan plan;
    plan.command = kestram::engineCommand(engine.value(), "job.py", "");
    plan.engine = engine.value();
    plan.makeFolder = [this] { return kestram::RunFolder::makeFor(path() / "models" / "P1.pdb"); };
    plan.atTimes = [&record] { kestram::sayThatItGoesOn(record); };
    plan.pause = std::chrono::milliseconds(20);
    const auto run = kestram::EngineRun::begin(plan);
    ASSERT_TRUE(run) << run.error().message();
    const auto input = kestram::readInput(path() / "seq.ali", path() / "str.pdb");
    ASSERT_TRUE(input);
    EXPECT_FALSE(run.value()->build(input.value()));
    run.value()->finish();
    EXPECT_GT(fs::last_write_time(record), before);
}

} // namespace KestramJobTest
