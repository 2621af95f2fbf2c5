// SPDX-License-Identifier: GPL-3.0-or-later
#include "BuiltModel.h"

#include "Element.h"
#include "Hooks.h"
#include "ObjectGuard.h"
#include "Peptide.h"
#include "ResidueTies.h"
#include "RowsForModels.h"
#include "Structure.h"
#include "Superposition.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

namespace TAMBO {

namespace {

namespace fs = std::filesystem;

// A template that was moved as a whole has its CA atoms, but for this much, where the motion puts
// those that the engine got: in Angstrom, root mean square.
constexpr double kRigid = 0.1;
// Files have three decimals.
constexpr double kMoved = 0.01;
// Fewer points can be laid on each other in more than one way.
constexpr std::size_t kLeastPairs = 3;

std::string inAngstrom(double distance)
{
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%.2f Å", distance);
    return digits.data();
}

// By the number of their letter, which is how the job's template is numbered.
std::vector<Vertex> placesOf(const StructureRecord &structure, std::size_t letters)
{
    std::vector<Vertex> places(letters);
    for (const ChainRecord &chain : structure.chains) {
        for (const ResidueRecord &residue : chain.residues) {
            const int number = residue.number.number();
            if (number >= 1 && std::size_t(number) <= letters)
                places[std::size_t(number) - 1] = alphaPlace(residue);
        }
    }
    return places;
}

void moveModel(StructureRecord &model, const Superposition &motion)
{
    for (ChainRecord &chain : model.chains) {
        for (ResidueRecord &residue : chain.residues) {
            for (AtomRecord &atom : residue.atoms)
                atom.position = motion(atom.position);
        }
    }
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

Result<ModelJob> readModelJob(const fs::path &alignment)
{
    Result<FileContents> rows = readFile(alignment);
    if (!rows)
        return rows.error();
    if (rows->alignments.empty() || rows->alignments.front().rows.size() < 2)
        return Failure{FailureKind::BadInput,
                       "there is no alignment of a template and a target in it",
                       {alignment.filename().string()}};
    ModelJob job;
    job.templateRow = std::move(rows->alignments.front().rows[0]);
    job.target = std::move(rows->alignments.front().rows[1]);
    return job;
}

void setTemplate(ModelJob &job, const FileContents &contents)
{
    if (!contents.structures.empty())
        job.places = placesOf(contents.structures.front(), job.templateRow.sequence.letters.size());
}

std::set<std::string> BuiltModel::rows() const
{
    return {m_Job.templateRow.name, m_Job.target.name};
}

std::vector<ModelRun> BuiltModel::runsIn(const Peptide &sequence, const std::string &model) const
{
    const std::string letters(sequence.letters());
    return model == m_Letters && letters == m_Job.target.sequence.letters
               ? m_Runs
               : modelRuns(letters, model);
}

void BuiltModel::prepare(FileContents &contents, RowsForModels &rows, Place place)
{
    if (contents.structures.empty())
        return;
    StructureRecord &model = contents.structures.front();
    model.isModel = true;
    m_Letters = modelLetters(model);
    m_Runs = modelRuns(m_Job.target.sequence.letters, m_Letters);
    if (m_Runs.empty()) {
        model.remarks.push_back(m_File.filename().string() +
                                ": the sequence is not that of the modelling job's target");
        return;
    }
    model.name = rows.takeName(m_Job.target.name + " on " + m_Job.templateRow.name);
    if (place == Place::OfTheRow)
        follow(model, placesOfRow(rows));
    fit(model);
    m_Sequences = rows.sequencesOf(m_Job.target.name);
    std::erase_if(m_Sequences,
                  [this](const Peptide *sequence) { return runsIn(*sequence, m_Letters).empty(); });
    if (m_Sequences.empty())
        return;
    const Peptide &target = *m_Sequences.front();
    describe(model, target, runsIn(target, m_Letters));
}

std::vector<Vertex> BuiltModel::placesOfRow(const RowsForModels &rows) const
{
    const std::string &letters = m_Job.templateRow.sequence.letters;
    for (const Peptide *sequence : rows.templatesFor(m_Job.target.name, m_Job.templateRow.name)) {
        std::vector<Vertex> places(letters.size());
        std::size_t count = 0;
        for (const ModelRun &run : modelRuns(std::string(sequence->letters()), letters)) {
            for (std::size_t i = 0; i < run.count; ++i) {
                places[run.model + i] = sequence->position(run.target + i);
                count += places[run.model + i].isDefined() ? 1 : 0;
            }
        }
        if (count >= kLeastPairs)
            return places;
    }
    return {};
}

void BuiltModel::follow(StructureRecord &model, std::vector<Vertex> now)
{
    if (now.empty())
        return;
    std::vector<PointPair> pairs;
    for (std::size_t i = 0; i < std::min(now.size(), m_Job.places.size()); ++i) {
        if (now[i].isDefined() && m_Job.places[i].isDefined())
            pairs.push_back({m_Job.places[i], now[i]});
    }
    m_Job.places = std::move(now);
    if (pairs.size() < kLeastPairs || rootMeanSquareDistance(pairs) < kMoved)
        return;
    const Superposition motion(pairs);
    for (PointPair &pair : pairs)
        pair.moving = motion(pair.moving);
    if (rootMeanSquareDistance(pairs) < kRigid)
        moveModel(model, motion);
}

void BuiltModel::fit(StructureRecord &model) const
{
    const std::optional<ModelFit> fit =
        fitModel({m_Job.templateRow.sequence.text(), m_Job.target.sequence.text(), m_Job.places},
                 model, m_Runs);
    if (!fit)
        return;
    const std::string &known = m_Job.templateRow.name;
    const std::string distance = inAngstrom(fit->distance);
    writeLog(model.name +
             (fit->motion ? " was moved onto " + known + " and lies " + distance + " from it"
                          : " lies " + distance + " from " + known) +
             " (root mean square of " + std::to_string(fit->count) + " CA atoms)");
    if (fit->motion)
        moveModel(model, *fit->motion);
}

void BuiltModel::describe(StructureRecord &model, const Peptide &target,
                          const std::vector<ModelRun> &runs)
{
    const std::vector<ResidueRecord *> residues = modelResidues(model);
    // All or none, so that no number comes twice.
    if (runs.size() == 1 && runs.front().count == residues.size()) {
        for (std::size_t i = 0; i < residues.size(); ++i)
            residues[i]->number = target.number(runs.front().target + i);
    }
    for (std::size_t k = 0; k < target.objectCount(); ++k) {
        const auto *element = dynamic_cast<const Element *>(target.object(k));
        if (element == nullptr)
            continue;
        for (const ModelRun &run : runs) {
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

void BuiltModel::tie(Structure &model) const
{
    keepScores(model, m_Job.scores, m_Runs);
    for (Peptide *sequence : m_Sequences)
        tie(model, *sequence);
}

void BuiltModel::tie(Structure &model, Peptide &target) const
{
    const ObjectGuard guard(Publisher::Update, target);
    if (!guard.m_good) {
        writeLog(target.Name() + " is locked, so its residues do not get the coordinates of " +
                     model.Name() + '.',
                 LogSeverity::Warning);
        return;
    }
    Peptide &chain = *model.chain(0);
    const std::vector<Look> looks = looksOf(target);
    ResidueTies ties;
    const std::vector<ModelRun> runs = runsIn(target, std::string(chain.letters()));
    std::size_t count = 0;
    for (const ModelRun &run : runs) {
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
    writeLog(target.Name() + ": " + std::to_string(count) + " of " +
             std::to_string(target.residueCount()) + " residues have the coordinates of " +
             model.Name() + " now");
}

} // namespace TAMBO
