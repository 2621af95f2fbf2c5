// SPDX-License-Identifier: GPL-3.0-or-later
// What stands in names does not break the JSON; the files of a session.
#include "InfoCommand.h"

#include "AppFixture.h"
#include "FileCheck.h"
#include "FileWriter.h"
#include "KeptFiles.h"
#include "SessionFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace InfoCommandTest {

class InfoText
{
protected:
    QJsonObject describe(const std::string &file)
    {
        std::ostringstream out;
        std::ostringstream err;
        m_Status = TAMBO::app::runInfo({file}, out, err);
        m_Text = out.str();
        EXPECT_EQ(m_Text.find('\n'), m_Text.size() - 1);
        const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(m_Text));
        EXPECT_TRUE(document.isObject()) << m_Text;
        return document.object();
    }

    int m_Status = -1;
    std::string m_Text;
};

class InfoCommand : public testing::Test, protected InfoText
{
};

TEST_F(InfoCommand, QuotesAndLettersOfAnyLanguageStay)
{
    const QTemporaryDir folder;
    const std::string file = folder.filePath("x.fasta").toStdString();
    std::ofstream(file) << ">a\"b\\c Åtta α 😀\nACD\n";
    const QJsonObject object = describe(file);
    EXPECT_EQ(m_Status, 0);
    const QJsonValue alignment = object["alignments"][0];
    EXPECT_TRUE(alignment["sequences"][0]["name"].toString().startsWith("a\"b\\c"));
    EXPECT_EQ(object["file"].toString().toStdString(), file);
}

TEST_F(InfoCommand, BytesThatAreNoTextAreReplaced)
{
    const QJsonObject object = describe("none\xff.ali");
    EXPECT_EQ(m_Status, 1);
    EXPECT_EQ(object["file"].toString(), QString("none") + QChar(0xfffd) + ".ali");
    EXPECT_FALSE(object["error"].toString().isEmpty());
}

// ---- Files of sessions

class InfoOfFiles : public RecordedFixture, protected InfoText
{
protected:
    TAMBO::Alignment &opened(const QString &file, bool isKnown = true)
    {
        TAMBO::Alignment &family = alignment("family", {"AC-D", "ACCD"});
        m_Sources.set(family, file.toStdString());
        TAMBO::app::SavedPlaces::Place place{file, {TAMBO::FileFormat::Fasta}};
        if (isKnown)
            place.state = TAMBO::lookAt(file.toStdString());
        m_Places.noteOpened(family, place);
        return family;
    }
    // The session as a file; nothing of it is left in the program.
    std::string save(const std::string &kept)
    {
        std::string file = path("work.tambo").toStdString();
        auto content = TAMBO::sessions::takeSession(space(), m_History, {{"files", kept}}, {});
        EXPECT_TRUE(content);
        TAMBO::WriteAids aids;
        EXPECT_TRUE(TAMBO::sessions::writeSession(std::move(content).value(), file, aids));
        m_History.clear();
        space().reset();
        return file;
    }
    std::string save() { return save(m_Files.store()); }

    TAMBO::app::ObjectSources m_Sources;
    TAMBO::app::SavedPlaces m_Places{m_History, m_Sources};
    TAMBO::app::KeptFiles m_Files{m_Sources, m_Places};
};

TEST_F(InfoOfFiles, TellsWhetherEachIsWhatItWas)
{
    const QString same = write("same.fasta", ">a\nAC-D\n");
    const QString changed = write("changed.fasta", ">a\nAC-D\n");
    const QString gone = write("gone.fasta", ">a\nAC-D\n");
    const QString unknown = write("unknown.fasta", ">a\nAC-D\n");
    opened(same);
    opened(changed);
    opened(gone);
    opened(unknown, false);
    m_Sources.set(structure("1abc", "A", "AG"), same.toStdString());
    const std::string session = save();
    changeBehind("changed.fasta", ">a\nAC-D and more\n");
    ASSERT_TRUE(QFile::remove(gone));
    const auto entry = [](const QString &file, const QJsonValue &state) {
        return QJsonObject{{"file", file}, {"state", state}};
    };
    EXPECT_EQ(describe(session)["files"].toArray(),
              (QJsonArray{entry(same, "same"), entry(changed, "changed"), entry(gone, "missing"),
                          entry(unknown, QJsonValue())}));
    EXPECT_EQ(m_Status, 0);
}

// Two objects of a file, one of which was saved to it later.
TEST_F(InfoOfFiles, OneIsChangedWhenItIsForAnyObject)
{
    const QString file = write("family.fasta", ">a\nAC-D\n");
    opened(file);
    changeBehind("family.fasta", ">a\nACCD\n");
    opened(file);
    const QJsonArray files = describe(save())["files"].toArray();
    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(files[0].toObject()["state"], "changed");
}

TEST_F(InfoOfFiles, WhatIsDamagedOfThemIsNotGuessed)
{
    opened(write("family.fasta", ">a\nAC-D\n"));
    const QJsonObject object = describe(save("nonsense"));
    EXPECT_EQ(m_Status, 0);
    EXPECT_TRUE(object["files"].isNull());
    EXPECT_EQ(object["objects"].toArray().size(), 3);
}

} // namespace InfoCommandTest
