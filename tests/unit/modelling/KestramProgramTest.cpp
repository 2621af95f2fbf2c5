// SPDX-License-Identifier: GPL-3.0-or-later
// The adapter as the editor and scripts start it, with engines that do what the test wants.
#include "ModellingFolder.h"

#include <gmock/gmock.h>

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace KestramProgramTest {

class KestramProgram : public ModellingFolder
{
protected:
    KestramProgram()
    {
        write("seq.ali", pir("ACDEFGH", "ACDEFGH"));
        write("str.pdb", pdb("ACDEFGH"));
    }
    // Nothing of the run is left behind.
    [[nodiscard]] bool isTidy() const { return fs::is_empty(path() / "tmp"); }
};

constexpr const char *kModel = "printf 'ATOM  the model\\nEND\\n' > model.pdb";

TEST_F(KestramProgram, TheModelIsPrintedAndAllElseGoesToStandardError)
{
    installEngine(std::string("echo progress; echo trouble >&2; ") + kModel);
    const Finished run = kestram();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "ATOM  the model\nEND\n");
    EXPECT_EQ(run.errors, "progress\ntrouble\n");
    EXPECT_TRUE(isTidy());
}

TEST_F(KestramProgram, ScoresOfResiduesStandBeforeTheModel)
{
    installEngine(
        std::string(
            "printf 'engine x\\nresidue 2 -0.5\\nresidue 3 1\\nscore 1\\n' > report.txt; ") +
        kModel);
    const Finished run = kestram();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "REMARK   6 KESTRAM SCORE OF LETTER 2 -0.5000\n"
                          "REMARK   6 KESTRAM SCORE OF LETTER 3 1.0000\nATOM  the model\nEND\n");
}

TEST_F(KestramProgram, TheEngineIsCalledInAFolderOfItsOwnWithTheFilesThere)
{
    installEngine(std::string("echo \"$@\"; cat alignment.fasta; head -1 template.pdb; "
                              "case $PWD in */tmp/kestram-*) echo own;; esac; ") +
                  kModel);
    const Finished run = kestram();
    EXPECT_THAT(run.errors, HasSubstr("job.py -f alignment.fasta -p template.pdb -o "
                                      "model.pdb\n>target\nACDEFGH\n>template.A\nACDEFGH\nATOM "));
    EXPECT_THAT(run.errors, HasSubstr("own\n"));
}

TEST_F(KestramProgram, TheWordsOfTheLauncherStandBeforeTheEngine)
{
    installEngine(std::string("echo \"MARK is $MARK\"; ") + kModel);
    const Finished run = kestram("seq.ali str.pdb", "KESTRAM_RUN='env  MARK=1'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "MARK is 1\n");
    EXPECT_EQ(kestram("seq.ali str.pdb", "KESTRAM_RUN=' '").errors, "MARK is \n");
}

TEST_F(KestramProgram, AMissingLauncherIsNamed)
{
    installEngine(kModel);
    const Finished run = kestram("seq.ali str.pdb", "KESTRAM_RUN=/none/at/all");
    EXPECT_EQ(run.status, 4);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "kestram: /none/at/all cannot be started\n");
}

TEST_F(KestramProgram, RowAndResiduesThatPartAreAnErrorBeforeTheEngineRuns)
{
    installEngine(kModel);
    write("seq.ali", pir("ACWEFGH", "ACDEFGH"));
    const Finished run = kestram();
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    for (const char *part : {"\"known\"", "column 3", "'W'", "ASP 3"})
        EXPECT_THAT(run.errors, HasSubstr(part));
}

TEST_F(KestramProgram, AMissingFileIsAnError)
{
    installEngine(kModel);
    const Finished run = kestram("none.ali str.pdb");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, HasSubstr("none.ali"));
}

TEST_F(KestramProgram, AWrongCallPrintsTheUsage)
{
    for (const char *arguments : {"", "seq.ali", "seq.ali str.pdb third"}) {
        const Finished run = kestram(arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_THAT(run.errors, HasSubstr("usage: kestram ALIGNMENT STRUCTURE"));
        EXPECT_EQ(run.output, "");
    }
    const Finished help = kestram("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, HasSubstr("KESTRAM_RUN"));
}

TEST_F(KestramProgram, WithoutAnEngineItSaysWhatToInstall)
{
    // The shell is needed to start the program, not by the program.
    const Finished run = kestram("seq.ali str.pdb", "PATH=/none");
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, HasSubstr("install the package promod3"));
}

TEST_F(KestramProgram, AnEngineThatFailsOrDiesGivesNoModel)
{
    installEngine("exit 3");
    Finished run = kestram();
    EXPECT_EQ(run.status, 4);
    EXPECT_THAT(run.errors, HasSubstr("promod failed with status 3"));
    EXPECT_EQ(run.output, "");
    installEngine("kill -s TERM $$");
    run = kestram();
    EXPECT_EQ(run.status, 4);
    EXPECT_THAT(run.errors, HasSubstr("ended by signal 15"));
    installEngine("exit 0");
    run = kestram();
    EXPECT_EQ(run.status, 4);
    EXPECT_THAT(run.errors, HasSubstr("gave no model"));
    EXPECT_TRUE(isTidy());
}

TEST_F(KestramProgram, AModelThatBreaksOffIsNotPrinted)
{
    installEngine("printf 'ATOM  the mo' > model.pdb");
    const Finished run = kestram();
    EXPECT_EQ(run.status, 4);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, HasSubstr("breaks off; is the disk full?"));
    EXPECT_TRUE(isTidy());
}

// The other machine sees what the alignment stands on, and not this one's temporary files.
TEST_F(KestramProgram, WithALauncherTheEnginesFolderStandsBesideTheAlignment)
{
    installEngine(std::string("pwd; ") + kModel);
    fs::create_directory(path() / "job");
    fs::rename(path() / "seq.ali", path() / "job/seq.ali");
    const Finished run = kestram("job/seq.ali str.pdb", "KESTRAM_RUN=env");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(run.errors, HasSubstr((path() / "job/kestram-").string()));
    EXPECT_THAT(kestram("job/seq.ali str.pdb").errors,
                HasSubstr((path() / "tmp/kestram-").string()));
    EXPECT_TRUE(isTidy());
    EXPECT_EQ(std::distance(fs::directory_iterator(path() / "job"), fs::directory_iterator()), 1);
}

TEST_F(KestramProgram, AFolderThatCannotBeMadeIsNamed)
{
    installEngine(kModel);
    const Finished run = kestram("seq.ali str.pdb", "TMPDIR=/proc/self");
    EXPECT_EQ(run.status, 4);
    EXPECT_THAT(run.errors, HasSubstr("kestram: /proc/self: the engine's folder cannot be made: "));
}

TEST_F(KestramProgram, AFileOfTheEngineThatCannotBeWrittenIsNamed)
{
    installEngine(kModel);
    const Finished run = kestram("seq.ali str.pdb", "ulimit -f 1 &&");
    EXPECT_EQ(run.status, 4);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, HasSubstr("job.py: cannot be written: File too large"));
    EXPECT_TRUE(isTidy());
}

TEST_F(KestramProgram, NothingIsLeftBehindWhenNobodyReadsTheModel)
{
    // More than a pipe holds, so that it cannot be written before the reader has gone.
    installEngine("{ echo 'ATOM  the model'; head -c 4000000 /dev/zero; "
                  "printf '\\nEND\\n'; } > model.pdb");
    (void)kestram("seq.ali str.pdb 2> why | true");
    EXPECT_TRUE(isTidy());
    EXPECT_EQ(read("why"), "kestram: the model cannot be written\n");
}

// Ignored in the adapter, the signal would be ignored in the engine and its children, too.
TEST_F(KestramProgram, TheEngineIsStillEndedByABrokenPipe)
{
    installEngine(std::string("sh -c 'kill -s PIPE $$'; echo \"status $?\"; ") + kModel);
    EXPECT_EQ(kestram().errors, "status 141\n");
}

} // namespace KestramProgramTest
