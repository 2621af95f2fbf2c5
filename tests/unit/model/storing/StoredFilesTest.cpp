// SPDX-License-Identifier: GPL-3.0-or-later
// Real files: what was read, kept as bytes and made again is written as the same files.
#include "StoringFixture.h"

#include "FileReader.h"
#include "FileWriter.h"
#include "RecordMaker.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

namespace StoredFilesTest {

namespace fs = std::filesystem;

class StoredFiles : public StoringFixture, public testing::WithParamInterface<const char *>
{
protected:
    StoredFiles() : m_Folder(fs::temp_directory_path() / ("stored_" + std::to_string(getpid())))
    {
        fs::create_directories(m_Folder);
    }
    ~StoredFiles() override { fs::remove_all(m_Folder); }

    // False for a file of no known kind.
    static bool open(const fs::path &file)
    {
        auto contents = TAMBO::readPackedFile(file);
        if (!contents)
            return false;
        for (TAMBO::StructureRecord &structure : contents->structures)
            TAMBO::ObjectFactory::adopt(std::move(structure));
        for (TAMBO::AlignmentRecord &alignment : contents->alignments)
            TAMBO::ObjectFactory::adopt(std::move(alignment));
        return true;
    }
    static std::string textOf(const fs::path &file)
    {
        std::ifstream in(file, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }
    // Of every object every file that there can be of it.
    std::string writtenFiles() const
    {
        std::string texts;
        const fs::path file = m_Folder / "file";
        const auto add = [&](const auto &written, const std::string &what) {
            texts += what + '\n' +
                     (written ? textOf(file) : "not written: " + written.error().cause) + '\n';
        };
        for (TAMBO::Compound *const object : space()) {
            if (const auto *const structure = dynamic_cast<const TAMBO::Structure *>(object)) {
                for (const auto format : {TAMBO::FileFormat::Pdb, TAMBO::FileFormat::Mmcif})
                    add(TAMBO::writeFile(file, TAMBO::makeRecord(*structure), {format}),
                        object->Name());
            } else if (const auto *const rows = dynamic_cast<const TAMBO::Alignment *>(object)) {
                for (const auto format : {TAMBO::FileFormat::Pir, TAMBO::FileFormat::Stockholm})
                    add(TAMBO::writeFile(file, TAMBO::makeSnapshot(*rows), {format}),
                        object->Name());
            }
        }
        return texts;
    }

    fs::path m_Folder;
};

TEST_P(StoredFiles, AreWrittenAsTheyWereRead)
{
    std::vector<fs::path> files;
    for (const auto &entry : fs::directory_iterator(fs::path(TEST_DATA_DIR) / GetParam()))
        files.push_back(entry.path());
    // Structures come before the rows that name them.
    std::ranges::sort(files, {}, [](const fs::path &file) {
        const std::string name = file.string();
        const bool isOfRows = name.ends_with("ali") || name.ends_with("aln") ||
                              name.ends_with("pir") || name.ends_with("fasta");
        return std::make_pair(isOfRows, name);
    });
    std::size_t opened = 0;
    for (const fs::path &file : files)
        opened += open(file) ? 1 : 0;
    ASSERT_GT(opened, 3U);
    const std::string written = writtenFiles();
    EXPECT_GT(written.size(), 1000U);
    expectItComesBack();
    EXPECT_EQ(writtenFiles(), written);
}

INSTANTIATE_TEST_SUITE_P(StoredFiles, StoredFiles,
                         testing::Values("structures", "alignments/pir", "alignments/stockholm",
                                         "alignments/clustal", "alignments/msf", "families/globins",
                                         "families/g6pd", "families/serine_proteases",
                                         "families/cytochrome_c"),
                         [](const auto &info) {
                             std::string name = info.param;
                             std::ranges::replace_if(
                                 name, [](char c) { return c == '/' || c == '_'; }, 'X');
                             return name;
                         });

} // namespace StoredFilesTest
