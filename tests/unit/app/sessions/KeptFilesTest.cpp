// SPDX-License-Identifier: GPL-3.0-or-later
// The files of objects when a session is there again.
#include "KeptFiles.h"
#include "AppFixture.h"
#include "FileCheck.h"
#include "LogBook.h"
#include "ObjectIndex.h"
#include "StoredObject.h"

#include <QFile>

#include <random>

namespace KeptFilesTest {

using namespace TAMBO;
using app::KeptFiles;
using app::SavedPlaces;

class KeptFilesTest : public RecordedFixture
{
protected:
    KeptFilesTest() { services::LogBook::instance().clear(); }

    SavedPlaces::Place placeIn(const QString &file, FileFormat format) const
    {
        return {file, {format}, true, false, lookAt(file.toStdString())};
    }
    Alignment &opened(const QString &file)
    {
        Alignment &family = alignment("family", {"AC-D", "ACCD"});
        m_Sources.set(family, file.toStdString());
        m_Places.noteOpened(family, placeIn(file, FileFormat::Fasta));
        return family;
    }
    // As if the session had been loaded by a program that begins.
    Result<void> loadAgain(const std::string &content)
    {
        m_Files.clear();
        ObjectIndex objects;
        objects.addTree(space());
        return m_Files.load(content, objects);
    }
    static QStringList log()
    {
        QStringList texts;
        for (const services::LogEntry &entry : services::LogBook::instance().entries())
            texts << entry.text;
        return texts;
    }

    app::ObjectSources m_Sources;
    SavedPlaces m_Places{m_History, m_Sources};
    KeptFiles m_Files{m_Sources, m_Places};
};

TEST_F(KeptFilesTest, NothingIsKeptWithoutFiles)
{
    alignment("family", {"AC-D"});
    EXPECT_EQ(m_Files.store(), "");
}

TEST_F(KeptFilesTest, AnObjectIsStillThatOfItsFile)
{
    const QString file = write("family.fasta", ">a\nAC-D\n");
    Alignment &family = opened(file);
    m_Places.accept(family, file, {"descriptions are lost"});
    ASSERT_TRUE(loadAgain(m_Files.store()));
    EXPECT_EQ(m_Sources.fileOf(family), file.toStdString());
    const auto place = m_Places.placeOf(family);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->file, file);
    EXPECT_EQ(place->options.format, FileFormat::Fasta);
    ASSERT_TRUE(place->state);
    EXPECT_TRUE(place->state->looksLike(*lookAt(file.toStdString())));
    EXPECT_EQ(place->state->hash, lookAt(file.toStdString())->hash);
    EXPECT_TRUE(m_Places.isAccepted(family, file, {"descriptions are lost"}));
    EXPECT_EQ(log(), QStringList());
}

TEST_F(KeptFilesTest, HowAFileIsWrittenIsKept)
{
    const QString file = write("family.phy", "1 4\na         AC-D\n");
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    SavedPlaces::Place place = placeIn(file, FileFormat::Phylip);
    place.options.hasLongNames = true;
    place.options.isSequential = true;
    place.options.lineLength = 73;
    place.isWhole = false;
    place.holdsMore = true;
    m_Places.noteOpened(family, place);
    ASSERT_TRUE(loadAgain(m_Files.store()));
    const auto kept = m_Places.lastPlaceOf(family);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->options, place.options);
    EXPECT_FALSE(kept->isWhole);
    EXPECT_TRUE(kept->holdsMore);
}

TEST_F(KeptFilesTest, AFileThatIsNotWhatItWasIsToldOnce)
{
    const QString changed = write("changed.fasta", ">a\nAC-D\n");
    const QString gone = write("gone.fasta", ">a\nAC-D\n");
    Alignment &family = opened(changed);
    opened(gone);
    m_Sources.set(alignment("second", {"AC-D"}), gone.toStdString());
    const std::string content = m_Files.store();
    write("changed.fasta", ">a\nAC-D and more\n");
    QFile::remove(gone);
    ASSERT_TRUE(loadAgain(content));
    EXPECT_EQ(log(), QStringList({changed + " has changed since it was opened or saved here.",
                                  gone + " is missing."}));
    // Save asks then.
    EXPECT_EQ(m_Places.lastPlaceOf(family)->file, changed);
}

TEST_F(KeptFilesTest, AFileOfUnknownStateIsNotReplacedWithoutAQuestion)
{
    const QString file = write("family.fasta", ">a\nAC-D\n");
    Alignment &family = alignment("family", {"AC-D", "ACCD"});
    m_Places.noteOpened(family, {file, {FileFormat::Fasta}, true});
    EXPECT_TRUE(m_Places.placeOf(family));
    ASSERT_TRUE(loadAgain(m_Files.store()));
    EXPECT_FALSE(m_Places.placeOf(family));
    EXPECT_EQ(m_Places.lastPlaceOf(family)->file, file);
}

TEST_F(KeptFilesTest, AFileThatIsNoAlignmentsIsReplacedOnlyWhenItIsTheVerySame)
{
    const QString file = write("profile", ">a\nAC-D\n");
    Alignment &family = opened(file);
    ASSERT_TRUE(loadAgain(m_Files.store()));
    EXPECT_TRUE(m_Places.placeOf(family));
    // Of which only the content is known.
    SavedPlaces::Place place = *m_Places.placeOf(family);
    place.state->inode += 1;
    m_Places.noteOpened(family, place);
    ASSERT_TRUE(loadAgain(m_Files.store()));
    EXPECT_FALSE(m_Places.placeOf(family));
}

TEST_F(KeptFilesTest, ObjectsThatAreNotThereAreLeftOut)
{
    const QString file = write("family.fasta", ">a\nAC-D\n");
    opened(file);
    const std::string content = m_Files.store();
    m_Files.clear();
    const ObjectIndex none;
    ASSERT_TRUE(m_Files.load(content, none));
    EXPECT_EQ(m_Files.store(), "");
}

TEST_F(KeptFilesTest, DamagedChangesNothing)
{
    Alignment &family = opened(write("family.fasta", ">a\nAC-D\n"));
    m_Places.accept(family, path("family.fasta"), {"descriptions are lost"});
    const std::string content = m_Files.store();
    ObjectIndex objects;
    objects.addTree(space());
    std::minstd_rand random(1);
    int refused = 0;
    for (std::size_t length = 0; length < content.size(); ++length) {
        m_Files.clear();
        refused += m_Files.load(content.substr(0, length), objects) ? 0 : 1;
        EXPECT_EQ(m_Files.store(), "") << length;
    }
    EXPECT_EQ(refused, int(content.size()));
    for (int round = 0; round < 300; ++round) {
        std::string bad = content;
        bad[random() % bad.size()] = char(random());
        m_Files.clear();
        if (!m_Files.load(bad, objects)) {
            EXPECT_EQ(m_Files.store(), "");
        }
    }
}

} // namespace KeptFilesTest
