// SPDX-License-Identifier: GPL-3.0-or-later
// Runs with programs in the place of the adapter and of Snakemake that do what the test wants.
#include "FamilyRun.h"
#include "FamilyBench.h"
#include "ProcessLife.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace FamilyRunTest {

namespace fs = std::filesystem;
using namespace TAMBO;
using namespace TAMBO::families;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAre;

// What the adapter does when all is well: $1 --job, record, model, alignment, structure.
constexpr const char *kBuild =
    "say() { printf '{\"state\": \"%s\", \"host\": \"%s\", \"process\": %s, \"started\": %s, "
    "\"seconds\": 1.5, \"modelled\": 9}' \"$1\" \"$(hostname)\" $$ \"$(date +%s)\" > \"$2.part\" "
    "&& "
    "mv \"$2.part\" \"$2\"; }\n"
    "build() { say running \"$2\"; echo \"building $3\" >&2; cat \"$4\" \"$5\" > \"$3.part\" && mv "
    "\"$3.part\" \"$3\"; say ok \"$2\"; }\n"
    "echo \"$*\" >> calls\n";

class FamilyRun : public FamilyBench
{
protected:
    FamilyRun() : m_SearchPath(std::getenv("PATH"))
    {
        EXPECT_TRUE(prepare());
        install("kestram", std::string(kBuild) + "build \"$@\"\n");
        run.kestram = path() / "bin/kestram";
        run.usesPool = true;
        run.jobs = 1;
    }
    ~FamilyRun() override { setenv("PATH", m_SearchPath.c_str(), 1); }

    void install(const std::string &program, const std::string &script) const
    {
        write("bin/" + program, "#!/bin/bash\n" + script);
        fs::permissions(path() / "bin" / program, fs::perms::owner_all);
    }
    // First on the search path, in the place of what is installed.
    void installSnakemake(const std::string &script)
    {
        install("snakemake", "echo \"$*\" >> asked\n" + script);
        setenv("PATH", ((path() / "bin").string() + ":/usr/bin:/bin").c_str(), 1);
        run.usesPool = false;
    }
    void withoutSnakemake()
    {
        setenv("PATH", (path() / "bin").c_str(), 1);
        run.usesPool = false;
    }
    Result<RunOutcome> runAll()
    {
        told.clear();
        const FamilyFolder folder = FamilyFolder::open(family()).value();
        const auto lock = FolderLock::take(family());
        if (!lock)
            return lock.error();
        return runFamily(folder, folder.targets(), run, lock.value(), [this](const TargetEnd &end) {
            told.push_back(std::to_string(end.done) + '/' + std::to_string(end.total) + ' ' +
                           end.row.target.name + ' ' + std::string(textOf(end.row.state)));
        });
    }
    [[nodiscard]] std::string callCount() const
    {
        const std::string calls = read("family/calls");
        return std::to_string(std::count(calls.begin(), calls.end(), '\n'));
    }
    // The field of a target's line in the table.
    [[nodiscard]] std::string field(const std::string &target, const std::string &title) const
    {
        std::istringstream table(read("family/results.tsv"));
        for (std::string line; std::getline(table, line);) {
            std::istringstream fields(line);
            std::vector<std::string> texts;
            for (std::string text; std::getline(fields, text, '\t');)
                texts.push_back(text);
            if (!texts.empty() && texts.front() == target)
                return texts.at(
                    std::size_t(std::ranges::find(resultTitles(), title) - resultTitles().begin()));
        }
        return "no such target";
    }

    RunSettings run;
    std::vector<std::string> told;

private:
    std::string m_SearchPath;
};

// ---- The pool

TEST_F(FamilyRun, ThePoolCallsTheAdapterInTheFolderForEachTarget)
{
    const auto outcome = runAll();
    ASSERT_TRUE(outcome) << outcome.error().message();
    EXPECT_EQ(outcome.value().signal, 0);
    EXPECT_EQ(outcome.value().rows.size(), 3U);
    EXPECT_THAT(outcome.value().remarks, IsEmpty());
    EXPECT_THAT(told, ElementsAre("1/3 a ok", "2/3 b ok", "3/3 c ok"));
    EXPECT_THAT(read("family/calls"),
                StartsWith("--job runs/a.json models/a.pdb inputs/a.ali templates/t1.pdb\n"));
    EXPECT_EQ(read("family/models/a.pdb"),
              read("family/inputs/a.ali") + read("family/templates/t1.pdb"));
    EXPECT_EQ(read("family/runs/a.log"), "building models/a.pdb\n");
    EXPECT_EQ(field("b", "state"), "ok");
    EXPECT_EQ(field("b", "modelled"), "9");
    EXPECT_EQ(field("b", "model"), "models/b.pdb");
}

TEST_F(FamilyRun, AFolderWhoseNameIsRelativeIsAsGood)
{
    const fs::path before = fs::current_path();
    fs::current_path(path());
    const FamilyFolder folder = FamilyFolder::open("family").value();
    const auto lock = FolderLock::take("family");
    const auto outcome =
        runFamily(folder, folder.targets(), run, lock.value(), [](const TargetEnd &) {});
    fs::current_path(before);
    ASSERT_TRUE(outcome) << outcome.error().message();
    EXPECT_TRUE(isThere("family/models/c.pdb"));
    EXPECT_EQ(read("family/runs/a.log"), "building models/a.pdb\n");
}

TEST_F(FamilyRun, AgainOnlyWhatIsMissingIsBuilt)
{
    ASSERT_TRUE(runAll());
    const std::string built = read("family/models/b.pdb");
    const auto time = fs::last_write_time(family() / "models/a.pdb");
    fs::remove(family() / "models/b.pdb");
    ASSERT_TRUE(runAll());
    EXPECT_EQ(callCount(), "4");
    EXPECT_THAT(told, ElementsAre("1/1 b ok"));
    EXPECT_EQ(read("family/models/b.pdb"), built);
    EXPECT_EQ(fs::last_write_time(family() / "models/a.pdb"), time);
    ASSERT_TRUE(runAll());
    EXPECT_EQ(callCount(), "4");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FamilyRun, OneThatFailsOrIsKilledLeavesTheOthersAndSaysWhy)
{
    install("kestram", std::string(kBuild) +
                           "case $3 in\n"
                           "*/a.pdb) say running \"$2\"; kill -s KILL $$ ;;\n"
                           "*/b.pdb) echo first >&2; echo 'the reason' >&2; exit 4 ;;\n"
                           "*) build \"$@\" ;;\n"
                           "esac\n");
    const auto outcome = runAll();
    ASSERT_TRUE(outcome);
    EXPECT_THAT(told, ElementsAre("1/3 a killed", "2/3 b failed", "3/3 c ok"));
    EXPECT_EQ(field("a", "state"), "killed");
    EXPECT_EQ(field("a", "exit_status"), "137");
    EXPECT_EQ(field("a", "last_line"), "ended by signal 9");
    EXPECT_EQ(field("b", "state"), "failed");
    EXPECT_EQ(field("b", "exit_status"), "4");
    EXPECT_EQ(field("b", "last_line"), "the reason");
    EXPECT_EQ(field("c", "state"), "ok");
    // Both are tried again, and the third is not.
    install("kestram", std::string(kBuild) + "build \"$@\"\n");
    ASSERT_TRUE(runAll());
    EXPECT_THAT(told, ElementsAre("1/2 a ok", "2/2 b ok"));
    EXPECT_EQ(field("a", "state"), "ok");
    EXPECT_EQ(field("a", "exit_status"), "NA");
}

TEST_F(FamilyRun, OneThatCannotWriteWhyItFailsIsToldWithItsStatus)
{
    install("kestram", "exit 4\n");
    ASSERT_TRUE(runAll());
    EXPECT_EQ(field("a", "state"), "failed");
    EXPECT_EQ(field("a", "exit_status"), "4");
    EXPECT_EQ(field("a", "last_line"),
              "failed with status 4 and wrote no reason; is the disk full?");
}

TEST_F(FamilyRun, AnAdapterThatIsNotThereFailsEachTarget)
{
    run.kestram = path() / "bin/none";
    const auto outcome = runAll();
    ASSERT_TRUE(outcome);
    EXPECT_THAT(told, ElementsAre("1/3 a failed", "2/3 b failed", "3/3 c failed"));
    EXPECT_THAT(field("a", "last_line"), HasSubstr("none cannot be started: No such file"));
    EXPECT_EQ(field("a", "exit_status"), "127");
}

TEST_F(FamilyRun, SoManyWorkAtATimeAndNotMore)
{
    // Each waits until the other one of its pair has come; a third one would be seen.
    install("kestram",
            std::string(kBuild) +
                "mkdir -p here; touch here/$$\n"
                "ls here | wc -l >> most\n"
                "until [ \"$(ls here | wc -l)\" -ge 2 ] || [ -e met ]; do sleep 0.01; done\n"
                "touch met; build \"$@\"; rm here/$$\n");
    run.jobs = 2;
    ASSERT_TRUE(runAll());
    EXPECT_EQ(told.size(), 3U);
    std::istringstream counts(read("family/most"));
    int most = 0;
    for (int count = 0; counts >> count;)
        most = std::max(most, count);
    EXPECT_EQ(most, 2);
}

TEST_F(FamilyRun, AStopEndsWhatTheAdapterHasStartedAndTheNextRunGoesOn)
{
    // Its child holds the pipe open as long as it lives.
    install("kestram", std::string(kBuild) +
                           "case $3 in\n"
                           "*/b.pdb) say running \"$2\"; echo $PPID > parent\n"
                           "    sleep 1000000 & echo $! > child; kill -s TERM $PPID; wait ;;\n"
                           "*) build \"$@\" ;;\n"
                           "esac\n");
    const auto outcome = runAll();
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome.value().signal, SIGTERM);
    EXPECT_THAT(told, ElementsAre("1/3 a ok", "2/3 b killed"));
    EXPECT_EQ(field("a", "state"), "ok");
    EXPECT_EQ(field("b", "state"), "killed");
    EXPECT_EQ(field("c", "state"), "not run");
    const pid_t child = std::stoi(read("family/child"));
    // The one that waits for nobody's children may still have to look at it.
    EXPECT_TRUE(kill(child, 0) != 0 || !fs::exists("/proc/" + std::to_string(child) + "/exe"));
    install("kestram", std::string(kBuild) + "build \"$@\"\n");
    ASSERT_TRUE(runAll());
    EXPECT_THAT(told, ElementsAre("1/2 b ok", "2/2 c ok"));
}

TEST_F(FamilyRun, ASignalThatTheCallerHasIgnoredStopsNothing)
{
    install("kestram", std::string(kBuild) + "kill -s HUP $PPID; build \"$@\"\n");
    const auto before = std::signal(SIGHUP, SIG_IGN);
    const auto outcome = runAll();
    std::signal(SIGHUP, before);
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome.value().signal, 0);
    EXPECT_EQ(told.size(), 3U);
}

TEST_F(FamilyRun, WhatAKilledRunHasLeftBehindIsEndedFirst)
{
    const pid_t left = fork();
    if (left == 0) {
        if (chdir(family().c_str()) == 0)
            execl("/bin/sh", "sh", "-c", "while :; do sleep 1; done", "kestram", "--job",
                  "runs/b.json", static_cast<char *>(nullptr));
        _exit(1);
    }
    // Until it is what its words say.
    const auto words = [left] {
        std::ifstream file("/proc/" + std::to_string(left) + "/cmdline");
        return std::string{std::istreambuf_iterator<char>(file), {}};
    };
    while (words().find("runs/b.json") == std::string::npos)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    kestram::JobRecord record;
    record.host = hostName();
    record.process = left;
    record.started = double(std::time(nullptr));
    ASSERT_TRUE(kestram::writeJobRecord(family() / "runs/b.json", record));
    const auto outcome = runAll();
    ASSERT_TRUE(outcome);
    EXPECT_EQ(told.size(), 3U);
    int status = 0;
    ASSERT_EQ(waitpid(left, &status, WNOHANG), left);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
}

TEST_F(FamilyRun, AProcessOfThatNumberThatIsNoJobOfTheFolderIsLeftAlone)
{
    const pid_t other = fork();
    if (other == 0) {
        execl("/bin/sleep", "sleep", "1000000", static_cast<char *>(nullptr));
        _exit(1);
    }
    kestram::JobRecord record;
    record.host = hostName();
    record.process = other;
    record.started = double(std::time(nullptr));
    ASSERT_TRUE(kestram::writeJobRecord(family() / "runs/b.json", record));
    ASSERT_TRUE(runAll());
    int status = 0;
    EXPECT_EQ(waitpid(other, &status, WNOHANG), 0);
    kill(other, SIGKILL);
    waitpid(other, &status, 0);
}

TEST_F(FamilyRun, ALogThatIsALinkLeavesWhereItLeadsToAlone)
{
    write("precious", "text");
    fs::create_symlink(path() / "precious", family() / "runs/b.log");
    ASSERT_TRUE(runAll());
    EXPECT_EQ(read("precious"), "text");
}

TEST_F(FamilyRun, AFolderThatIsNotWholeIsNamedBeforeAnythingIsBuilt)
{
    fs::remove(family() / "inputs/b.ali");
    const auto outcome = runAll();
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error().message(),
                AllOf(HasSubstr("inputs/b.ali: is not there"), HasSubstr("prepare the folder")));
    EXPECT_FALSE(isThere("family/calls"));
}

TEST_F(FamilyRun, ATargetWithoutACommonColumnIsInTheTableAndNotBuilt)
{
    Family family = smallFamily();
    family.rows[0].text = "ACDEF-----";
    family.rows[4].text = "------AAAA";
    const auto plan = planModels(family, {"t1", {}});
    ASSERT_TRUE(prepareFamily(family, plan.value(), templatesOf(family), this->family(), settings));
    const auto outcome = runAll();
    ASSERT_TRUE(outcome);
    EXPECT_EQ(told.size(), 2U);
    EXPECT_EQ(outcome.value().rows.size(), 3U);
    EXPECT_EQ(field("c", "state"), "failed");
}

TEST_F(FamilyRun, AFullDiskIsToldAndTheOldTableStays)
{
    write("family/results.tsv", "as it was\n");
    {
        const FullDisk disk(0);
        const auto outcome = runAll();
        ASSERT_TRUE(outcome) << outcome.error().message();
        EXPECT_THAT(outcome.value().remarks,
                    ElementsAre(HasSubstr("results.tsv: cannot be written: File too large")));
    }
    EXPECT_EQ(read("family/results.tsv"), "as it was\n");
    EXPECT_FALSE(isThere("family/models/a.pdb"));
    // What was begun is done again.
    const auto outcome = runAll();
    ASSERT_TRUE(outcome);
    EXPECT_EQ(field("a", "state"), "ok");
    EXPECT_THAT(outcome.value().remarks, IsEmpty());
}

// ---- Snakemake

// Builds what is asked for, as the workflow does it.
constexpr const char *kWorkflow =
    "while IFS=$'\\t' read -r file template; do\n"
    "    [ -e models/$file.pdb ] || ../bin/kestram --job runs/$file.json models/$file.pdb "
    "inputs/$file.ali templates/$template.pdb 2> runs/$file.log\n"
    "done < list.tsv\n";

TEST_F(FamilyRun, SnakemakeIsAskedWhenItIsThereAndTheRecordsTellWhatHasEnded)
{
    installSnakemake(std::string("echo said; ") + kWorkflow);
    run.jobs = 3;
    const auto outcome = runAll();
    ASSERT_TRUE(outcome);
    EXPECT_THAT(told, ElementsAre("1/3 a ok", "2/3 b ok", "3/3 c ok"));
    EXPECT_EQ(read("family/snakemake.log"), "said\n");
    EXPECT_THAT(read("family/asked"),
                AllOf(StartsWith("--directory . --snakefile Snakefile --keep-going "
                                 "--rerun-incomplete"),
                      HasSubstr("--cores 3")));
    EXPECT_EQ(field("a", "state"), "ok");
    ASSERT_TRUE(runAll());
    EXPECT_EQ(read("family/snakemake.log"), "said\n");
}

TEST_F(FamilyRun, WhenSnakemakeFailsTheTableHasWhatIsThere)
{
    installSnakemake("echo trouble; ../bin/kestram --job runs/b.json models/b.pdb inputs/b.ali "
                     "templates/t2.pdb; exit 1\n");
    const auto outcome = runAll();
    ASSERT_TRUE(outcome);
    EXPECT_THAT(told, ElementsAre("1/3 b ok"));
    EXPECT_THAT(outcome.value().remarks,
                ElementsAre("snakemake ended with status 1; snakemake.log has what it said"));
    EXPECT_EQ(field("a", "state"), "not run");
    EXPECT_EQ(field("b", "state"), "ok");
}

TEST_F(FamilyRun, OneThatSnakemakeLosesIsToldAsKilledWhileTheOthersAreBuilt)
{
    install("lost", std::string(kBuild) + "say running runs/a.json; kill -s KILL $$\n");
    // The next one waits until the first one is told of.
    installSnakemake("../bin/lost\nuntil [ -e told ]; do sleep 0.01; done\n" +
                     std::string(kWorkflow));
    const FamilyFolder folder = FamilyFolder::open(family()).value();
    const auto lock = FolderLock::take(family());
    const auto outcome = runFamily(folder, {folder.targets()[0], folder.targets()[1]}, run,
                                   lock.value(), [this](const TargetEnd &end) {
                                       told.push_back(end.row.target.name + ' ' +
                                                      std::string(textOf(end.row.state)));
                                       write("family/told", "");
                                   });
    ASSERT_TRUE(outcome) << outcome.error().message();
    EXPECT_THAT(told, ElementsAre("a killed", "b ok"));
    // It was tried again.
    EXPECT_EQ(outcome.value().rows[0].state, TargetState::Ok);
    EXPECT_EQ(field("a", "state"), "ok");
}

TEST_F(FamilyRun, AProfileOfTheFolderIsNamedByItsPathAndAnotherOneAsItIs)
{
    installSnakemake(kWorkflow);
    write("family/slurm/config.yaml", "jobs: 4\n");
    run.profile = "slurm";
    run.jobs.reset();
    ASSERT_TRUE(runAll());
    EXPECT_THAT(read("family/asked"),
                AllOf(HasSubstr("--profile " + (family() / "slurm").string() + "\n"),
                      testing::Not(HasSubstr("--cores"))));
    fs::remove(family() / "models/a.pdb");
    run.profile = "lab-cluster";
    run.jobs = 7;
    ASSERT_TRUE(runAll());
    EXPECT_THAT(read("family/asked"), HasSubstr("--profile lab-cluster --jobs 7\n"));
}

TEST_F(FamilyRun, WithoutSnakemakeThePoolDoesTheSameButHasNoProfiles)
{
    install("cat", "exec /bin/cat \"$@\"\n");
    install("mv", "exec /bin/mv \"$@\"\n");
    install("hostname", "exec /bin/hostname \"$@\"\n");
    install("date", "exec /bin/date \"$@\"\n");
    withoutSnakemake();
    ASSERT_TRUE(runAll());
    EXPECT_EQ(told.size(), 3U);
    run.profile = "slurm";
    const auto outcome = runAll();
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error().message(), HasSubstr("install the package snakemake"));
}

TEST_F(FamilyRun, TheLockOfAKilledRunOfOursIsTakenBackAndThatOfAnotherIsTold)
{
    installSnakemake("case $* in *--unlock) rm .snakemake/locks/*; exit ;; esac\n" +
                     std::string(kWorkflow));
    write("family/.snakemake/locks/0.input.lock", "");
    const auto refused = runAll();
    ASSERT_FALSE(refused);
    EXPECT_THAT(refused.error().message(), HasSubstr("is locked by a call of Snakemake"));
    EXPECT_FALSE(isThere("family/asked"));
    run.usesPool = true;
    EXPECT_FALSE(runAll());
    run.usesPool = false;
    // As a run leaves it that was killed together with Snakemake.
    write("family/.snakemake-run", "");
    ASSERT_TRUE(runAll());
    EXPECT_THAT(told, ElementsAre("1/3 a ok", "2/3 b ok", "3/3 c ok"));
    EXPECT_THAT(read("family/asked"), HasSubstr("--unlock\n"));
    EXPECT_FALSE(isThere("family/.snakemake-run"));
}

TEST_F(FamilyRun, AStopInterruptsSnakemakeAndWaitsForIt)
{
    installSnakemake("trap 'echo interrupted; exit 1' INT\nkill -s TERM $PPID\n"
                     "while :; do sleep 0.05; done\n");
    const auto outcome = runAll();
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome.value().signal, SIGTERM);
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(read("family/snakemake.log"), HasSubstr("interrupted\n"));
    EXPECT_EQ(field("a", "state"), "not run");
}

TEST_F(FamilyRun, SnakemakeIsInterruptedAlsoByARunThatIgnoresThatItself)
{
    installSnakemake("trap 'echo interrupted; exit 1' INT\nkill -s TERM $PPID\n"
                     "while :; do sleep 0.05; done\n");
    const auto before = std::signal(SIGINT, SIG_IGN);
    const auto outcome = runAll();
    std::signal(SIGINT, before);
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome.value().signal, SIGTERM);
    EXPECT_THAT(read("family/snakemake.log"), HasSubstr("interrupted\n"));
}

TEST_F(FamilyRun, TwoRunsInOneFolderAreRefused)
{
    const auto lock = FolderLock::take(family());
    const auto outcome = runAll();
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error().message(), HasSubstr("another run is at work"));
}

} // namespace FamilyRunTest
