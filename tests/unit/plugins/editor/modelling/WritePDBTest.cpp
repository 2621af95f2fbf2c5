// SPDX-License-Identifier: GPL-3.0-or-later
// The template of a modelling job as a file.
#include "WritePDB.h"

#include "FileReader.h"
#include "Structure.h"
#include "WindowFixture.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace WritePDBTest {

using TAMBO::AtomRecord;
using TAMBO::ResidueRecord;
using TAMBO::Vertex;

class WritePDB : public WindowFixture
{
protected:
    static ResidueRecord residue(char letter, std::vector<AtomRecord> atoms,
                                 const std::string &type = "ALA")
    {
        ResidueRecord record;
        record.typeName = type;
        record.letter = letter;
        record.atoms = std::move(atoms);
        return record;
    }
    static ResidueRecord alanine(std::size_t atoms = 1)
    {
        return residue('A', std::vector<AtomRecord>(atoms, {"CA", "C", Vertex(1, 2, 3)}));
    }
    // A chain H, numbered from 29, called "known" in alignments.
    static void addTemplate(std::vector<ResidueRecord> residues)
    {
        TAMBO::StructureRecord record;
        record.name = "known";
        TAMBO::ChainRecord &chain = record.chains.emplace_back();
        chain.name = "H";
        int number = 29;
        for (ResidueRecord &made : residues) {
            made.number = TAMBO::SequenceNumber(number++);
            chain.residues.push_back(std::move(made));
        }
        const DataPointBase guard(nullptr, Publisher::Add);
        TAMBO::ObjectFactory::adopt(std::move(record));
    }
    TAMBO::Alignment &templateRow(const std::string &row)
    {
        return alignment({row}, "family", {"known"});
    }
    // One residue with one atom.
    QString lineOf(const AtomRecord &atom, const std::string &type = "ALA")
    {
        addTemplate({residue('A', {atom}, type)});
        const QStringList lines = linesOf(templateRow("A"));
        EXPECT_EQ(lines.size(), 1);
        return lines.value(0);
    }

    QByteArray textOf(const TAMBO::Alignment &alignment)
    {
        ZEP::writePDB(path(), &alignment);
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    QStringList linesOf(const TAMBO::Alignment &alignment)
    {
        const QString text = QString::fromLatin1(textOf(alignment));
        EXPECT_TRUE(text.isEmpty() || text.endsWith('\n'));
        return text.isEmpty() ? QStringList() : text.chopped(1).split('\n');
    }
    // Residue numbers of the records.
    static QStringList numbers(const QStringList &lines)
    {
        QStringList result;
        for (const QString &line : lines)
            result << line.mid(22, 4).trimmed();
        return result;
    }
    [[nodiscard]] QString path() const { return m_Folder.filePath("str.pdb"); }

private:
    QTemporaryDir m_Folder;
};

const AtomRecord kAtom{"ca", "C", Vertex(1.5F, -2.25F, 10)};

TEST_F(WritePDB, ARecordEndsBehindItsCoordinates)
{
    addTemplate({residue('A', {kAtom})});
    EXPECT_EQ(textOf(templateRow("A")), "ATOM      1  CA  ALA A   1       1.500  -2.250  10.000\n");
}

TEST_F(WritePDB, AFileThatCannotBeOpenedIsLeftAloneSilently)
{
    addTemplate({alanine()});
    const TAMBO::Alignment &shown = templateRow("A");
    const MessageRecorder messages;
    const DialogDriver dialogs;
    ZEP::writePDB(path() + "/none/str.pdb", &shown);
    EXPECT_FALSE(QFile::exists(path()));
    EXPECT_THAT(messages.messages(), IsEmpty());
    EXPECT_THAT(dialogs.titles(), IsEmpty());
}

TEST_F(WritePDB, EarlierContentIsReplaced)
{
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'x'));
    file.close();
    addTemplate({residue('A', {kAtom})});
    EXPECT_EQ(textOf(templateRow("A")).size(), 55);
}

TEST_F(WritePDB, OnlyTheFirstRowIsWritten)
{
    addTemplate({residue('A', {{"N", "N", Vertex(1, 0, 0)}}),
                 residue('C', {{"CA", "C", Vertex(2, 0, 0)}}, "CYS")});
    const QStringList lines = linesOf(alignment({"AC", "AC"}, "family", {"known", "known"}));
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].mid(12, 8), " N   ALA");
    EXPECT_EQ(lines[1].mid(12, 8), " CA  CYS");
}

TEST_F(WritePDB, ARowOfGapsGivesAnEmptyFile)
{
    EXPECT_EQ(textOf(alignment({"----", "ACDE"})), "");
    EXPECT_TRUE(QFile::exists(path()));
}

TEST_F(WritePDB, GapsAreNotCounted)
{
    addTemplate({alanine(), residue('C', {kAtom}), residue('D', {kAtom})});
    EXPECT_EQ(numbers(linesOf(templateRow("A--C-D"))), (QStringList{"1", "2", "3"}));
}

TEST_F(WritePDB, AResidueWithoutAtomsTakesANumber)
{
    addTemplate({alanine(), residue('C', {}), residue('D', {kAtom})});
    EXPECT_EQ(numbers(linesOf(templateRow("ACD"))), (QStringList{"1", "3"}));
}

TEST_F(WritePDB, AtomsKeepTheirOrderAndAreCountedOn)
{
    const std::vector<AtomRecord> atoms = {{"N", "N", Vertex(0, 0, 0)},
                                           {"CA", "C", Vertex(1, 0, 0)},
                                           {"C", "C", Vertex(2, 0, 0)},
                                           {"O", "O", Vertex(3, 0, 0)},
                                           {"CB", "C", Vertex(4, 0, 0)}};
    addTemplate({residue('A', atoms), residue('A', atoms)});
    const QStringList lines = linesOf(templateRow("AA"));
    ASSERT_EQ(lines.size(), 10);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(lines[i].left(11), QString("ATOM  %1").arg(i + 1, 5));
        EXPECT_EQ(lines[i].mid(13, 3).trimmed().toStdString(), atoms[std::size_t(i % 5)].name);
    }
}

TEST_F(WritePDB, NamesAreInCapitalsAndStandByTheirLength)
{
    const std::vector<std::pair<std::string, QString>> names = {
        {"c", "  C   "},    {"cb", "  CB  "},   {"OG1", "  OG1 "},
        {"hd11", " HD11 "}, {"HD11", " HD11 "}, {"HD111", " HD111 "}};
    for (const auto &[name, columns] : names) {
        const QString line = lineOf({name, "C", Vertex(0, 0, 0)});
        EXPECT_EQ(line.mid(11, columns.size()), columns) << name;
        EXPECT_EQ(line.size(), name.size() > 4 ? 55 : 54) << name;
        TAMBO::ObjectSpace::get().reset();
    }
}

TEST_F(WritePDB, TheTypeIsNeitherPaddedNorCut)
{
    EXPECT_EQ(lineOf(kAtom, "MSE").mid(17, 10), "MSE A   1 ");
    TAMBO::ObjectSpace::get().reset();
    EXPECT_EQ(lineOf(kAtom, "G").size(), 52);
    TAMBO::ObjectSpace::get().reset();
    EXPECT_EQ(lineOf(kAtom, "LONG").size(), 55);
}

TEST_F(WritePDB, CoordinatesHaveThreeDecimalsAndAreNeverCut)
{
    EXPECT_EQ(lineOf({"CA", "C", Vertex(1.5F, -2.25F, 10)}).mid(27), "      1.500  -2.250  10.000");
    TAMBO::ObjectSpace::get().reset();
    // The nearest number of single precision is below 2.0015.
    EXPECT_EQ(lineOf({"CA", "C", Vertex(2.0015F, 0, 0)}).mid(30, 8), "   2.001");
    TAMBO::ObjectSpace::get().reset();
    const QString line = lineOf({"CA", "C", Vertex(-10000.5F, 0, 0)});
    EXPECT_EQ(line.mid(30, 10), "-10000.500");
    EXPECT_EQ(line.size(), 56);
}

TEST_F(WritePDB, AnUndefinedPositionIsWrittenAsItStands)
{
    EXPECT_EQ(lineOf({"CA", "C", Vertex()}).mid(27), "      0.000   0.000   0.000");
}

TEST_F(WritePDB, TheLocaleDoesNotMatter)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QString line = lineOf({"CA", "C", Vertex(1234.5F, 0, 0)});
    QLocale::setDefault(before);
    EXPECT_EQ(line.mid(30, 8), "1234.500");
}

TEST_F(WritePDB, LargeNumbersPushTheRestToTheRight)
{
    addTemplate(std::vector<ResidueRecord>(10'001, alanine(10)));
    const QStringList lines = linesOf(templateRow(std::string(10'001, 'A')));
    ASSERT_EQ(lines.size(), 100'010);
    EXPECT_EQ(lines[9'998 * 10].size(), 54);
    EXPECT_EQ(lines[9'999 * 10 - 1], "ATOM  99990  CA  ALA A9999       1.000   2.000   3.000");
    EXPECT_EQ(lines[9'999 * 10], "ATOM  99991  CA  ALA A10000       1.000   2.000   3.000");
    EXPECT_EQ(lines[99'999], "ATOM  100000  CA  ALA A10000       1.000   2.000   3.000");
}

TEST_F(WritePDB, NothingIsChangedOrPublished)
{
    addTemplate({alanine(), alanine()});
    const TAMBO::Alignment &shown = templateRow("A-A");
    history.clear();
    const RecordingSubscriber listener;
    textOf(shown);
    EXPECT_THAT(listener.calls, IsEmpty());
    EXPECT_FALSE(history.canUndo());
}

TEST_F(WritePDB, AWrittenChainIsReadBackWithTheSameAtoms)
{
    const std::string folder = TEST_DATA_DIR "/families/g6pd/";
    TAMBO::FileContents structure = TAMBO::readFile(folder + "6e07_fit.pdb").value();
    TAMBO::FileContents rows = TAMBO::readFile(folder + "g6pd_templates.ali").value();
    TAMBO::Alignment *shown = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        TAMBO::ObjectFactory::adopt(std::move(structure.structures.at(0)));
        shown = TAMBO::ObjectFactory::adopt(std::move(rows.alignments.at(0)));
    }
    ASSERT_EQ(shown->GetSeqName(0), "6e07B");
    std::vector<TAMBO::Compound *> atoms;
    TAMBO::GetAtoms(shown->GetSeq(0), atoms, true);
    ASSERT_GT(atoms.size(), 3000U);

    ZEP::writePDB(path(), shown);
    auto written = TAMBO::readFile(path().toStdString());
    ASSERT_TRUE(written.has_value());
    const TAMBO::ChainRecord &chain = written.value().structures.at(0).chains.at(0);
    std::size_t next = 0;
    int number = 0;
    for (const ResidueRecord &residue : chain.residues) {
        EXPECT_EQ(residue.number, TAMBO::SequenceNumber(++number));
        for (const AtomRecord &atom : residue.atoms) {
            ASSERT_LT(next, atoms.size());
            const TAMBO::Compound &original = *atoms[next++];
            EXPECT_EQ(atom.name, original.Name());
            EXPECT_EQ(atom.position.coordinates(), original.Position().coordinates());
            EXPECT_EQ(residue.typeName, original.Parent()->TypeName());
        }
    }
    EXPECT_EQ(next, atoms.size());
    EXPECT_EQ(number, 485);
}

} // namespace WritePDBTest
