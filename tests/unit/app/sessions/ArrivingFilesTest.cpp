// SPDX-License-Identifier: GPL-3.0-or-later
#include "ArrivingFiles.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace ArrivingFilesTest {

using TAMBO::app::ArrivingFiles;

class FilesThatArrive : public ::testing::Test
{
protected:
    FilesThatArrive()
    {
        m_Files.setRecords({[this] { return m_Records; },
                            [this](std::uint64_t count) { return m_Kept >= count; }});
    }
    [[nodiscard]] QStringList kept() const { return ArrivingFiles::filesIn(m_Files.store()); }

    std::uint64_t m_Records = 7;
    std::uint64_t m_Kept = 7;
    ArrivingFiles m_Files;
};

TEST_F(FilesThatArrive, AreNamedUntilTheyAreOpen)
{
    m_Files.begin({"/a", "/b"});
    EXPECT_EQ(kept(), (QStringList{"/a", "/b"}));
    m_Files.end({"/a"});
    EXPECT_EQ(kept(), QStringList("/b"));
}

TEST_F(FilesThatArrive, AreNamedNoMoreInTheMomentInWhichTheirRecordIsKept)
{
    m_Files.begin({"/a"});
    m_Files.comeWithNextRecord({"/a"});
    EXPECT_EQ(kept(), QStringList("/a"));
    m_Records = m_Kept = 8;
    EXPECT_EQ(kept(), QStringList());
    // Nobody has told yet that it is open.
    m_Files.end({"/a"});
    EXPECT_EQ(kept(), QStringList());
}

TEST_F(FilesThatArrive, DoNotWaitForWhatIsDoneBehindThem)
{
    m_Files.begin({"/a"});
    m_Files.comeWithNextRecord({"/a"});
    m_Records = 8;
    m_Files.end({"/a"});
    m_Records = 12;
    EXPECT_EQ(kept(), QStringList("/a"));
    m_Kept = 8;
    EXPECT_EQ(kept(), QStringList());
}

TEST_F(FilesThatArrive, OfWhichNothingCameWaitForNothing)
{
    m_Files.begin({"/a"});
    m_Files.comeWithNextRecord({"/a"});
    m_Files.end({"/a"});
    EXPECT_EQ(kept(), QStringList());
}

TEST_F(FilesThatArrive, MayBeOpenedTwice)
{
    m_Files.begin({"/a"});
    m_Files.begin({"/a"});
    m_Files.comeWithNextRecord({"/a"});
    m_Records = m_Kept = 8;
    m_Files.end({"/a"});
    EXPECT_EQ(kept(), QStringList("/a"));
}

TEST_F(FilesThatArrive, ThatAreOpenAreInTheStateOfAStoreThatBeginsAnew)
{
    m_Files.begin({"/a", "/b"});
    m_Files.end({"/a"});
    m_Records = m_Kept = 0;
    m_Files.recordsBegin();
    EXPECT_EQ(kept(), QStringList("/b"));
}

} // namespace ArrivingFilesTest
