// SPDX-License-Identifier: GPL-3.0-or-later
// A session with each of the values that the workbench keeps beside objects and steps, which is
// opened for ever. The test that makes one puts it into the folder that TAMBO_MAKE_SAMPLE names;
// once kept, none is made anew.
#include "AppFixture.h"
#include "ArrivingFiles.h"
#include "FileWriter.h"
#include "KeptFiles.h"
#include "KeptValues.h"
#include "LoadedWork.h"
#include "ObjectIndex.h"
#include "ObjectOperations.h"
#include "OpenWindows.h"
#include "PluginParts.h"
#include "SessionDocument.h"
#include "SessionFile.h"
#include "SessionMarks.h"
#include "SessionPart.h"
#include "SessionReading.h"
#include "SessionSummary.h"
#include "StoreReader.h"
#include "StoreTables.h"
#include "UnsavedCount.h"
#include "Viewer.h"
#include "support/LogLines.h"
#include "support/WaitUntil.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <memory>
#include <set>

namespace ValueSampleTest {

namespace fs = std::filesystem;
using namespace TAMBO;
using namespace TAMBO::app;
using testing::ElementsAre;
using testing::IsSupersetOf;

const fs::path kSamples = fs::path(TEST_DATA_DIR) / "sessions";
constexpr const char *kBehindVersion = "-values.tambo";
const std::string kFirst = "version-1";
const QString kFile = "/nowhere/family.phy";
const QString kLoss = "descriptions are lost";
const QFont kFont("DejaVu Sans Mono", 23, QFont::Bold, true);
constexpr FileState kState{1, 2, 3, 1'700'000'000'000'000'000, 5};

class ColumnsPart final : public SessionPart
{
public:
    ColumnsPart() : SessionPart("columns") { }
    std::string store() const override { return state; }
    void restore(const std::string &given) override
    {
        state = given;
        object = ObjectOf(std::uint32_t(std::stoul(given)));
    }

    std::string state;
    const Compound *object = nullptr;
};

class ValueSample : public RecordedFixture
{
protected:
    ValueSample()
    {
        m_Values.add(m_Files);
        m_Marks = std::make_unique<sessions::SessionMarks>(space(), m_Values);
        m_Values.add(m_Windows);
        m_Parts = std::make_unique<PluginParts>(m_Values);
    }

    Viewer &open(Alignment &shown)
    {
        return *m_Viewers.emplace_back(std::make_unique<Viewer>(&shown));
    }
    // Only the values say what is marked here: the state has been taken before.
    sessions::SessionContent makeContent();
    void keepFiles(const Alignment &first, const Alignment &second);
    void openViewers(Alignment &first, Alignment &second);
    static void mark(Alignment &alignment, Structure &molecule);

    static std::set<std::string> valuesIn(const fs::path &sample)
    {
        std::set<std::string> names;
        const auto session = sessions::openSession(sample);
        EXPECT_TRUE(session);
        EXPECT_TRUE(session && session.value()->forEachValue([&](auto name, auto content) {
            if (!content.empty())
                names.emplace(name);
            return Result<void>();
        }));
        return names;
    }
    void load(const fs::path &sample)
    {
        const auto session = sessions::openSession(sample);
        ASSERT_TRUE(session) << session.error().message();
        ObjectIndex index;
        const Result<void> read =
            sessions::readSession(*session.value(), space(), m_History, index);
        ASSERT_TRUE(read) << read.error().message();
        loadValues(*session.value(), index, m_Values);
    }

    ObjectSources m_Sources;
    SavedPlaces m_Places{m_History, m_Sources};
    sessions::KeptValues m_Values;
    KeptFiles m_Files{m_Sources, m_Places};
    std::unique_ptr<sessions::SessionMarks> m_Marks;
    std::vector<std::unique_ptr<Viewer>> m_Viewers;
    OpenWindows m_Windows{
        {[this](Alignment &alignment) -> QWidget * { return open(alignment).mainWindow(); },
         [](QWidget &, Alignment &) {}, [](const QWidget &) { return true; }}};
    ColumnsPart m_Columns;
    std::unique_ptr<PluginParts> m_Parts;
};

void ValueSample::keepFiles(const Alignment &first, const Alignment &second)
{
    SavedPlaces::Place place{kFile, {FileFormat::Phylip}, true, true, kState};
    place.options.hasLongNames = true;
    place.options.isSequential = true;
    place.options.lineLength = 73;
    m_Places.noteOpened(first, place);
    m_Places.accept(first, kFile, {kLoss});
    m_Sources.set(first, kFile.toStdString());
    // Of which nobody knows the state.
    m_Sources.set(second, "/nowhere/second.pir");
    m_Places.noteOpened(second, {"/nowhere/second.pir", {FileFormat::Pir}, false});
}

void ValueSample::openViewers(Alignment &first, Alignment &second)
{
    Viewer &normal = open(first);
    normal.m_Cell = QSize(3, 5);
    normal.m_Scrolled = QPoint(3 * 700 + 1, 5 * 20);
    normal.m_NameWidth = 200;
    normal.mainWindow()->addToolBar(Qt::LeftToolBarArea, normal.m_Bar);
    normal.m_Bar->hide();
    normal.mainWindow()->setGeometry(70, 80, 333, 222);
    open(second).mainWindow()->showMaximized();
    m_Viewers[1]->m_Font = kFont;
    open(second).mainWindow()->showMinimized();
    open(first).mainWindow()->showFullScreen();
    m_Viewers[1]->activated();
}

void ValueSample::mark(Alignment &alignment, Structure &molecule)
{
    alignment.range({1, 3});
    setObjectLocked(molecule, true);
    Peptide &chain = *molecule.chain(0);
    space().object(0)->SetSelected(true);
    chain.residue(1)->SetSelected(true);
    chain.residue(2)->Child(0)->SetSelected(true);
}

sessions::SessionContent ValueSample::makeContent()
{
    Alignment &first = alignment("first", {"AC-D", "ACCD"});
    Alignment &second = alignment("second", {"WY", "WY"});
    Structure &molecule = structure("1abc", "A", "ACDE");
    auto content = sessions::takeSession(space(), m_History, {}, {"sample", 1'700'000'000'000});
    EXPECT_TRUE(content);
    mark(first, molecule);
    keepFiles(first, second);
    openViewers(first, second);
    m_Columns.state = std::to_string(SessionPart::NumberOf(&second)) + " and more";
    std::vector<sessions::NamedValue> values = m_Values.store();
    values.push_back({"plugin:missing", "of a plug-in"});
    std::ranges::move(values, std::back_inserter(content->values));
    return std::move(content).value();
}

// How the one that is kept came to be.
TEST_F(ValueSample, OfThisVersionCanBeMade)
{
    const char *const wanted = std::getenv("TAMBO_MAKE_SAMPLE");
    const fs::path folder(wanted == nullptr ? m_Folder.path().toStdString() : wanted);
    const fs::path sample =
        folder / ("version-" + std::to_string(sessions::kStoreVersion) + kBehindVersion);
    WriteAids aids;
    ASSERT_TRUE(sessions::writeSession(makeContent(), sample, aids));
    EXPECT_THAT(valuesIn(sample),
                ElementsAre("alignment-marks", "files", "made-at", "made-by", "marks",
                            "plugin:columns", "plugin:missing", "windows"));
}

TEST_F(ValueSample, OfEachVersionBringsAllOfThem)
{
    std::size_t found = 0;
    for (const fs::directory_entry &entry : fs::directory_iterator(kSamples)) {
        if (!entry.path().string().ends_with(kBehindVersion))
            continue;
        ++found;
        EXPECT_THAT(valuesIn(entry.path()),
                    IsSupersetOf({"alignment-marks", "files", "made-at", "made-by", "marks",
                                  "plugin:columns", "plugin:missing", "windows"}))
            << entry.path();
    }
    EXPECT_GE(found, 2U);
}

class KeptValueSample : public ValueSample, public testing::WithParamInterface<std::string>
{
protected:
    void SetUp() override
    {
        m_Log = std::make_unique<LogLines>();
        ASSERT_NO_FATAL_FAILURE(load(kSamples / (GetParam() + kBehindVersion)));
        ASSERT_EQ(topLevelNames().size(), 7U);
        for (Compound *const object : space()) {
            if (auto *const alignment = dynamic_cast<Alignment *>(object))
                (alignment->Name() == "first" ? m_First : m_Second) = alignment;
            else if (auto *const found = dynamic_cast<Structure *>(object))
                m_Molecule = found;
        }
        ASSERT_TRUE(m_First != nullptr && m_Second != nullptr && m_Molecule != nullptr);
    }
    void TearDown() override { setObjectLocked(*m_Molecule, false); }

    [[nodiscard]] static bool keepsFonts() { return GetParam() != kFirst; }

    std::unique_ptr<LogLines> m_Log;
    Alignment *m_First = nullptr;
    Alignment *m_Second = nullptr;
    Structure *m_Molecule = nullptr;
};

TEST_P(KeptValueSample, SaysWhichFilesTheObjectsCameFrom)
{
    EXPECT_EQ(m_Sources.fileOf(*m_First), kFile.toStdString());
    EXPECT_EQ(m_Sources.fileOf(*m_Second), "/nowhere/second.pir");
    const auto place = m_Places.lastPlaceOf(*m_First);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->file, kFile);
    EXPECT_EQ(place->options.format, FileFormat::Phylip);
    EXPECT_TRUE(place->options.hasLongNames);
    EXPECT_TRUE(place->options.isSequential);
    EXPECT_EQ(place->options.lineLength, 73U);
    EXPECT_TRUE(place->isWhole);
    EXPECT_TRUE(place->holdsMore);
    ASSERT_TRUE(place->state);
    EXPECT_TRUE(place->state->looksLike(kState));
    EXPECT_EQ(place->state->hash, kState.hash);
    EXPECT_TRUE(m_Places.isAccepted(*m_First, kFile, {kLoss}));
    EXPECT_FALSE(m_Places.isAccepted(*m_Second, "/nowhere/second.pir", {kLoss}));
    const auto second = m_Places.lastPlaceOf(*m_Second);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->file, "/nowhere/second.pir");
    EXPECT_EQ(second->options.format, FileFormat::Pir);
    EXPECT_FALSE(second->isWhole);
    EXPECT_FALSE(second->state);
    EXPECT_EQ(m_Log->texts(),
              QStringList({"/nowhere/family.phy is missing.", "/nowhere/second.pir is missing."}));
}

TEST_P(KeptValueSample, MarksWhatWasMarked)
{
    EXPECT_EQ(m_First->range(), Alignment::Range(1, 3));
    EXPECT_FALSE(m_Second->range() == Alignment::Range(1, 3));
    EXPECT_TRUE(m_Molecule->IsLocked());
    const Peptide &chain = *m_Molecule->chain(0);
    EXPECT_TRUE(space().object(0)->IsSelected());
    EXPECT_FALSE(space().object(1)->IsSelected());
    EXPECT_FALSE(chain.residue(0)->IsSelected());
    EXPECT_TRUE(chain.residue(1)->IsSelected());
    EXPECT_TRUE(chain.residue(2)->Child(0)->IsSelected());
    EXPECT_FALSE(chain.residue(1)->Child(0)->IsSelected());
}

TEST_P(KeptValueSample, OpensTheWindowsAsTheyWere)
{
    ASSERT_EQ(m_Viewers.size(), 4U);
    const Viewer &normal = *m_Viewers[0];
    EXPECT_EQ(normal.m_Shown, m_First);
    EXPECT_EQ(normal.m_Cell, QSize(3, 5));
    EXPECT_EQ(normal.m_Scrolled, QPoint(3 * 700 + 1, 5 * 20));
    EXPECT_EQ(normal.m_NameWidth, 200);
    EXPECT_EQ(normal.mainWindow()->geometry(), QRect(70, 80, 333, 222));
    EXPECT_EQ(normal.mainWindow()->toolBarArea(normal.m_Bar), Qt::LeftToolBarArea);
    EXPECT_TRUE(normal.m_Bar->isHidden());
    const Viewer &maximised = *m_Viewers[1];
    EXPECT_EQ(maximised.m_Shown, m_Second);
    EXPECT_TRUE(maximised.mainWindow()->isMaximized());
    EXPECT_EQ(maximised.m_Cell, Viewer::kOwnCell);
    EXPECT_EQ(maximised.m_NameWidth, 8 * Viewer::kOwnCell.width());
    EXPECT_EQ(maximised.m_Scrolled, QPoint());
    EXPECT_FALSE(maximised.m_Bar->isHidden());
    EXPECT_EQ(maximised.m_Font, keepsFonts() ? std::optional(kFont) : std::nullopt);
    EXPECT_FALSE(normal.m_Font);
    EXPECT_TRUE(m_Viewers[2]->mainWindow()->isMinimized());
    EXPECT_TRUE(m_Viewers[3]->mainWindow()->isFullScreen());
    waitUntil([&] { return m_Viewers[1]->mainWindow()->isActiveWindow(); });
}

TEST_P(KeptValueSample, GivesPlugInsTheirStateAndKeepsThatOfMissingOnes)
{
    EXPECT_TRUE(m_Columns.state.ends_with(" and more")) << m_Columns.state;
    EXPECT_EQ(m_Columns.object, m_Second);
    EXPECT_EQ(m_Values.takeUnknown("plugin:missing"), "of a plug-in");
}

INSTANTIATE_TEST_SUITE_P(Sessions, KeptValueSample, testing::Values(kFirst, "version-2"),
                         [](const auto &info) {
                             const bool isFirst = info.param == kFirst;
                             return std::string(isFirst ? "OfTheFirstVersion"
                                                        : "OfTheSecondVersion");
                         });

// They stand in files and in what a killed workbench has left.
TEST_F(ValueSample, NamesAreTheSameForEver)
{
    EXPECT_EQ(m_Files.name(), "files");
    EXPECT_EQ(m_Windows.name(), "windows");
    EXPECT_EQ(SessionDocument::kName, "session-file");
    EXPECT_EQ(SessionSummary::kName, "summary");
    EXPECT_EQ(UnsavedCount::kName, "unsaved");
    EXPECT_EQ(ArrivingFiles::kName, "arriving");
}

} // namespace ValueSampleTest
