// SPDX-License-Identifier: GPL-3.0-or-later
// One alignment and one structure with everything that such an object can hold, through every
// format: what does not come back was announced, and nothing else was.
#include "WritableObject.h"

#include "AppFixture.h"
#include "Atom.h"
#include "Element.h"
#include "FileReader.h"
#include "RecordMaker.h"
#include "ResidueTies.h"
#include "support/Outcome.h"

#include <QRegularExpression>

#include <map>

namespace LossesTest {

using namespace TAMBO;
using app::WritableObject;

// What is said when a fact is lost, as a pattern.
using Sentences = std::map<std::string, const char *>;
using Facts = std::map<std::string, std::string>;

constexpr Color kRed(0xff0000);

class Losses : public AppFixture
{
protected:
    static FileContents readBack(const QString &file)
    {
        Result<FileContents> contents = readFile(file.toStdString());
        EXPECT_TRUE(contents.has_value());
        return std::move(contents).value();
    }

    // Each fact that differs has its sentence, each that does not has none.
    static void expectAnnounced(const Facts &before, const Facts &after, const QStringList &said,
                                const Sentences &sentences)
    {
        for (const auto &[fact, pattern] : sentences) {
            const bool isSaid =
                !said.filter(QRegularExpression(QString::fromLatin1(pattern))).isEmpty();
            EXPECT_EQ(isSaid, before.at(fact) != after.at(fact))
                << fact << ": " << before.at(fact) << " became " << after.at(fact) << "; said:\n"
                << said.join(u'\n').toStdString();
        }
    }
};

// ---- Alignments

const Sentences kOfAlignments = {
    {"names", "^\\d+ of \\d+ names? |^The names? of "},
    {"letters", "written as \"X\"|small letters? becomes? "},
    {"cells", "moved to the left"},
    {"descriptions", "^The descriptions of"},
    {"structures", "not tied to the structure"},
    {"models", "not tied to a model"},
    {"numbers", "^The residue numbers"},
    {"elements", "^The secondary structure"},
    {"breaks", "breaks? between chains"},
    {"colors", "^The colors"},
    {"of the alignment", "^What is said of the alignment"},
    {"of columns", "^What is said of columns"},
    {"of sequences", "^What is said of sequences"},
    {"of residues", "^What is said of residues"},
};

std::string said(const std::vector<Annotation> &lines)
{
    std::string text;
    for (const Annotation &line : lines)
        text += line.tag + ' ' + line.text + '|';
    return text;
}

// The title of a PIR file holds what there was to say among other fields.
std::string descriptionOf(const RowRecord &row)
{
    return row.description.find("ferredoxin") != std::string::npos ? "ferredoxin" : std::string();
}

Facts factsOf(const Alignment &alignment)
{
    const AlignmentRecord record = makeRecord(alignment);
    Facts facts;
    for (const auto &[fact, pattern] : kOfAlignments)
        facts[fact];
    for (std::size_t i = 0; i < record.rows.size(); ++i) {
        const RowRecord &row = record.rows[i];
        facts["names"] += row.name + '|';
        facts["letters"] += row.sequence.letters + '|';
        std::string cells = row.sequence.text();
        for (char &cell : cells)
            cell = cell == '-' ? '-' : 'x';
        facts["cells"] += cells + '|';
        facts["descriptions"] += descriptionOf(row) + '|';
        facts["structures"] += row.link->structure + '|';
        for (const ChainBreak &place : row.chainBreaks)
            facts["breaks"] += std::to_string(place.letters) + (place.column ? "/ " : " ");
        facts["of sequences"] += said(row.annotations);
        facts["of residues"] += said(row.residueAnnotations);
        // Those of a tied row are its structure's, and come and go with the tie.
        const Peptide &sequence = *Peptide::from(alignment.GetSeq(i));
        if (row.name.starts_with("num"))
            facts["numbers"] += sequence.number(0).getValue() + '|';
        if (row.name.starts_with("hel"))
            facts["elements"] += sequence.elementAt(0) != nullptr ? "helix|" : "|";
        if (row.name.starts_with("mod"))
            facts["models"] += sequence.hasAtoms() ? "atoms|" : "|";
        if (row.name.starts_with("col"))
            facts["colors"] += sequence.ownColor(0) == kRed ? "red|" : "|";
    }
    facts["of the alignment"] = said(record.annotations);
    facts["of columns"] = said(record.columnAnnotations);
    return facts;
}

class LossesOfAlignments : public Losses
{
protected:
    LossesOfAlignments()
    {
        structure("1abc", "A", "ACDEFG");
        const DataAdder<Space> guard(nullptr, Space::instance());
        m_Alignment = ObjectFactory::adopt(everything());
        StructureRecord model;
        model.name = "model";
        model.isModel = true;
        ChainRecord &chain = model.chains.emplace_back();
        chain.name = "A";
        for (int i = 0; i < 5; ++i)
            chain.residues.push_back({"ALA", 'A', SequenceNumber(i + 1), {{"CA", "C", {0, 0, 0}}}});
        const Structure &built = *ObjectFactory::adopt(std::move(model));
        ResidueTies ties;
        ties.append({0, 5, 0, built.chain(0)});
        sequenceOf(1).retie(std::move(ties));
        sequenceOf(2).setNumber(0, SequenceNumber("10"));
        sequenceOf(3).insertObject(
            0, std::make_unique<Element>("H1", 'H', std::vector<std::uint32_t>{0, 1, 2}));
        sequenceOf(5).setColor(0, kRed);
    }

    static RowRecord row(const std::string &name, const std::string &text)
    {
        RowRecord row;
        row.name = name;
        row.sequence.append(text);
        return row;
    }
    static AlignmentRecord everything()
    {
        AlignmentRecord record;
        record.name = "all";
        record.rows = {row("template", "ACDEFG----"),      row("modelled", "AAAAA-----"),
                       row("numbered", "ACDEF-----"),      row("helical", "ACDEFGHI--"),
                       row("broken", "AC-D------"),        row("colored", "ACDEF---m-"),
                       row("small letters", "acDEF----k"), row("foreign", "A*C-------")};
        record.rows[0].link.change() = {"1abc", "A", "1", "6", "A"};
        record.rows[0].description = "ferredoxin";
        record.rows[0].annotations = {{"OS", "bug"}};
        record.rows[0].residueAnnotations = {{"SS", "HHH......."}};
        record.rows[4].chainBreaks = {{2, 2}};
        record.annotations = {{"AU", "somebody"}};
        record.columnAnnotations = {{"SS_cons", "HHH......."}};
        return record;
    }
    Peptide &sequenceOf(unsigned long row) { return *Peptide::from(m_Alignment->GetSeq(row)); }

    Alignment *m_Alignment = nullptr;
};

TEST_F(LossesOfAlignments, AreAllAnnouncedInEveryFormat)
{
    const Facts before = factsOf(*m_Alignment);
    for (const std::string_view name : writeFormatNames()) {
        const WriteOptions options = *writeOptionsNamed(name);
        if (isStructureFormat(options.format))
            continue;
        SCOPED_TRACE(name);
        const WritableObject object(*m_Alignment);
        const QString file = m_Folder.filePath("written");
        ASSERT_EQ(complaintOf(object.write(file, options)), "");
        FileContents contents = readBack(file);
        ASSERT_EQ(contents.alignments.size(), 1U);
        const DataAdder<Space> guard(nullptr, Space::instance());
        const Alignment &after = *ObjectFactory::adopt(std::move(contents.alignments.front()));
        expectAnnounced(before, factsOf(after), object.losses(options) + object.lostLooks(),
                        kOfAlignments);
    }
}

TEST_F(LossesOfAlignments, NumbersThatTheHeaderSaysAreNotLostInPirFiles)
{
    AlignmentRecord record;
    record.rows = {row("a", "ACD"), row("b", "ACD")};
    for (RowRecord &named : record.rows) {
        named.description = "sequence:x:30::32:::::";
        named.link.change().first = "30";
    }
    const DataAdder<Space> guard(nullptr, Space::instance());
    const Alignment &made = *ObjectFactory::adopt(std::move(record));
    EXPECT_EQ(WritableObject(made).losses({}), QStringList());
    EXPECT_EQ(WritableObject(made).losses({FileFormat::Fasta}).filter("residue numbers").size(), 1);
    Peptide::from(made.GetSeq(1))->setNumber(0, SequenceNumber("40"));
    EXPECT_EQ(WritableObject(made).losses({}).filter("residue numbers of 1 row").size(), 1);
}

// Its residues have no number in a structure file, whatever the row names.
TEST_F(LossesOfAlignments, NumbersOfResiduesWithoutCoordinatesAreLost)
{
    AlignmentRecord record;
    record.rows = {row("longer", "MKACDEFG")};
    record.rows[0].link.change() = {"1abc", "A", "", "", "A"};
    const DataAdder<Space> guard(nullptr, Space::instance());
    const Alignment &made = *ObjectFactory::adopt(std::move(record));
    Peptide &sequence = *Peptide::from(made.GetSeq(0));
    ASSERT_TRUE(sequence.hasTies());
    ASSERT_EQ(sequence.number(0).getValue(), "-1");
    EXPECT_EQ(WritableObject(made).losses({}), QStringList());
    sequence.setNumber(0, SequenceNumber("-5"));
    EXPECT_EQ(WritableObject(made).losses({}).filter("residue numbers of 1 row").size(), 1);
}

TEST_F(LossesOfAlignments, TitlesThatBecomeAFieldAreAnnounced)
{
    Structure &loaded = structure("2abc", "A", "ACD");
    AlignmentRecord record;
    record.rows = {row("2abc", "ACD")};
    record.rows[0].description = "ratio 1:2";
    const DataAdder<Space> guard(nullptr, Space::instance());
    const Alignment &made = *ObjectFactory::adopt(std::move(record));
    ASSERT_EQ(made.GetSeq(0), loaded.chain(0));
    EXPECT_EQ(WritableObject(made).losses({}).filter(QRegularExpression("^The titles of 1 row")),
              QStringList{"The titles of 1 row are changed: they become a field of the header that "
                          "names the structure."});
}

TEST_F(LossesOfAlignments, LinesOfOneNameGetANumberInStockholmFiles)
{
    AlignmentRecord record;
    record.rows = {row("a", "ACD")};
    record.columnAnnotations = {{"conf", "123"}, {"conf", "456"}};
    const DataAdder<Space> guard(nullptr, Space::instance());
    const Alignment &made = *ObjectFactory::adopt(std::move(record));
    EXPECT_EQ(WritableObject(made).losses({FileFormat::Stockholm}).filter("1 line of").size(), 1);
}

// ---- Structures

const Sentences kOfStructures = {
    {"model", "^The file does not say that it is a model"},
    {"models", "^Only the first of"},
    {"turns", "turns? (is|are) left out"},
    {"small types", "given by a small letter"},
    {"pieces", "in several pieces"},
    {"places", "^The places of atoms are rounded"},
    {"colors", "^The colors"},
    {"chains", "^Another chain has the name"},
    {"element names", "names? of helices and strands"},
};

Facts factsOf(const Structure &structure)
{
    Facts facts;
    for (const auto &[fact, pattern] : kOfStructures)
        facts[fact];
    facts["model"] = structure.isModel() ? "yes" : "no";
    facts["models"] = std::to_string(structure.modelCount());
    facts["colors"] = structure.chain(0)->ownColor(0) == kRed ? "red" : "";
    for (std::size_t c = 0; c < structure.objectCount(); ++c) {
        const Peptide &chain = *structure.chain(c);
        facts["chains"] += chain.Name() + '|';
        for (std::size_t i = 0; i < chain.residueCount(); ++i) {
            const Vertex place = chain.position(i);
            for (std::size_t axis = 0; axis < 3; ++axis)
                facts["places"] += std::to_string(place.coordinates()[axis]) + ' ';
        }
        for (std::size_t k = 0; k < chain.objectCount(); ++k) {
            const auto *const element = dynamic_cast<const Element *>(chain.object(k));
            if (element == nullptr)
                continue;
            facts["element names"] += element->Name() + '|';
            const char type = element->TypeCode();
            facts[type == 'T' ? "turns" : "pieces"] += '1';
            if (type >= 'a')
                facts["small types"] += type;
        }
    }
    return facts;
}

class LossesOfStructures : public Losses
{
protected:
    static StructureRecord plain()
    {
        StructureRecord record;
        record.name = "1abc";
        ChainRecord &chain = record.chains.emplace_back();
        chain.name = "A";
        for (int i = 0; i < 12; ++i)
            chain.residues.push_back(
                {"ALA", 'A', SequenceNumber(i + 1), {{"CA", "C", {float(i) * 3.8F, 1.5F, 0}}}});
        return record;
    }
    void tryFormats(const Structure &structure)
    {
        const Facts before = factsOf(structure);
        for (const FileFormat format : {FileFormat::Pdb, FileFormat::Mmcif}) {
            SCOPED_TRACE(formatTitle(format));
            const WritableObject object(structure);
            const QString file = m_Folder.filePath("written");
            ASSERT_EQ(complaintOf(object.write(file, {format})), "");
            FileContents contents = readBack(file);
            ASSERT_EQ(contents.structures.size(), 1U);
            const DataAdder<Space> guard(nullptr, Space::instance());
            const Structure &after = *ObjectFactory::adopt(std::move(contents.structures.front()));
            expectAnnounced(before, factsOf(after), object.losses({format}) + object.lostLooks(),
                            kOfStructures);
        }
    }
    static void addElement(Peptide &chain, const std::string &name, char type,
                           std::vector<std::uint32_t> residues)
    {
        chain.insertObject(chain.objectCount(),
                           std::make_unique<Element>(name, type, std::move(residues)));
    }
};

TEST_F(LossesOfStructures, AreAllAnnouncedInBothFormats)
{
    StructureRecord record = plain();
    record.isModel = true;
    record.models = 3;
    record.chains.push_back(record.chains.front());
    record.chains.front().residues[3].atoms[0].position = {0.12345F, 1.F / 3, 77};
    const DataAdder<Space> guard(nullptr, Space::instance());
    Structure &structure = *ObjectFactory::adopt(std::move(record));
    Peptide &chain = *structure.chain(0);
    addElement(chain, "long helix", 'H', {0, 1, 2, 3});
    addElement(chain, "small strand", 'e', {5, 6, 7});
    addElement(chain, "turn", 'T', {8, 9, 10});
    addElement(chain, "pieces", 'E', {0, 1, 2, 8, 9, 10});
    chain.setColor(0, kRed);
    tryFormats(structure);
}

TEST_F(LossesOfStructures, OfAPlainStructureAreThoseOfReadingOnly)
{
    const DataAdder<Space> guard(nullptr, Space::instance());
    const Structure &structure = *ObjectFactory::adopt(plain());
    tryFormats(structure);
    EXPECT_EQ(WritableObject(structure).losses({FileFormat::Pdb}).size(), 1);
    EXPECT_EQ(WritableObject(structure).lostLooks(), QStringList());
}

TEST_F(LossesOfStructures, ColorsOfAtomsAndGroupsAreLost)
{
    const DataAdder<Space> guard(nullptr, Space::instance());
    Structure &structure = *ObjectFactory::adopt(plain());
    structure.chain(0)->atom(3, 0)->SetColor(kRed);
    EXPECT_EQ(WritableObject(structure).lostLooks(),
              QStringList{"The colors that were given are left out."});
}

} // namespace LossesTest
