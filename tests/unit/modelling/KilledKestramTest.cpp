// SPDX-License-Identifier: GPL-3.0-or-later
// However the adapter ends, nothing that it has started runs on, and nothing is left behind.
#include "JobRecord.h"

#include "ModellingFolder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace KilledKestramTest {

namespace fs = std::filesystem;
using testing::HasSubstr;

class KilledKestram : public ModellingFolder
{
protected:
    KilledKestram()
    {
        write("seq.ali", pir("ACDEFGH", "ACDEFGH"));
        write("str.pdb", pdb("ACDEFGH"));
        EXPECT_EQ(mkfifo((path() / "alive").c_str(), 0600), 0);
        m_Alive = open((path() / "alive").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        fcntl(m_Alive, F_SETFL, 0);
    }
    ~KilledKestram() override { close(m_Alive); }

    // An engine that starts others, ends the adapter and then lives on. All of them hold a pipe
    // open as long as they live. In the command, KESTRAM is the adapter's process.
    void installEngineThat(const std::string &startsOthers, std::string command)
    {
        const std::string process = "$(cat '" + (path() / "pid").string() + "')";
        for (std::size_t at = 0; (at = command.find("KESTRAM", at)) != std::string::npos;)
            command.replace(at, 7, process);
        installEngine("exec > '" + (path() / "alive").string() + "'; " + startsOthers +
                      " echo up; " + command + "; sleep 1000000 & wait; wait");
    }
    // In a group of its own, with signals that are not ignored whatever ignores them here.
    Finished run(const std::string &arguments, const std::string &environment = {},
                 const std::string &signals = "--default-signal=HUP,INT,TERM") const
    {
        return kestram(arguments, environment + " setsid env " + signals +
                                      " sh -c 'echo $$ > pid; exec \"$0\" \"$@\"'");
    }
    // Until the last one that has the pipe has ended.
    [[nodiscard]] std::string saidUntilAllHaveEnded() const
    {
        std::string said;
        char letter = 0;
        while (::read(m_Alive, &letter, 1) > 0)
            said += letter;
        return said;
    }
    // What is left in the folder that does not belong to the test, once that does not change any
    // more: who puts things in order is no child of ours.
    [[nodiscard]] std::string leftBehind() const
    {
        std::string left;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
        do {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            left.clear();
            for (const auto &entry : fs::recursive_directory_iterator(path())) {
                const std::string name = entry.path().filename().string();
                if (name.starts_with('.') || name.starts_with("kestram-"))
                    left += entry.path().string() + ' ';
            }
        } while (!left.empty() && std::chrono::steady_clock::now() < deadline);
        return left;
    }

private:
    int m_Alive = -1;
};

constexpr const char *kChild = "sleep 1000000 & ";
// One that does not mind being asked, one in a session of its own, and one whose parent has gone.
constexpr const char *kStubborn = "(trap '' TERM HUP INT; sleep 1000000) & "
                                  "setsid sleep 1000000 & "
                                  "sh -c 'sleep 1000000 &'; ";

struct Ending
{
    const char *name;
    const char *others;
    const char *command;
    const char *environment;
    int status;
    const char *says;
};

class EveryEnd : public KilledKestram, public testing::WithParamInterface<Ending>
{
};

TEST_P(EveryEnd, EndsTheEngineWithAllThatComesFromIt)
{
    write("bin/launcher", "#!/bin/sh\n\"$@\"\nexit $?\n");
    fs::permissions(path() / "bin/launcher", fs::perms::owner_all);
    installEngineThat(GetParam().others, GetParam().command);
    const Finished ended = run("seq.ali str.pdb", GetParam().environment);
    EXPECT_EQ(ended.status, GetParam().status) << ended.errors;
    EXPECT_THAT(ended.errors, HasSubstr(GetParam().says));
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(saidUntilAllHaveEnded(), "up\n");
    EXPECT_EQ(leftBehind(), "");
}

constexpr const char *kWithLauncher = "KESTRAM_RUN=launcher";

INSTANTIATE_TEST_SUITE_P(
    Signals, EveryEnd,
    testing::Values(
        Ending{"Term", kChild, "kill -s TERM KESTRAM", "", 4, "was ended by signal 15"},
        Ending{"Interrupt", kChild, "kill -s INT KESTRAM", "", 4, "was ended by signal 2"},
        Ending{"HangUp", kChild, "kill -s HUP KESTRAM", "", 4, "was ended by signal 1"},
        Ending{"TermWithStubbornOnes", kStubborn, "kill -s TERM KESTRAM", "", 4, "by signal 15"},
        Ending{"TermWithALauncher", kChild, "kill -s TERM KESTRAM", kWithLauncher, 4, "15"},
        Ending{"Kill", kChild, "kill -s KILL KESTRAM", "", 137, ""},
        Ending{"KillOfItsGroup", kChild, "kill -s KILL -- -KESTRAM", "", 137, ""},
        Ending{"KillWithStubbornOnes", kStubborn, "kill -s KILL KESTRAM", "", 137, ""},
        Ending{"KillWithALauncher", kChild, "kill -s KILL KESTRAM", kWithLauncher, 137, ""},
        Ending{"KillOfTheWatcher", kChild, "kill -s KILL $PPID", "", 4, "watched over the engine"},
        Ending{"KillOfTheWatcherWithStubbornOnes", kStubborn, "kill -s KILL $PPID", "", 4,
               "watched over the engine"}),
    [](const auto &made) { return std::string(made.param.name); });

TEST_F(KilledKestram, AnEngineThatDoesNotMindBeingAskedIsEnded)
{
    installEngineThat("trap '' TERM; ", "kill -s TERM KESTRAM");
    const Finished ended = run("seq.ali str.pdb");
    EXPECT_EQ(ended.status, 4);
    EXPECT_THAT(ended.errors, HasSubstr("was ended by signal 9"));
    EXPECT_EQ(saidUntilAllHaveEnded(), "up\n");
    EXPECT_EQ(leftBehind(), "");
}

TEST_F(KilledKestram, WhatAnEngineLeavesRunningEndsWithIt)
{
    installEngineThat(kChild, "printf 'ATOM  the model\\nEND\\n' > model.pdb; exit 0");
    const Finished ended = run("seq.ali str.pdb");
    EXPECT_EQ(ended.status, 0) << ended.errors;
    EXPECT_EQ(saidUntilAllHaveEnded(), "up\n");
    EXPECT_EQ(leftBehind(), "");
}

// As nohup does it: a terminal that is closed does not end the job.
TEST_F(KilledKestram, ASignalThatWasIgnoredStaysSo)
{
    installEngineThat("", "kill -s HUP KESTRAM; kill -s HUP $$; "
                          "printf 'ATOM  the model\\nEND\\n' > model.pdb; exit 0");
    const Finished ended = run("seq.ali str.pdb", {}, "--ignore-signal=HUP");
    EXPECT_EQ(ended.status, 0) << ended.errors;
    EXPECT_EQ(ended.output, "ATOM  the model\nEND\n");
}

TEST_F(KilledKestram, WhoReadsTheModelNeedNotWaitForThingsToBePutInOrder)
{
    installEngineThat(kStubborn, "kill -s KILL KESTRAM");
    // The pipe ends with the adapter; what comes after it takes its time.
    const Finished ended = run("seq.ali str.pdb 2> why | { cat; ls tmp > seen; } | cat");
    EXPECT_EQ(ended.output, "");
    EXPECT_THAT(read("seen"), HasSubstr("kestram-"));
    EXPECT_EQ(saidUntilAllHaveEnded(), "up\n");
    EXPECT_EQ(leftBehind(), "");
}

class KilledJob : public KilledKestram
{
protected:
    static constexpr const char *kArguments = "--job runs.json model.pdb seq.ali str.pdb";
    [[nodiscard]] kestram::JobRecord record() const
    {
        const auto record = kestram::readJobRecord(path() / "runs.json");
        EXPECT_TRUE(record) << record.error().message();
        return record ? record.value() : kestram::JobRecord();
    }
};

TEST_F(KilledJob, ThatWasKilledHasARecordThatSaysSo)
{
    installEngineThat(kChild, "kill -s KILL -- -KESTRAM");
    EXPECT_EQ(run(kArguments).status, 137);
    EXPECT_EQ(saidUntilAllHaveEnded(), "up\n");
    // Once nothing is left behind, the record is written.
    EXPECT_EQ(leftBehind(), "");
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    while (record().state == kestram::JobState::Running &&
           std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    const kestram::JobRecord killed = record();
    EXPECT_EQ(killed.state, kestram::JobState::Killed);
    EXPECT_EQ(killed.message, "kestram was ended before the model was there");
    EXPECT_EQ(killed.exitStatus, std::nullopt);
    EXPECT_EQ(killed.target, "wanted");
    EXPECT_EQ(killed.residues, 7U);
    EXPECT_FALSE(fs::exists(path() / "model.pdb"));
}

TEST_F(KilledJob, ThatWasAskedToEndHasARecordThatSaysSo)
{
    installEngineThat(kChild, "kill -s TERM KESTRAM");
    EXPECT_EQ(run(kArguments).status, 4);
    EXPECT_EQ(saidUntilAllHaveEnded(), "up\n");
    EXPECT_EQ(leftBehind(), "");
    EXPECT_EQ(record().state, kestram::JobState::Killed);
    EXPECT_EQ(record().exitStatus, 4);
    EXPECT_THAT(record().message, HasSubstr("promod was ended by signal 15"));
}

TEST_F(KilledJob, OfWhichTheWatcherWasKilledHasFailed)
{
    installEngineThat(kChild, "kill -s KILL $PPID");
    EXPECT_EQ(run(kArguments).status, 4);
    EXPECT_EQ(saidUntilAllHaveEnded(), "up\n");
    EXPECT_EQ(leftBehind(), "");
    EXPECT_EQ(record().state, kestram::JobState::Failed);
    EXPECT_THAT(record().message, HasSubstr("watched over the engine"));
}

// What the first run leaves for a moment does not disturb the second, nor is it disturbed by it.
TEST_F(KilledJob, CanBeRunAgainAtOnce)
{
    installEngineThat(kStubborn, "kill -s KILL KESTRAM");
    EXPECT_EQ(run(kArguments).status, 137);
    write("built.pdb", pdb("ACDEFGH") + "END\n");
    installEngine("cp '" + (path() / "built.pdb").string() + "' model.pdb");
    const Finished again = kestram(kArguments);
    EXPECT_EQ(again.status, 0) << again.errors;
    EXPECT_EQ(record().state, kestram::JobState::Ok);
    EXPECT_EQ(read("model.pdb"), read("built.pdb"));
    EXPECT_EQ(saidUntilAllHaveEnded(), "up\n");
    EXPECT_EQ(leftBehind(), "");
}

} // namespace KilledKestramTest
