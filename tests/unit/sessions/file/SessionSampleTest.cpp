// SPDX-License-Identifier: GPL-3.0-or-later
// A session of each version that there has been, which is opened for ever. The test that makes one
// puts it into the folder that TAMBO_MAKE_SAMPLE names; once kept, none is made anew.
#include "AlignmentAnnotation.h"
#include "FileReader.h"
#include "FileWriter.h"
#include "ObjectIndex.h"
#include "RecordMaker.h"
#include "SessionFile.h"
#include "SessionKinds.h"
#include "SessionReading.h"
#include "StoreReader.h"
#include "StoreTables.h"
#include "StructureDetails.h"
#include "unit/sessions/live/LiveFixture.h"

#include <sqlite3.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>

namespace SessionSampleTest {

namespace fs = std::filesystem;
using namespace TAMBO;
using namespace TAMBO::sessions;

const fs::path kSamples = fs::path(TEST_DATA_DIR) / "sessions";
constexpr unsigned kLastTag = unsigned(EditTag::Annotation);

std::string bytesOf(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// The same on every machine.
std::string hashOf(const std::string &text)
{
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char letter : text)
        hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001b3U;
    return std::to_string(hash);
}

class SessionSample : public LiveFixture
{
protected:
    SessionSample() : LiveFixture(1) { }

    [[nodiscard]] fs::path folder() const { return file().parent_path(); }
    static fs::path sampleOf(std::int64_t version)
    {
        return kSamples / ("version-" + std::to_string(version) + kSessionEnding);
    }
    static void open(const char *name)
    {
        const Guard guard(Publisher::Add, space());
        auto contents = readFile(fs::path(TEST_DATA_DIR) / name);
        ASSERT_TRUE(contents) << complaintOf(contents);
        for (StructureRecord &structure : contents->structures)
            ObjectFactory::adopt(std::move(structure));
        for (AlignmentRecord &alignment : contents->alignments)
            ObjectFactory::adopt(std::move(alignment));
    }
    Result<void> load(const fs::path &source)
    {
        auto session = openSession(source);
        ObjectIndex index;
        return session ? readSession(*session.value(), space(), history, index) : session.error();
    }

    template <typename Change> void step(Change change)
    {
        const std::size_t before = history.position();
        {
            const Guard guard(Publisher::Update, space());
            change();
        }
        ASSERT_EQ(history.position(), before + 1);
    }
    void makeWork();

    // Alignments as PIR, of all else a line that differs when anything does.
    std::string texts() const;
    std::string textsOfStates()
    {
        const std::size_t position = history.position();
        std::string all;
        for (const std::size_t state : {position, std::size_t(0), history.size()}) {
            EXPECT_TRUE(history.goTo(state));
            all += "state " + std::to_string(state) + " of " + std::to_string(history.size()) +
                   '\n' + texts();
        }
        EXPECT_TRUE(history.goTo(position));
        return all;
    }
    // Of the first change in each step.
    static std::set<unsigned> tagsIn(const fs::path &sample);
};

void SessionSample::makeWork()
{
    open("alignments/pir/ferredoxin_two_rows.pir");
    open("alignments/stockholm/simple.sto");
    open("structures/trypsin_altlocs_insertions_1dpo.pdb");
    // Of several models.
    open("structures/dna_and_protein_1lcd.pdb");
    Alignment &pir = *all<Alignment>().front();
    Alignment &annotated = *all<Alignment>().back();
    Structure &trypsin = *all<Structure>().front();
    Peptide &chain = *trypsin.chain(0);
    Peptide &sequence = *all<Peptide>().front();
    ResidueGroup *ligand = nullptr;
    for (std::size_t i = 0; i < chain.objectCount() && ligand == nullptr; ++i)
        ligand = dynamic_cast<ResidueGroup *>(chain.object(i));
    ASSERT_NE(ligand, nullptr);

    step([&] { pir.insertGap(0, 3); });
    step([&] { pir.bubbleRow(0, 1); });
    step([&] { pir.removeRow(1); });
    step([&] { pir.addRows({&sequence, &chain}); });
    step([&] { pir.insertGapCol(5, 2); });
    step([&] { pir.remove({2, 9}); });
    step([&] { annotated.remove({20, 25}); });
    step([&] {
        AlignmentTable &table = pir.table();
        std::vector<OccupancyRow> rows;
        for (std::size_t i = 0; i < table.rowCount(); ++i) {
            auto row =
                OccupancyRow::filled(table.row(i).cells().rank(12) - table.row(i).cells().rank(10));
            row.insertGaps(0, 1);
            rows.push_back(std::move(row));
        }
        replaceColumns(table, {10, 12}, rows, 3);
    });
    step([&] { renameObject(pir, "renamed"); });
    step([&] { trypsin.SetColor(Color(0x123456)); });
    step([&] { PluginValues::Set(&pir, "sample", "key", "value"); });
    step([&] { sequence.residue(1)->SetColor(Color(0x654321)); });
    step([&] { sequence.setNumber(1, SequenceNumber(-7, 'B')); });
    step([&] {
        ResidueTies ties;
        ties.append({0, 4, 1, &chain});
        sequence.retie(std::move(ties));
    });
    step([&] {
        const Superposition motion({{{0, 0, 0}, {1, 2, 3}}, {{1, 0, 0}, {1, 3, 3}}});
        moveStructures({{&trypsin, motion}});
    });
    step([&] { ligand->SetSeqId(SequenceNumber(12, 'A')); });
    step([&] { DataMaker::Destroy(all<Alignment>().back()); });
    step([&] { pir.reorderRows({2, 1, 0}); });
    step([&] { pir.removeColumns({false, true, true, false, true, false, false, true}); });
    step([&] {
        annotate(pir.table(), {{"ID", "a family"}}, {{"kept", std::string(pir.width(), 'k')}},
                 "annotate columns");
    });
    // What is taken back stands the other way round in the file.
    const std::size_t position = history.position();
    step([&] { peptide("later", "ACDEFG"); });
    step([&] { pir.removeRow(0); });
    step([&] { pir.insertGapCol(5, 2); });
    step([&] { pir.remove({2, 5}); });
    step([&] { pir.removeColumns({true, false, true}); });
    step([&] {
        const Superposition motion({{{0, 0, 0}, {3, 2, 1}}, {{1, 0, 0}, {3, 3, 1}}});
        moveStructures({{&trypsin, motion}});
    });
    ASSERT_TRUE(history.goTo(position));
    sequence.SetSelected(true);
    setObjectLocked(trypsin, true);
    pir.range({3, 8});
}

std::string SessionSample::texts() const
{
    std::string all;
    const fs::path written = folder() / "written";
    for (Compound *const object : space()) {
        all += object->TypeName() + ' ' + object->Name() + '\n';
        if (const auto *const alignment = dynamic_cast<const Alignment *>(object)) {
            EXPECT_EQ(complaintOf(writeFile(written, makeSnapshot(*alignment), {FileFormat::Pir})),
                      "");
            all += bytesOf(written);
        }
    }
    return all + "everything " + hashOf(lastingPortrait()) + '\n';
}

std::set<unsigned> SessionSample::tagsIn(const fs::path &sample)
{
    std::set<unsigned> tags;
    auto session = openSession(sample);
    EXPECT_TRUE(session) << complaintOf(session);
    if (!session)
        return tags;
    EXPECT_TRUE(session.value()->forEachPart([&](std::uint32_t kind, std::string_view content) {
        ValueReader steps(kind == std::uint32_t(PartKind::Steps) ? content : std::string_view());
        while (!steps.atEnd()) {
            ValueReader in(steps.text());
            static_cast<void>(in.flag());
            static_cast<void>(in.text());
            static_cast<void>(in.number());
            static_cast<void>(in.number());
            tags.insert(unsigned(in.number()));
        }
        return Result<void>();
    }));
    return tags;
}

// How the one that is kept came to be.
TEST_F(SessionSample, OfThisVersionCanBeMade)
{
    ASSERT_NO_FATAL_FAILURE(makeWork());
    auto content =
        takeSession(space(), history, {{"unknown", "of a plug-in"}}, {"sample", 1'700'000'000'000});
    ASSERT_TRUE(content) << complaintOf(content);
    const char *const wanted = std::getenv("TAMBO_MAKE_SAMPLE");
    const fs::path sample = (wanted == nullptr ? folder() : fs::path(wanted)) /
                            ("version-" + std::to_string(kStoreVersion) + kSessionEnding);
    WriteAids aids;
    ASSERT_EQ(complaintOf(writeSession(std::move(content).value(), sample, aids)), "");
    for (unsigned tag = 1; tag <= kLastTag; ++tag)
        EXPECT_TRUE(tagsIn(sample).contains(tag)) << "no change of kind " << tag;
    if (wanted == nullptr)
        return;
    setObjectLocked(*all<Structure>().front(), false);
    std::ofstream(fs::path(sample).replace_extension(".txt"), std::ios::binary) << textsOfStates();
}

TEST_F(SessionSample, IsThereOfEachVersion)
{
    for (std::int64_t version = 1; version <= kStoreVersion; ++version) {
        const auto session = openSession(sampleOf(version));
        ASSERT_TRUE(session) << complaintOf(session);
        // What stands in the head of the file.
        const std::string head = bytesOf(sampleOf(version)).substr(60, 4);
        EXPECT_EQ(head, std::string({0, 0, 0, char(version)}));
    }
}

TEST_F(SessionSample, OfEachVersionShowsWhatItShowedInAllStates)
{
    for (std::int64_t version = 1; version <= kStoreVersion; ++version) {
        const fs::path sample = sampleOf(version);
        SCOPED_TRACE(sample);
        ASSERT_EQ(complaintOf(load(sample)), "");
        setObjectLocked(*all<Structure>().front(), false);
        const std::string texts = textsOfStates();
        const std::string kept = bytesOf(fs::path(sample).replace_extension(".txt"));
        EXPECT_FALSE(kept.empty());
        EXPECT_EQ(texts, kept);
        endProgram();
    }
}

TEST_F(SessionSample, OfTheFirstVersionHasAllThatASessionCanHave)
{
    const fs::path sample = sampleOf(1);
    for (unsigned tag = 1; tag <= unsigned(EditTag::GroupNumber); ++tag)
        EXPECT_TRUE(tagsIn(sample).contains(tag)) << "no change of kind " << tag;
    auto session = openSession(sample);
    ASSERT_TRUE(session) << complaintOf(session);
    auto origin = originOf(*session.value());
    ASSERT_TRUE(origin);
    EXPECT_EQ(origin->program, "sample");
    EXPECT_EQ(origin->time, 1'700'000'000'000);

    ASSERT_EQ(complaintOf(load(sample)), "");
    EXPECT_EQ(history.size() - history.position(), 4U);
    ASSERT_EQ(all<Structure>().size(), 1U);
    Structure &trypsin = *all<Structure>().front();
    EXPECT_TRUE(trypsin.IsLocked());
    std::set<std::string> inside;
    for (std::size_t i = 0; i < trypsin.chain(0)->objectCount(); ++i)
        inside.insert(trypsin.chain(0)->object(i)->TypeName());
    EXPECT_TRUE(inside.contains("helix") && inside.contains("strand")) << inside.size();
    EXPECT_GE(inside.size(), 3U);
    Alignment &pir = *all<Alignment>().front();
    EXPECT_EQ(pir.Name(), "renamed");
    EXPECT_EQ(pir.range(), Alignment::Range(3, 8));
    EXPECT_EQ(PluginValues::Get(&pir, "sample", "key"), "value");
    Peptide &sequence = *all<Peptide>().front();
    EXPECT_TRUE(sequence.IsSelected());
    EXPECT_EQ(sequence.resolve(0).peptide, trypsin.chain(0));
    setObjectLocked(trypsin, false);
    // The alignment that was removed comes back with what is said of its columns.
    ASSERT_TRUE(history.undo());
    ASSERT_EQ(all<Alignment>().size(), 2U);
    ASSERT_NE(all<Alignment>().back()->table().annotation(), nullptr);
    EXPECT_EQ(all<Alignment>().back()->table().annotation()->lines(1).size(), 1U);
}

TEST_F(SessionSample, OfTheSecondVersionHasWhatStructuresKeepBesideTheTree)
{
    const fs::path sample = sampleOf(2);
    for (unsigned tag = 1; tag <= unsigned(EditTag::Motion); ++tag)
        EXPECT_TRUE(tagsIn(sample).contains(tag)) << "no change of kind " << tag;
    ASSERT_EQ(complaintOf(load(sample)), "");
    ASSERT_EQ(all<Structure>().size(), 2U);
    Structure &trypsin = *all<Structure>().front();
    const Structure &dna = *all<Structure>().back();
    EXPECT_EQ(StructureDetails::waters(&trypsin).size(), 217U);
    EXPECT_EQ(StructureDetails::bonds(&trypsin).size(), 45U);
    EXPECT_EQ(StructureDetails::modelCount(&dna), 3U);
    const StructureTable table = StructureDetails::read(&dna);
    EXPECT_EQ(StructureDetails::modelPositions(&dna, 2).size(), table.atoms.size());
    EXPECT_GT(StructureDetails::read(&trypsin).atoms.front().bFactor, 1);
    // They go along with a step that was taken back before the session was kept.
    setObjectLocked(trypsin, false);
    const Vertex before = StructureDetails::waters(&trypsin).front().position;
    ASSERT_TRUE(history.goTo(history.size()));
    EXPECT_NE(StructureDetails::waters(&trypsin).front().position.coordinates(),
              before.coordinates());
}

TEST_F(SessionSample, OfTheThirdVersionHasAnotherOrderOfRows)
{
    const fs::path sample = sampleOf(3);
    for (unsigned tag = 1; tag <= unsigned(EditTag::RowOrder); ++tag)
        EXPECT_TRUE(tagsIn(sample).contains(tag)) << "no change of kind " << tag;
    ASSERT_EQ(complaintOf(load(sample)), "");
    Alignment &pir = *all<Alignment>().front();
    ASSERT_EQ(pir.height(), 3U);
    const std::string first = pir.GetSequence(0, false);
    const std::string last = pir.GetSequence(2, false);
    ASSERT_NE(first, last);
    setObjectLocked(*all<Structure>().front(), false);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(pir.GetSequence(2, false), first);
    EXPECT_EQ(pir.GetSequence(0, false), last);
}

TEST_F(SessionSample, OfTheFourthVersionHasLostColumnsInSeveralPlaces)
{
    const fs::path sample = sampleOf(4);
    for (unsigned tag = 1; tag <= unsigned(EditTag::RestoreRuns); ++tag)
        EXPECT_TRUE(tagsIn(sample).contains(tag)) << "no change of kind " << tag;
    ASSERT_EQ(complaintOf(load(sample)), "");
    Alignment &pir = *all<Alignment>().front();
    const std::string after = pir.GetSequence(0, false);
    setObjectLocked(*all<Structure>().front(), false);
    ASSERT_TRUE(history.undo());
    const std::string before = pir.GetSequence(0, false);
    std::string wanted;
    for (const std::size_t column : {0U, 3U, 5U, 6U})
        wanted += before[column];
    EXPECT_EQ(after, wanted + before.substr(8));
    // What was taken back before the session was kept.
    ASSERT_TRUE(history.goTo(history.size()));
    ASSERT_TRUE(history.goTo(0));
}

TEST_F(SessionSample, OfTheFifthVersionHasWhatIsSaidOfAnAlignment)
{
    const fs::path sample = sampleOf(5);
    for (unsigned tag = 1; tag <= unsigned(EditTag::Annotation); ++tag)
        EXPECT_TRUE(tagsIn(sample).contains(tag)) << "no change of kind " << tag;
    ASSERT_EQ(complaintOf(load(sample)), "");
    Alignment &pir = *all<Alignment>().front();
    ASSERT_NE(pir.table().annotation(), nullptr);
    EXPECT_EQ(pir.table().annotation()->remarks().front().text, "a family");
    EXPECT_EQ(pir.table().annotation()->tags(), std::vector<std::string>{"kept"});
    setObjectLocked(*all<Structure>().front(), false);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(pir.table().annotation(), nullptr);
    ASSERT_TRUE(history.redo());
    EXPECT_EQ(pir.table().annotation()->tags(), std::vector<std::string>{"kept"});
}

TEST_F(SessionSample, OfAVersionToComeSaysSoAndLoadsNothing)
{
    const fs::path newer = folder() / "newer.tambo";
    fs::copy_file(sampleOf(kStoreVersion), newer);
    fs::permissions(newer, fs::perms::owner_all);
    sqlite3 *connection = nullptr;
    ASSERT_EQ(sqlite3_open(newer.c_str(), &connection), SQLITE_OK);
    const std::string raise = "PRAGMA user_version = " + std::to_string(kStoreVersion + 1);
    EXPECT_EQ(sqlite3_exec(connection, raise.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(connection);
    EXPECT_EQ(complaintOf(load(newer)),
              newer.string() + ": the session was saved by a newer version of the program");
    EXPECT_EQ(space().objectCount(), 0U);
}

} // namespace SessionSampleTest
