// SPDX-License-Identifier: GPL-3.0-or-later
// What reading and writing a large alignment occupy at most, in alignments of its size; and what a
// loaded structure takes for each of its atoms.
#include "Alignment.h"
#include "ChangeScope.h"
#include "FileReader.h"
#include "FileWriter.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "RecordMaker.h"
#include "Structure.h"

#include "TestFiles.h"
#include "bench/HeapCount.h"
#include "bench/MadeAlignment.h"

#include <gtest/gtest.h>

#include <ostream>

namespace TAMBO::formats {
namespace MemoryTest {

constexpr unsigned long kRows = 10000;
constexpr unsigned long kColumns = 2000;

struct Limit
{
    std::string format;
    // The file's reading; what was read is part of it.
    double reading;
    // Saving a loaded alignment, which is part of it.
    double writing;
};

void PrintTo(const Limit &limit, std::ostream *out)
{
    *out << limit.format;
}

class Memory : public testing::TestWithParam<Limit>
{
};

TEST_P(Memory, OfReadingAndWritingIsBounded)
{
    const TemporaryFile file("x", "");
    const std::size_t empty = heapBytes();
    const Alignment *alignment = nullptr;
    {
        const ChangeScope scope;
        alignment = ObjectFactory::adopt(madeAlignment(kRows, kColumns));
    }
    const auto size = double(heapBytes() - empty);
    restartHeapPeak();
    {
        const Result<void> written = writeFile(file.path(), makeSnapshot(*alignment),
                                               writeOptionsNamed(GetParam().format).value());
        ASSERT_TRUE(written) << written.error().message();
    }
    EXPECT_LE(double(heapPeak() - empty) / size, GetParam().writing);

    const std::size_t before = heapBytes();
    restartHeapPeak();
    const Result<FileContents> contents = readFile(file.path());
    ASSERT_TRUE(contents.has_value()) << contents.error().message();
    EXPECT_LE(double(heapPeak() - before) / double(heapBytes() - before), GetParam().reading);
}

INSTANTIATE_TEST_SUITE_P(Formats, Memory,
                         // Records are read in parts, a few of which are there at once.
                         testing::Values(Limit{"pir", 1.3, 3.6}, Limit{"fasta", 1.3, 3.6},
                                         Limit{"a3m", 1.3, 3.6}, Limit{"stockholm", 1.6, 3.7},
                                         // Blocks give each row piece by piece.
                                         Limit{"clustal", 2.5, 4.3}, Limit{"msf", 2.5, 4.3},
                                         Limit{"nexus", 2.5, 4.3},
                                         // All of the text is read before it is known where
                                         // names end.
                                         Limit{"phylip", 4.5, 6.6}),
                         [](const auto &info) { return info.param.format; });

// All of the structure: chains, groups, residues, and the records' remains.
TEST(StructureMemory, OfALoadedAtomIsBounded)
{
    const std::filesystem::path file = dataFile("structures/four_chains_haemoglobin_2hhb.pdb.gz");
    // What is kept once for all structures comes with the first.
    for (const bool isMeasured : {false, true}) {
        const std::size_t before = heapBytes();
        std::vector<Compound *> atoms;
        {
            Result<FileContents> contents = readFile(file);
            ASSERT_TRUE(contents.has_value()) << contents.error().message();
            const ChangeScope scope;
            GetAtoms(ObjectFactory::adopt(std::move(contents->structures.at(0))), atoms, true);
        }
        const std::size_t count = atoms.size();
        atoms = {};
        const double size = double(heapBytes() - before) / double(count);
        RecordProperty("bytes", std::to_string(size));
        if (isMeasured) {
            EXPECT_LE(size, 95.0) << count;
        }
    }
    ObjectSpace::get().reset();
}

} // namespace MemoryTest
} // namespace TAMBO::formats
