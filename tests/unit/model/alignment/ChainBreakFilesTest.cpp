// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of several chains from a file into an alignment and back.
#include "AlignmentWriters.h"
#include "FileReader.h"
#include "ObjectFactory.h"
#include "RecordMaker.h"
#include "unit/model/AlignmentFixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

using TAMBO::Alignment;

namespace ChainBreakFilesTest {

namespace fs = std::filesystem;

class ChainBreakFilesTest : public AlignmentFixture
{
protected:
    ~ChainBreakFilesTest() override { fs::remove_all(m_Folder); }

    Alignment &opened(const std::string &text)
    {
        std::ofstream(m_Folder / "x.ali") << text;
        auto contents = TAMBO::readFile(m_Folder / "x.ali");
        EXPECT_TRUE(contents);
        Alignment &made =
            *TAMBO::ObjectFactory::adopt(std::move(contents.value().alignments.front()));
        history.clear();
        return made;
    }

    static std::string textOf(const Alignment &alignment)
    {
        const TAMBO::AlignmentRecord record = TAMBO::makeRecord(alignment);
        TAMBO::formats::StringSink sink;
        TAMBO::formats::writePir(TAMBO::formats::FittedAlignment(record, {}), sink);
        return sink.text();
    }

    static std::string row(const std::string &cells) { return ">P1;x\ntitle\n" + cells + "*\n\n"; }

private:
    static fs::path makeFolder()
    {
        std::string name = fs::temp_directory_path() / "breaks-XXXXXX";
        return mkdtemp(name.data());
    }

    fs::path m_Folder = makeFolder();
};

TEST_F(ChainBreakFilesTest, BreaksComeBackInTheirColumns)
{
    for (const char *cells : {"AC---/GHI", "-----/GHI", "ACDEF/---", "---/---/-", "A//-C/D-/"}) {
        const std::string text = row("ACDEF/GHI") + row(cells);
        EXPECT_EQ(textOf(opened(text)), text);
    }
}

TEST_F(ChainBreakFilesTest, RandomRowsOfSeveralChainsAreWrittenAsTheyWereRead)
{
    std::mt19937 random(3);
    for (int round = 0; round < 100; ++round) {
        const std::size_t width = 1 + random() % 74;
        const unsigned gaps = random() % 10;
        std::string text;
        for (std::size_t i = 0; i < 1 + random() % 4; ++i) {
            std::string cells;
            while (cells.size() < width)
                cells += random() % 10 < gaps ? "--/"[random() % 3] : "ACDEFGHIKL"[random() % 10];
            text += row(cells);
        }
        Alignment &alignment = opened(text);
        ASSERT_EQ(textOf(alignment), text);
        // There and back by another road.
        for (int i = 0; i < 20; ++i) {
            alignment.moveGap(random() % alignment.height(), random() % alignment.width(),
                              random() % alignment.width(), random() % 2 == 0);
            if (alignment.width() > 3 && random() % 4 == 0)
                alignment.remove(random() % alignment.width());
        }
        while (history.undoCount() > 0)
            history.undo();
        ASSERT_EQ(textOf(alignment), text);
    }
}

TEST_F(ChainBreakFilesTest, MovedGapsTakeTheirBreaksIntoTheFile)
{
    Alignment &alignment = opened(row("AC---/GHI"));
    alignment.moveGap(0, 5, 3, true);
    EXPECT_EQ(textOf(alignment), row("AC-/--GHI"));
    alignment.insertGapCol(1, 2);
    EXPECT_EQ(textOf(alignment), row("A--C-/--GHI"));
}

} // namespace ChainBreakFilesTest
