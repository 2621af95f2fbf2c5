// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo info` and `tambo convert` of sessions, as scripts call them.
#include "ProgramFixture.h"

#include "ChangeScope.h"
#include "DataMaker.h"
#include "FileReader.h"
#include "FileWriter.h"
#include "History.h"
#include "ObjectFactory.h"
#include "ObjectOperations.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "SessionFile.h"
#include "StoreTables.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <sqlite3.h>

#include <filesystem>

namespace SessionProgramTest {

class SessionProgram : public ProgramFixture
{
protected:
    SessionProgram() { TAMBO::setEditRecorder(&m_History); }
    ~SessionProgram() override
    {
        m_History.clear();
        TAMBO::ObjectSpace::get().reset();
        TAMBO::setEditRecorder(nullptr);
    }

    QString path(const QString &name) const { return m_Folder.filePath(name); }
    // In a step of undo.
    void open(const QString &file)
    {
        const TAMBO::ChangeScope scope(Publisher::Add);
        auto contents = TAMBO::readFile(file.toStdString());
        ASSERT_TRUE(contents);
        for (TAMBO::StructureRecord &structure : contents->structures)
            TAMBO::ObjectFactory::adopt(std::move(structure));
        for (TAMBO::AlignmentRecord &alignment : contents->alignments)
            TAMBO::ObjectFactory::adopt(std::move(alignment));
    }
    void openAlignment(const QString &name, const QByteArray &rows = ">a\nAC-D\n>b\nACCD\n")
    {
        open(write(name + ".fasta", rows));
    }
    void openStructure() { open(data("structures/ubiquitin_1ubi.pdb")); }
    QString save(const QString &name = "work.tambo")
    {
        auto content = TAMBO::sessions::takeSession(TAMBO::ObjectSpace::get(), m_History, {},
                                                    {"3.2.1", 1'700'000'000'000});
        EXPECT_TRUE(content);
        TAMBO::WriteAids aids;
        EXPECT_TRUE(TAMBO::sessions::writeSession(std::move(content).value(),
                                                  path(name).toStdString(), aids));
        return path(name);
    }
    static void change(const QString &file, const char *statement)
    {
        sqlite3 *connection = nullptr;
        ASSERT_EQ(sqlite3_open(file.toStdString().c_str(), &connection), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(connection, statement, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(connection);
    }
    QStringList filesIn(const QString &folder) const
    {
        return QDir(path(folder)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    // Refused, and nothing of that name is there.
    void expectRefusal(const QStringList &arguments, const QByteArray &sentence)
    {
        const Finished call = run(arguments);
        EXPECT_EQ(call.status, 1) << arguments.join(u' ').toStdString();
        EXPECT_EQ(call.errors, "tambo: " + sentence + '\n');
    }

    TAMBO::History m_History;
};

const QByteArray kPir = ">P1;a\nsequence:a::::::::\nAC-D*\n\n>P1;b\nsequence:b::::::::\nACCD*\n\n";

TEST_F(SessionProgram, InfoTellsObjectsStepsAndWhatMadeTheFile)
{
    openAlignment("x");
    openStructure();
    ASSERT_TRUE(m_History.undo());
    openStructure();
    TAMBO::renameObject(**TAMBO::ObjectSpace::get().begin(), "first");
    ASSERT_TRUE(m_History.undo());
    const QString file = save();
    const Finished info = run({"info", file});
    EXPECT_EQ(info.status, 0) << info.errors.toStdString();
    EXPECT_EQ(info.output,
              QStringLiteral("{\"file\":\"%1\",\"format\":\"session\",\"program\":\"3.2.1\","
                             "\"saved\":\"2023-11-14T22:13:20Z\",\"objects\":["
                             "{\"kind\":\"sequence\",\"name\":\"a\",\"letters\":3},"
                             "{\"kind\":\"sequence\",\"name\":\"b\",\"letters\":4},"
                             "{\"kind\":\"alignment\",\"name\":\"x\",\"rows\":2,\"columns\":4},"
                             "{\"kind\":\"structure\",\"name\":\"ubiquitin_1ubi\",\"chains\":1,"
                             "\"residues\":76}],\"undo_steps\":2,\"redo_steps\":1}\n")
                  .arg(file)
                  .toUtf8());
    EXPECT_EQ(info.errors, "");
}

TEST_F(SessionProgram, InfoGoesOnBehindABadSession)
{
    openAlignment("x");
    const QString good = save();
    const Finished info = run({"info", write("bad.tambo", "no session"), good});
    EXPECT_EQ(info.status, 1);
    ASSERT_EQ(info.lines().size(), 2);
    EXPECT_EQ(QJsonDocument::fromJson(info.lines()[0]).object().keys(),
              QStringList({"error", "file"}));
    EXPECT_EQ(QJsonDocument::fromJson(info.lines()[1]).object()["objects"].toArray().size(), 3);
}

TEST_F(SessionProgram, WhatIsNoSessionOrDamagedOrNewerIsSaidInOneLine)
{
    openAlignment("x");
    const QString newer = save("newer.tambo");
    change(newer,
           ("PRAGMA user_version = " + std::to_string(TAMBO::sessions::kStoreVersion + 1)).c_str());
    const QString cut = save("cut.tambo");
    std::filesystem::resize_file(cut.toStdString(), 40'000);
    const QString emptied = save("emptied.tambo");
    change(emptied, "DELETE FROM state");
    const QString other = write("other.tambo", "no session");
    const QString missing = path("missing.tambo");
    for (const auto &[file, cause] : std::initializer_list<std::pair<QString, QByteArray>>{
             {newer, "the session was saved by a newer version of the program"},
             {emptied, "the session is damaged: it has no state"},
             {cut, "the file of the session is damaged"},
             {other, "this is no file of a session"},
             {missing, "there is no such file"}}) {
        for (const QStringList &call :
             {QStringList{"info", file}, QStringList{"convert", file, path("out.ali")},
              QStringList{"convert", file, path("out")}}) {
            const Finished finished = run(call);
            EXPECT_EQ(finished.status, 1) << call.join(u' ').toStdString();
            EXPECT_EQ(finished.errors, "tambo: " + file.toUtf8() + ": " + cause + '\n');
        }
    }
    EXPECT_FALSE(QFile::exists(path("out.ali")));
    EXPECT_FALSE(QFile::exists(path("out")));
}

TEST_F(SessionProgram, ASessionIsKnownByItsContentToo)
{
    openAlignment("x");
    ASSERT_TRUE(QFile::rename(save(), path("work")));
    EXPECT_EQ(run({"convert", path("work"), path("x.ali")}).status, 0);
    EXPECT_EQ(read(path("x.ali")), kPir);
}

TEST_F(SessionProgram, TheOnlyAlignmentBecomesAFile)
{
    openAlignment("x");
    openStructure();
    const QString file = save();
    const Finished convert = run({"convert", file, path("x.ali")});
    EXPECT_EQ(convert.status, 0) << convert.errors.toStdString();
    EXPECT_EQ(convert.output, "");
    EXPECT_EQ(convert.errors, "");
    EXPECT_EQ(read(path("x.ali")), kPir);
    EXPECT_EQ(run({"convert", file, "/dev/stdout", "--to", "a2m"}).output, ">a\nAC-D\n>b\nACCD\n");
    const Finished structure = run({"convert", file, path("1ubi.cif")});
    EXPECT_EQ(structure.status, 0);
    EXPECT_TRUE(structure.errors.startsWith("1ubi.cif: There are no waters, "))
        << structure.errors.toStdString();
    EXPECT_TRUE(read(path("1ubi.cif")).contains("_atom_site."));
}

TEST_F(SessionProgram, OneOfSeveralIsPickedByName)
{
    openAlignment("x");
    openAlignment("y", ">c\nAAA\n>d\nCCC\n");
    openAlignment("y", ">e\nAAA\n>f\nDDD\n");
    const QString file = save();
    expectRefusal({"convert", file, path("out.ali")},
                  "work.tambo: holds 3 alignments; say which one with --object NAME, or name a "
                  "folder for all of them");
    expectRefusal({"convert", file, path("out.ali"), "--object", "y"},
                  "work.tambo: holds 2 alignments called y; name a folder for all of them");
    expectRefusal({"convert", file, path("out.ali"), "--object", "z"},
                  "work.tambo: holds no alignment called z, which is what a PIR file is for");
    expectRefusal({"convert", file, path("out.pdb")},
                  "work.tambo: holds no structure, which is what a PDB file is for");
    EXPECT_FALSE(QFile::exists(path("out.ali")));
    EXPECT_EQ(run({"convert", file, path("out.ali"), "--object", "x"}).status, 0);
    EXPECT_EQ(read(path("out.ali")), kPir);
    EXPECT_EQ(run({"convert", file, path("both/"), "--object", "y"}).status, 0);
    EXPECT_EQ(filesIn("both"), QStringList({"y-2.ali", "y.ali"}));
}

TEST_F(SessionProgram, AFolderTakesAllWithNamesOfTheirOwn)
{
    openAlignment("x");
    openAlignment("X", ">c\nAAA\n>d\nCCC\n");
    openStructure();
    {
        const TAMBO::ChangeScope scope(Publisher::Add);
        for (const char *const letters : {"ACD", "ACDEF"})
            TAMBO::ObjectSpace::get().insertObject(
                0, std::make_unique<TAMBO::Peptide>("loose", letters));
        for (TAMBO::Compound *const object : TAMBO::ObjectSpace::get()) {
            if (object->Name() == "ubiquitin_1ubi")
                TAMBO::renameObject(*object, "../a/b");
        }
    }
    const QString file = save();
    const Finished convert = run({"convert", file, path("out")});
    EXPECT_EQ(convert.status, 0) << convert.errors.toStdString();
    EXPECT_EQ(filesIn("out"), QStringList({"X-2.ali", "_._a_b.cif", "sequences.ali", "x.ali"}));
    EXPECT_EQ(read(path("out/x.ali")), kPir);
    EXPECT_EQ(read(path("out/sequences.ali")), ">P1;loose\nsequence:loose::::::::\nACDEF*\n\n"
                                               ">P1;loose\nsequence:loose::::::::\nACD*\n\n");
    // What the format cannot hold is not given up.
    EXPECT_EQ(run({"convert", file, path("msf"), "--to", "msf"}).status, 0);
    EXPECT_EQ(filesIn("msf"), QStringList({"X-2.msf", "_._a_b.cif", "sequences.ali", "x.msf"}));
    EXPECT_EQ(run({"convert", file, path("pdb/"), "--to", "pdb"}).status, 0);
    EXPECT_EQ(filesIn("pdb"), QStringList({"X-2.ali", "_._a_b.pdb", "sequences.ali", "x.ali"}));
}

TEST_F(SessionProgram, AFolderWithSomethingInItIsLeftAlone)
{
    openAlignment("x");
    const QString file = save();
    ASSERT_TRUE(QDir(path("")).mkdir("out"));
    EXPECT_EQ(run({"convert", file, path("out")}).status, 0);
    EXPECT_EQ(filesIn("out"), QStringList{"x.ali"});
    write("out/x.ali", "old");
    write("out/mine", "mine");
    expectRefusal({"convert", file, path("out")},
                  "out: the folder is not empty; with --force files are written into it");
    EXPECT_EQ(read(path("out/x.ali")), "old");
    EXPECT_EQ(run({"convert", file, path("out"), "--force"}).status, 0);
    EXPECT_EQ(read(path("out/x.ali")), kPir);
    EXPECT_EQ(read(path("out/mine")), "mine");
    expectRefusal({"convert", file, path("out/mine/")},
                  "mine: is a file, where a folder is needed");
    expectRefusal({"convert", file, path("none/out")},
                  "out: cannot be made: No such file or directory");
}

TEST_F(SessionProgram, AFolderThatCannotBeFilledIsNotMade)
{
    openAlignment("x");
    openAlignment("z", QByteArray(">a b\nAC\n>a_b\nAC\n"));
    const QString file = save();
    // A folder stands where the second file is to be.
    ASSERT_TRUE(QDir(path("")).mkpath("out/z.ali"));
    const Finished convert = run({"convert", file, path("out"), "--force"});
    EXPECT_EQ(convert.status, 1);
    EXPECT_EQ(convert.errors.count('\n'), 1) << convert.errors.toStdString();
    EXPECT_EQ(filesIn("out"), QStringList());
}

TEST_F(SessionProgram, AnEmptySessionGivesNothing)
{
    const QString file = save();
    EXPECT_EQ(QJsonDocument::fromJson(run({"info", file}).output).object()["objects"].toArray(),
              QJsonArray());
    expectRefusal({"convert", file, path("out")},
                  "work.tambo: holds nothing that a file could be made of");
    EXPECT_FALSE(QFile::exists(path("out")));
}

TEST_F(SessionProgram, ModelsAreOfAnAlignmentWithTheStructuresOfItsRows)
{
    openStructure();
    const QByteArray letters =
        "MQIFVKTLTGKTITLEVEPSDTIENVKAKIQDKEGIPPDQQRLIFAGKQLEDGRTLSDYNIQKESTLHLVLRLRGG";
    open(write("family.ali", ">P1;known\nstructureX:ubiquitin_1ubi:1:A:76:A::::\n" + letters +
                                 "*\n>P1;wanted\nsequence:wanted::::::::\n" + letters + "*\n"));
    openAlignment("other");
    const QString file = save();
    m_Environment.insert("PATH", "/usr/bin:/bin");
    const QStringList call = {"models", file, "--out", path("models"), "--prepare"};
    EXPECT_EQ(run(call).errors, "tambo: " + file.toUtf8() +
                                    ": holds 2 alignments; say which one with --object NAME\n");
    const Finished further = run(call + QStringList{"--object", "family", path("family.ali")});
    EXPECT_EQ(further.status, 1);
    EXPECT_FALSE(QFile::exists(path("models")));
    const Finished prepared = run(call + QStringList{"--object", "family"});
    EXPECT_EQ(prepared.status, 0) << prepared.errors.toStdString();
    EXPECT_EQ(prepared.lines().front(), "wanted on known, 100.0 % identical");
    EXPECT_TRUE(QFile::exists(path("models/inputs/wanted.ali")));
    EXPECT_EQ(read(path("models/templates/known.pdb")).count(" CA "), 76);
}

TEST_F(SessionProgram, OptionsOfSessionsAreForSessions)
{
    const QString file = write("x.fasta", ">a\nACD\n");
    for (const QStringList &option : {QStringList{"--force"}, QStringList{"--object", "x"}}) {
        const Finished call = run(QStringList{"convert", file, path("x.ali")} + option);
        EXPECT_EQ(call.status, 2);
        EXPECT_EQ(call.errors, "tambo: " + option.front().toUtf8() + " is for sessions, which " +
                                   file.toUtf8() + " is not; see tambo --help\n");
    }
    EXPECT_EQ(run({"convert", file, path("x.ali"), "--object"}).status, 2);
    EXPECT_FALSE(QFile::exists(path("x.ali")));
}

} // namespace SessionProgramTest
