// SPDX-License-Identifier: GPL-3.0-or-later
// The program as scripts call it: without a display, judged by its output and exit status.
#include "ProgramFixture.h"
#include "support/WaitUntil.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace InfoProgramTest {

class InfoProgram : public ProgramFixture
{
};

TEST_F(InfoProgram, AnAlignmentIsDescribedOnOneLine)
{
    const QString file = write("x.ali", ">P1;a\nsequence:a::::::::\nAC-D*\n"
                                        ">P1;b\nsequence:b::::::::\nACCD*\n");
    const Finished info = run({"info", file});
    EXPECT_EQ(info.status, 0);
    EXPECT_EQ(info.output,
              QStringLiteral("{\"file\":\"%1\",\"format\":\"pir\",\"alignments\":[{\"name\":"
                             "\"x\",\"rows\":2,\"columns\":4,\"sequences\":[{\"name\":"
                             "\"a\",\"letters\":3},{\"name\":\"b\",\"letters\":4}]}],"
                             "\"structures\":[]}\n")
                  .arg(file)
                  .toUtf8());
    EXPECT_EQ(info.errors, "");
}

TEST_F(InfoProgram, AStructureIsDescribedByChains)
{
    const Finished info = run({"info", data("families/serine_proteases/1ABI_H_superposed.pdb")});
    ASSERT_EQ(info.status, 0) << info.errors.toStdString();
    const QJsonObject object = QJsonDocument::fromJson(info.output).object();
    EXPECT_EQ(object["format"].toString(), "pdb");
    EXPECT_TRUE(object["alignments"].toArray().isEmpty());
    const QJsonObject structure = object["structures"][0].toObject();
    EXPECT_EQ(structure["name"].toString(), "1ABI_H_superposed");
    EXPECT_EQ(structure["models"].toInt(), 1);
    const QJsonObject chain = structure["chains"][0].toObject();
    EXPECT_EQ(chain["name"].toString(), "H");
    EXPECT_EQ(chain["residues_with_ca"].toInt(), 252);
    EXPECT_GE(chain["residues"].toInt(), 252);
    EXPECT_EQ(chain["first"].toString(), "16");
    EXPECT_EQ(chain["last"].toString(), "247");
}

// Every structure of the collection against what other programs found in it.
TEST_F(InfoProgram, StructuresAgreeWithTheKnownFacts)
{
    QFile facts(data("facts_structures.tsv"));
    ASSERT_TRUE(facts.open(QIODevice::ReadOnly));
    facts.readLine();
    QMap<QString, QList<QList<QByteArray>>> byFile;
    while (!facts.atEnd()) {
        const QList<QByteArray> fields = facts.readLine().split('\t');
        byFile[QString::fromUtf8(fields[0])].append(fields);
    }
    ASSERT_GT(byFile.size(), 20);
    QStringList arguments = {"info"};
    for (const QString &file : byFile.keys())
        arguments << data(file);
    const QList<QByteArray> lines = run(arguments).lines();
    ASSERT_EQ(lines.size(), byFile.size());
    int row = 0;
    for (const auto &[file, chains] : byFile.asKeyValueRange()) {
        const QJsonObject object = QJsonDocument::fromJson(lines[row++]).object();
        if (object.contains("error"))
            continue;
        const QJsonObject structure = object["structures"][0].toObject();
        EXPECT_EQ(structure["models"].toInt(), chains[0][1].toInt()) << file.toStdString();
        for (const QList<QByteArray> &fields : chains) {
            const QJsonArray all = structure["chains"].toArray();
            const auto found = std::find_if(all.begin(), all.end(), [&](const QJsonValue &chain) {
                const QByteArray name = chain["name"].toString().toUtf8();
                return (name.isEmpty() ? QByteArray("(blank)") : name) == fields[2];
            });
            ASSERT_NE(found, all.end()) << file.toStdString() << ' ' << fields[2].toStdString();
            const QJsonObject chain = found->toObject();
            const std::string name = file.toStdString() + ' ' + fields[2].toStdString();
            EXPECT_EQ(chain["residues_with_ca"].toInt(), fields[3].toInt()) << name;
            EXPECT_EQ(chain["first"].toString().toUtf8(), fields[4]) << name;
            EXPECT_EQ(chain["last"].toString().toUtf8(), fields[5]) << name;
        }
    }
}

TEST_F(InfoProgram, UnalignedSequencesStandAtTheTop)
{
    const Finished info = run({"info", write("x.fasta", ">a\nACD\n>b\nACDEF\n")});
    EXPECT_EQ(info.status, 0);
    const QJsonObject object = QJsonDocument::fromJson(info.output).object();
    EXPECT_TRUE(object["alignments"].toArray().isEmpty());
    ASSERT_EQ(object["sequences"].toArray().size(), 2);
    EXPECT_EQ(object["sequences"][1]["name"].toString(), "b");
    EXPECT_EQ(object["sequences"][1]["letters"].toInt(), 5);
}

TEST_F(InfoProgram, ABadFileIsNamedAndTheOthersFollow)
{
    const QString bad = write("bad.ali", ">P1;a\n\nAC#D*\n");
    const QString good = write("good.fasta", ">a\nAC-D\n>b\nACCD\n");
    const Finished info = run({"info", bad, good});
    EXPECT_EQ(info.status, 1);
    const QList<QByteArray> lines = info.lines();
    ASSERT_EQ(lines.size(), 2);
    const QJsonObject first = QJsonDocument::fromJson(lines[0]).object();
    EXPECT_EQ(first.keys(), QStringList({"error", "file"}));
    EXPECT_EQ(first["file"].toString(), bad);
    EXPECT_TRUE(first["error"].toString().startsWith("bad.ali:3: "));
    EXPECT_EQ(QJsonDocument::fromJson(lines[1]).object()["format"].toString(), "fasta");
    EXPECT_EQ(info.errors.count('\n'), 1);
    EXPECT_TRUE(info.errors.startsWith("tambo: bad.ali:3: ")) << info.errors.toStdString();
}

TEST_F(InfoProgram, AMissingFileIsABadInput)
{
    const Finished info = run({"info", m_Folder.filePath("none.ali")});
    EXPECT_EQ(info.status, 1);
    EXPECT_EQ(info.lines().size(), 1);
    EXPECT_EQ(info.errors.count('\n'), 1);
    EXPECT_TRUE(info.errors.contains("none.ali"));
}

TEST_F(InfoProgram, AWrongCallSaysWhyAndWritesNothing)
{
    for (const QStringList &arguments :
         {QStringList{"info"}, QStringList{"--nonsense"}, QStringList{"info", "--nonsense", "x"},
          QStringList{"--picture"}, QStringList{"--picture", "x.png"}}) {
        const Finished call = run(arguments);
        EXPECT_EQ(call.status, 2) << arguments.join(u' ').toStdString();
        EXPECT_EQ(call.output, "");
        EXPECT_EQ(call.errors.count('\n'), 1) << call.errors.toStdString();
        EXPECT_TRUE(call.errors.startsWith("tambo: "));
    }
}

TEST_F(InfoProgram, TheWorkbenchWithoutAScreenSaysSo)
{
    const Finished call = run({});
    EXPECT_EQ(call.status, 2);
    EXPECT_EQ(call.errors.count('\n'), 1) << call.errors.toStdString();
    EXPECT_TRUE(call.errors.contains("screen")) << call.errors.toStdString();
}

TEST_F(InfoProgram, HelpAndVersionAreWrittenToStandardOutput)
{
    const Finished help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.output.startsWith("Usage: tambo "));
    EXPECT_EQ(help.errors, "");
    const Finished version = run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(version.output.startsWith("tambo "));
    EXPECT_EQ(version.output.count('\n'), 1);
}

TEST_F(InfoProgram, OutputThatCannotBeWrittenIsAnError)
{
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(BUILD_DIR "/bin/tambo", {"info", write("x.fasta", ">a\nACD\n")});
    ASSERT_TRUE(process.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(process.exitCode(), 1);
}

} // namespace InfoProgramTest
