// SPDX-License-Identifier: GPL-3.0-or-later
#include "FolderLock.h"
#include "FamilyBench.h"

#include <gmock/gmock.h>

#include <optional>
#include <sys/wait.h>
#include <unistd.h>

namespace FolderLockTest {

using namespace TAMBO;
using namespace TAMBO::families;

using FolderLocking = FamilyBench;

TEST_F(FolderLocking, ASecondRunIsRefusedUntilTheFirstHasEnded)
{
    EXPECT_FALSE(FolderLock::isTaken(path()));
    std::optional<Result<FolderLock>> lock(FolderLock::take(path()));
    ASSERT_TRUE(*lock);
    EXPECT_TRUE(FolderLock::isTaken(path()));
    const auto second = FolderLock::take(path());
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().kind, FailureKind::Refused);
    lock.reset();
    EXPECT_FALSE(FolderLock::isTaken(path()));
    EXPECT_TRUE(FolderLock::take(path()));
}

TEST_F(FolderLocking, ItLastsAsLongAsAProcessThatWasStartedMeanwhile)
{
    std::optional<Result<FolderLock>> lock(FolderLock::take(path()));
    ASSERT_TRUE(*lock);
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    const pid_t child = fork();
    if (child == 0) {
        close(pipe[1]);
        char byte = 0;
        _exit(::read(pipe[0], &byte, 1) == 0 ? 0 : 1);
    }
    close(pipe[0]);
    lock.reset();
    EXPECT_TRUE(FolderLock::isTaken(path()));
    EXPECT_FALSE(FolderLock::take(path()));
    close(pipe[1]);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(FolderLock::take(path()));
}

TEST_F(FolderLocking, AFolderThatCannotBeWrittenIsNamed)
{
    const auto lock = FolderLock::take(path() / "none");
    ASSERT_FALSE(lock);
    EXPECT_THAT(lock.error().message(), testing::HasSubstr("none/.lock: cannot be written"));
}

} // namespace FolderLockTest
