// SPDX-License-Identifier: GPL-3.0-or-later
// Reads what a modelling job has built: the model gets the name of what it was made from, lies on
// its template, and is the structure of the target's sequence from then on.
#pragma once

#include "Loader.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {
class Peptide;
} // namespace TAMBO

namespace TAMBO::app {

class ModelReader
{
public:
    // The job's alignment (template first, target second) and the template's coordinates must stand
    // beside the model as "seq.ali" and "str.pdb".
    [[nodiscard]] static bool isModel(const std::filesystem::path &file);

    // Reads the files, which the next job writes over.
    ModelReader(Loader &loader, const std::filesystem::path &file);

    // Once, and not while changes are being published. All in one step of undo, whatever command is
    // under way.
    LoadReport read();

private:
    // Residues [model, model + count) of the model's chain are letters [target, target + count).
    struct Run
    {
        std::size_t target = 0;
        std::size_t model = 0;
        std::size_t count = 0;
    };
    using Runs = std::vector<Run>;

    // Where residues of both have the same letter; nothing when they are not of one sequence.
    [[nodiscard]] static Runs agreement(const std::string &target, const std::string &model);

    void prepare(FileContents &contents);
    void fit(StructureRecord &model, const Runs &runs) const;
    // Numbers and secondary structure of the target go over to the model.
    static void describe(StructureRecord &model, const Peptide &target, const Runs &runs);
    void tie(Structure &model, Peptide &target) const;

    Loader &m_Loader;
    std::filesystem::path m_File;
    ReadOutcome m_Outcome;
    RowRecord m_Template;
    RowRecord m_Target;
    // The CA atoms of the template's letters.
    std::vector<Vertex> m_Places;
    // The sequences of the loaded alignments' rows that the model was built for.
    std::vector<Peptide *> m_Sequences;
};

} // namespace TAMBO::app
