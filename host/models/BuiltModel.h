// SPDX-License-Identifier: GPL-3.0-or-later
// A model that an engine has built, on its way into the workbench: it gets the name of what it was
// made from, lies on its template, and is the structure of its target's rows from then on.
#pragma once

#include "FileReader.h"
#include "ModelFit.h"
#include "ModelScores.h"
#include "Result.h"

#include <filesystem>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {

class Peptide;
class RowsForModels;
class Structure;

// What a model was built from.
struct ModelJob
{
    RowRecord templateRow;
    RowRecord target;
    // The CA atoms of the template's letters, as the engine got them.
    std::vector<Vertex> places;
    // The engine's, of the target's letters; none when nobody knows them.
    ModelScores scores;
};

// The alignment has the template first and the target second. Knows nothing of loaded objects, so
// that a thread may read it.
[[nodiscard]] Result<ModelJob> readModelJob(const std::filesystem::path &alignment);
// Its residues are numbered by the letters of the template's row, from 1.
void setTemplate(ModelJob &job, const FileContents &contents);

class BuiltModel
{
public:
    enum class Place {
        // As the engine got it.
        OfTheJob,
        // Of the row of a loaded alignment, when that has a structure: it may have been moved.
        OfTheRow
    };

    BuiltModel(std::filesystem::path file, ModelJob job)
        : m_File(std::move(file)), m_Job(std::move(job))
    { }

    // The names of template and target.
    [[nodiscard]] std::set<std::string> rows() const;
    // What the file holds, before an object is made of it.
    void prepare(FileContents &contents, RowsForModels &rows, Place place);
    // The object, in the same step; it keeps its scores. A row that is locked stays as it is.
    void tie(Structure &model) const;

private:
    // modelRuns(), of what most rows have in common with the job at once.
    [[nodiscard]] std::vector<ModelRun> runsIn(const Peptide &sequence,
                                               const std::string &model) const;

    // Where the CA atoms of the template's letters are in a loaded alignment; empty without one.
    [[nodiscard]] std::vector<Vertex> placesOfRow(const RowsForModels &rows) const;
    // Goes with the template to where that lies now.
    void follow(StructureRecord &model, std::vector<Vertex> now);
    void fit(StructureRecord &model) const;
    // Numbers and secondary structure of the target go over to the model.
    static void describe(StructureRecord &model, const Peptide &target,
                         const std::vector<ModelRun> &runs);
    void tie(Structure &model, Peptide &target) const;

    std::filesystem::path m_File;
    ModelJob m_Job;
    // Of the model, and where the job's target has them.
    std::string m_Letters;
    std::vector<ModelRun> m_Runs;
    // The sequences of the loaded alignments' rows that the model was built for.
    std::vector<Peptide *> m_Sequences;
};

} // namespace TAMBO
