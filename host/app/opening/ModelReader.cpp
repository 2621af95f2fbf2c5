// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelReader.h"

#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "DataAdder.h"
#include "DataPoint.h"
#include "Element.h"
#include "Logger.h"
#include "ObjectFacts.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "ResidueTies.h"
#include "SequenceMatch.h"
#include "Structure.h"
#include "Superposition.h"
#include "Text.h"

#include <QCoreApplication>

#include <algorithm>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;

// Fewer equal letters, in percent of the model's, mean that it was built for another sequence.
constexpr std::size_t kLeastIdentity = 70;
// Engines build in the place of the template. Only one that does not leaves this much, in Angstrom,
// to be gained by moving the model.
constexpr double kWorthMoving = 0.5;

QString text(const char *sentence)
{
    return QCoreApplication::translate("ModelReader", sentence);
}

bool isSameLetter(char a, char b)
{
    return TAMBO::smallLetter(a) == TAMBO::smallLetter(b);
}

// The amino acids of the model, which has one chain.
std::vector<ResidueRecord *> residuesOf(StructureRecord &model)
{
    std::vector<ResidueRecord *> residues;
    if (model.chains.empty())
        return residues;
    for (ResidueRecord &residue : model.chains.front().residues) {
        if (residue.isAminoAcid)
            residues.push_back(&residue);
    }
    return residues;
}

Vertex placeOf(const ResidueRecord &residue)
{
    const auto atom = std::ranges::find(residue.atoms, "CA", &AtomRecord::name);
    return atom == residue.atoms.end() ? Vertex() : atom->position;
}

// By the number of their letter, which is how the job's template is numbered.
std::vector<Vertex> placesOf(const StructureRecord &structure, std::size_t letters)
{
    std::vector<Vertex> places(letters);
    for (const ChainRecord &chain : structure.chains) {
        for (const ResidueRecord &residue : chain.residues) {
            const int number = residue.number.number();
            if (number >= 1 && std::size_t(number) <= letters)
                places[std::size_t(number) - 1] = placeOf(residue);
        }
    }
    return places;
}

// Not that of a structure already there.
std::string freeName(const std::string &wanted)
{
    std::string name = wanted;
    const auto isTaken = [&name](const Compound *object) { return object->Name() == name; };
    for (int number = 2; std::any_of(Space::instance()->begin(), Space::instance()->end(), isTaken);
         ++number)
        name = wanted + " (" + std::to_string(number) + ")";
    return name;
}

bool isOfModels(const Peptide &sequence)
{
    bool isOfModel = true;
    sequence.forEachTiedChain([&isOfModel](const Peptide &chain) {
        const auto *structure = dynamic_cast<const Structure *>(chain.Parent());
        isOfModel = isOfModel && structure != nullptr && structure->isModel();
    });
    return isOfModel;
}

// Measured coordinates are worth more than a model; an older model gives way to a newer one.
bool mayGetModel(const Peptide &sequence)
{
    return sequence.Parent() == Space::instance() && isOfModels(sequence);
}

std::vector<Peptide *> sequencesOfRows(const std::string &name)
{
    std::vector<Peptide *> sequences;
    for (const Alignment *alignment : ObjectSpace::get().referrers<Alignment>()) {
        const AlignmentTable &table = alignment->table();
        for (std::size_t row = 0; row < table.rowCount(); ++row) {
            Peptide &sequence = table.row(row).sequence();
            if (table.row(row).name() == name && mayGetModel(sequence) &&
                std::ranges::find(sequences, &sequence) == sequences.end())
                sequences.push_back(&sequence);
        }
    }
    return sequences;
}

// How a residue of the target looked before its data became the model's.
struct Look
{
    Color color;
    bool isSelected = false;
};

std::vector<Look> looksOf(const Peptide &sequence)
{
    std::vector<Look> looks(sequence.residueCount());
    for (std::size_t i = 0; i < looks.size(); ++i)
        looks[i] = {sequence.ownColor(i), sequence.isSelected(i)};
    return looks;
}

} // namespace

bool ModelReader::isModel(const fs::path &file)
{
    std::error_code ignored;
    return fs::exists(file.parent_path() / "seq.ali", ignored) &&
           fs::exists(file.parent_path() / "str.pdb", ignored);
}

ModelReader::ModelReader(Loader &loader, const fs::path &file)
    : m_Loader(loader), m_File(file), m_Outcome(Loader::readNow(file))
{
    Result<FileContents> rows = readFile(file.parent_path() / "seq.ali");
    if (!rows || rows->alignments.empty() || rows->alignments.front().rows.size() < 2)
        return;
    m_Template = std::move(rows->alignments.front().rows[0]);
    m_Target = std::move(rows->alignments.front().rows[1]);
    Result<FileContents> places = readFile(file.parent_path() / "str.pdb");
    if (places && !places->structures.empty())
        m_Places = placesOf(places->structures.front(), m_Template.sequence.letters.size());
}

LoadReport ModelReader::read()
{
    const ArrivalScope arrival;
    const DataAdder<Space> guard(nullptr, Space::instance());
    for (ReadFile &read : m_Outcome.files) {
        if (read.file == m_File)
            prepare(read.contents);
    }
    LoadReport report = m_Loader.makeObjects(m_Outcome);
    if (!guard.m_good || report.structures.empty())
        return report;
    for (Peptide *sequence : m_Sequences)
        tie(*report.structures.front(), *sequence);
    return report;
}

ModelReader::Runs ModelReader::agreement(const std::string &target, const std::string &model)
{
    Runs runs;
    std::size_t equal = 0;
    for (const MatchRun &match : matchSequences(target, model, {}).runs) {
        for (std::size_t i = 0; i < match.count; ++i) {
            if (!isSameLetter(target[match.first + i], model[match.second + i]))
                continue;
            ++equal;
            const bool goesOn = !runs.empty() &&
                                runs.back().target + runs.back().count == match.first + i &&
                                runs.back().model + runs.back().count == match.second + i;
            if (goesOn)
                ++runs.back().count;
            else
                runs.push_back({match.first + i, match.second + i, 1});
        }
    }
    return equal * 100 < model.size() * kLeastIdentity ? Runs() : runs;
}

void ModelReader::prepare(FileContents &contents)
{
    if (contents.structures.empty())
        return;
    StructureRecord &model = contents.structures.front();
    model.isModel = true;
    std::string letters;
    for (const ResidueRecord *residue : residuesOf(model))
        letters += residue->letter;
    const Runs runs = agreement(m_Target.sequence.letters, letters);
    if (runs.empty()) {
        model.remarks.push_back(m_File.filename().string() +
                                ": the sequence is not that of the modelling job's target");
        return;
    }
    model.name = freeName(m_Target.name + " on " + m_Template.name);
    fit(model, runs);
    m_Sequences = sequencesOfRows(m_Target.name);
    std::erase_if(m_Sequences, [&letters](const Peptide *sequence) {
        return agreement(std::string(sequence->letters()), letters).empty();
    });
    if (m_Sequences.empty())
        return;
    const Peptide &target = *m_Sequences.front();
    describe(model, target, agreement(std::string(target.letters()), letters));
}

void ModelReader::fit(StructureRecord &model, const Runs &runs) const
{
    const std::vector<ResidueRecord *> built = residuesOf(model);
    std::vector<const ResidueRecord *> residues(m_Target.sequence.letters.size(), nullptr);
    for (const Run &run : runs)
        std::copy_n(built.begin() + std::ptrdiff_t(run.model), run.count,
                    residues.begin() + std::ptrdiff_t(run.target));
    const std::string templateRow = m_Template.sequence.text();
    const std::string targetRow = m_Target.sequence.text();
    std::vector<PointPair> pairs;
    std::size_t letter = 0;
    std::size_t target = 0;
    for (std::size_t col = 0; col < std::min(templateRow.size(), targetRow.size()); ++col) {
        const bool isTemplate = templateRow[col] != '-';
        const bool isTarget = targetRow[col] != '-';
        if (isTemplate && isTarget && letter < m_Places.size() && residues[target] != nullptr) {
            const PointPair pair{placeOf(*residues[target]), m_Places[letter]};
            if (pair.moving.isDefined() && pair.fixed.isDefined())
                pairs.push_back(pair);
        }
        letter += isTemplate ? 1 : 0;
        target += isTarget ? 1 : 0;
    }
    // Fewer points can be laid on each other in more than one way.
    constexpr std::size_t kLeastPairs = 3;
    if (pairs.size() < kLeastPairs)
        return;
    const Superposition superposition(pairs);
    const double before = rootMeanSquareDistance(pairs);
    for (PointPair &pair : pairs)
        pair.moving = superposition(pair.moving);
    const double after = rootMeanSquareDistance(pairs);
    const bool isMoved = before - after > kWorthMoving && after < before / 2;
    const QString sentence =
        isMoved ? text("%1 was moved onto %2 and lies %3 Å from it (root mean square of %4 CA "
                       "atoms)")
                : text("%1 lies %3 Å from %2 (root mean square of %4 CA atoms)");
    Logger::Write(sentence.arg(
        QString::fromStdString(model.name), QString::fromStdString(m_Template.name),
        QString::number(isMoved ? after : before, 'f', 2), QString::number(pairs.size())));
    if (!isMoved)
        return;
    for (ChainRecord &chain : model.chains) {
        for (ResidueRecord &residue : chain.residues) {
            for (AtomRecord &atom : residue.atoms)
                atom.position = superposition(atom.position);
        }
    }
}

void ModelReader::describe(StructureRecord &model, const Peptide &target, const Runs &runs)
{
    const std::vector<ResidueRecord *> residues = residuesOf(model);
    // All or none, so that no number comes twice.
    if (runs.size() == 1 && runs.front().count == residues.size()) {
        for (std::size_t i = 0; i < residues.size(); ++i)
            residues[i]->number = target.number(runs.front().target + i);
    }
    for (std::size_t k = 0; k < target.objectCount(); ++k) {
        const auto *element = dynamic_cast<const Element *>(target.object(k));
        if (element == nullptr)
            continue;
        for (const Run &run : runs) {
            std::size_t i = 0;
            while (i < run.count && !element->contains(run.target + i))
                ++i;
            std::size_t end = i;
            while (end < run.count && element->contains(run.target + end))
                ++end;
            if (i < end)
                model.elements.push_back(
                    {element->Name(), element->TypeCode(), model.chains.front().name,
                     residues[run.model + i]->number, residues[run.model + end - 1]->number});
        }
    }
}

void ModelReader::tie(Structure &model, Peptide &target) const
{
    const DataPoint<Peptide> guard(nullptr, &target);
    if (!guard.m_good) {
        Logger::Write(text("%1 is locked, so its residues do not get the coordinates of %2.")
                          .arg(nameText(target), nameText(model)),
                      Logger::Severity::Warning);
        return;
    }
    Peptide &chain = *model.chain(0);
    const std::vector<Look> looks = looksOf(target);
    ResidueTies ties;
    const Runs runs = agreement(std::string(target.letters()), std::string(chain.letters()));
    std::size_t count = 0;
    for (const Run &run : runs) {
        ties.append({std::uint32_t(run.target), std::uint32_t(run.count), std::uint32_t(run.model),
                     &chain});
        for (std::size_t i = 0; i < run.count; ++i) {
            const Look &look = looks[run.target + i];
            if (chain.ownColor(run.model + i) != look.color)
                chain.setColor(run.model + i, look.color);
            if (look.isSelected)
                chain.setSelected(run.model + i, true);
        }
        count += run.count;
    }
    target.retie(std::move(ties));
    Logger::Write(text("%1: %2 of %3 residues have the coordinates of %4 now")
                      .arg(nameText(target))
                      .arg(count)
                      .arg(target.residueCount())
                      .arg(nameText(model)));
}

} // namespace TAMBO::app
