// SPDX-License-Identifier: GPL-3.0-or-later
// What is seen of a family's folder while others work in it.
#include "ResultsLook.h"

#include "FamilyFiles.h"
#include "FolderLock.h"
#include "ResultsWatch.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <gmock/gmock.h>

#include <chrono>
#include <unistd.h>

namespace ResultsLookTest {

using namespace TAMBO;
using app::ResultsLook;
using families::TargetState;

class ResultsLookTest : public FamilyFiles
{
protected:
    static std::vector<std::string> namesIn(const ResultsLook::News &news)
    {
        std::vector<std::string> names;
        for (const auto &[place, row] : news.rows)
            names.push_back(row.target.name);
        return names;
    }
    using Names = std::vector<std::string>;
};

TEST_F(ResultsLookTest, AtFirstAllTargetsAreTold)
{
    const auto folder = makeFolder({"a", "b", "c"});
    build(folder, "b");
    ResultsLook look(folder.path());
    const ResultsLook::News news = look.look();
    ASSERT_NE(news.folder, nullptr);
    EXPECT_EQ(news.folder->name(), "globins");
    EXPECT_EQ(namesIn(news), (Names{"a", "b", "c"}));
    EXPECT_EQ(news.rows[1].second.state, TargetState::Ok);
    EXPECT_EQ(news.rows[2].second.state, TargetState::NotRun);
    EXPECT_FALSE(news.isAtWork);
    EXPECT_FALSE(news.isOtherList);
}

TEST_F(ResultsLookTest, ThenOnlyWhatHasChanged)
{
    const auto folder = makeFolder({"a", "b", "c"});
    build(folder, "b");
    ResultsLook look(folder.path());
    static_cast<void>(look.look());
    EXPECT_EQ(namesIn(look.look()), Names());
    fail(folder, "c", "no backbone");
    const ResultsLook::News news = look.look();
    EXPECT_EQ(namesIn(news), (Names{"c"}));
    EXPECT_EQ(news.rows.front().first, 2U);
    EXPECT_EQ(news.rows.front().second.record.message, "no backbone");
    EXPECT_EQ(news.folder, nullptr);
    QFile::remove(QString::fromStdString(folder.modelOf(folder.targets()[1]).string()));
    EXPECT_EQ(namesIn(look.look()), (Names{"b"}));
}

TEST_F(ResultsLookTest, TargetsThatAreAddedComeBehindTheOthers)
{
    const auto folder = makeFolder({"a"});
    ResultsLook look(folder.path());
    static_cast<void>(look.look());
    makeFolder({"a", "b"});
    const ResultsLook::News news = look.look();
    EXPECT_FALSE(news.isOtherList);
    EXPECT_EQ(namesIn(news), (Names{"a", "b"}));
}

TEST_F(ResultsLookTest, AnotherListIsToldAsSuch)
{
    const auto folder = makeFolder({"a", "b"});
    ResultsLook look(folder.path());
    static_cast<void>(look.look());
    makeFolder({"z"});
    const ResultsLook::News news = look.look();
    EXPECT_TRUE(news.isOtherList);
    EXPECT_EQ(namesIn(news), (Names{"z"}));
}

TEST_F(ResultsLookTest, AFolderIsAtWorkWhileItIsLocked)
{
    const auto folder = makeFolder({"a"});
    ResultsLook look(folder.path());
    {
        const auto lock = families::FolderLock::take(folder.path());
        ASSERT_TRUE(lock);
        EXPECT_TRUE(look.look().isAtWork);
    }
    EXPECT_FALSE(look.look().isAtWork);
}

TEST_F(ResultsLookTest, AJobThatHasEndedWithoutAWordIsSeenWithoutANewRecord)
{
    const auto folder = makeFolder({"a", "b"});
    kestram::JobRecord job;
    job.host = "another";
    job.process = 1;
    job.started = 1;
    record(folder, "a", job);
    ResultsLook look(folder.path());
    {
        const auto lock = families::FolderLock::take(folder.path());
        EXPECT_EQ(look.look().rows.front().second.state, TargetState::Running);
        EXPECT_EQ(namesIn(look.look()), (Names{"a"})) << "those that run are looked at again";
    }
    EXPECT_EQ(look.look().rows.front().second.state, TargetState::Running)
        << "an array has no lock, and the job was heard of just now";
    const auto silence =
        std::chrono::duration_cast<fs::file_time_type::duration>(std::chrono::minutes(6));
    const fs::path file = folder.recordOf(folder.targets().front());
    fs::last_write_time(file, fs::last_write_time(file) - silence);
    EXPECT_EQ(look.look().rows.front().second.state, TargetState::Killed);
}

TEST_F(ResultsLookTest, AFolderThatHasGoneIsAFailureAndNoEnd)
{
    ResultsLook look(path("none").toStdString());
    EXPECT_TRUE(look.look().failure);
    EXPECT_TRUE(look.look().rows.empty());
}

TEST_F(ResultsLookTest, AWatchTellsOfAModelByItself)
{
    const auto folder = makeFolder({"a", "b"});
    app::ResultsWatch watch(folder.path());
    std::vector<std::pair<std::size_t, TargetState>> told;
    QObject::connect(&watch, &app::ResultsWatch::found, &watch, [&](const auto &news) {
        for (const auto &[place, row] : news->rows)
            told.emplace_back(place, row.state);
    });
    watch.lookNow();
    waitUntil([&] { return told.size() == 2; });
    build(folder, "b");
    waitUntil([&] { return told.size() > 2 && told.back().second == TargetState::Ok; });
    EXPECT_EQ(told.back().first, 1U);
}

} // namespace ResultsLookTest
