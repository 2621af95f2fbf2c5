// SPDX-License-Identifier: GPL-3.0-or-later
// How far a write has come, and calling it off.
#include "FileWriter.h"

#include "RecordBuilder.h"
#include "TestFiles.h"
#include "support/Outcome.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <map>
#include <set>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using testing::ElementsAre;

namespace TAMBO::formats {
namespace WriteStepsTest {

namespace fs = std::filesystem;

// Long enough for several pieces of text.
AlignmentRecord longRecord()
{
    AlignmentRecord record;
    for (int row = 0; row < 300; ++row)
        record.rows.push_back(rowOf("row" + std::to_string(row), std::string(1000, 'A') + "-C"));
    return record;
}

std::size_t filesIn(const fs::path &folder)
{
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

// Scratch files stand beside the file, so that what is left of them is seen.
Result<void> writeStepped(const fs::path &path, const AlignmentRecord &record,
                          const std::function<bool(WriteStage, double)> &step)
{
    WriteAids aids;
    aids.scratch = [&path] { return path.parent_path(); };
    aids.step = step;
    return writeFile(path, RecordSource(record), optionsOf("fasta"), &aids);
}

TEST(WriteSteps, StagesFollowEachOtherAndEachGoesForward)
{
    const TemporaryFile file("x", "old");
    std::vector<WriteStage> stages;
    double last = 0;
    EXPECT_EQ(complaintOf(writeStepped(file.path(), longRecord(),
                                       [&](WriteStage stage, double done) {
                                           if (stages.empty() || stages.back() != stage)
                                               stages.push_back(stage);
                                           else
                                               EXPECT_GE(done, last);
                                           EXPECT_GE(done, 0);
                                           EXPECT_LE(done, 1);
                                           last = done;
                                           return true;
                                       })),
              "");
    EXPECT_THAT(stages, ElementsAre(WriteStage::Text, WriteStage::Sync, WriteStage::Reading,
                                    WriteStage::Comparing, WriteStage::Placing));
    EXPECT_EQ(stages.size(), std::size_t(kWriteStages));
}

// Of each stage that takes long, so many bytes of the file at most.
TEST(WriteSteps, WorkBetweenTwoOfThemIsBounded)
{
    constexpr double kMostBytes = 1 << 20U;
    AlignmentRecord record;
    for (int row = 0; row < 20'000; ++row)
        record.rows.push_back(rowOf("row" + std::to_string(row), std::string(300, 'A') + "-C"));
    for (const char *format : {"fasta", "a3m", "pir", "clustal", "stockholm", "msf", "phylip"}) {
        SCOPED_TRACE(format);
        const TemporaryFile file("x", "old");
        std::map<WriteStage, double> most;
        std::map<WriteStage, double> last;
        WriteAids aids;
        aids.step = [&](WriteStage stage, double done) {
            most[stage] = std::max(most[stage], done - last[stage]);
            last[stage] = done;
            return true;
        };
        ASSERT_EQ(
            complaintOf(writeFile(file.path(), RecordSource(record), optionsOf(format), &aids)),
            "");
        const double size = 20'000 * 302;
        for (const WriteStage stage :
             {WriteStage::Text, WriteStage::Reading, WriteStage::Comparing}) {
            EXPECT_LE(most[stage] * size, kMostBytes) << int(stage);
            EXPECT_GT(last[stage], 0.5) << int(stage);
        }
    }
}

// Whichever of the steps it is.
TEST(WriteSteps, CalledOffAtAnyStepTheOldFileStaysAndNothingIsLeftBeside)
{
    const TemporaryFile file("x", "old");
    const AlignmentRecord record = longRecord();
    int steps = 0;
    std::set<WriteStage> ended;
    for (int most = 0;; ++most) {
        steps = 0;
        const Result<void> written =
            writeStepped(file.path(), record, [&](WriteStage stage, double) {
                if (steps++ < most)
                    return true;
                ended.insert(stage);
                return false;
            });
        if (written)
            break;
        EXPECT_EQ(written.error().kind, FailureKind::Cancelled);
        EXPECT_EQ(steps, most + 1) << "asked again after it was called off";
        EXPECT_EQ(bytesOf(file.path()), "old");
        EXPECT_EQ(filesIn(file.path().parent_path()), 1U);
        if (!written && written.error().kind != FailureKind::Cancelled)
            break;
    }
    EXPECT_EQ(ended.size(), std::size_t(kWriteStages));
    EXPECT_EQ(alignmentOf("x", bytesOf(file.path()), "fasta").rows.size(), 300U);
}

TEST(WriteSteps, AFileThatIsWrittenInPlaceCanBeCalledOffUntilItIsTouched)
{
    const TemporaryFile file("x", "old");
    fs::create_hard_link(file.path(), file.path().parent_path() / "link");
    int placing = 0;
    const Result<void> written =
        writeStepped(file.path(), longRecord(), [&](WriteStage stage, double) {
            // The second is asked while the old content is being kept.
            return stage != WriteStage::Placing || ++placing < 2;
        });
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, FailureKind::Cancelled);
    EXPECT_EQ(placing, 2);
    EXPECT_EQ(bytesOf(file.path()), "old");
    EXPECT_EQ(filesIn(file.path().parent_path()), 2U);
}

TEST(WriteSteps, APipeThatNobodyReadsCanBeCalledOff)
{
    const TemporaryFile file("x", "");
    const fs::path pipe = file.path().parent_path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    int placing = 0;
    const Result<void> written = writeStepped(pipe, longRecord(), [&](WriteStage stage, double) {
        return stage != WriteStage::Placing || ++placing < 5;
    });
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, FailureKind::Cancelled);
    EXPECT_EQ(filesIn(file.path().parent_path()), 2U);
}

// More than a pipe takes at a time.
TEST(WriteSteps, APipeGetsAllOfIt)
{
    const TemporaryFile file("x", "");
    const fs::path pipe = file.path().parent_path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = bytesOf(pipe); });
    EXPECT_EQ(
        complaintOf(writeStepped(pipe, longRecord(), [](WriteStage, double) { return true; })), "");
    reader.join();
    EXPECT_EQ(alignmentOf("x", read, "fasta").rows.size(), 300U);
}

} // namespace WriteStepsTest
} // namespace TAMBO::formats
