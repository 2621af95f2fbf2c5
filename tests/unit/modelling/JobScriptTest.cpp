// SPDX-License-Identifier: GPL-3.0-or-later
// The script for the engine's interpreter, with modules in place of the engine's.
#include "JobRecord.h"

#include "ModellingFolder.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace JobScriptTest {

namespace fs = std::filesystem;
using testing::HasSubstr;

class JobScript : public ModellingFolder
{
protected:
    JobScript()
    {
        write("seq.ali", pir("ACDEFGH", "ACDEFGH"));
        write("str.pdb", pdb("ACDEFGH"));
        write("built.pdb", pdb("ACDEFGH") + "END\n");
        for (const char *folder : {"python/promod3/core", "python/ost", "libexec/promod3"})
            fs::create_directories(path() / folder);
        write("python/promod3/__init__.py", "__version__ = '1.2'\n");
        write("python/promod3/core/__init__.py", "");
        write("python/promod3/core/helper.py", "import sys\n"
                                               "def MsgErrorAndExit(message, status):\n"
                                               "    print(message, file=sys.stderr)\n"
                                               "    sys.exit(status)\n");
        write("python/ost/__init__.py", "VERSION = '3.4'\n");
        installEngine("PROMOD3_ROOT='" + path().string() + "' PYTHONPATH='" +
                      (path() / "python").string() + "' python3 -B \"$@\"; exit $?");
    }
    // What the engine's command does, in Python.
    void installCommand(const std::string &text) const
    {
        write("libexec/promod3/pm-build-model", text);
    }
    [[nodiscard]] kestram::JobRecord record() const
    {
        return kestram::readJobRecord(path() / "r.json").value();
    }
    [[nodiscard]] Finished job() const { return kestram("--job r.json m.pdb seq.ali str.pdb"); }
};

TEST_F(JobScript, RunsTheEnginesCommandAsItIsCalled)
{
    installCommand("import shutil, sys\n"
                   "print(__name__, *sys.argv[1:], sys.argv[0].endswith('/pm-build-model'))\n"
                   "shutil.copy('../built.pdb', 'model.pdb')\n");
    const Finished run = job();
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(run.errors,
                HasSubstr("__main__ -f alignment.fasta -p template.pdb -o model.pdb True\n"));
    EXPECT_EQ(read("m.pdb"), read("built.pdb"));
}

TEST_F(JobScript, AnEngineThatCannotScoreHasBuiltAModel)
{
    installCommand("import shutil\nshutil.copy('../built.pdb', 'model.pdb')\n");
    const Finished run = job();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.errors, HasSubstr("kestram: the model has no score: "));
    EXPECT_EQ(record().state, kestram::JobState::Ok);
    EXPECT_EQ(record().engine, "ProMod3 1.2, OpenStructure 3.4");
    EXPECT_EQ(record().backboneScore, std::nullopt);
    EXPECT_TRUE(record().residueScores.empty());
}

TEST_F(JobScript, WhatTheEngineComplainsOfIsTold)
{
    installCommand("from promod3.core import helper\n"
                   "helper.MsgErrorAndExit('no loop\\nfits', 3)\n");
    const Finished run = job();
    EXPECT_EQ(run.status, 4);
    EXPECT_THAT(record().message, HasSubstr("promod failed with status 3: no loop fits"));
    EXPECT_EQ(record().engine, "ProMod3 1.2, OpenStructure 3.4");
}

TEST_F(JobScript, AnErrorThatTheEngineDoesNotCatchIsTold)
{
    installCommand("raise ValueError('no such atom')\n");
    EXPECT_EQ(job().status, 4);
    EXPECT_THAT(record().message, HasSubstr("status 1: ValueError: no such atom"));
}

// Adapter and watcher killed at once have nobody who would end what they have started.
TEST_F(JobScript, EndsWithTheLastOneThatWatchedOverIt)
{
    const fs::path alive = path() / "alive";
    ASSERT_EQ(mkfifo(alive.c_str(), 0600), 0);
    const int pipe = open(alive.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    fcntl(pipe, F_SETFL, 0);
    installCommand("import os, signal\n"
                   "alive = open('../alive', 'w')\n"
                   "print('up', file=alive, flush=True)\n"
                   "def parent(process):\n"
                   "    return int(open(f'/proc/{process}/stat').read().split()[3])\n"
                   "watcher = parent(os.getppid())\n"
                   "adapter = parent(watcher)\n"
                   "os.kill(watcher, signal.SIGSTOP)\n"
                   "os.kill(adapter, signal.SIGKILL)\n"
                   "os.kill(watcher, signal.SIGKILL)\n"
                   "while True:\n"
                   "    signal.pause()\n");
    EXPECT_EQ(job().status, 137);
    std::string said;
    char letter = 0;
    while (::read(pipe, &letter, 1) > 0)
        said += letter;
    close(pipe);
    EXPECT_EQ(said, "up\n");
    EXPECT_EQ(record().state, kestram::JobState::Running) << "nobody was left to change it";
    EXPECT_TRUE(fs::exists(path() / ".m.work"));

    installCommand("import shutil\nshutil.copy('../built.pdb', 'model.pdb')\n");
    EXPECT_EQ(job().status, 0);
    EXPECT_EQ(record().state, kestram::JobState::Ok);
    EXPECT_FALSE(fs::exists(path() / ".m.work"));
    EXPECT_FALSE(fs::exists(path() / ".m.lock"));
}

} // namespace JobScriptTest
